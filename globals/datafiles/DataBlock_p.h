#pragma once

#include <QByteArray>

/// A protected data block is
///
///     offset  size      field
///     0       1         pad count p, 0 to 15: zero bytes appended to the plain text before encryption
///     1       16        initialisation vector
///     17      16 * k    AES-256-CBC cipher text of plain text and padding
///
/// without magic number, length or checksum.
namespace TEKLUVA::DataBlock {

inline constexpr int BLOCK_SIZE = 16;
inline constexpr int PAD_COUNT_SIZE = 1;
inline constexpr int HEADER_SIZE = PAD_COUNT_SIZE + BLOCK_SIZE;
inline constexpr int MAX_PAD_COUNT = BLOCK_SIZE - 1;

/// The first of what is wrong with the form of \p block, in words; null for a good one. Other content may
/// have that form, too, by chance.
inline const char* faultOf(const QByteArray& block)
{
    const int size = block.size() - HEADER_SIZE;
    if (size < 0)
        return "The data block is shorter than its header.";
    if (size % BLOCK_SIZE != 0)
        return "The data block does not end with a whole block of the cipher.";
    const int padding = static_cast<uchar>(block[0]);
    return padding > MAX_PAD_COUNT || padding > size ? "The data block has an invalid pad count." : nullptr;
}

} // namespace TEKLUVA::DataBlock
