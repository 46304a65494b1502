#pragma once

#include "globals/DataBlock.h"
#include "globals/Exception.h"

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
CryptoPP::SecByteBlock deriveKey(const QByteArray& password, int split);

/// The message of an exception with the text \p what that ended an operation on a data file; null for one of
/// an unknown type.
std::string caughtMessage(const char* what);

/// Runs \p operation and returns its result, or an empty one when it throws; \p report gets the message then.
/// This is the one place where exceptions of data file operations end.
template <typename Operation, typename Report>
auto withoutExceptions(Operation&& operation, Report&& report) noexcept -> decltype(operation())
{
    // Where there is no memory for the message either, the empty result has to do.
    const auto reportCaught = [&report](const char* what) {
        try {
            report(caughtMessage(what));
        } catch (const std::exception&) {
            return;
        }
    };
    try {
        return operation();
    } catch (const std::exception& e) { // Crypto++'s exceptions and our own are such, too
        reportCaught(e.what());
    } catch (...) {
        reportCaught(nullptr);
    }
    return decltype(operation())();
}

} // namespace TEKLUVA::DataFileFormat
