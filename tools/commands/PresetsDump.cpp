#include "commands/Command.h"
#include "support/ExitCode.h"
#include "support/Output.h"
#include "support/PresetFile.h"

#include <QCommandLineParser>

namespace globalsctl {

int dumpPresets(const QCommandLineParser& line)
{
    const QByteArray text = PresetFile(line.positionalArguments().first()).text().toUtf8();
    printBytes(text);
    return Done;
}

} // namespace globalsctl
