#include "globals/datafiles/Archive_p.h"

#include "globals/datafiles/ReadAhead_p.h"

#include <unzip.h>

#include <QMutexLocker>

#include <algorithm>

namespace TEKLUVA {

namespace {

/// What is kept of an archive between two operations, beside the index of the same order.
constexpr qint64 LARGEST_KEPT_DIRECTORY = qint64{32} << 20;

/// The largest count that an archive without 64-bit records can tell. It may stand for more.
constexpr ZPOS64_T LARGEST_PLAIN_COUNT = 0xffff;

struct CloseEntry
{
    void operator()(void* zip) const { unzCloseCurrentFile(zip); }
};
using OpenEntry = std::unique_ptr<void, CloseEntry>;

/// minizip looks for 64-bit records in the last 64 kB, piece by piece and backwards. A plain directory has
/// none, so the search may end with the first piece that holds the end record.
qint64 startOfSearch(const ArchiveDirectory& directory)
{
    constexpr qint64 LARGEST_PIECE = 2048; // about twice minizip's
    return std::max<qint64>(0, static_cast<qint64>(directory.end()) - LARGEST_PIECE);
}

ZPOS64_T entryCount(void* zip)
{
    unz_global_info64 info{};
    unzGetGlobalInfo64(zip, &info);
    return info.number_entry;
}

/// Nothing when the current entry's header cannot be read. \p name gets the whole name, or as much as is
/// known of one that is longer than the file.
std::optional<ArchiveEntry> currentEntry(void* zip, std::string& name)
{
    unz_file_info64 info{};
    if (unzGetCurrentFileInfo64(zip, &info, nullptr, 0, nullptr, 0, nullptr, 0) != UNZ_OK)
        return std::nullopt;
    const auto readName = [zip, &name](uLong size) {
        name.resize(size);
        return unzGetCurrentFileInfo64(zip, nullptr, name.data(), size, nullptr, 0, nullptr, 0) == UNZ_OK;
    };
    if (!readName(info.size_filename) && !readName(std::min<uLong>(info.size_filename, LONGEST_KNOWN_NAME)))
        return std::nullopt;
    name.resize(name.find('\0') == std::string::npos ? name.size() : name.find('\0'));
    unz64_file_pos place{};
    unzGetFilePos64(zip, &place);
    return ArchiveEntry{name, info.uncompressed_size, place.pos_in_zip_directory, place.num_of_file};
}

} // namespace

struct MinizipArchive
{
    explicit MinizipArchive(qint64 size)
        : source(size)
    {
    }
    Q_DISABLE_COPY(MinizipArchive)
    ~MinizipArchive() { unzClose(zip); }

    ReadAhead source;
    void* zip = nullptr;
};

void CloseMinizip::operator()(MinizipArchive* archive) const
{
    delete archive;
}

Archive::Archive(const System::Path& place, KnownArchive& known)
    : m_known(known)
{
    std::error_code error;
    m_file = System::FileHandle::openForReading(place, error);
    if (error)
        return;
    m_status = m_file.status(error);
    if (error || m_status.kind != System::FileKind::Regular)
        return;
    const bool isKnown = takeKnown();
    if (!isKnown)
        readDirectory();
}

Archive::~Archive()
{
    const QMutexLocker lock(&m_known.mutex);
    if (m_minizip && m_directory && m_directory == m_known.directory)
        m_known.minizip = std::move(m_minizip);
}

bool Archive::takeKnown()
{
    const QMutexLocker lock(&m_known.mutex);
    if (!m_known.directory || m_known.status != m_status)
        return false;
    m_directory = m_known.directory;
    m_minizip = std::move(m_known.minizip);
    if (m_minizip)
        m_minizip->source.setFile(m_file);
    return true;
}

void Archive::readDirectory()
{
    const bool isSettled = System::isSettled(m_status); // asked before the file is read
    m_directory = ArchiveDirectory::read(m_file, m_status.size);
    const bool isKept = isSettled && m_directory && m_directory->memory() <= LARGEST_KEPT_DIRECTORY;
    const QMutexLocker lock(&m_known.mutex);
    m_known.status = m_status;
    m_known.directory = isKept ? m_directory : nullptr;
    m_known.minizip.reset();
}

void* Archive::zip() const
{
    if (!m_minizip && m_file.isOpen() && m_status.kind == System::FileKind::Regular) {
        m_minizip.reset(new MinizipArchive(m_status.size));
        m_minizip->source.setFile(m_file);
        zlib_filefunc64_def functions = m_minizip->source.functions();
        if (m_directory)
            m_minizip->source.setFirstPosition(startOfSearch(*m_directory));
        m_minizip->zip = unzOpen2_64("", &functions);
        m_minizip->source.setFirstPosition(0);
    }
    return m_minizip ? m_minizip->zip : nullptr;
}

bool Archive::isOpen() const
{
    return m_directory || zip();
}

Archive::WalkResult Archive::forEachEntry(const std::function<bool(const ArchiveEntry&)>& visit)
{
    if (!m_directory)
        return walkWithMinizip(visit);
    if (m_directory->count() == 0)
        return WalkResult::NoFirstEntry;
    for (std::size_t number = 0; number < m_directory->count(); ++number) {
        const bool goesOn = visit(m_directory->entryAt(number));
        if (!goesOn)
            break;
    }
    return WalkResult::Whole;
}

Archive::WalkResult Archive::walkWithMinizip(const std::function<bool(const ArchiveEntry&)>& visit)
{
    const ZPOS64_T count = entryCount(zip());
    if (count == 0 || unzGoToFirstFile(zip()) != UNZ_OK)
        return WalkResult::NoFirstEntry;
    std::string name;
    const bool isCountKnown = count != LARGEST_PLAIN_COUNT;
    for (ZPOS64_T seen = 1;; ++seen) {
        const auto entry = currentEntry(zip(), name);
        if (!entry)
            return WalkResult::Damaged;
        if (!visit(*entry) || (isCountKnown && seen == count))
            return WalkResult::Whole;
        if (unzGoToNextFile(zip()) != UNZ_OK) // also when a count that is too small for the entries runs out
            return isCountKnown || seen < count ? WalkResult::Damaged : WalkResult::Whole;
    }
}

std::optional<ArchiveEntry> Archive::find(const std::string& name)
{
    const std::string_view wanted = name.c_str(); // up to a zero byte
    if (m_directory)
        return m_directory->find(wanted);
    std::optional<ArchiveEntry> found;
    walkWithMinizip([&found, wanted](const ArchiveEntry& entry) {
        if (knownName(entry) == wanted)
            found = entry;
        return !found;
    });
    return found;
}

Archive::UnpackResult Archive::unpack(const ArchiveEntry& entry, QByteArray& content, Checksum checksum)
{
    const unz64_file_pos place{entry.position, entry.number};
    if (!zip() || unzGoToFilePos64(zip(), &place) != UNZ_OK || unzOpenCurrentFile(zip()) != UNZ_OK)
        return UnpackResult::CannotOpen;
    OpenEntry open(zip());
    const int read = unzReadCurrentFile(zip(), content.data(), static_cast<unsigned>(content.size()));
    if (read != content.size())
        return UnpackResult::Damaged;
    const bool isSound = checksum == Checksum::Ignored || unzCloseCurrentFile(open.release()) == UNZ_OK;
    return isSound ? UnpackResult::Whole : UnpackResult::Damaged;
}

} // namespace TEKLUVA
