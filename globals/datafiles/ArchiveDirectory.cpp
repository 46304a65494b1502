#include "globals/datafiles/ArchiveDirectory_p.h"

#include "globals/system/Buffer_p.h"

#include <QMutexLocker>
#include <QtEndian>

#include <algorithm>

namespace TEKLUVA {

namespace {

/// A count or size of which the true value stands elsewhere, or does not fit.
constexpr quint16 UNKNOWN_16 = 0xffff;
constexpr quint32 UNKNOWN_32 = 0xffffffff;

template <typename Number>
Number numberAt(const char* bytes)
{
    return qFromLittleEndian<Number>(bytes);
}

/// The record at the end of an archive: APPNOTE 4.3.16. Offsets of its fields.
namespace EndRecord {
constexpr std::string_view SIGNATURE = "PK\5\6";
constexpr int DISK = 4;
constexpr int DIRECTORY_DISK = 6;
constexpr int COUNT_ON_DISK = 8;
constexpr int COUNT = 10;
constexpr int DIRECTORY_SIZE = 12;
constexpr int DIRECTORY_POSITION = 16;
constexpr int COMMENT_SIZE = 20;
constexpr int SIZE = 22;
} // namespace EndRecord

/// Where the record of 64-bit archives is: APPNOTE 4.3.15.
constexpr std::string_view LOCATOR_SIGNATURE = "PK\6\7";

/// The header of an entry in the directory: APPNOTE 4.3.12. Offsets of its fields.
namespace Header {
constexpr std::string_view SIGNATURE = "PK\1\2";
constexpr int PACKED_SIZE = 20;
constexpr int SIZE_UNPACKED = 24;
constexpr int NAME_SIZE = 28;
constexpr int EXTRA_SIZE = 30;
constexpr int COMMENT_SIZE = 32;
constexpr int DISK = 34;
constexpr int LOCAL_POSITION = 42;
constexpr int SIZE = 46;
} // namespace Header

struct DirectoryPlace
{
    quint32 position;
    quint32 size;
    quint16 count;
};

std::optional<QByteArray> readAt(const System::FileHandle& file, qint64 position, qint64 size)
{
    auto bytes = allocate(static_cast<quint64>(size));
    std::error_code error;
    if (!bytes || file.readAt(bytes->data(), size, position, error) != size)
        return std::nullopt;
    return bytes;
}

/// Reads the end record, the last one in \p tail, that ends at the end of the file.
std::optional<DirectoryPlace> placeIn(std::string_view tail, qint64 fileSize)
{
    using namespace EndRecord;
    const std::size_t begin = tail.rfind(SIGNATURE);
    if (begin == std::string_view::npos || tail.size() - begin < SIZE
        || tail.find(LOCATOR_SIGNATURE) != std::string_view::npos)
        return std::nullopt;
    const char* record = tail.data() + begin;
    const auto count = numberAt<quint16>(record + COUNT);
    const DirectoryPlace place{numberAt<quint32>(record + DIRECTORY_POSITION),
                               numberAt<quint32>(record + DIRECTORY_SIZE), count};
    const bool isOnOneDisk = numberAt<quint16>(record + DISK) == 0
                             && numberAt<quint16>(record + DIRECTORY_DISK) == 0
                             && numberAt<quint16>(record + COUNT_ON_DISK) == count;
    const bool endsFile = begin + SIZE + numberAt<quint16>(record + COMMENT_SIZE) == tail.size();
    const qint64 recordPosition = fileSize - static_cast<qint64>(tail.size() - begin);
    const bool isBesideRecord = qint64{place.position} + place.size == recordPosition;
    return isOnOneDisk && endsFile && isBesideRecord ? std::make_optional(place) : std::nullopt;
}

/// Whether \p extra is a row of fields, each with its size, none of which is for a 64-bit archive.
bool isPlainExtra(const char* extra, int size)
{
    constexpr int FIELD_HEADER_SIZE = 4;
    constexpr quint16 ZIP_64 = 1;
    while (size >= FIELD_HEADER_SIZE) {
        const int fieldSize = FIELD_HEADER_SIZE + numberAt<quint16>(extra + 2);
        if (numberAt<quint16>(extra) == ZIP_64 || fieldSize > size)
            return false;
        extra += fieldSize;
        size -= fieldSize;
    }
    return size == 0;
}

/// How many bytes the header of an entry takes with what follows it; 0 for an unusual one.
int plainSize(const char* header, qint64 room)
{
    using namespace Header;
    if (room < SIZE || std::string_view(header, SIGNATURE.size()) != SIGNATURE)
        return 0;
    const int nameSize = numberAt<quint16>(header + NAME_SIZE);
    const int extraSize = numberAt<quint16>(header + EXTRA_SIZE);
    const int size = SIZE + nameSize + extraSize + numberAt<quint16>(header + COMMENT_SIZE);
    const bool isPlain = numberAt<quint32>(header + PACKED_SIZE) != UNKNOWN_32
                         && numberAt<quint32>(header + SIZE_UNPACKED) != UNKNOWN_32
                         && numberAt<quint32>(header + LOCAL_POSITION) != UNKNOWN_32
                         && numberAt<quint16>(header + DISK) == 0;
    return isPlain && size <= room && isPlainExtra(header + SIZE + nameSize, extraSize) ? size : 0;
}

} // namespace

std::shared_ptr<ArchiveDirectory> ArchiveDirectory::read(const System::FileHandle& file, qint64 fileSize)
{
    constexpr qint64 LONGEST_TAIL = 0xffff; // as far as minizip looks
    const qint64 tailSize = std::min(fileSize, LONGEST_TAIL);
    const auto tail = readAt(file, fileSize - tailSize, tailSize);
    if (!tail)
        return nullptr;
    const auto place = placeIn({tail->constData(), static_cast<std::size_t>(tail->size())}, fileSize);
    if (!place)
        return nullptr;
    const auto bytes = readAt(file, place->position, place->size);
    if (!bytes)
        return nullptr;
    std::shared_ptr<ArchiveDirectory> directory(new ArchiveDirectory);
    directory->m_bytes = *bytes;
    return directory->parse(place->position, place->count) ? directory : nullptr;
}

bool ArchiveDirectory::parse(quint64 position, quint32 count)
{
    const char* const begin = m_bytes.constData();
    const char* const end = begin + m_bytes.size();
    m_position = position;
    m_headers.reserve(count);
    for (const char* header = begin; header != end;) {
        const int size = plainSize(header, end - header);
        if (size == 0)
            return false;
        m_headers.push_back(static_cast<quint32>(header - begin));
        header += size;
    }
    return m_headers.size() == count || (count == UNKNOWN_16 && m_headers.size() > count);
}

ArchiveEntry ArchiveDirectory::entryAt(std::size_t number) const
{
    const char* header = m_bytes.constData() + m_headers[number];
    const std::string_view name(header + Header::SIZE, numberAt<quint16>(header + Header::NAME_SIZE));
    return {name.substr(0, name.find('\0')), numberAt<quint32>(header + Header::SIZE_UNPACKED),
            m_position + m_headers[number], number};
}

std::optional<ArchiveEntry> ArchiveDirectory::find(std::string_view name)
{
    const QMutexLocker lock(&m_searchMutex);
    if (!m_isSearched) {
        m_isSearched = true;
        return findInTurn(name);
    }
    if (m_index.empty())
        m_index = makeIndex(); // all of it, or it throws
    const auto found = m_index.find(name);
    return found == m_index.end() ? std::nullopt : std::make_optional(entryAt(found->second));
}

ArchiveDirectory::Index ArchiveDirectory::makeIndex() const
{
    Index index;
    index.reserve(m_headers.size());
    for (std::size_t number = 0; number < m_headers.size(); ++number)
        index.emplace(knownName(entryAt(number)), number); // keeps the first of its name
    return index;
}

std::optional<ArchiveEntry> ArchiveDirectory::findInTurn(std::string_view name) const
{
    for (std::size_t number = 0; number < m_headers.size(); ++number) {
        const ArchiveEntry entry = entryAt(number);
        if (knownName(entry) == name)
            return entry;
    }
    return std::nullopt;
}

qint64 ArchiveDirectory::memory() const
{
    return m_bytes.size() + static_cast<qint64>(m_headers.size() * sizeof(quint32));
}

} // namespace TEKLUVA
