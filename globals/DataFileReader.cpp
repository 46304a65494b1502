#include "globals/DataFileReader.h"

#include "globals/DataFileFormat_p.h"

#include <cryptopp/aes.h>
#include <cryptopp/filters.h>
#include <cryptopp/modes.h>
#include <unzip.h>

#include <QFile>
#include <QFileInfo>

#include <array>
#include <limits>
#include <memory>
#include <optional>
#include <stdexcept>

namespace TEKLUVA {

using namespace DataFileFormat;

namespace {

struct CloseArchive
{
    void operator()(void* archive) const { unzClose(archive); }
};
using Archive = std::unique_ptr<void, CloseArchive>;

struct CloseEntry
{
    void operator()(void* archive) const { unzCloseCurrentFile(archive); }
};
using OpenEntry = std::unique_ptr<void, CloseEntry>;

/// A pipe or a device is no data file, and opening or reading one might never end.
bool isPlainFile(const QByteArray& fileName)
{
    return QFileInfo(QFile::decodeName(fileName)).isFile();
}

/// Null when the file is no zip archive.
Archive openArchive(const QByteArray& fileName)
{
    return Archive(isPlainFile(fileName) ? unzOpen(fileName.constData()) : nullptr);
}

/// Null when the current entry cannot be opened.
OpenEntry openCurrentEntry(const Archive& archive)
{
    return OpenEntry(unzOpenCurrentFile(archive.get()) == UNZ_OK ? archive.get() : nullptr);
}

/// How many entries the archive says it has.
ZPOS64_T entryCount(const Archive& archive)
{
    unz_global_info64 info{};
    unzGetGlobalInfo64(archive.get(), &info);
    return info.number_entry;
}

struct EntryInfo
{
    std::string name;
    ZPOS64_T size;
};

/// Nothing when the current entry's header cannot be read.
std::optional<EntryInfo> currentEntry(const Archive& archive)
{
    // minizip does not end a name that fills its buffer, so the buffer has one zero byte more than it is
    // told.
    constexpr uLong LONGEST_NAME = 256;
    std::array<char, LONGEST_NAME + 1> name{};
    unz_file_info64 info{};
    const int result =
        unzGetCurrentFileInfo64(archive.get(), &info, name.data(), LONGEST_NAME, nullptr, 0, nullptr, 0);
    if (result != UNZ_OK)
        return std::nullopt;
    return EntryInfo{name.data(), info.uncompressed_size};
}

/// Makes the entry \p name the current one. Not unzLocateFile(), which reads past its buffer at a name of 256
/// bytes or more somewhere in the archive.
bool locate(const Archive& archive, const std::string& name)
{
    constexpr int PLATFORM_CASE_SENSITIVITY = 0;
    for (int result = unzGoToFirstFile(archive.get()); result == UNZ_OK;
         result = unzGoToNextFile(archive.get())) {
        const auto entry = currentEntry(archive);
        if (!entry)
            return false;
        if (unzStringFileNameCompare(entry->name.c_str(), name.c_str(), PLATFORM_CASE_SENSITIVITY) == 0)
            return true;
    }
    return false;
}

/// A buffer of \p size bytes, which is what an archive claims; nothing when it cannot be had.
std::optional<QByteArray> allocate(ZPOS64_T size)
{
    // QByteArray keeps a header and an end beside its bytes.
    constexpr ZPOS64_T LARGEST = std::numeric_limits<int>::max() - 64;
    if (size > LARGEST)
        return std::nullopt;
    try {
        return QByteArray(static_cast<int>(size), Qt::Uninitialized);
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
}

/// Throws for a block that cannot be decrypted.
QByteArray decryptBlock(const QByteArray& block, const QByteArray& password)
{
    if (block.size() < HEADER_SIZE)
        throw std::length_error("The data block is shorter than its header.");
    const int size = block.size() - HEADER_SIZE;
    const int padding = static_cast<unsigned char>(block[0]);
    if (padding > MAX_PAD_COUNT || padding > size)
        throw std::out_of_range("The data block has an invalid pad count.");

    const auto* bytes = reinterpret_cast<const CryptoPP::byte*>(block.constData());
    const CryptoPP::SecByteBlock key = deriveKey(password, password.size() / 2);
    CryptoPP::CBC_Mode<CryptoPP::AES>::Decryption cipher(key, key.size(), bytes + PAD_COUNT_SIZE);
    QByteArray plain(size, Qt::Uninitialized);
    auto* sink = new CryptoPP::ArraySink(reinterpret_cast<CryptoPP::byte*>(plain.data()),
                                         static_cast<std::size_t>(size));
    // The filters own one another. Zero padding: the cipher strips nothing, the pad count says what goes.
    auto* filter = new CryptoPP::StreamTransformationFilter(cipher, sink,
                                                            CryptoPP::BlockPaddingSchemeDef::ZEROS_PADDING);
    const CryptoPP::StringSource source(bytes + HEADER_SIZE, static_cast<std::size_t>(size), true, filter);
    plain.truncate(size - padding);
    return plain;
}

QByteArray decryptOrLog(const QByteArray& block, const QByteArray& password)
{
    if (block.isEmpty())
        return {};
    return withoutExceptions([&block, &password] { return decryptBlock(block, password); });
}

} // namespace

DataFileReader::DataFileReader(const QString& filename, const QString& password)
    : m_fileName(QFile::encodeName(filename))
    , m_password(password.toUtf8())
{
}

QString DataFileReader::getFilename() const
{
    return QFile::decodeName(m_fileName);
}

bool DataFileReader::isArchiv() const
{
    return openArchive(m_fileName) != nullptr;
}

QByteArray DataFileReader::getFileContent() const
{
    return withoutExceptions([this]() -> QByteArray {
        if (isArchiv() || !isPlainFile(m_fileName))
            return {};
        QFile file(getFilename());
        if (!file.open(QIODevice::ReadOnly))
            return {};
        return decrypted(file.readAll());
    });
}

std::vector<std::string> DataFileReader::getListOfArchivedFiles() const
{
    return withoutExceptions([this]() -> std::vector<std::string> {
        const std::string file = m_fileName.toStdString();
        const Archive archive = openArchive(m_fileName);
        if (!archive) {
            logError("The archiv " + file + " could not be opened. Please check whether the file exists.");
            return {};
        }
        int result = unzGoToFirstFile(archive.get());
        if (result != UNZ_OK) {
            logError("The archiv " + file + " seems to be empty. Could not go to first file.");
            return {};
        }
        // minizip takes the largest count of a plain archive, 65535, for unknown, and would walk off its end.
        const ZPOS64_T count = entryCount(archive);
        std::vector<std::string> names;
        while (result == UNZ_OK) {
            const auto entry = currentEntry(archive);
            if (!entry)
                break;
            names.push_back(entry->name);
            result = names.size() == count ? UNZ_END_OF_LIST_OF_FILE : unzGoToNextFile(archive.get());
        }
        // minizip reads the next header already when it steps on, so a damaged one may end either call.
        if (result != UNZ_END_OF_LIST_OF_FILE) {
            logError("Could not get the info of the current file in the archiv " + file
                     + ". Proberbly the archiv is currupted.");
            return {};
        }
        return names;
    });
}

QByteArray DataFileReader::getContentOfArchivedFile(const std::string& name) const
{
    return withoutExceptions([this, &name]() -> QByteArray {
        const std::string file = m_fileName.toStdString();
        const Archive archive = openArchive(m_fileName);
        if (!archive) {
            logError("The archiv " + file + " could not be opened. Please check whether the file exists.");
            return {};
        }
        if (!locate(archive, name)) {
            logError("Could not locate " + name + " in the archiv " + file + ".");
            return {};
        }
        const auto entry = currentEntry(archive);
        if (!entry) {
            logError("Could not get the info of the current file in the archiv " + file
                     + ". Proberbly the archiv is currupted.");
            return {};
        }
        auto content = allocate(entry->size);
        if (!content) {
            logError("Could not allocate enough memory to read the file " + name + " from archiv " + file
                     + ". The file needs to be read piece by piece.");
            return {};
        }
        const OpenEntry open = openCurrentEntry(archive);
        if (!open) {
            logError("The file " + name + " from archiv " + file
                     + " couldn't be opened. Maybe the password is wrong.");
            return {};
        }
        if (unzReadCurrentFile(open.get(), content->data(), static_cast<unsigned>(content->size()))
            != content->size()) {
            logError("The " + name + " from archiv " + file + " couldn't be read correct.");
            return {};
        }
        return decrypted(*content);
    });
}

QByteArray DataFileReader::decryptData(const QByteArray& data, const QString& password) const
{
    return decryptOrLog(data, password.toUtf8());
}

QByteArray DataFileReader::decryptData(const QByteArray& data) const
{
    return decryptOrLog(data, m_password);
}

QByteArray DataFileReader::decrypted(const QByteArray& content) const
{
    return m_password.isEmpty() ? content : decryptData(content);
}

} // namespace TEKLUVA
