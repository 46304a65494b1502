#pragma once

#include "globals/globals_export.h"

#include <QByteArray>

/// The form of a protected data block:
///
///     offset  size      field
///     0       1         pad count p, 0 to 15: zero bytes appended to the plain text before encryption
///     1       16        initialisation vector
///     17      16 * k    AES-256-CBC cipher text of plain text and padding
///
/// It has no magic number, length or checksum. DataFileCreator writes such blocks and DataFileReader reads
/// them.
namespace TEKLUVA::DataBlock {

/// \name Sizes in bytes
/// @{
inline constexpr int BLOCK_SIZE = 16; ///< of the cipher
inline constexpr int PAD_COUNT_SIZE = 1;
inline constexpr int HEADER_SIZE = PAD_COUNT_SIZE + BLOCK_SIZE;
inline constexpr int MAX_PAD_COUNT = BLOCK_SIZE - 1;
/// @}

/// The first fault in the form of \p block, as a sentence in English; null for a block without one.
/// Reentrant.
///
/// Bytes that were never encrypted may have the form of a block by chance, and a wrong password does not
/// show in it.
GLOBALS_EXPORT const char* faultOf(const QByteArray& block);

} // namespace TEKLUVA::DataBlock
