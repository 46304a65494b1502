#include "globals/DataFileCreator.h"

#include "globals/WholeFile.h"
#include "globals/datafiles/DataFileFormat_p.h"
#include "globals/datafiles/NewArchive_p.h"
#include "globals/foundation/WithoutExceptions_p.h"
#include "globals/logs/ActiveLog_p.h"
#include "globals/system/Buffer_p.h"

#include <cryptopp/aes.h>
#include <cryptopp/modes.h>
#include <cryptopp/osrng.h>

#include <QFileInfo>
#include <QMutexLocker>
#include <QSet>

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
int padCount(QByteArray::size_type size)
{
    return static_cast<int>((BLOCK_SIZE - size % BLOCK_SIZE) % BLOCK_SIZE);
}

/// Where the key derivation cuts the password: half its characters, but counted in bytes. Kept because files
/// were written so; canBeReadBack() tells where the reader disagrees.
QByteArray::size_type splitOf(const QString& password)
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

    const auto rest = data.size() % BLOCK_SIZE;
    const auto whole = data.size() - rest;
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
std::optional<QByteArray> readOfItsSize(const QString& path, QString* error = nullptr)
{
    auto content = readWhole(path, LARGEST_WHOLE_FILE, error);
    if (!content || content->size() == QFileInfo(path).size())
        return content;
    if (error)
        *error = QStringLiteral("has another size than it tells");
    return std::nullopt;
}

QString lastPart(const QString& path)
{
    return QFileInfo(path).fileName();
}

/// Nothing for a \p block that does not hold all of \p data: for want of memory it may be the header alone.
std::optional<QByteArray> wholeBlock(const QByteArray& block, const QByteArray& data)
{
    const bool isWhole = block.size() >= HEADER_SIZE + data.size();
    return isWhole ? std::make_optional(block) : std::nullopt;
}

/// An entry in the making: what it is called and what it holds; nothing when that cannot be had.
struct Entry
{
    QString name;
    std::optional<QByteArray> content;
};

/// Warns of names that stand twice in an archive: by name only the first of them can be read.
class NameCheck
{
public:
    explicit NameCheck(QString archive)
        : m_archive(std::move(archive))
    {
    }

    void add(const QString& name)
    {
        if (m_names.contains(name))
            logWarning(
                QStringLiteral("The archive %1 gets several entries of the name %2.").arg(m_archive, name));
        m_names.insert(name);
    }

private:
    const QString m_archive;
    QSet<QString> m_names;
};

/// Writes an archive with an entry for each of \p items, which \p read makes of it. The reason of a failure;
/// empty for none.
template <typename Items, typename Read>
QString createArchive(const Items& items, const QString& path, const DataFileCreator::GoOn& goOn, Read&& read)
{
    if (items.isEmpty())
        return QStringLiteral("There is nothing to pack.");
    if (path.isEmpty())
        return QStringLiteral("The archive has no name.");
    if (items.size() > NewArchive::MOST_ENTRIES)
        return QStringLiteral("%1: more than %2 entries").arg(path).arg(NewArchive::MOST_ENTRIES);
    NewArchive archive(path);
    NameCheck names(path);
    if (!archive.isOpen())
        return QStringLiteral("%1: %2").arg(path, archive.error());
    int position = 0;
    for (auto item = items.begin(); item != items.end(); ++item) {
        if (goOn && !goOn(position++))
            return QStringLiteral("%1: stopped").arg(path);
        const Entry entry = read(item);
        if (!entry.content)
            return QStringLiteral("%1: %2 could not be read or encrypted").arg(path, entry.name);
        names.add(entry.name);
        if (!archive.pack(entry.name, *entry.content))
            return QStringLiteral("%1: %2 could not be packed: %3").arg(path, entry.name, archive.error());
    }
    return archive.commit() ? QString() : QStringLiteral("%1: %2").arg(path, archive.error());
}

} // namespace

class GLOBALS_NO_EXPORT DataFileCreator::Private
{
public:
    /// Keeps the reason of a failure, empty for none, and returns whether there was none.
    bool note(const QString& reason)
    {
        const QMutexLocker lock(&mutex);
        error = reason;
        return reason.isEmpty();
    }

    /// Runs \p operation, which returns the reason of its failure, and notes that, or what it throws.
    template <typename Operation>
    bool run(Operation&& operation)
    {
        QString reason;
        bool hasEnded = false;
        const auto noteEnd = [&] {
            reason = operation();
            hasEnded = true;
        };
        withoutExceptions(
            noteEnd, [&reason](const char* what) { reason = QString::fromStdString(caughtMessage(what)); });
        const bool isDone = note(reason);
        return isDone && hasEnded; // there may have been no memory for the reason
    }

    QMutex mutex;
    QString error;
};

DataFileCreator::DataFileCreator()
    : d(std::make_unique<Private>())
{
}

DataFileCreator::~DataFileCreator() = default;

bool DataFileCreator::canBeReadBack(const QString& password)
{
    const QByteArray bytes = password.toUtf8();
    return deriveKey(bytes, splitOf(password)) == deriveKey(bytes, bytes.size() / 2);
}

QByteArray DataFileCreator::encryptData(const QByteArray& data, const QString& password) const
{
    QByteArray block;
    QString reason;
    const auto report = [&reason](const char* what) {
        const std::string message = caughtMessage(what);
        reason = QString::fromStdString(message);
        logError(message);
    };
    const auto makeBlock = [&block, &data, &password] {
        const Vector vector = randomVector();
        block = header(padCount(data.size()), vector);
        block = encrypt(block, vector, data, password);
    };
    withoutExceptions(makeBlock, report);
    d->note(reason);
    return block;
}

QByteArray DataFileCreator::encryptFile(const QString& path, const QString& password) const
{
    QString reason;
    const auto content = readOfItsSize(path, &reason);
    if (content)
        return encryptData(*content, password);
    d->note(QStringLiteral("%1: %2").arg(path, reason));
    return {};
}

bool DataFileCreator::packData(void* zipFile, const QString& name, const QByteArray& data) const
{
    const bool isPacked = zipFile && packEntry(zipFile, name, data);
    return d->note(isPacked ? QString() : QStringLiteral("%1 could not be packed").arg(name));
}

bool DataFileCreator::packFile(void* zipFile, const QString& path) const
{
    QString reason;
    const auto content = readOfItsSize(path, &reason);
    if (!content)
        return d->note(QStringLiteral("%1: %2").arg(path, reason));
    return packData(zipFile, lastPart(path), *content);
}

bool DataFileCreator::createArchivFromData(const QMap<QString, QByteArray>& data, const QString& archivPath,
                                           const QString& password, const GoOn& goOn) const
{
    const auto read = [this, &password](auto entry) {
        if (password.isEmpty())
            return Entry{entry.key(), *entry};
        const QByteArray block = encryptData(*entry, password);
        return Entry{lastPart(entry.key()), wholeBlock(block, *entry)};
    };
    return d->run([&] { return createArchive(data, archivPath, goOn, read); });
}

bool DataFileCreator::createArchivFromFiles(const QStringList& files, const QString& archivPath,
                                            const QString& password, const GoOn& goOn) const
{
    const auto read = [this, &password](auto file) {
        const auto content = readOfItsSize(*file);
        if (password.isEmpty() || !content)
            return Entry{lastPart(*file), content};
        const QByteArray block = encryptData(*content, password);
        return Entry{lastPart(*file), wholeBlock(block, *content)};
    };
    return d->run([&] { return createArchive(files, archivPath, goOn, read); });
}

QString DataFileCreator::lastError() const
{
    const QMutexLocker lock(&d->mutex);
    return d->error;
}

} // namespace TEKLUVA
