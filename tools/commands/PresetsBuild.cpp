#include "commands/Command.h"
#include "support/Failure.h"
#include "support/Files.h"
#include "support/PresetFile.h"

#include <QCommandLineParser>

namespace globalsctl {

using namespace TEKLUVA;

int buildPresets(const QCommandLineParser& line)
{
    const QString path = line.positionalArguments().value(0);
    const QString target = line.positionalArguments().value(1);
    requireReplaceable(target, {path}, existingOf(line));
    const PresetFile file(path);
    printRemarks(file);
    if (file.hasFaults())
        return Failed;
    if (!file.isPlain())
        throw Failure(QStringLiteral("File %1 is protected already").arg(path));
    const QByteArray block = PresetManager::protectedContent(file.bytes());
    requireCompleteBlock(block, file.bytes());
    writeTarget(target, block);
    return Done;
}

} // namespace globalsctl
