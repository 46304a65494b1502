#include "commands/Command.h"
#include "support/Failure.h"
#include "support/Files.h"
#include "support/Output.h"
#include "support/PresetFile.h"
#include "support/PresetTypes.h"

#include "globals/Exception.h"

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

QString countOf(int number, const char* what)
{
    const QString count = QStringLiteral("%1 %2").arg(number).arg(QLatin1String(what));
    return number == 1 ? count : count + QLatin1Char('s');
}

/// What was found in the files that "presets check" was asked about.
class PresetCheck
{
public:
    /// Strictly, notes make a file as bad as errors do.
    explicit PresetCheck(bool isStrict)
        : m_isStrict(isStrict)
    {
    }

    void check(const QString& path)
    {
        try {
            add(path, PresetFile(path));
        } catch (const Failure& e) {
            addUnreadable(path, e.reason());
        } catch (const Exception& e) {
            addUnreadable(path, QString::fromUtf8(e.getDescription()));
        }
    }

    bool isGood() const { return m_bad == 0; }
    QJsonArray files() const { return m_files; }
    void print() const
    {
        for (const QString& result : m_lines)
            printResult(printable(result));
        if (m_files.size() > 1) {
            const QString bad = m_bad == 0 ? QStringLiteral("all good") : QStringLiteral("%1 bad").arg(m_bad);
            printResult(QStringLiteral("%1 files, %2").arg(m_files.size()).arg(bad));
        }
    }

private:
    void add(const QString& path, const PresetFile& file)
    {
        const bool isBad = file.hasFaults() || (m_isStrict && file.noteCount() > 0);
        m_bad += isBad ? 1 : 0;
        m_lines << file.remarks();
        const QString presets = countOf(file.presetCount(), "preset") + QStringLiteral(" set");
        if (!isBad && file.noteCount() > 0)
            m_lines << QStringLiteral("%1: %2, %3").arg(path, presets, countOf(file.noteCount(), "note"));
        else if (!isBad)
            m_lines << QStringLiteral("%1: good, %2").arg(path, presets);
        m_files << QJsonObject{{QStringLiteral("file"), path},
                               {QStringLiteral("good"), !isBad},
                               {QStringLiteral("presets"), file.presetCount()},
                               {QStringLiteral("remarks"), QJsonArray::fromStringList(file.remarks())}};
    }

    void addUnreadable(const QString& path, const QString& reason)
    {
        ++m_bad;
        printError(reason);
        m_files << QJsonObject{{QStringLiteral("file"), path},
                               {QStringLiteral("good"), false},
                               {QStringLiteral("presets"), 0},
                               {QStringLiteral("remarks"), QJsonArray{reason}}};
    }

    const bool m_isStrict;
    int m_bad = 0;
    QStringList m_lines;
    QJsonArray m_files;
};

} // namespace

int showPresets(const QCommandLineParser& line)
{
    const QString path = line.positionalArguments().value(0);
    const PresetFile file = path.isEmpty() ? PresetFile() : PresetFile(path);
    if (file.hasFaults()) {
        for (const QString& remark : file.remarks())
            printNote(printable(remark));
    }
    file.readAsApplication();
    const QList<Shown> presets = presetsAfter(file, line.isSet(QStringLiteral("changed")));
    if (line.isSet(QStringLiteral("json")))
        printResult(arrayOf(presets));
    else
        printResult(tableOf(presets));
    return file.hasFaults() ? Failed : Done;
}

int checkPresets(const QCommandLineParser& line)
{
    PresetCheck check(line.isSet(QStringLiteral("strict")));
    for (const QString& path : line.positionalArguments())
        check.check(path);
    if (line.isSet(QStringLiteral("json")))
        printResult(check.files());
    else
        check.print();
    return check.isGood() ? Done : Failed;
}

int buildPresets(const QCommandLineParser& line)
{
    const QString path = line.positionalArguments().value(0);
    const QString target = line.positionalArguments().value(1);
    requireReplaceable(target, {path}, existingOf(line));
    const PresetFile file(path);
    for (const QString& remark : file.remarks())
        printNote(printable(remark));
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
