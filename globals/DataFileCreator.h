#pragma once

#include "globals/globals_export.h"

#include <QByteArray>
#include <QMap>
#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

namespace TEKLUVA {

/// Writes what DataFileReader reads: protected data blocks, and zip archives of them.
///
///     DataFileCreator creator;
///     const bool isMade = creator.createArchivFromFiles({"chair.3ds", "table.3ds"}, "models.dat", password);
///
/// Passwords should be ASCII: the writer halves a password by its characters and the reader by its UTF-8
/// bytes, so that what was written with a password such as "üöa" cannot be read back. canBeReadBack() tells
/// which passwords are safe.
///
/// False or an empty result is the sign of failure, with the reason in lastError(); nothing is thrown. Only
/// encryptData() writes errors to the active log.
///
/// Reentrant: archives may be written in several threads, each by one at a time.
class GLOBALS_EXPORT DataFileCreator : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY(DataFileCreator)

public:
    /// Asked before each entry, with its position from 0; false ends the work.
    using GoOn = std::function<bool(int entry)>;

    DataFileCreator();
    ~DataFileCreator() override;

    /// Whether DataFileReader makes the same key of \p password.
    static bool canBeReadBack(const QString& password);

    /// One protected data block with \p data and an initialisation vector of its own. A failure of the
    /// cipher, such as for want of memory, is logged and leaves a block without content: its first 17 bytes.
    QByteArray encryptData(const QByteArray& data, const QString& password) const;
    /// One protected data block with the content of a file; the password is used even when it is empty. Empty
    /// when the file cannot be read whole.
    QByteArray encryptFile(const QString& path, const QString& password) const;

    /// \name Entries
    /// Add one entry to \p zipFile, an archive that minizip's zipOpen() has opened. False for a null archive,
    /// for a name of more than 65535 bytes and when writing fails.
    /// @{
    bool packData(void* zipFile, const QString& name, const QByteArray& data) const;
    /// The content of the file as it is, under the file's name without folders.
    bool packFile(void* zipFile, const QString& path) const;
    /// @}

    /// \name Archives
    /// Write a new archive to \p archivPath. An older file there is replaced once the new one is complete and
    /// on disk; a failure leaves it as it was, and no trace of the new one. A folder, pipe or device is never
    /// replaced. False for no entries, for more than 65534, for an empty path, and when anything fails or
    /// \p goOn ends the work.
    ///
    /// With a password each entry is a protected data block, and its name is the last part of the key or
    /// path; two of the same name become two entries, with a warning in the log. Without one, the content is
    /// stored as it is.
    /// @{

    /// Entries in the order of the keys, which are the entries' names whole, with folders, when there is no
    /// password.
    bool createArchivFromData(const QMap<QString, QByteArray>& data, const QString& archivPath,
                              const QString& password, const GoOn& goOn = {}) const;
    /// Entries in the order of \p files, named without folders. One file at a time is in memory.
    bool createArchivFromFiles(const QStringList& files, const QString& archivPath, const QString& password,
                               const GoOn& goOn = {}) const;
    /// @}

    /// Why the last operation of this object has failed, with the name of the file; empty when it has not.
    /// For people.
    QString lastError() const;

private:
    class Private;
    const std::unique_ptr<Private> d;
};

} // namespace TEKLUVA
