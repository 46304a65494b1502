#pragma once

#include "globals/DataBlock.h"

#include <cryptopp/cryptlib.h>
#include <cryptopp/secblock.h>

#include <QByteArray>

#include <string>

/// What the reading and the writing side of protected data files have in common.
namespace TEKLUVA::DataFileFormat {

using namespace DataBlock;

inline constexpr int KEY_SIZE = 32;

/// The AES key of \p password, UTF-8 bytes, cut in two before byte \p split: the SHA-1 digest of the second
/// part followed by that of the first, cut at 32 bytes. A zero byte ends a part. Fixed by the files that
/// exist.
CryptoPP::SecByteBlock deriveKey(const QByteArray& password, QByteArray::size_type split);

/// The message of an exception with the text \p what that ended an operation on a data file; null for one of
/// an unknown type.
std::string caughtMessage(const char* what);

} // namespace TEKLUVA::DataFileFormat
