#include "Bench.h"

#include "globals/DataFileCreator.h"
#include "globals/DataFileReader.h"

#include <openssl/evp.h>
#include <openssl/rand.h>
#include <openssl/sha.h>

#include <array>
#include <memory>

using namespace TEKLUVA;

namespace {

constexpr int BLOCK = 16;
constexpr int HEADER = 1 + BLOCK;
constexpr int KEY = 32;
constexpr const char* PASSWORD = "benchmark-password-1";

struct FreeContext
{
    void operator()(EVP_CIPHER_CTX* context) const { EVP_CIPHER_CTX_free(context); }
};
using Context = std::unique_ptr<EVP_CIPHER_CTX, FreeContext>;

unsigned char* bytes(QByteArray& data)
{
    return reinterpret_cast<unsigned char*>(data.data());
}

const unsigned char* bytes(const QByteArray& data)
{
    return reinterpret_cast<const unsigned char*>(data.constData());
}

using Digests = std::array<unsigned char, 2UL * SHA_DIGEST_LENGTH>;

/// The key of a block, of which the first KEY bytes count. Our side derives it in each call from the QString,
/// and so does this one.
Digests keyOf(const QString& password)
{
    const QByteArray utf8 = password.toUtf8();
    const int half = utf8.size() / 2;
    Digests digests{};
    SHA1(bytes(utf8) + half, static_cast<std::size_t>(utf8.size() - half), digests.data());
    SHA1(bytes(utf8), static_cast<std::size_t>(half), digests.data() + SHA_DIGEST_LENGTH);
    return digests;
}

QByteArray decryptWithOpenSsl(const QByteArray& block, const QString& password)
{
    const Digests key = keyOf(password);
    static_assert(KEY <= std::tuple_size_v<Digests>);
    const Context context(EVP_CIPHER_CTX_new());
    EVP_DecryptInit_ex(context.get(), EVP_aes_256_cbc(), nullptr, key.data(), bytes(block) + 1);
    EVP_CIPHER_CTX_set_padding(context.get(), 0);
    const int size = block.size() - HEADER;
    QByteArray plain(size, Qt::Uninitialized);
    int written = 0;
    int last = 0;
    EVP_DecryptUpdate(context.get(), bytes(plain), &written, bytes(block) + HEADER, size);
    EVP_DecryptFinal_ex(context.get(), bytes(plain) + written, &last);
    plain.truncate(size - block[0]);
    return plain;
}

/// For whole blocks of the cipher only, which all sizes here are.
QByteArray encryptWithOpenSsl(const QByteArray& data, const QString& password)
{
    const Digests key = keyOf(password);
    QByteArray block(HEADER + data.size(), Qt::Uninitialized);
    block[0] = 0;
    RAND_bytes(bytes(block) + 1, BLOCK);
    const Context context(EVP_CIPHER_CTX_new());
    EVP_EncryptInit_ex(context.get(), EVP_aes_256_cbc(), nullptr, key.data(), bytes(block) + 1);
    EVP_CIPHER_CTX_set_padding(context.get(), 0);
    int written = 0;
    int last = 0;
    EVP_EncryptUpdate(context.get(), bytes(block) + HEADER, &written, bytes(data), data.size());
    EVP_EncryptFinal_ex(context.get(), bytes(block) + HEADER + written, &last);
    return block;
}

QByteArray decryptWithUs(const QByteArray& block, const QString& password)
{
    static const DataFileReader READER{QString(), QString()};
    return READER.decryptData(block, password);
}

QByteArray encryptWithUs(const QByteArray& data, const QString& password)
{
    return DataFileCreator().encryptData(data, password);
}

using Operation = QByteArray (*)(const QByteArray& data, const QString& password);

struct Side
{
    const char* name;
    Operation encrypt;
    Operation decrypt;
};
constexpr Side SIDES[] = {
    {"ours", &encryptWithUs, &decryptWithUs},
    {"OpenSSL", &encryptWithOpenSsl, &decryptWithOpenSsl},
};

struct Size
{
    const char* name;
    int bytes;
};
constexpr Size SIZES[] = {{"4 KiB", 4096}, {"1 MiB", 1 << 20}, {"64 MiB", 64 << 20}};

void addOperation(const std::string& name, Operation operation, const std::function<QByteArray()>& input)
{
    Bench::add(name, [operation, input] {
        return [operation, data = input(), password = QString::fromLatin1(PASSWORD)] {
            return operation(data, password);
        };
    });
}

void checkSides()
{
    const QString password = QString::fromLatin1(PASSWORD);
    const QByteArray data = Bench::text(SIZES[0].bytes);
    for (const Side& writer : SIDES) {
        for (const Side& reader : SIDES)
            Bench::require(reader.decrypt(writer.encrypt(data, password), password) == data,
                           "a block is read differently");
    }
}

} // namespace

void Bench::addDataFiles()
{
    checkSides();
    for (const Size& size : SIZES) {
        const auto plain = [count = size.bytes] { return text(count); };
        const auto block = [plain] { return encryptWithOpenSsl(plain(), QString::fromLatin1(PASSWORD)); };
        for (const Side& side : SIDES) {
            const std::string names = std::string(size.name) + "/" + side.name;
            addOperation("decrypt a block/" + names, side.decrypt, block);
            addOperation("encrypt a block/" + names, side.encrypt, plain);
        }
    }
}
