#include "support/Files.h"

#include "support/Console.h"
#include "support/Failure.h"
#include "support/FileSystem.h"
#include "support/Output.h"

#include "globals/AtomicFile.h"
#include "globals/Containment.h"
#include "globals/DataBlock.h"
#include "globals/WholeFile.h"

#include <QCommandLineParser>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <optional>
#include <utility>

namespace globalsctl {

namespace {

constexpr const char* SYSTEM_FOLDERS[] = {"/dev", "/proc"};

/// Whether \p path is a link that belongs to the system: whoever replaced it would harm all programs.
bool isSystemLink(const QFileInfo& path)
{
    if (!path.isSymLink())
        return false;
    const std::filesystem::path folder = FileSystem::nativePath(path.absolutePath());
    return std::any_of(std::begin(SYSTEM_FOLDERS), std::end(SYSTEM_FOLDERS),
                       [&folder](const char* parent) { return TEKLUVA::isWithin(folder, parent); });
}

QByteArray standardInput(qint64 largest)
{
    QFile file;
    openStandardInput(file);
    QByteArray content;
    while (content.size() <= largest) {
        constexpr qint64 PIECE = 1 << 20;
        const QByteArray piece = file.read(PIECE);
        if (piece.isEmpty())
            break;
        content += piece;
    }
    if (file.error() != QFileDevice::NoError)
        throw Failure(QStringLiteral("the standard input cannot be read: %1").arg(file.errorString()));
    if (content.size() > largest)
        throw Failure(QStringLiteral("the standard input is too large"));
    return content;
}

void writeToStandardOutput(const QByteArray& content)
{
    if (isTerminal(StandardStream::Output) && !isReadableText(content))
        throw Failure(QStringLiteral("the result is no text, which a terminal could show"));
    printBytes(content);
}

} // namespace

bool isStandardInput(const QString& path)
{
    return path == QLatin1String("-") || path == QLatin1String("/dev/stdin");
}

bool isStandardOutput(const QString& path)
{
    return path == QLatin1String("-") || path == QLatin1String("/dev/stdout");
}

void openStandardInput(QFile& file)
{
    static bool isTaken = false;
    if (isTaken)
        throw UsageError(QStringLiteral("the standard input can be read only once"));
    isTaken = true;
    if (!file.open(stdin, QIODevice::ReadOnly))
        throw Failure(QStringLiteral("the standard input cannot be read: %1").arg(file.errorString()));
}

void requireReadable(const QString& path, qint64 largest)
{
    const QFileInfo info(path);
    if (!info.exists())
        throw Failure(QStringLiteral("File %1 is missing").arg(path));
    // A pipe or a device might never end.
    if (!info.isFile())
        throw Failure(QStringLiteral("%1 is not a regular file").arg(path));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw Failure(QStringLiteral("File %1 cannot be read: %2").arg(path, file.errorString()));
    if (file.size() > largest)
        throw Failure(QStringLiteral("File %1 is too large").arg(path));
}

QByteArray contentOf(const QString& path, qint64 largest)
{
    if (isStandardInput(path))
        return standardInput(largest);
    requireReadable(path, largest);
    QString reason;
    std::optional<QByteArray> content = TEKLUVA::readWhole(path, largest, &reason);
    if (!content)
        throw Failure(QStringLiteral("File %1 cannot be read whole: %2").arg(path, reason));
    return std::move(*content);
}

Existing existingOf(const QCommandLineParser& line)
{
    return line.isSet(QStringLiteral("force")) ? Existing::Replaced : Existing::Refused;
}

void requireReplaceable(const QString& target, const QStringList& sources, Existing existing)
{
    if (isStandardOutput(target))
        return;
    const QFileInfo info(target);
    if (isSystemLink(info))
        throw Failure(QStringLiteral("%1 is a link of the system").arg(target));
    if (info.exists() && !info.isFile())
        throw Failure(QStringLiteral("%1 is not a regular file").arg(target));
    const QString place = info.canonicalFilePath();
    const auto isTarget = [&place](const QString& path) {
        return QFileInfo(path).canonicalFilePath() == place;
    };
    if (info.exists() && std::any_of(sources.begin(), sources.end(), isTarget))
        throw Failure(QStringLiteral("%1 cannot be read and replaced at once").arg(target));
    const bool isTaken = info.exists() || info.isSymLink(); // a link may lead nowhere
    if (isTaken && existing == Existing::Refused)
        throw Failure(QStringLiteral("%1 exists already; --force replaces it").arg(target));
}

void writeTarget(const QString& target, const QByteArray& content)
{
    if (isStandardOutput(target)) {
        writeToStandardOutput(content);
        return;
    }
    Interruption interruption;
    TEKLUVA::AtomicFile file(target, TEKLUVA::AtomicFile::Link::Replaced);
    const auto require = [&target, &file](bool isDone) {
        if (!isDone)
            throw Failure(QStringLiteral("%1 could not be written: %2").arg(target, file.error()));
    };
    require(file.write(content));
    require(file.sync());
    interruption.check(QStringLiteral("%1 was not written").arg(target));
    require(file.commit());
}

void requireCompleteBlock(const QByteArray& block, const QByteArray& plain)
{
    if (block.size() < TEKLUVA::DataBlock::HEADER_SIZE + plain.size())
        throw Failure(QStringLiteral("there is not enough memory to encrypt %1 bytes").arg(plain.size()));
}

} // namespace globalsctl
