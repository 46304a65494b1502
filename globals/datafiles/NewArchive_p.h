#pragma once

#include "globals/AtomicFile.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <system_error>

namespace TEKLUVA {

/// A zip archive that is written beside its place and takes it when it is complete.
class NewArchive
{
    Q_DISABLE_COPY(NewArchive)

public:
    /// More entries need 64-bit records, which not every minizip writes.
    static constexpr int MOST_ENTRIES = 0xfffe;

    explicit NewArchive(const QString& path);
    ~NewArchive();

    /// \name Steps
    /// False, with the reason in error(), on failure; the archive will not be complete then.
    /// @{
    bool isOpen() const;
    /// Adds an entry. No time and no attributes: the same content makes the same archive.
    bool pack(const QString& name, const QByteArray& data);
    /// Puts the complete archive into its place.
    bool commit();
    /// @}

    QString error() const;

private:
    class Functions;
    struct Close
    {
        void operator()(void* archive) const;
    };

    AtomicFile m_file;
    std::error_code m_error;                ///< of the stream; the file does not see it
    std::unique_ptr<void, Close> m_archive; ///< the last member, because closing it writes to the others
};

/// Adds an entry to an archive that minizip's zipOpen() has opened. False for a name of more than 65535 bytes
/// and when writing fails.
bool packEntry(void* zipFile, const QString& name, const QByteArray& data);

} // namespace TEKLUVA
