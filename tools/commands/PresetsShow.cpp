#include "commands/Command.h"
#include "support/ExitCode.h"
#include "support/Output.h"
#include "support/PresetTable.h"

#include <QCommandLineParser>
#include <QJsonArray>
#include <QJsonObject>

namespace globalsctl {

int showPresets(const QCommandLineParser& line)
{
    const QStringList files = line.positionalArguments();
    const PresetFile file = files.isEmpty() ? PresetFile() : PresetFile(files.first());
    if (file.hasFaults())
        printRemarks(file);
    file.readAsApplication();
    const bool onlyChanged = line.isSet(QStringLiteral("changed"));
    const auto presets = presetsAfter(file, onlyChanged ? PresetChoice::Changed : PresetChoice::All);
    if (line.isSet(QStringLiteral("json")))
        printAnswer({{QStringLiteral("presets"), arrayOf(presets)}});
    else
        printTable(rowsOf(presets));
    return file.hasFaults() ? Failed : Done;
}

} // namespace globalsctl
