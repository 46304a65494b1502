#include "support/Report.h"

#include "commands/Command.h"
#include "support/ExitCode.h"
#include "support/Failure.h"
#include "support/Files.h"
#include "support/Output.h"

#include "globals/DataFileCreator.h"

#include <QCommandLineParser>
#include <QJsonArray>
#include <QJsonObject>

namespace globalsctl {

namespace {

void write(const ReportParts& parts, const QString& target)
{
    const TEKLUVA::DataFileCreator creator;
    if (!creator.createArchivFromData(parts, target, QString()))
        throw Failure(QStringLiteral("%1 could not be written: %2").arg(target, creator.lastError()));
}

void printParts(const ReportParts& parts)
{
    QList<QStringList> rows = {{QStringLiteral("SIZE"), QStringLiteral("NAME")}};
    for (auto part = parts.begin(); part != parts.end(); ++part)
        rows << QStringList{QString::number(part->size()), printable(part.key())};
    printTable(rows);
}

QJsonObject objectOf(const ReportParts& parts, const QString& target)
{
    QJsonArray array;
    for (auto part = parts.begin(); part != parts.end(); ++part) {
        array << QJsonObject{{QStringLiteral("name"), part.key()},
                             {QStringLiteral("size"), static_cast<qint64>(part->size())}};
    }
    return {{QStringLiteral("archive"), target}, {QStringLiteral("parts"), array}};
}

} // namespace

int writeReport(const QCommandLineParser& line)
{
    const QString target = line.positionalArguments().first();
    if (isStandardOutput(target))
        throw Failure(QStringLiteral("an archive cannot be written to the standard output"));
    requireReplaceable(target, {}, existingOf(line));
    const ReportParts parts = reportParts(line);
    write(parts, target);
    if (line.isSet(QStringLiteral("json")))
        printAnswer(objectOf(parts, target));
    else
        printParts(parts);
    return Done;
}

} // namespace globalsctl
