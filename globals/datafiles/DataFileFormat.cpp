#include "globals/datafiles/DataFileFormat_p.h"

// SHA-1 is weak, but it is what the files in the field were written with.
#include <cryptopp/sha.h>

#include <QFileInfo>

#include <cstdint>
#include <limits>
#include <new>

#include <sys/mman.h>

namespace TEKLUVA::DataFileFormat {

namespace {

/// The digest of \p text up to its first zero byte.
void digestText(const QByteArray& text, CryptoPP::byte* digest)
{
    const auto length = qstrnlen(text.constData(), static_cast<uint>(text.size()));
    CryptoPP::SHA1().CalculateDigest(digest, reinterpret_cast<const CryptoPP::byte*>(text.constData()),
                                     length);
}

} // namespace

CryptoPP::SecByteBlock deriveKey(const QByteArray& password, int split)
{
    constexpr std::size_t DIGEST_SIZE = CryptoPP::SHA1::DIGESTSIZE;
    CryptoPP::SecByteBlock digests(2 * DIGEST_SIZE);
    digestText(password.mid(split), digests);
    digestText(password.left(split), digests + DIGEST_SIZE);
    return CryptoPP::SecByteBlock(digests, KEY_SIZE);
}

QByteArray newBuffer(int size)
{
    constexpr std::uintptr_t HUGE_PAGE = std::uintptr_t{2} * 1024 * 1024;
    QByteArray buffer(size, Qt::Uninitialized);
    const auto address = reinterpret_cast<std::uintptr_t>(buffer.constData());
    const std::uintptr_t begin = (address + HUGE_PAGE - 1) & ~(HUGE_PAGE - 1);
    const std::uintptr_t end = (address + static_cast<std::uintptr_t>(size)) & ~(HUGE_PAGE - 1);
    if (begin < end)
        madvise(buffer.data() + (begin - address), end - begin,
                MADV_HUGEPAGE); // a wish: nothing depends on it
    return buffer;
}

std::optional<QByteArray> allocate(quint64 size)
{
    // QByteArray keeps a header and an end beside its bytes.
    constexpr quint64 LARGEST = std::numeric_limits<int>::max() - 64;
    if (size > LARGEST)
        return std::nullopt;
    try {
        return newBuffer(static_cast<int>(size));
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
}

bool isPlainFile(const QString& path)
{
    return QFileInfo(path).isFile();
}

void logCaught(const char* what)
{
    logError(std::string("Catched exception \"") + what + "\" while opening a data file.");
}

} // namespace TEKLUVA::DataFileFormat
