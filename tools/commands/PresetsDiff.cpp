#include "commands/Command.h"
#include "support/Failure.h"
#include "support/Output.h"
#include "support/PresetBounds.h"
#include "support/PresetFile.h"
#include "support/PresetTypes.h"
#include "support/Suggestion.h"

#include <QCommandLineParser>
#include <QSet>

namespace globalsctl {

using namespace TEKLUVA;

namespace {

QString valueInForce(const PresetDescription& preset)
{
    return inWords(presetType(preset.type).normal(PresetManager::getPreset(preset.value)));
}

/// The values in force, in the order of describePresets().
QStringList valuesInForce()
{
    QStringList values;
    for (const PresetDescription& preset : PresetManager::describePresets())
        values << valueInForce(preset);
    return values;
}

/// The same once \p path has been read. Throws Failure for a file with faults: it has no values to compare.
QStringList valuesAfter(const QString& path)
{
    const PresetFile file(path);
    if (!file.hasFaults())
        return valuesInForce();
    for (const QString& remark : file.remarks())
        printNote(printable(remark));
    throw Failure(QStringLiteral("%1 has faults").arg(path), WrongUsage);
}

QStringList builtInValues()
{
    const PresetFile builtIn;
    return valuesInForce();
}

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

int diffPresets(const QCommandLineParser& line)
{
    const QStringList files = line.positionalArguments();
    const QStringList after = valuesAfter(files.last());
    const QStringList before = files.size() > 1 ? valuesAfter(files.first()) : builtInValues();
    QList<QStringList> rows = {{QStringLiteral("KEY"),
                                files.size() > 1 ? printable(files.first()) : QStringLiteral("DEFAULT"),
                                printable(files.last())}};
    const QList<PresetDescription> presets = PresetManager::describePresets();
    for (int i = 0; i < presets.size(); ++i) {
        if (before[i] != after[i])
            rows << QStringList{presets[i].key, before[i], after[i]};
    }
    if (rows.size() == 1)
        return Done;
    printResult(aligned(rows));
    return Failed;
}

int describePreset(const QCommandLineParser& line)
{
    const PresetFile builtIn;
    const PresetDescription preset = presetOf(line.positionalArguments().first());
    const auto orNone = [](const QString& text) { return text.isEmpty() ? QStringLiteral("-") : text; };
    const QString initial = valueInForce(preset);
    const QString partner = partnerOf(preset.key);
    printResult(aligned({{QStringLiteral("Key:"), preset.key},
                         {QStringLiteral("Type:"), preset.type},
                         {QStringLiteral("Default:"), initial},
                         {QStringLiteral("Bounds:"), preset.bounds},
                         {QStringLiteral("Partner:"), orNone(partner)},
                         {QStringLiteral("Moves:"), orNone(movedBy(preset).join(QStringLiteral(", ")))}}));
    return Done;
}

int showPresetTemplate(const QCommandLineParser& /*line*/)
{
    const PresetFile builtIn;
    for (const PresetDescription& preset : PresetManager::describePresets()) {
        const QString value = valueInForce(preset);
        printResult(QStringLiteral("# %1, default %2, %3").arg(preset.type, value, preset.bounds));
        printResult(QStringLiteral("%1=%2\n").arg(preset.key, value));
    }
    return Done;
}

int dumpPresets(const QCommandLineParser& line)
{
    const QByteArray text = PresetFile(line.positionalArguments().first()).text().toUtf8();
    printBytes(text);
    return Done;
}

} // namespace globalsctl
