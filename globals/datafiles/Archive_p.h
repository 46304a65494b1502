#pragma once

#include "globals/datafiles/ArchiveDirectory_p.h"

#include <QByteArray>
#include <QMutex>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace TEKLUVA {

/// An archive as minizip has opened it. It reads whatever file is set, which must be the same archive.
struct MinizipArchive;

struct CloseMinizip
{
    void operator()(MinizipArchive* archive) const;
};
using MinizipPointer = std::unique_ptr<MinizipArchive, CloseMinizip>;

/// What was learned of the archive that was read last, to be used again as long as the file is the same. The
/// file itself is closed between two operations. Those at one time share the directory; one of them has
/// minizip, and the others open their own.
struct KnownArchive
{
    QMutex mutex;
    System::FileStatus status;
    std::shared_ptr<ArchiveDirectory> directory;
    MinizipPointer minizip;
};

/// A zip archive that is open for reading.
class Archive
{
    Q_DISABLE_COPY(Archive)

public:
    enum class WalkResult {
        Whole, ///< or until it was stopped
        NoFirstEntry,
        Damaged,
    };
    enum class Checksum {
        Ignored,
        Checked,
    };
    enum class UnpackResult {
        Whole,
        CannotOpen,
        Damaged,
    };

    /// Opens the file at \p place. What \p known has of it is used, or else read and kept there. It must
    /// outlive the archive.
    Archive(const System::Path& place, KnownArchive& known);
    ~Archive();

    /// False when the file is no zip archive, or none that can be read.
    bool isOpen() const;

    /// Calls \p visit for one entry after the other until it returns false.
    WalkResult forEachEntry(const std::function<bool(const ArchiveEntry&)>& visit);
    /// The first entry of that name, upper and lower case being different. Its own name is not kept.
    std::optional<ArchiveEntry> find(const std::string& name);
    /// Unpacks \p entry into \p content, which has its size.
    UnpackResult unpack(const ArchiveEntry& entry, QByteArray& content, Checksum checksum);

private:
    /// False when another archive is known, or none.
    bool takeKnown();
    /// Reads the directory, and keeps it as the known one unless it is unusual, too large or still changing.
    void readDirectory();
    /// Opens the archive with minizip, once. Null when it cannot.
    void* zip() const;
    WalkResult walkWithMinizip(const std::function<bool(const ArchiveEntry&)>& visit);

    KnownArchive& m_known;
    System::FileHandle m_file;
    System::FileStatus m_status;
    std::shared_ptr<ArchiveDirectory> m_directory; ///< null for an unusual one
    mutable MinizipPointer m_minizip;
};

} // namespace TEKLUVA
