#include "commands/Command.h"
#include "support/Failure.h"
#include "support/Output.h"
#include "support/PresetBounds.h"
#include "support/PresetTable.h"
#include "support/PresetTypes.h"
#include "support/Suggestion.h"

#include <QCommandLineParser>
#include <QJsonArray>
#include <QJsonObject>
#include <QSet>

namespace globalsctl {

using namespace TEKLUVA;

namespace {

/// The preset \p key. Throws Failure for an unknown one.
PresetDescription presetOf(const QString& key)
{
    QStringList keys;
    for (const PresetDescription& preset : PresetManager::describePresets()) {
        if (preset.key == key.toLower())
            return preset;
        keys << preset.key;
    }
    throw Failure(QStringLiteral("the preset key %1 is invalid%2").arg(key, suggestion(key, keys)));
}

/// The keys whose values change when \p preset is set as high or as low as can be.
QStringList movedBy(const PresetDescription& preset)
{
    constexpr double FAR = 1e6;
    const QStringList before = builtInValues();
    QSet<QString> moved;
    for (const double value : {FAR, -FAR}) {
        const PresetFile builtIn;
        PresetManager::getInstance()->setPreset(preset.value, value);
        const QStringList after = valuesInForce();
        const QList<PresetDescription> presets = PresetManager::describePresets();
        for (int i = 0; i < presets.size(); ++i) {
            if (before[i] != after[i] && presets[i].value != preset.value)
                moved << presets[i].key;
        }
    }
    QStringList sorted = moved.values();
    sorted.sort();
    return sorted;
}

} // namespace

int describePreset(const QCommandLineParser& line)
{
    const PresetFile builtIn;
    const PresetDescription preset = presetOf(line.positionalArguments().first());
    const QJsonValue initial = presetType(preset.type).normal(PresetManager::getPreset(preset.value));
    const QString partner = partnerOf(preset.value);
    const QStringList moved = movedBy(preset);
    if (line.isSet(QStringLiteral("json"))) {
        printAnswer({{QStringLiteral("key"), preset.key},
                     {QStringLiteral("value"), preset.value},
                     {QStringLiteral("type"), preset.type},
                     {QStringLiteral("default"), initial},
                     {QStringLiteral("bounds"), preset.bounds},
                     {QStringLiteral("partner"), partner.isEmpty() ? QJsonValue() : partner},
                     {QStringLiteral("moves"), QJsonArray::fromStringList(moved)}});
        return Done;
    }
    const auto orNone = [](const QString& text) { return text.isEmpty() ? QStringLiteral("-") : text; };
    printTable({{QStringLiteral("Key:"), preset.key},
                {QStringLiteral("Type:"), preset.type},
                {QStringLiteral("Default:"), inWords(initial)},
                {QStringLiteral("Bounds:"), preset.bounds},
                {QStringLiteral("Partner:"), orNone(partner)},
                {QStringLiteral("Moves:"), orNone(moved.join(QStringLiteral(", ")))}});
    return Done;
}

} // namespace globalsctl
