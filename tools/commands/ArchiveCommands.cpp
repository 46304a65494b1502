#include "commands/Command.h"
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

#include <limits>

namespace globalsctl {

using namespace TEKLUVA;

namespace {

struct Entry
{
    std::string name;
    quint64 size;
};

QString textOf(const std::string& name)
{
    return QString::fromStdString(name);
}

/// An open archive, with the list of its entries up to where that is damaged.
class Archive
{
public:
    /// Throws Failure when \p path is no archive.
    Archive(const QString& path, const QString& password)
        : m_path(path)
        , m_reader(path, password)
    {
        requireReadable(path, std::numeric_limits<qint64>::max());
        if (!m_reader.isArchiv())
            throw Failure(QStringLiteral("%1 is no archive with entries").arg(path));
        m_isWhole = m_reader.visitArchivedFiles([this](const ArchivedFile& entry) {
            m_entries.push_back({entry.name, entry.size});
            return true;
        });
    }

    const DataFileReader& reader() const { return m_reader; }
    const std::vector<Entry>& entries() const { return m_entries; }

    /// Prints an error when the list is damaged; call it after the work on the entries. Returns the exit
    /// code.
    int reportDamage() const
    {
        if (m_isWhole)
            return Done;
        printError(QStringLiteral("the list of entries in %1 is damaged; it ends after %2")
                       .arg(m_path, QString::number(m_entries.size())));
        return Failed;
    }

private:
    const QString m_path;
    const DataFileReader m_reader;
    std::vector<Entry> m_entries;
    bool m_isWhole = false;
};

void printTable(const std::vector<Entry>& entries)
{
    QList<QStringList> rows = {{QStringLiteral("SIZE"), QStringLiteral("NAME")}};
    for (const Entry& entry : entries)
        rows << QStringList{QString::number(entry.size), printable(textOf(entry.name))};
    printResult(aligned(rows));
}

void printJson(const std::vector<Entry>& entries)
{
    QJsonArray array;
    for (const Entry& entry : entries) {
        array << QJsonObject{{QStringLiteral("name"), textOf(entry.name)},
                             {QStringLiteral("size"), static_cast<qint64>(entry.size)}};
    }
    printResult(array);
}

/// The entries of an archive that the user wants: all when none are named.
class Selection
{
public:
    /// Prints an error for each of \p names that the archive does not have.
    Selection(const Archive& archive, const QStringList& names)
    {
        for (const QString& name : names)
            m_names << QFile::encodeName(name);
        QSet<QByteArray> absent = m_names;
        for (const Entry& entry : archive.entries()) {
            m_count += has(entry.name) ? 1 : 0;
            absent.remove(QByteArray::fromStdString(entry.name));
        }
        for (const QByteArray& name : absent)
            printError(QStringLiteral("%1 is not in %2")
                           .arg(QFile::decodeName(name), archive.reader().getFilename()));
        m_isComplete = absent.isEmpty();
    }

    bool has(const std::string& name) const
    {
        return m_names.isEmpty() || m_names.contains(QByteArray::fromStdString(name));
    }
    int count() const { return m_count; }
    /// Whether the archive has all names.
    bool isComplete() const { return m_isComplete; }

private:
    QSet<QByteArray> m_names;
    int m_count = 0;
    bool m_isComplete = false;
};

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
        return true;
    });
    work.throwIfStopped(QStringLiteral("%1 of %2 entries done").arg(work.count()).arg(selection.count()));
    return isComplete && isListed;
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
    const Archive archive(line.positionalArguments().first(), QString());
    if (line.isSet(QStringLiteral("json")))
        printJson(archive.entries());
    else
        printTable(archive.entries());
    return archive.reportDamage();
}

int extractData(const QCommandLineParser& line)
{
    const PasswordSource password(line, PasswordNeed::Optional);
    const Archive archive(line.positionalArguments().first(), password.read(PasswordUse::Reading));
    const Selection selection(archive, line.positionalArguments().mid(1));
    Extraction extraction(line.value(QStringLiteral("to")), line.isSet(QStringLiteral("force")));
    const bool isComplete = extract(archive, selection, extraction);
    const int exitCode = archive.reportDamage();
    return isComplete && selection.isComplete() ? exitCode : Failed;
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
