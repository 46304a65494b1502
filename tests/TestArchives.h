#pragma once

#include "TestData.h"

/// Archives that tests make out of those in tests/data, byte by byte.
namespace TestArchives {

/// Where the next header in the directory of an archive begins; -1 after the last.
inline auto centralHeader(const QByteArray& archive, QByteArray::size_type from = 0)
{
    return archive.indexOf("PK\1\2", from);
}

/// An archive that lists the first entry of small.zip \p count times. Its counts are of 16 bits.
inline QByteArray archiveOf(int count)
{
    const QByteArray small = TestData::content("small.zip");
    const auto first = centralHeader(small);
    const QByteArray header = small.mid(first, centralHeader(small, first + 1) - first);
    QByteArray end = small.mid(small.indexOf("PK\5\6"));
    const auto put = [&end](int at, int size, int number) {
        for (int i = 0; i < size; ++i)
            end[at + i] = char(number >> (8 * i));
    };
    put(8, 2, qMin(count, 0xffff));  // entries on this disk
    put(10, 2, qMin(count, 0xffff)); // entries in all
    put(12, 4, int(header.size()) * count);
    return small.left(first) + header.repeated(count) + end;
}

/// The names in the directory of an archive, in its order.
inline QByteArrayList namesIn(const QByteArray& archive)
{
    constexpr int NAME_LENGTH = 28;
    constexpr int NAME = 46;
    QByteArrayList names;
    for (auto at = centralHeader(archive); at >= 0; at = centralHeader(archive, at + 1))
        names << archive.mid(at + NAME, archive[at + NAME_LENGTH]);
    return names;
}

} // namespace TestArchives
