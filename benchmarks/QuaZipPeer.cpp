#include "QuaZipPeer.h"

#include <quazip.h>
#include <quazipfile.h>

namespace {

QStringList list(const QString& path)
{
    QuaZip archive(path);
    archive.open(QuaZip::mdUnzip);
    return archive.getFileNameList();
}

QByteArray read(const QString& path, const QString& name)
{
    QuaZip archive(path);
    archive.open(QuaZip::mdUnzip);
    archive.setCurrentFile(name);
    QuaZipFile file(&archive);
    file.open(QIODevice::ReadOnly);
    return file.readAll();
}

} // namespace

extern "C" Q_DECL_EXPORT const Bench::QuaZipPeer quaZipPeer;
const Bench::QuaZipPeer quaZipPeer = {&list, &read};
