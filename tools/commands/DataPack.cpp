#include "commands/Command.h"
#include "support/EntryWork.h"
#include "support/Failure.h"
#include "support/Files.h"
#include "support/Password.h"

#include "globals/DataFileCreator.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <QSet>

namespace globalsctl {

using namespace TEKLUVA;

namespace {

/// Throws Failure for files that cannot be entries of one archive: entries are named without their folders,
/// so two files may have the same name.
void requirePackable(const QStringList& files)
{
    QSet<QString> names;
    for (const QString& file : files) {
        requireReadable(file);
        const QString name = QFileInfo(file).fileName();
        if (names.contains(name))
            throw Failure(QStringLiteral("two of the files are named %1").arg(name));
        names << name;
    }
}

} // namespace

int packData(const QCommandLineParser& line)
{
    QStringList files = line.positionalArguments();
    const QString archive = files.takeFirst();
    const PasswordSource source(line, PasswordNeed::Optional);
    if (isStandardOutput(archive))
        throw Failure(QStringLiteral("an archive cannot be written to the standard output"));
    requireReplaceable(archive, files, existingOf(line));
    requirePackable(files);
    const QString password = source.read(PasswordUse::Writing);

    EntryWork work(QStringLiteral("Packing"), static_cast<int>(files.size()));
    const DataFileCreator creator;
    const bool isMade = creator.createArchivFromFiles(
        files, archive, password, [&work, &files](int entry) { return work.beginEntry(files[entry]); });
    work.throwIfInterrupted(archive
                            + (isMade ? QStringLiteral(" is written") : QStringLiteral(" was not written")));
    if (!isMade)
        throw Failure(QStringLiteral("%1 could not be written: %2").arg(archive, creator.lastError()));
    return Done;
}

} // namespace globalsctl
