#pragma once

#include "globals/system/System_p.h"

#include <QByteArray>
#include <QMutex>

#include <memory>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace TEKLUVA {

/// What the directory of an archive says of an entry.
struct ArchiveEntry
{
    std::string_view name; ///< up to its first zero byte; valid as long as the directory or the walk
    quint64 size = 0;      ///< in bytes, unpacked, as the archive claims
    quint64 position = 0;  ///< of the entry's header in the file
    quint64 number = 0;    ///< from 0
};

/// minizip, and so the interface of the library, knows an entry by this many bytes of its name.
inline constexpr std::size_t LONGEST_KNOWN_NAME = 256;

inline std::string_view knownName(const ArchiveEntry& entry)
{
    return entry.name.substr(0, LONGEST_KNOWN_NAME);
}

/// The central directory at the end of a zip archive, read in one piece and checked in memory. minizip seeks
/// and reads it header by header, which costs thirty times as much.
///
/// Only plain directories are read: on one disk, without 64-bit records, with nothing before the archive and
/// nothing between directory and end, and as many entries as it says. One whose count does not fit into its
/// 16 bits, which older writers have left at 65535, counts by its headers. Whatever is unusual is for
/// minizip.
class ArchiveDirectory
{
    Q_DISABLE_COPY(ArchiveDirectory)

public:
    /// Null for an unusual directory, and for a file that is no archive or cannot be read. Throws for want of
    /// memory.
    static std::shared_ptr<ArchiveDirectory> read(const System::FileHandle& file, qint64 fileSize);

    std::size_t count() const { return m_headers.size(); }
    /// Where the end record follows.
    quint64 end() const { return m_position + static_cast<quint64>(m_bytes.size()); }
    /// \p number counts from 0.
    ArchiveEntry entryAt(std::size_t number) const;

    /// The first entry that is known as \p name. The second call makes an index. Thread-safe.
    std::optional<ArchiveEntry> find(std::string_view name);

    /// How much memory the directory takes, without the index.
    qint64 memory() const;

private:
    using Index = std::unordered_map<std::string_view, std::size_t>;

    ArchiveDirectory() = default;
    bool parse(quint64 position, quint32 count);
    Index makeIndex() const;
    std::optional<ArchiveEntry> findInTurn(std::string_view name) const;

    QByteArray m_bytes;
    quint64 m_position = 0;         ///< of the bytes in the file
    std::vector<quint32> m_headers; ///< where each begins in the bytes
    QMutex m_searchMutex;
    Index m_index;
    bool m_isSearched = false;
};

} // namespace TEKLUVA
