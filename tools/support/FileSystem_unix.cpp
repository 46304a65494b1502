#include "support/FileSystem.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <system_error>

#include <sys/stat.h>

namespace globalsctl::FileSystem {

namespace {

Identity identityIn(const struct stat& status)
{
    return {status.st_dev, status.st_ino};
}

} // namespace

Identity identityOf(const QString& path)
{
    struct stat status = {};
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? identityIn(status) : Identity();
}

Identity identityOf(const QFile& openFile)
{
    struct stat status = {};
    return ::fstat(openFile.handle(), &status) == 0 ? identityIn(status) : Identity();
}

bool isReadableByOthers(const QFile& file)
{
    return file.permissions() & (QFileDevice::ReadGroup | QFileDevice::ReadOther);
}

std::filesystem::path nativePath(const QString& path)
{
    return QFile::encodeName(path).toStdString();
}

QByteArray entryName(const QString& text)
{
    return QFile::encodeName(text);
}

QString textOfEntry(const QByteArray& name)
{
    return QFile::decodeName(name);
}

std::filesystem::path pathOfEntry(const std::string& name)
{
    return name;
}

QString faultOfEntry(const std::string& /*name*/)
{
    return {}; // any bytes are a name
}

bool isWantOfRoom(const std::error_code& reason)
{
    constexpr int CODES[] = {ENOSPC, EDQUOT, EFBIG};
    return std::find(std::begin(CODES), std::end(CODES), reason.value()) != std::end(CODES);
}

} // namespace globalsctl::FileSystem
