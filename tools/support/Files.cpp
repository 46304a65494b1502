#include "support/Files.h"

#include "support/Console.h"
#include "support/Failure.h"

#include "globals/AtomicFile.h"
#include "globals/DataBlock.h"
#include "globals/WholeFile.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <optional>
#include <utility>

namespace globalsctl {

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
    requireReadable(path, largest);
    QString reason;
    std::optional<QByteArray> content = TEKLUVA::readWhole(path, largest, &reason);
    if (!content)
        throw Failure(QStringLiteral("File %1 cannot be read whole: %2").arg(path, reason));
    return std::move(*content);
}

void requireReplaceable(const QString& target, const QStringList& sources)
{
    const QFileInfo info(target);
    if (!info.exists())
        return;
    if (!info.isFile())
        throw Failure(QStringLiteral("%1 is not a regular file").arg(target));
    const QString place = info.canonicalFilePath();
    const auto isTarget = [&place](const QString& path) {
        return QFileInfo(path).canonicalFilePath() == place;
    };
    if (std::any_of(sources.begin(), sources.end(), isTarget))
        throw Failure(QStringLiteral("%1 cannot be read and replaced at once").arg(target));
}

void writeTarget(const QString& target, const QByteArray& content)
{
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
