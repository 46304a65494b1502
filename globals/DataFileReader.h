#pragma once

#include "globals/globals_export.h"

#include <QByteArray>
#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace TEKLUVA {

/// An entry of an archive, while DataFileReader::visitArchivedFiles() stands at it.
struct ArchivedFile
{
    const std::string& name; ///< the whole one, which getListOfArchivedFiles() may cut
    quint64 size;            ///< in bytes, unpacked and still encrypted, as the archive claims
    /// Unpacks and decrypts the entry and checks it against its checksum. Nothing, and logged, on failure.
    const std::function<std::optional<QByteArray>()>& content;
    /// The first \p count bytes, or all where there are fewer: unpacked, but neither decrypted nor checked.
    /// Empty on failure.
    const std::function<QByteArray(int count)>& beginning;
};

/// Reads protected data files: a file that is one protected data block, or a zip archive whose entries are
/// such blocks. Without a password the content is taken as it is.
///
///     DataFileReader reader(path, password);
///     reader.visitArchivedFiles([](const ArchivedFile& file) { // in one pass, one entry at a time in memory
///         if (const auto content = file.content())
///             use(file.name, *content);
///         return true; // go on
///     });
///     // Of 10,000 entries this takes at most a third of the time of reads by name, as next:
///     const QByteArray one = reader.getContentOfArchivedFile("a.txt");
///     const QByteArray single = DataFileReader(otherPath, password).getFileContent(); // of no archive
///
/// An empty result is the only sign of failure; the reason is in lastError() and goes to the active log where
/// the operation says so, and nothing is thrown. A wrong password cannot be told from damaged content: both
/// give bytes of the right length without meaning.
///
/// Every operation opens and closes the file itself. A reader remembers the directory of a plain archive, up
/// to 32 MiB of it, and 64 KiB for what unpacks it, as long as the file is the same: reading many entries by
/// their names then costs no walk each.
///
/// Thread-safe: the file name and the password never change, and what is remembered has a lock. lastError()
/// is about the operation of any thread that has ended last.
class GLOBALS_EXPORT DataFileReader : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY(DataFileReader)

public:
    /// An empty \p password means that the content is not encrypted. Opens nothing.
    DataFileReader(const QString& filename, const QString& password);
    ~DataFileReader() override;

    QString getFilename() const;

    /// Whether the file can be opened as a zip archive. False for a missing file.
    bool isArchiv() const;

    /// The content of a file that is no archive, decrypted. Empty, without an entry in the log, for an
    /// archive and for a file that cannot be read; a block that cannot be decrypted is logged.
    QByteArray getFileContent() const;

    /// The names of all entries in the order of the archive, cut at 256 bytes. Failures are logged; a damaged
    /// entry makes the whole list empty.
    std::vector<std::string> getListOfArchivedFiles() const;

    /// Visits the entries in the order of the archive, in one pass over it and with one of them at a time in
    /// memory, until \p visit returns false. False, and logged, for a file that is no archive, that has no
    /// entries, or whose list of entries is damaged. What \p visit throws goes through to the caller, and so
    /// does std::bad_alloc when there is no memory left for a name.
    bool visitArchivedFiles(const std::function<bool(const ArchivedFile&)>& visit) const;

    /// The content of the entry \p name (upper and lower case differ), decrypted. Failures are logged. An
    /// entry is read in one piece and must fit into a QByteArray.
    QByteArray getContentOfArchivedFile(const std::string& name) const;
    QByteArray getContentOfArchivedFile(const char* name) const;
    /// \p name in the encoding of file names, as DataFileCreator writes it.
    QByteArray getContentOfArchivedFile(const QString& name) const;
    /// The same for many names, with the archive opened once. Those that cannot be read are missing;
    /// lastError() is about the last of them.
    QMap<QString, QByteArray> getContentsOfArchivedFiles(const QStringList& names) const;

    /// Decrypts one protected data block. Empty, and logged, for a block that is cut, whose length is no
    /// multiple of the cipher's or whose pad count is none; empty without an entry for an empty block.
    QByteArray decryptData(const QByteArray& data, const QString& password) const;
    /// The same with the reader's own password.
    QByteArray decryptData(const QByteArray& data) const;

    /// Why the last operation of this object has failed; empty when it has not. For people.
    QString lastError() const;

private:
    class Private;
    const std::unique_ptr<Private> d;
};

} // namespace TEKLUVA
