#include "globals/DataFileCreator.h"

#include "globals/AtomicFile.h"
#include "globals/WholeFile.h"
#include "globals/datafiles/DataFileFormat_p.h"
#include "globals/system/Buffer_p.h"

#include <cryptopp/aes.h>
#include <cryptopp/modes.h>
#include <cryptopp/osrng.h>
#include <zip.h>

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <limits>
#include <memory>
#include <new>

namespace TEKLUVA {

using namespace DataFileFormat;

namespace {

using Vector = std::array<CryptoPP::byte, BLOCK_SIZE>;

Vector randomVector()
{
    constexpr bool BLOCKING = false;
    constexpr unsigned SEED_SIZE = 32;
    CryptoPP::AutoSeededRandomPool pool(BLOCKING, SEED_SIZE);
    Vector vector;
    pool.GenerateBlock(vector.data(), vector.size());
    return vector;
}

/// How many zero bytes fill the last block of the cipher.
int padCount(int size)
{
    return (BLOCK_SIZE - size % BLOCK_SIZE) % BLOCK_SIZE;
}

/// Where the key derivation cuts the password: half its characters, but counted in bytes. Kept because files
/// were written so; canBeReadBack() tells where the reader disagrees.
int splitOf(const QString& password)
{
    return password.size() / 2;
}

QByteArray header(int padding, const Vector& vector)
{
    QByteArray header(1, static_cast<char>(padding));
    return header.append(reinterpret_cast<const char*>(vector.data()), BLOCK_SIZE);
}

/// A block of \p header and the cipher text of \p data. Throws for want of memory.
QByteArray encrypt(const QByteArray& header, const Vector& vector, const QByteArray& data,
                   const QString& password)
{
    constexpr int LARGEST = std::numeric_limits<int>::max() - HEADER_SIZE - BLOCK_SIZE;
    if (data.size() > LARGEST)
        throw std::bad_alloc();
    const CryptoPP::SecByteBlock key = deriveKey(password.toUtf8(), splitOf(password));
    CryptoPP::CBC_Mode<CryptoPP::AES>::Encryption cipher(key, key.size(), vector.data());

    const int rest = data.size() % BLOCK_SIZE;
    const int whole = data.size() - rest;
    QByteArray block = newBuffer(HEADER_SIZE + data.size() + padCount(data.size()));
    std::copy(header.begin(), header.end(), block.begin());
    auto* target = reinterpret_cast<CryptoPP::byte*>(block.data()) + HEADER_SIZE;
    const auto* source = reinterpret_cast<const CryptoPP::byte*>(data.constData());
    cipher.ProcessData(target, source, static_cast<std::size_t>(whole));
    if (rest > 0) {
        Vector last{};
        std::copy_n(source + whole, rest, last.begin());
        cipher.ProcessData(target + whole, last.data(), last.size());
    }
    return block;
}

/// The whole content of a file. Nothing for one that holds more than its size tells: one that grows
/// meanwhile, or one of the system's.
std::optional<QByteArray> readOfItsSize(const QString& path)
{
    auto content = readWhole(path);
    return content && content->size() == QFileInfo(path).size() ? content : std::nullopt;
}

struct CloseArchive
{
    void operator()(void* archive) const { zipClose(archive, nullptr); }
};

zlib_filefunc64_def functionsOfMinizip()
{
    zlib_filefunc64_def functions{};
    fill_fopen64_filefunc(&functions);
    return functions;
}

/// An archive that is written beside its place and takes it when it is complete.
class NewArchive
{
    Q_DISABLE_COPY(NewArchive)

public:
    explicit NewArchive(const QString& path)
        : m_file(path)
    {
        zlib_filefunc64_def functions = functionsOfMinizip();
        functions.opaque = this;
        functions.zopen64_file = &openFile;
        functions.ztell64_file = &tell;
        m_archive.reset(zipOpen2_64("", APPEND_STATUS_CREATE, nullptr, &functions));
    }

    /// Null when it cannot be written.
    zipFile get() const { return m_archive.get(); }

    /// Puts the complete archive into its place.
    bool commit()
    {
        const bool isClosed = zipClose(m_archive.release(), nullptr) == ZIP_OK;
        return isClosed && !m_hasFailed && m_file.commit();
    }

private:
    static void* openFile(void* archive, const void* /*name*/, int /*mode*/)
    {
        return static_cast<NewArchive*>(archive)->m_file.openStream();
    }

    /// Where the file is written. Notes a failure, which minizip would write into the archive as a position.
    static ZPOS64_T tell(void* archive, void* stream)
    {
        const ZPOS64_T position = functionsOfMinizip().ztell64_file(nullptr, stream);
        static_cast<NewArchive*>(archive)->m_hasFailed |= static_cast<qint64>(position) < 0;
        return position;
    }

    AtomicFile m_file;
    bool m_hasFailed = false;
    std::unique_ptr<void, CloseArchive>
        m_archive; ///< the last member, because closing it writes to the others
};

QString lastPart(const QString& path)
{
    return QFileInfo(path).fileName();
}

/// Writes an archive with an entry for each of \p items, which \p pack adds to it.
template <typename Items, typename Pack>
bool createArchive(const Items& items, const QString& path, const DataFileCreator::GoOn& goOn, Pack&& pack)
{
    if (items.isEmpty() || path.isEmpty())
        return false;
    NewArchive archive(path);
    if (!archive.get())
        return false;
    int position = 0;
    for (auto item = items.begin(); item != items.end(); ++item) {
        if (goOn && !goOn(position++))
            return false;
        if (!pack(archive.get(), item))
            return false;
    }
    return archive.commit();
}

} // namespace

bool DataFileCreator::canBeReadBack(const QString& password)
{
    const QByteArray bytes = password.toUtf8();
    return deriveKey(bytes, splitOf(password)) == deriveKey(bytes, bytes.size() / 2);
}

QByteArray DataFileCreator::encryptData(const QByteArray& data, const QString& password) const
{
    QByteArray block;
    withoutExceptions([&block, &data, &password] {
        const Vector vector = randomVector();
        block = header(padCount(data.size()), vector);
        block = encrypt(block, vector, data, password);
    });
    return block;
}

QByteArray DataFileCreator::encryptFile(const QString& path, const QString& password) const
{
    const auto content = readOfItsSize(path);
    return content ? encryptData(*content, password) : QByteArray();
}

bool DataFileCreator::packData(void* zipFile, const QString& name, const QByteArray& data) const
{
    constexpr int LONGEST_NAME = 0xffff;
    const QByteArray entry = QFile::encodeName(name);
    if (!zipFile || entry.size() > LONGEST_NAME)
        return false;
    // No time and no attributes: the same content makes the same archive.
    const zip_fileinfo nothing{};
    return zipOpenNewFileInZip(zipFile, entry.constData(), &nothing, nullptr, 0, nullptr, 0, nullptr,
                               Z_DEFLATED, Z_DEFAULT_COMPRESSION)
               == ZIP_OK
           && zipWriteInFileInZip(zipFile, data.constData(), static_cast<unsigned>(data.size())) == ZIP_OK
           && zipCloseFileInZip(zipFile) == ZIP_OK;
}

bool DataFileCreator::packFile(void* zipFile, const QString& path) const
{
    if (!zipFile)
        return false;
    const auto content = readOfItsSize(path);
    return content && packData(zipFile, lastPart(path), *content);
}

bool DataFileCreator::createArchivFromData(const QMap<QString, QByteArray>& data, const QString& archivPath,
                                           const QString& password, const GoOn& goOn) const
{
    return createArchive(data, archivPath, goOn, [this, &password](zipFile archive, auto entry) {
        if (password.isEmpty())
            return packData(archive, entry.key(), *entry);
        const QByteArray block = encryptData(*entry, password);
        return !block.isEmpty() && packData(archive, lastPart(entry.key()), block);
    });
}

bool DataFileCreator::createArchivFromFiles(const QStringList& files, const QString& archivPath,
                                            const QString& password, const GoOn& goOn) const
{
    return createArchive(files, archivPath, goOn, [this, &password](zipFile archive, auto file) {
        if (password.isEmpty())
            return packFile(archive, *file);
        const QByteArray block = encryptFile(*file, password);
        return !block.isEmpty() && packData(archive, lastPart(*file), block);
    });
}

} // namespace TEKLUVA
