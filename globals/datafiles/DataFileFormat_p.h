#pragma once

#include "globals/Exception.h"
#include "globals/datafiles/DataBlock_p.h"
#include "globals/logs/ActiveLog_p.h"

#include <cryptopp/cryptlib.h>
#include <cryptopp/secblock.h>

#include <QByteArray>

#include <optional>

/// What the reading and the writing side of protected data files have in common.
namespace TEKLUVA::DataFileFormat {

using namespace DataBlock;

inline constexpr int KEY_SIZE = 32;

/// The AES key of \p password, UTF-8 bytes, cut in two before byte \p split: the SHA-1 digest of the second
/// part followed by that of the first, cut at 32 bytes. A zero byte ends a part. Fixed by the files that
/// exist.
CryptoPP::SecByteBlock deriveKey(const QByteArray& password, int split);

/// Logs that an exception with the text \p what ended an operation on a data file.
void logCaught(const char* what);

/// Runs \p operation and returns its result, or an empty one when it throws; the exception goes to the active
/// log. This is the one place where exceptions of data file operations end.
template <typename Operation>
auto withoutExceptions(Operation&& operation) noexcept -> decltype(operation())
{
    try {
        return operation();
    } catch (const CryptoPP::Exception& e) {
        logCaught(e.what());
    } catch (const Exception& e) {
        logCaught(e.what());
    } catch (const std::exception& e) {
        logCaught(e.what());
    } catch (...) {
        logError("Catched an unknown exception while opening a data file.");
    }
    return decltype(operation())();
}

} // namespace TEKLUVA::DataFileFormat
