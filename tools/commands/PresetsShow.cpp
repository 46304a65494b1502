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
    const QString path = line.positionalArguments().value(0);
    const PresetFile file = path.isEmpty() ? PresetFile() : PresetFile(path);
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
