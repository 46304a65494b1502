#include "commands/Command.h"
#include "support/Archive.h"
#include "support/EntryWork.h"
#include "support/Extraction.h"
#include "support/Failure.h"
#include "support/Files.h"
#include "support/Output.h"
#include "support/Password.h"

#include <QCommandLineParser>

namespace globalsctl {

using namespace TEKLUVA;

namespace {

/// Throws Failure when entries speak against the password and none for it: nothing is worth writing then.
void requireRightPassword(const Archive& archive, const Selection& selection, const QString& password)
{
    constexpr int ENOUGH = 16;
    EntryOpener opener(password);
    const bool isListed = archive.reader().visitArchivedFiles([&](const ArchivedFile& entry) {
        if (selection.has(entry.name))
            opener.open(entry);
        return opener.rightCount() == 0 && opener.wrongCount() < ENOUGH;
    });
    if (!isListed || opener.rightCount() > 0 || opener.wrongCount() == 0)
        return;
    throw Failure(
        opener.formlessCount() == opener.wrongCount()
            ? QStringLiteral("%1 is not protected; extract it without a password").arg(archive.path())
            : QStringLiteral("%1: wrong password or damaged").arg(archive.path()));
}

/// False when an entry was left out; the others are written.
bool extract(const Archive& archive, const Selection& selection, Extraction& extraction)
{
    EntryWork work(QStringLiteral("Extracting"), selection.count());
    bool isComplete = true;
    const bool isListed = archive.reader().visitArchivedFiles([&](const ArchivedFile& entry) {
        if (!selection.has(entry.name))
            return true;
        const QString name = QString::fromStdString(entry.name);
        if (!work.beginEntry(name))
            return false;
        const QString fault = extraction.extract(entry);
        if (!fault.isEmpty())
            work.printError(QStringLiteral("entry \"%1\" %2").arg(name, fault));
        isComplete = isComplete && fault.isEmpty();
        return !extraction.isDiskFull();
    });
    if (extraction.isDiskFull())
        printError(QStringLiteral("%1 of %2 written").arg(work.count() - 1).arg(selection.count()));
    extraction.opener().noteIfUnproven();
    work.throwIfInterrupted(QStringLiteral("%1 of %2 entries done").arg(work.count()).arg(selection.count()));
    return isComplete && isListed;
}

} // namespace

int extractData(const QCommandLineParser& line)
{
    const PasswordSource source(line, PasswordNeed::Optional);
    const Archive archive(line.positionalArguments().first());
    const QString password = source.read(PasswordUse::Reading);
    const Selection selection(archive, line.positionalArguments().mid(1));
    if (!password.isEmpty())
        requireRightPassword(archive, selection, password);
    Extraction extraction(line.value(QStringLiteral("output")), existingOf(line), password);
    const bool isComplete = extract(archive, selection, extraction);
    const int exitCode = archive.reportDamage();
    return isComplete && selection.isComplete() ? exitCode : Failed;
}

} // namespace globalsctl
