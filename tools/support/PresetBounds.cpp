#include "support/PresetBounds.h"

#include "support/PresetTypes.h"

#include <QRegularExpression>

namespace globalsctl {

using namespace TEKLUVA;

namespace {

QVariant valueOf(const QString& key)
{
    return PresetManager::getPreset(PresetManager::getInstance()->getKey(key));
}

/// Of a word in a preset's bounds: a key or a number.
PresetBound boundOf(const QString& word)
{
    bool isNumber = false;
    const double number = word.toDouble(&isNumber);
    return isNumber ? PresetBound{QString(), number} : PresetBound{word, valueOf(word).toDouble()};
}

QString replaced(const QString& key, const char* word, const char* by)
{
    QStringList words = key.split(QLatin1Char('_'));
    const int place = words.indexOf(QLatin1String(word));
    if (place < 0)
        return {};
    words[place] = QLatin1String(by);
    return words.join(QLatin1Char('_'));
}

void addIfOutside(QList<OutOfBounds>& found, const PresetDescription& preset, const QString& lower,
                  const QString& upper)
{
    const double value = PresetManager::getPreset(preset.value).toDouble();
    if (!lower.isEmpty() && value < boundOf(lower).value)
        found << OutOfBounds{preset, boundOf(lower), true};
    if (!upper.isEmpty() && value > boundOf(upper).value)
        found << OutOfBounds{preset, boundOf(upper), false};
}

} // namespace

QString OutOfBounds::words() const
{
    const QString value = inWords(presetType(preset.type).normal(PresetManager::getPreset(preset.value)));
    const QString limit = inWords(QJsonValue(bound.value));
    return QStringLiteral("%1 is %2, %3 %4")
        .arg(preset.key, value, isBelow ? QStringLiteral("below") : QStringLiteral("above"),
             bound.key.isEmpty() ? limit : QStringLiteral("%1 (%2)").arg(bound.key, limit));
}

QList<OutOfBounds> valuesOutOfBounds()
{
    // "100 to max_room_height; ...", as the library puts it in words.
    static const QRegularExpression RANGE(QStringLiteral("^(\\S+) to ([^\\s;]+)"));
    QList<OutOfBounds> found;
    for (const PresetDescription& preset : PresetManager::describePresets()) {
        const auto range = RANGE.match(preset.bounds);
        if (range.hasMatch())
            addIfOutside(found, preset, range.captured(1), range.captured(2));
        else if (!replaced(preset.key, "min", "max").isEmpty()) // once for each pair
            addIfOutside(found, preset, QString(), partnerOf(preset.key));
    }
    return found;
}

QString partnerOf(const QString& key)
{
    const QString maximum = replaced(key, "min", "max");
    const QString partner = maximum.isEmpty() ? replaced(key, "max", "min") : maximum;
    return PresetManager::getInstance()->getKey(partner) == E_PV_NONE ? QString() : partner;
}

} // namespace globalsctl
