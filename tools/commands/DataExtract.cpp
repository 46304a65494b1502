#include "commands/Command.h"
#include "support/Archive.h"
#include "support/EntryWork.h"
#include "support/Extraction.h"
#include "support/Failure.h"
#include "support/Files.h"
#include "support/Output.h"
#include "support/Password.h"

#include "globals/DataFileCreator.h"
#include "globals/DataFileReader.h"

#include <QCommandLineParser>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonObject>
#include <QSet>

namespace globalsctl {

using namespace TEKLUVA;

namespace {

QString textOf(const std::string& name)
{
    return QString::fromStdString(name);
}

QString countOf(std::size_t entries)
{
    return entries == 1 ? QStringLiteral("1 entry") : QStringLiteral("%1 entries").arg(entries);
}

void printTable(const std::vector<Archive::Entry>& entries)
{
    QList<QStringList> rows = {{QStringLiteral("SIZE"), QStringLiteral("NAME")}};
    for (const Archive::Entry& entry : entries)
        rows << QStringList{QString::number(entry.size), printable(textOf(entry.name))};
    printResult(aligned(rows));
}

void printJson(const std::vector<Archive::Entry>& entries)
{
    QJsonArray array;
    for (const Archive::Entry& entry : entries) {
        array << QJsonObject{{QStringLiteral("name"), textOf(entry.name)},
                             {QStringLiteral("size"), static_cast<qint64>(entry.size)}};
    }
    printResult(array);
}

/// Throws Failure when entries speak against the password and none for it: nothing is worth writing then.
void requireRightPassword(const Archive& archive, const Selection& selection, const QString& password)
{
    constexpr int ENOUGH = 16;
    EntryOpener opener(password);
    const bool isListed = archive.reader().visitArchivedFiles([&](const ArchivedFile& entry) {
        if (selection.has(entry.name))
            opener.open(entry);
        return opener.rightCount() == 0 && opener.wrongCount() < ENOUGH;
    });
    if (isListed && opener.rightCount() == 0 && opener.wrongCount() > 0)
        throw Failure(archive.path() + QStringLiteral(": wrong password or damaged"));
}

/// False when an entry was left out; the others are written.
bool extract(const Archive& archive, const Selection& selection, Extraction& extraction)
{
    EntryWork work(QStringLiteral("Extracting"), selection.count());
    bool isComplete = true;
    const bool isListed = archive.reader().visitArchivedFiles([&](const ArchivedFile& entry) {
        if (!selection.has(entry.name))
            return true;
        const QString name = textOf(entry.name);
        if (!work.beginEntry(name))
            return false;
        const QString fault = extraction.extract(entry);
        if (!fault.isEmpty())
            work.printError(QStringLiteral("entry \"%1\" %2").arg(name, fault));
        isComplete = isComplete && fault.isEmpty();
        return !extraction.isDiskFull();
    });
    if (extraction.isDiskFull())
        printError(QStringLiteral("%1 of %2 written").arg(work.count() - 1).arg(selection.count()));
    extraction.opener().noteIfUnproven();
    work.throwIfStopped(QStringLiteral("%1 of %2 entries done").arg(work.count()).arg(selection.count()));
    return isComplete && isListed;
}

/// The number of entries that cannot be read; prints an error for each.
int test(const Archive& archive, const QString& password)
{
    EntryWork work(QStringLiteral("Testing"), static_cast<int>(archive.entries().size()));
    EntryOpener opener(password);
    int bad = 0;
    static_cast<void>(archive.reader().visitArchivedFiles([&](const ArchivedFile& entry) {
        if (!work.beginEntry(textOf(entry.name)))
            return false;
        if (opener.open(entry))
            return true;
        work.printError(QStringLiteral("entry \"%1\" %2").arg(textOf(entry.name), opener.fault()));
        ++bad;
        return true;
    }));
    work.throwIfStopped(
        QStringLiteral("%1 of %2 entries tested").arg(work.count()).arg(archive.entries().size()));
    opener.noteIfUnproven();
    return bad;
}

/// Throws Failure for files that cannot be entries of one archive: entries are named without their folders,
/// so two files may have the same name.
void requirePackable(const QStringList& files)
{
    QSet<QString> names;
    for (const QString& file : files) {
        requireReadable(file);
        const QString name = QFileInfo(file).fileName();
        if (names.contains(name))
            throw Failure(QStringLiteral("two of the files are named %1").arg(name));
        names << name;
    }
}

} // namespace

int listData(const QCommandLineParser& line)
{
    const Archive archive(line.positionalArguments().first());
    if (line.isSet(QStringLiteral("json")))
        printJson(archive.entries());
    else
        printTable(archive.entries());
    return archive.reportDamage();
}

int extractData(const QCommandLineParser& line)
{
    const PasswordSource source(line, PasswordNeed::Optional);
    const Archive archive(line.positionalArguments().first());
    const QString password = source.read(PasswordUse::Reading);
    const Selection selection(archive, line.positionalArguments().mid(1));
    if (!password.isEmpty())
        requireRightPassword(archive, selection, password);
    Extraction extraction(line.value(QStringLiteral("to")), existingOf(line), password);
    const bool isComplete = extract(archive, selection, extraction);
    const int exitCode = archive.reportDamage();
    return isComplete && selection.isComplete() ? exitCode : Failed;
}

int testData(const QCommandLineParser& line)
{
    const PasswordSource source(line, PasswordNeed::Optional);
    const Archive archive(line.positionalArguments().first());
    const int bad = test(archive, source.read(PasswordUse::Reading));
    const int exitCode = archive.reportDamage();
    const std::size_t count = archive.entries().size();
    printResult(bad == 0
                    ? QStringLiteral("%1: %2, all good").arg(archive.path(), countOf(count))
                    : QStringLiteral("%1: %2 of %3 bad").arg(archive.path()).arg(bad).arg(countOf(count)));
    return bad == 0 ? exitCode : Failed;
}

int packData(const QCommandLineParser& line)
{
    QStringList files = line.positionalArguments();
    const QString archive = files.takeFirst();
    const PasswordSource source(line, PasswordNeed::Optional);
    if (isStandardOutput(archive))
        throw Failure(QStringLiteral("an archive cannot be written to the standard output"));
    requireReplaceable(archive, files, existingOf(line));
    requirePackable(files);
    const QString password = source.read(PasswordUse::Writing);

    EntryWork work(QStringLiteral("Packing"), files.size());
    const DataFileCreator creator;
    const bool isMade = creator.createArchivFromFiles(
        files, archive, password, [&work, &files](int entry) { return work.beginEntry(files[entry]); });
    work.throwIfStopped(archive + QStringLiteral(" was not written"));
    if (!isMade)
        throw Failure(QStringLiteral("%1 could not be written: %2").arg(archive, creator.lastError()));
    return Done;
}

} // namespace globalsctl
