#include "Bench.h"

#include "globals/PresetManager.h"

#include <QHash>
#include <QMap>

#include <vector>

using namespace TEKLUVA;

namespace {

PresetManager& manager()
{
    static PresetManager& filled = [&]() -> PresetManager& {
        PresetManager& presets = *PresetManager::getInstance();
        presets.fillNameMap();
        presets.setInitialPresets();
        return presets;
    }();
    return filled;
}

/// All presets in an order that no cache and no branch predictor knows.
template <typename Field>
auto shuffled(Field field)
{
    constexpr int STRIDE = 37;
    manager();
    const QList<PresetDescription> presets = PresetManager::describePresets();
    std::vector<std::decay_t<decltype(field(presets.first()))>> fields;
    for (int i = 0; i < presets.size(); ++i)
        fields.push_back(field(presets[i * STRIDE % presets.size()]));
    return fields;
}

auto valueOf = [](const PresetDescription& preset) { return preset.value; };
auto keyOf = [](const PresetDescription& preset) { return preset.key; };

/// Walks over \p items round and round.
template <typename Items, typename Find>
auto walk(Items items, Find find)
{
    return [items = std::move(items), find = std::move(find), i = std::size_t(0)]() mutable {
        i = i + 1 == items.size() ? 0 : i + 1;
        return find(items[i]);
    };
}

auto byValueWithUs()
{
    return walk(shuffled(valueOf), [](E_PresetValue value) { return &PresetManager::getPreset(value); });
}

auto byValueWithQMap()
{
    QMap<E_PresetValue, QVariant> presets;
    for (const E_PresetValue value : shuffled(valueOf))
        presets.insert(value, PresetManager::getPreset(value));
    return walk(shuffled(valueOf), [presets](E_PresetValue value) { return &*presets.constFind(value); });
}

auto byKeyWithUs()
{
    return walk(shuffled(keyOf), [](const QString& key) { return manager().getKey(key); });
}

auto byKeyWithQHash()
{
    QHash<QString, E_PresetValue> values;
    for (const PresetDescription& preset : PresetManager::describePresets())
        values.insert(preset.key, preset.value);
    return walk(shuffled(keyOf), [values](const QString& key) { return *values.constFind(key.toLower()); });
}

} // namespace

void Bench::addPresets()
{
    add("preset/by value/ours", &byValueWithUs);
    add("preset/by value/QMap", &byValueWithQMap);
    add("preset/by key/ours", &byKeyWithUs);
    add("preset/by key/QHash", &byKeyWithQHash);
}
