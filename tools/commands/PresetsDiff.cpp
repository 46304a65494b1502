#include "commands/Command.h"
#include "support/Failure.h"
#include "support/Output.h"
#include "support/PresetTable.h"

#include "globals/Exception.h"

#include <QCommandLineParser>
#include <QJsonArray>
#include <QJsonObject>

namespace globalsctl {

using namespace TEKLUVA;

namespace {

/// A preset that has two values, as people write them.
struct Difference
{
    QString key;
    QString before;
    QString after;
};

/// The values once \p path has been read. Throws Failure for a file without values to compare.
QStringList valuesAfter(const QString& path)
{
    const PresetFile file(path);
    if (!file.hasFaults())
        return valuesInForce();
    printRemarks(file);
    throw Failure(QStringLiteral("%1 has faults").arg(path));
}

/// Of the last file from the one before it, or from the built-in values.
QList<Difference> differences(const QStringList& files)
{
    const QStringList after = valuesAfter(files.last());
    const QStringList before = files.size() > 1 ? valuesAfter(files.first()) : builtInValues();
    const QList<PresetDescription> presets = PresetManager::describePresets();
    QList<Difference> found;
    for (int i = 0; i < presets.size(); ++i) {
        if (before[i] != after[i])
            found << Difference{presets[i].key, before[i], after[i]};
    }
    return found;
}

void printDifferences(const QStringList& files, const QList<Difference>& found)
{
    if (found.isEmpty())
        return;
    const QString before = files.size() > 1 ? printable(files.first()) : QStringLiteral("DEFAULT");
    QList<QStringList> rows = {{QStringLiteral("KEY"), before, printable(files.last())}};
    for (const Difference& difference : found)
        rows << QStringList{difference.key, difference.before, difference.after};
    printTable(rows);
}

QJsonArray arrayOf(const QList<Difference>& found)
{
    QJsonArray array;
    for (const Difference& difference : found) {
        array << QJsonObject{{QStringLiteral("key"), difference.key},
                             {QStringLiteral("before"), difference.before},
                             {QStringLiteral("after"), difference.after}};
    }
    return array;
}

/// As differences(), but what fails is told from files that differ.
QList<Difference> differencesOrTrouble(const QStringList& files)
{
    try {
        return differences(files);
    } catch (const Failure& e) {
        throw Failure(e.reason(), Trouble);
    } catch (const Exception& e) {
        throw Failure(QString::fromUtf8(e.getDescription()), Trouble);
    }
}

} // namespace

int diffPresets(const QCommandLineParser& line)
{
    const QStringList files = line.positionalArguments();
    const QList<Difference> found = differencesOrTrouble(files);
    if (line.isSet(QStringLiteral("json")))
        printAnswer({{QStringLiteral("differences"), arrayOf(found)}});
    else
        printDifferences(files, found);
    return found.isEmpty() ? Done : Failed;
}

} // namespace globalsctl
