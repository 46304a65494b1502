#include "commands/Command.h"
#include "support/Archive.h"
#include "support/EntryOpener.h"
#include "support/EntryWork.h"
#include "support/ExitCode.h"
#include "support/Output.h"
#include "support/Password.h"

#include <QCommandLineParser>
#include <QJsonArray>
#include <QJsonObject>

namespace globalsctl {

using namespace TEKLUVA;

namespace {

/// An entry that cannot be read, and why.
struct Fault
{
    QString name;
    QString reason;
};

QList<Fault> faultsOf(const Archive& archive, const QString& password)
{
    EntryWork work(QStringLiteral("Testing"), static_cast<int>(archive.entries().size()));
    EntryOpener opener(password);
    QList<Fault> faults;
    static_cast<void>(archive.reader().visitArchivedFiles([&](const ArchivedFile& entry) {
        const QString name = QString::fromStdString(entry.name);
        if (!work.beginEntry(name))
            return false;
        if (opener.open(entry))
            return true;
        work.printError(QStringLiteral("entry \"%1\" %2").arg(name, opener.fault()));
        faults << Fault{name, opener.fault()};
        return true;
    }));
    work.throwIfInterrupted(
        QStringLiteral("%1 of %2 entries tested").arg(work.count()).arg(archive.entries().size()));
    opener.noteIfUnproven();
    return faults;
}

QString verdict(const Archive& archive, int bad)
{
    const std::size_t count = archive.entries().size();
    const QString entries = count == 1 ? QStringLiteral("1 entry") : QStringLiteral("%1 entries").arg(count);
    return bad == 0 ? QStringLiteral("%1: %2, all good").arg(archive.path(), entries)
                    : QStringLiteral("%1: %2 of %3 bad").arg(archive.path()).arg(bad).arg(entries);
}

QJsonObject objectOf(const Archive& archive, const QList<Fault>& faults)
{
    QJsonArray array;
    for (const Fault& fault : faults) {
        array << QJsonObject{{QStringLiteral("name"), fault.name}, {QStringLiteral("reason"), fault.reason}};
    }
    return {{QStringLiteral("archive"), archive.path()},
            {QStringLiteral("entries"), static_cast<qint64>(archive.entries().size())},
            {QStringLiteral("whole"), archive.isWhole()},
            {QStringLiteral("faults"), array}};
}

} // namespace

int testData(const QCommandLineParser& line)
{
    const PasswordSource source(line, PasswordNeed::Optional);
    const Archive archive(line.positionalArguments().first());
    const QList<Fault> faults = faultsOf(archive, source.read(PasswordUse::Reading));
    const int exitCode = archive.reportDamage();
    if (line.isSet(QStringLiteral("json")))
        printAnswer(objectOf(archive, faults));
    else
        printResult(verdict(archive, static_cast<int>(faults.size())));
    return faults.isEmpty() ? exitCode : Failed;
}

} // namespace globalsctl
