#include "support/FileIdentity.h"

#include <QFile>

#include <sys/stat.h>

namespace globalsctl::FileIdentity {

namespace {

Identity identityIn(const struct stat& status)
{
    return {status.st_dev, status.st_ino};
}

} // namespace

Identity of(const QString& path)
{
    struct stat status = {};
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? identityIn(status) : Identity();
}

Identity of(const QFile& openFile)
{
    struct stat status = {};
    return ::fstat(openFile.handle(), &status) == 0 ? identityIn(status) : Identity();
}

} // namespace globalsctl::FileIdentity
