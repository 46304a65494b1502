#pragma once

#include "globals/system/Descriptor_p.h"

#include <QByteArray>
#include <QString>

namespace globalsctl {

/// A file that is written under another name beside its place and takes its place when it is complete.
/// Otherwise nothing is left of it, and what was there stays.
///
///     NewFile file(path);
///     if (!file.write(content) || !file.commit())
///         printError(file.error());
///
/// Not QSaveFile: names from archives are bytes that QFile would change where they are no UTF-8, and ten
/// thousand extracted files cannot wait for the disk each.
class NewFile
{
    Q_DISABLE_COPY(NewFile)

public:
    /// With the permissions of any new file. A failure shows in write().
    explicit NewFile(const QByteArray& path);
    ~NewFile();

    /// \name Steps
    /// False, with a reason in error(), when the file is not going to be complete.
    /// @{
    bool write(const QByteArray& content);
    /// Waits until all that was written is on disk.
    bool sync();
    /// Takes the place. A link there is replaced, not followed; what replaces a folder fails.
    bool commit();
    /// @}

    QString error() const { return m_error; }

private:
    bool noteError();

    const QByteArray m_path;
    const QByteArray m_newPath;
    TEKLUVA::Descriptor m_file;
    bool m_isToRemove;
    QString m_error;
};

} // namespace globalsctl
