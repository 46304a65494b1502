#include "tools/commands/Command.h"
#include "tools/support/EntryWork.h"
#include "tools/support/Extraction.h"
#include "tools/support/Failure.h"
#include "tools/support/Files.h"
#include "tools/support/Output.h"
#include "tools/support/Password.h"

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

/// An archive that can be opened, with the list of its entries as far as it can be read.
class Archive
{
public:
    /// Throws Failure for what is no archive.
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

    /// To be answered when all that could be done with the entries is done.
    int exitCode() const
    {
        if (m_isWhole)
            return Done;
        complain(QStringLiteral("the list of entries in %1 is damaged; it ends after %2")
                     .arg(m_path, QString::number(m_entries.size())));
        return Failed;
    }

private:
    const QString m_path;
    const DataFileReader m_reader;
    std::vector<Entry> m_entries;
    bool m_isWhole = false;
};

void answerTable(const std::vector<Entry>& entries)
{
    QList<QStringList> rows = {{QStringLiteral("SIZE"), QStringLiteral("NAME")}};
    for (const Entry& entry : entries)
        rows << QStringList{QString::number(entry.size), printable(textOf(entry.name))};
    answer(aligned(rows));
}

void answerJson(const std::vector<Entry>& entries)
{
    QJsonArray array;
    for (const Entry& entry : entries) {
        array << QJsonObject{{QStringLiteral("name"), textOf(entry.name)},
                             {QStringLiteral("size"), static_cast<qint64>(entry.size)}};
    }
    answer(array);
}

/// The entries that the user wants of an archive: all when none are named.
class Selection
{
public:
    /// Complains of names that the archive does not have.
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
            complain(QStringLiteral("%1 is not in %2")
                         .arg(QFile::decodeName(name), archive.reader().getFilename()));
        m_isWhole = absent.isEmpty();
    }

    bool has(const std::string& name) const
    {
        return m_names.isEmpty() || m_names.contains(QByteArray::fromStdString(name));
    }
    int count() const { return m_count; }
    /// Whether all names are there.
    bool isWhole() const { return m_isWhole; }

private:
    QSet<QByteArray> m_names;
    int m_count = 0;
    bool m_isWhole = false;
};

/// False when an entry was left out; the others are written.
bool extract(const Archive& archive, const Selection& selection, Extraction& extraction)
{
    EntryWork work(QStringLiteral("Extracting"), selection.count());
    bool isWhole = true;
    const bool isListed = archive.reader().visitArchivedFiles([&](const ArchivedFile& entry) {
        if (!selection.has(entry.name))
            return true;
        const QString name = textOf(entry.name);
        if (!work.goOn(name))
            return false;
        const QString fault = extraction.extract(entry);
        if (!fault.isEmpty())
            work.complain(QStringLiteral("entry \"%1\" %2").arg(name, fault));
        isWhole = isWhole && fault.isEmpty();
        return true;
    });
    work.throwIfStopped(QStringLiteral("%1 of %2 entries done").arg(work.count()).arg(selection.count()));
    return isWhole && isListed;
}

/// Entries have no folders, and so files of different folders may meet.
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
        answerJson(archive.entries());
    else
        answerTable(archive.entries());
    return archive.exitCode();
}

int extractData(const QCommandLineParser& line)
{
    const PasswordSource password(line, PasswordNeed::Optional);
    const Archive archive(line.positionalArguments().first(), password.read(PasswordUse::Reading));
    const Selection selection(archive, line.positionalArguments().mid(1));
    Extraction extraction(line.value(QStringLiteral("to")), line.isSet(QStringLiteral("force")));
    const bool isWhole = extract(archive, selection, extraction);
    const int exitCode = archive.exitCode();
    return isWhole && selection.isWhole() ? exitCode : Failed;
}

int packData(const QCommandLineParser& line)
{
    QStringList files = line.positionalArguments();
    const QString archive = files.takeFirst();
    const PasswordSource source(line, PasswordNeed::Optional);
    requireReplaceable(archive, files);
    requirePackable(files);
    const QString password = source.read(PasswordUse::Writing);

    EntryWork work(QStringLiteral("Packing"), files.size());
    const bool isMade = DataFileCreator().createArchivFromFiles(
        files, archive, password, [&work, &files](int entry) { return work.goOn(files[entry]); });
    work.throwIfStopped(archive + QStringLiteral(" was not written"));
    if (!isMade)
        throw Failure(QStringLiteral("%1 could not be written").arg(archive));
    return Done;
}

} // namespace globalsctl
