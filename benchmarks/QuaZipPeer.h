#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace Bench {

/// What the module of QuaZip offers, under the name "quaZipPeer".
struct QuaZipPeer
{
    QStringList (*list)(const QString& path);
    QByteArray (*read)(const QString& path, const QString& name);
};

} // namespace Bench
