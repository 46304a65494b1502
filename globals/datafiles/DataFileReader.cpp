#include "globals/DataFileReader.h"

#include "globals/WholeFile.h"
#include "globals/datafiles/Archive_p.h"
#include "globals/datafiles/DataFileFormat_p.h"
#include "globals/foundation/LockedRecord_p.h"
#include "globals/foundation/WithoutExceptions_p.h"
#include "globals/logs/ActiveLog_p.h"
#include "globals/system/Buffer_p.h"

#include <cryptopp/aes.h>

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <stdexcept>

namespace TEKLUVA {

using namespace DataFileFormat;

namespace {

/// Throws for a block that cannot be decrypted.
QByteArray decryptBlock(const QByteArray& block, const QByteArray& password)
{
    // In the words of Crypto++'s own filter, which those who search logs know.
    if (block.size() >= HEADER_SIZE && (block.size() - HEADER_SIZE) % BLOCK_SIZE != 0)
        throw CryptoPP::InvalidCiphertext(
            "StreamTransformationFilter: ciphertext length is not a multiple of block size");
    if (const char* fault = faultOf(block))
        throw std::length_error(fault);

    const auto* bytes = reinterpret_cast<const CryptoPP::byte*>(block.constData());
    const CryptoPP::SecByteBlock key = deriveKey(password, password.size() / 2);
    const CryptoPP::AES::Decryption cipher(key, key.size());
    const auto size = block.size() - HEADER_SIZE;
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

/// At most \p count bytes; none when they cannot be unpacked.
QByteArray beginningOf(Archive& archive, const ArchiveEntry& entry, int count)
{
    auto bytes = allocate(std::min(entry.size, quint64(std::max(count, 0))));
    if (!bytes)
        return {};
    const auto result = archive.unpack(entry, *bytes, Archive::Checksum::Ignored);
    return result == Archive::UnpackResult::Whole ? *bytes : QByteArray();
}

} // namespace

class GLOBALS_NO_EXPORT DataFileReader::Private : public LockedRecord
{
public:
    Private(const QString& path, const QString& passwordText)
        : place(System::nativePath(path))
        , fileName(System::encodedName(path))
        , password(passwordText.toUtf8())
    {
    }

    /// Runs \p operation; what it throws is a failure, logged, with an empty result.
    template <typename Operation>
    auto run(Operation&& operation)
    {
        return withoutExceptions(operation, [this](const char* what) { fail(caughtMessage(what)); });
    }

    void setError(const QString& text) { set(error, text); }

    void fail(const std::string& message)
    {
        setError(QString::fromStdString(message));
        logError(message);
    }

    /// False and logged when the file is no zip archive.
    bool isOpen(const Archive& archive);
    /// False and logged for a damaged archive.
    bool forEachEntry(Archive& archive, const std::function<bool(const ArchiveEntry&)>& visit);
    /// Unpacks \p entry, which is called \p name. Nothing, and logged, on failure.
    std::optional<QByteArray> unpack(Archive& archive, const std::string& name, const ArchiveEntry& entry,
                                     Archive::Checksum checksum);
    /// Unpacks \p entry, holds it against its checksum and decrypts it. Nothing, and logged, on failure.
    std::optional<QByteArray> readChecked(Archive& archive, const std::string& name,
                                          const ArchiveEntry& entry);
    /// The decrypted content of the entry \p name. Nothing, and logged, when it cannot be read.
    std::optional<QByteArray> contentOf(Archive& archive, const std::string& name);
    /// Empty, and logged, for a block that cannot be decrypted.
    QByteArray decrypt(const QByteArray& block, const QByteArray& with);
    /// \p content itself where there is no password.
    QByteArray decrypted(const QByteArray& content)
    {
        return password.isEmpty() ? content : decrypt(content, password);
    }

    const System::Path place;
    const QByteArray fileName; ///< in the local 8-bit encoding, or UTF-8 on Windows
    const QByteArray password; ///< UTF-8
    KnownArchive known;
    QString error;
};

bool DataFileReader::Private::isOpen(const Archive& archive)
{
    if (archive.isOpen())
        return true;
    fail("The archiv " + fileName.toStdString()
         + " could not be opened. Please check whether the file exists.");
    return false;
}

bool DataFileReader::Private::forEachEntry(Archive& archive,
                                           const std::function<bool(const ArchiveEntry&)>& visit)
{
    const Archive::WalkResult result = archive.forEachEntry(visit);
    const std::string file = fileName.toStdString();
    if (result == Archive::WalkResult::NoFirstEntry)
        fail("The archiv " + file + " seems to be empty. Could not go to first file.");
    if (result == Archive::WalkResult::Damaged) {
        fail("Could not get the info of the current file in the archiv " + file
             + ". Proberbly the archiv is currupted.");
    }
    return result == Archive::WalkResult::Whole;
}

std::optional<QByteArray> DataFileReader::Private::unpack(Archive& archive, const std::string& name,
                                                          const ArchiveEntry& entry,
                                                          Archive::Checksum checksum)
{
    const std::string file = fileName.toStdString();
    auto content = allocate(entry.size);
    if (!content) {
        fail("Could not allocate enough memory to read the file " + name + " from archiv " + file
             + ". The file needs to be read piece by piece.");
        return std::nullopt;
    }
    switch (archive.unpack(entry, *content, checksum)) {
    case Archive::UnpackResult::Whole:
        return content;
    case Archive::UnpackResult::CannotOpen:
        fail("The file " + name + " from archiv " + file
             + " couldn't be opened. Maybe the password is wrong.");
        break;
    case Archive::UnpackResult::Damaged:
        fail("The " + name + " from archiv " + file + " couldn't be read correct.");
        break;
    }
    return std::nullopt;
}

std::optional<QByteArray> DataFileReader::Private::readChecked(Archive& archive, const std::string& name,
                                                               const ArchiveEntry& entry)
{
    return run([&]() -> std::optional<QByteArray> {
        auto content = unpack(archive, name, entry, Archive::Checksum::Checked);
        if (!content || content->isEmpty() || password.isEmpty())
            return content;
        return decryptBlock(*content, password);
    });
}

std::optional<QByteArray> DataFileReader::Private::contentOf(Archive& archive, const std::string& name)
{
    const auto entry = archive.find(name);
    if (!entry) {
        fail("Could not locate " + name + " in the archiv " + fileName.toStdString() + ".");
        return std::nullopt;
    }
    const auto content = unpack(archive, name, *entry, Archive::Checksum::Ignored);
    return content ? std::make_optional(decrypted(*content)) : std::nullopt;
}

QByteArray DataFileReader::Private::decrypt(const QByteArray& block, const QByteArray& with)
{
    if (block.isEmpty())
        return {};
    return run([&block, &with] { return decryptBlock(block, with); });
}

DataFileReader::DataFileReader(const QString& filename, const QString& password)
    : d(std::make_unique<Private>(filename, password))
{
}

DataFileReader::~DataFileReader() = default;

QString DataFileReader::getFilename() const
{
    return System::decodedName(d->fileName);
}

bool DataFileReader::isArchiv() const
{
    d->setError(QString());
    return d->run([this] { return Archive(d->place, d->known).isOpen(); });
}

QByteArray DataFileReader::getFileContent() const
{
    return d->run([this]() -> QByteArray {
        if (isArchiv()) {
            d->setError(getFilename() + QLatin1String(" is an archive"));
            return {};
        }
        QString reason;
        const auto content = readWhole(getFilename(), LARGEST_WHOLE_FILE, &reason);
        if (content)
            return d->decrypted(*content);
        d->setError(QStringLiteral("%1: %2").arg(getFilename(), reason));
        return {};
    });
}

std::vector<std::string> DataFileReader::getListOfArchivedFiles() const
{
    return d->run([this]() -> std::vector<std::string> {
        d->setError(QString());
        Archive archive(d->place, d->known);
        if (!d->isOpen(archive))
            return {};
        std::vector<std::string> names;
        const bool isWhole = d->forEachEntry(archive, [&names](const ArchiveEntry& entry) {
            names.emplace_back(knownName(entry));
            return true;
        });
        return isWhole ? names : std::vector<std::string>();
    });
}

QByteArray DataFileReader::getContentOfArchivedFile(const std::string& name) const
{
    return d->run([this, &name]() -> QByteArray {
        d->setError(QString());
        Archive archive(d->place, d->known);
        if (!d->isOpen(archive))
            return {};
        return d->contentOf(archive, name).value_or(QByteArray());
    });
}

QByteArray DataFileReader::getContentOfArchivedFile(const char* name) const
{
    return d->run([this, name] { return getContentOfArchivedFile(std::string(name)); });
}

QByteArray DataFileReader::getContentOfArchivedFile(const QString& name) const
{
    return d->run(
        [this, &name] { return getContentOfArchivedFile(System::encodedName(name).toStdString()); });
}

QMap<QString, QByteArray> DataFileReader::getContentsOfArchivedFiles(const QStringList& names) const
{
    using Contents = QMap<QString, QByteArray>;
    return d->run([this, &names]() -> Contents {
        d->setError(QString());
        Archive archive(d->place, d->known);
        if (!d->isOpen(archive))
            return {};
        Contents contents;
        for (const QString& name : names) {
            if (const auto content = d->contentOf(archive, System::encodedName(name).toStdString()))
                contents.insert(name, *content);
        }
        return contents;
    });
}

bool DataFileReader::visitArchivedFiles(const std::function<bool(const ArchivedFile&)>& visit) const
{
    d->setError(QString());
    Archive archive(d->place, d->known);
    if (!d->isOpen(archive))
        return false;
    return d->forEachEntry(archive, [this, &archive, &visit](const ArchiveEntry& entry) {
        const std::string name(entry.name);
        const auto read = [this, &archive, &name, &entry] { return d->readChecked(archive, name, entry); };
        const auto begin = [&archive, &entry](int count) { return beginningOf(archive, entry, count); };
        return visit({name, entry.size, read, begin});
    });
}

QByteArray DataFileReader::decryptData(const QByteArray& data, const QString& password) const
{
    d->setError(QString());
    return d->run([this, &data, &password] { return d->decrypt(data, password.toUtf8()); });
}

QByteArray DataFileReader::decryptData(const QByteArray& data) const
{
    d->setError(QString());
    return d->decrypt(data, d->password);
}

QString DataFileReader::lastError() const
{
    return d->get(d->error);
}

} // namespace TEKLUVA
