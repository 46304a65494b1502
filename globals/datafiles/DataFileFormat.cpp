#include "globals/datafiles/DataFileFormat_p.h"

// SHA-1 is weak, but it is what the files in the field were written with.
#include <cryptopp/sha.h>

#include <algorithm>

namespace TEKLUVA::DataFileFormat {

namespace {

/// The digest of \p text up to its first zero byte.
void digestText(const QByteArray& text, CryptoPP::byte* digest)
{
    const auto length = std::find(text.begin(), text.end(), '\0') - text.begin();
    CryptoPP::SHA1().CalculateDigest(digest, reinterpret_cast<const CryptoPP::byte*>(text.constData()),
                                     static_cast<std::size_t>(length));
}

} // namespace

CryptoPP::SecByteBlock deriveKey(const QByteArray& password, QByteArray::size_type split)
{
    constexpr std::size_t DIGEST_SIZE = CryptoPP::SHA1::DIGESTSIZE;
    CryptoPP::SecByteBlock digests(2 * DIGEST_SIZE);
    digestText(password.mid(split), digests);
    digestText(password.left(split), digests + DIGEST_SIZE);
    return CryptoPP::SecByteBlock(digests, KEY_SIZE);
}

std::string caughtMessage(const char* what)
{
    if (!what)
        return "Catched an unknown exception while opening a data file.";
    return std::string("Catched exception \"") + what + "\" while opening a data file.";
}

} // namespace TEKLUVA::DataFileFormat
