#include "globals/DataFileReader.h"

#include "globals/WholeFile.h"
#include "globals/datafiles/DataFileFormat_p.h"
#include "globals/datafiles/ReadAhead_p.h"
#include "globals/system/Buffer_p.h"

#include <cryptopp/aes.h>
#include <unzip.h>

#include <QFile>

#include <array>
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

/// Null when the file is no zip archive.
Archive openArchive(const QByteArray& fileName)
{
    zlib_filefunc64_def functions = readAheadFunctions();
    return Archive(unzOpen2_64(fileName.constData(), &functions));
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
    std::string name; ///< cut at 256 bytes
    ZPOS64_T size;
    uLong nameLength; ///< of the whole name
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
    return EntryInfo{name.data(), info.uncompressed_size, info.size_filename};
}

/// The name of the current entry, \p entry, up to its last byte.
std::string wholeName(const Archive& archive, const EntryInfo& entry)
{
    std::string name(entry.nameLength, '\0');
    unzGetCurrentFileInfo64(archive.get(), nullptr, name.data(), entry.nameLength, nullptr, 0, nullptr, 0);
    return name.substr(0, name.find('\0')); // a zero byte ends it, here as everywhere
}

enum class WalkResult {
    Whole, ///< or until it was stopped
    NoFirstEntry,
    Damaged,
};

/// Makes one entry after the other the current one, until \p visit returns false for it.
template <typename Visit>
WalkResult walk(const Archive& archive, Visit&& visit)
{
    if (unzGoToFirstFile(archive.get()) != UNZ_OK)
        return WalkResult::NoFirstEntry;
    // minizip takes the largest count of a plain archive, 65535, for unknown, and would walk off its end.
    const ZPOS64_T count = entryCount(archive);
    int result = UNZ_OK;
    for (ZPOS64_T seen = 1; result == UNZ_OK; ++seen) {
        const auto entry = currentEntry(archive);
        if (!entry)
            return WalkResult::Damaged;
        if (!visit(*entry))
            return WalkResult::Whole;
        result = seen == count ? UNZ_END_OF_LIST_OF_FILE : unzGoToNextFile(archive.get());
    }
    return result == UNZ_END_OF_LIST_OF_FILE ? WalkResult::Whole : WalkResult::Damaged;
}

/// Makes the entry \p name the current one. Not unzLocateFile(), which reads past its buffer at a name of 256
/// bytes or more somewhere in the archive.
std::optional<EntryInfo> locate(const Archive& archive, const std::string& name)
{
    constexpr int PLATFORM_CASE_SENSITIVITY = 0;
    std::optional<EntryInfo> found;
    walk(archive, [&found, &name](const EntryInfo& entry) {
        if (unzStringFileNameCompare(entry.name.c_str(), name.c_str(), PLATFORM_CASE_SENSITIVITY) == 0)
            found = entry;
        return !found;
    });
    return found;
}

/// Null and logged when the file is no zip archive.
Archive openOrLog(const QByteArray& fileName)
{
    Archive archive = openArchive(fileName);
    if (!archive) {
        logError("The archiv " + fileName.toStdString()
                 + " could not be opened. Please check whether the file exists.");
    }
    return archive;
}

/// False and logged for a damaged archive.
template <typename Visit>
bool forEachEntry(const Archive& archive, const QByteArray& fileName, Visit&& visit)
{
    const WalkResult result = walk(archive, visit);
    const std::string file = fileName.toStdString();
    if (result == WalkResult::NoFirstEntry)
        logError("The archiv " + file + " seems to be empty. Could not go to first file.");
    if (result == WalkResult::Damaged) {
        logError("Could not get the info of the current file in the archiv " + file
                 + ". Proberbly the archiv is currupted.");
    }
    return result == WalkResult::Whole;
}

enum class Checksum {
    Ignored,
    Checked,
};

/// Unpacks the current entry, of which the archive claims a \p size. Nothing, and logged, on failure.
std::optional<QByteArray> unpackOrLog(const Archive& archive, const QByteArray& fileName,
                                      const std::string& name, ZPOS64_T size, Checksum checksum)
{
    const std::string file = fileName.toStdString();
    auto content = allocate(size);
    if (!content) {
        logError("Could not allocate enough memory to read the file " + name + " from archiv " + file
                 + ". The file needs to be read piece by piece.");
        return std::nullopt;
    }
    OpenEntry entry = openCurrentEntry(archive);
    if (!entry) {
        logError("The file " + name + " from archiv " + file
                 + " couldn't be opened. Maybe the password is wrong.");
        return std::nullopt;
    }
    const int read = unzReadCurrentFile(entry.get(), content->data(), static_cast<unsigned>(content->size()));
    const bool isWhole = read == content->size()
                         && (checksum == Checksum::Ignored || unzCloseCurrentFile(entry.release()) == UNZ_OK);
    if (!isWhole) {
        logError("The " + name + " from archiv " + file + " couldn't be read correct.");
        return std::nullopt;
    }
    return content;
}

/// Throws for a block that cannot be decrypted.
QByteArray decryptBlock(const QByteArray& block, const QByteArray& password)
{
    if (const char* fault = faultOf(block))
        throw std::length_error(fault);

    const auto* bytes = reinterpret_cast<const CryptoPP::byte*>(block.constData());
    const CryptoPP::SecByteBlock key = deriveKey(password, password.size() / 2);
    const CryptoPP::AES::Decryption cipher(key, key.size());
    const int size = block.size() - HEADER_SIZE;
    QByteArray plain = newBuffer(size);
    // CBC: to each decrypted block the cipher text before it is added, and before the first one lies the
    // initialisation vector. Not CBC_Mode, which goes through the blocks backwards, against the processor's
    // prefetching.
    cipher.AdvancedProcessBlocks(
        bytes + HEADER_SIZE, bytes + PAD_COUNT_SIZE, reinterpret_cast<CryptoPP::byte*>(plain.data()),
        static_cast<std::size_t>(size), CryptoPP::BlockTransformation::BT_AllowParallel);
    plain.truncate(size - block[0]);
    return plain;
}

QByteArray decryptOrLog(const QByteArray& block, const QByteArray& password)
{
    if (block.isEmpty())
        return {};
    return withoutExceptions([&block, &password] { return decryptBlock(block, password); });
}

} // namespace

class DataFileReader::Private
{
public:
    /// \p content itself where there is no password.
    QByteArray decrypted(const QByteArray& content) const
    {
        return password.isEmpty() ? content : decryptOrLog(content, password);
    }

    const QByteArray fileName; ///< in the local 8-bit encoding of file names
    const QByteArray password; ///< UTF-8
};

DataFileReader::DataFileReader(const QString& filename, const QString& password)
    : d(new Private{QFile::encodeName(filename), password.toUtf8()})
{
}

DataFileReader::~DataFileReader() = default;

QString DataFileReader::getFilename() const
{
    return QFile::decodeName(d->fileName);
}

bool DataFileReader::isArchiv() const
{
    return openArchive(d->fileName) != nullptr;
}

QByteArray DataFileReader::getFileContent() const
{
    return withoutExceptions([this]() -> QByteArray {
        if (isArchiv())
            return {};
        const auto content = readWhole(getFilename());
        return content ? d->decrypted(*content) : QByteArray();
    });
}

std::vector<std::string> DataFileReader::getListOfArchivedFiles() const
{
    return withoutExceptions([this]() -> std::vector<std::string> {
        const Archive archive = openOrLog(d->fileName);
        if (!archive)
            return {};
        std::vector<std::string> names;
        const bool isWhole = forEachEntry(archive, d->fileName, [&names](const EntryInfo& entry) {
            names.push_back(entry.name);
            return true;
        });
        return isWhole ? names : std::vector<std::string>();
    });
}

QByteArray DataFileReader::getContentOfArchivedFile(const std::string& name) const
{
    return withoutExceptions([this, &name]() -> QByteArray {
        const Archive archive = openOrLog(d->fileName);
        if (!archive)
            return {};
        const auto entry = locate(archive, name);
        if (!entry) {
            logError("Could not locate " + name + " in the archiv " + d->fileName.toStdString() + ".");
            return {};
        }
        const auto content = unpackOrLog(archive, d->fileName, name, entry->size, Checksum::Ignored);
        return content ? d->decrypted(*content) : QByteArray();
    });
}

bool DataFileReader::visitArchivedFiles(const std::function<bool(const ArchivedFile&)>& visit) const
{
    const Archive archive = openOrLog(d->fileName);
    return archive && forEachEntry(archive, d->fileName, [this, &archive, &visit](const EntryInfo& entry) {
               const std::string name = wholeName(archive, entry);
               const auto read = [this, &archive, &name, &entry] {
                   return withoutExceptions([&]() -> std::optional<QByteArray> {
                       auto content = unpackOrLog(archive, d->fileName, name, entry.size, Checksum::Checked);
                       if (!content || content->isEmpty() || d->password.isEmpty())
                           return content;
                       return decryptBlock(*content, d->password);
                   });
               };
               return visit({name, entry.size, read});
           });
}

QByteArray DataFileReader::decryptData(const QByteArray& data, const QString& password) const
{
    return decryptOrLog(data, password.toUtf8());
}

QByteArray DataFileReader::decryptData(const QByteArray& data) const
{
    return decryptOrLog(data, d->password);
}

} // namespace TEKLUVA
