#include "commands/Command.h"
#include "support/Failure.h"
#include "support/Files.h"
#include "support/Output.h"
#include "support/PresetFile.h"
#include "support/PresetTypes.h"

#include <QCommandLineParser>
#include <QJsonArray>
#include <QJsonObject>

namespace globalsctl {

using namespace TEKLUVA;

namespace {

/// A preset with its values in their normal form, to be compared and shown.
struct Shown
{
    PresetDescription preset;
    QJsonValue builtIn;
    QJsonValue inForce;

    bool isChanged() const { return builtIn != inForce; }
};

QList<Shown> presetsAfter(const PresetFile& file, bool onlyChanged)
{
    QList<Shown> presets;
    for (const PresetDescription& preset : PresetManager::describePresets()) {
        const PresetType& type = presetType(preset.type);
        const Shown shown = {preset, type.normal(file.builtIn(preset.value)),
                             type.normal(PresetManager::getPreset(preset.value))};
        if (shown.isChanged() || !onlyChanged)
            presets << shown;
    }
    return presets;
}

QString tableOf(const QList<Shown>& presets)
{
    QList<QStringList> rows = {{QStringLiteral("KEY"), QStringLiteral("TYPE"), QStringLiteral("DEFAULT"),
                                QStringLiteral("CURRENT"), QStringLiteral("BOUNDS")}};
    for (const Shown& shown : presets) {
        rows << QStringList{shown.preset.key, shown.preset.type, inWords(shown.builtIn),
                            inWords(shown.inForce), shown.preset.bounds};
    }
    return aligned(rows);
}

QJsonArray arrayOf(const QList<Shown>& presets)
{
    QJsonArray array;
    for (const Shown& shown : presets) {
        array << QJsonObject{
            {QStringLiteral("value"), shown.preset.value}, {QStringLiteral("key"), shown.preset.key},
            {QStringLiteral("type"), shown.preset.type},   {QStringLiteral("default"), shown.builtIn},
            {QStringLiteral("current"), shown.inForce},    {QStringLiteral("bounds"), shown.preset.bounds},
            {QStringLiteral("changed"), shown.isChanged()}};
    }
    return array;
}

} // namespace

int showPresets(const QCommandLineParser& line)
{
    const PresetFile file(line.positionalArguments().first());
    if (file.hasFaults()) {
        printNote(file.remarks().join(QLatin1Char('\n')));
        return Failed;
    }
    const QList<Shown> presets = presetsAfter(file, line.isSet(QStringLiteral("changed")));
    if (line.isSet(QStringLiteral("json")))
        printResult(arrayOf(presets));
    else
        printResult(tableOf(presets));
    return Done;
}

int checkPresets(const QCommandLineParser& line)
{
    const QString path = line.positionalArguments().first();
    const PresetFile file(path);
    for (const QString& remark : file.remarks())
        printResult(remark);
    if (file.hasFaults())
        return Failed;
    printResult(QStringLiteral("%1: good, %2 set")
                    .arg(path, file.presetCount() == 1
                                   ? QStringLiteral("1 preset")
                                   : QStringLiteral("%1 presets").arg(file.presetCount())));
    return Done;
}

int buildPresets(const QCommandLineParser& line)
{
    const QString path = line.positionalArguments().value(0);
    const QString target = line.positionalArguments().value(1);
    requireReplaceable(target, {path}, existingOf(line));
    const PresetFile file(path);
    for (const QString& remark : file.remarks())
        printNote(remark);
    if (file.hasFaults())
        return Failed;
    if (!file.isPlain())
        throw Failure(QStringLiteral("File %1 is protected already").arg(path));
    const QByteArray block = PresetManager::protectedContent(file.bytes());
    requireCompleteBlock(block, file.bytes());
    writeTarget(target, block);
    return Done;
}

} // namespace globalsctl
