#include "support/Files.h"

#include "support/Failure.h"
#include "support/Interruption.h"
#include "support/NewFile.h"

#include "globals/DataBlock.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace globalsctl {

namespace {

void openForReading(QFile& file, qint64 largest)
{
    const QString path = file.fileName();
    const QFileInfo info(path);
    if (!info.exists())
        throw Failure(QStringLiteral("File %1 is missing").arg(path));
    // A pipe or a device might never end.
    if (!info.isFile())
        throw Failure(QStringLiteral("%1 is not a regular file").arg(path));
    if (!file.open(QIODevice::ReadOnly))
        throw Failure(QStringLiteral("File %1 cannot be read: %2").arg(path, file.errorString()));
    if (file.size() > largest)
        throw Failure(QStringLiteral("File %1 is too large").arg(path));
}

} // namespace

void requireReadable(const QString& path, qint64 largest)
{
    QFile file(path);
    openForReading(file, largest);
}

QByteArray contentOf(const QString& path, qint64 largest)
{
    QFile file(path);
    openForReading(file, largest);
    const qint64 size = file.size();
    QByteArray content = file.readAll();
    if (content.size() < size)
        throw Failure(QStringLiteral("File %1 cannot be read whole: %2").arg(path, file.errorString()));
    return content;
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
    NewFile file(QFile::encodeName(target));
    if (!file.write(content) || !file.sync())
        throw Failure(QStringLiteral("%1 could not be written: %2").arg(target, file.error()));
    interruption.check(QStringLiteral("%1 was not written").arg(target));
    if (!file.commit())
        throw Failure(QStringLiteral("%1 could not be written: %2").arg(target, file.error()));
}

void requireCompleteBlock(const QByteArray& block, const QByteArray& plain)
{
    if (block.size() < TEKLUVA::DataBlock::HEADER_SIZE + plain.size())
        throw Failure(QStringLiteral("there is not enough memory to encrypt %1 bytes").arg(plain.size()));
}

} // namespace globalsctl
