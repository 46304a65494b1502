#include "commands/Command.h"
#include "support/Block.h"
#include "support/Failure.h"
#include "support/Files.h"
#include "support/Output.h"
#include "support/Password.h"

#include "globals/DataBlock.h"
#include "globals/DataFileCreator.h"
#include "globals/DataFileReader.h"

#include <QCommandLineParser>

namespace globalsctl {

using namespace TEKLUVA;

namespace {

/// How one file is made from another one and a password.
struct Conversion
{
    PasswordUse use;
    /// Throws Failure for a \p path whose content cannot be converted.
    QByteArray (*convert)(const QString& path, const QByteArray& content, const QString& password);
};

QByteArray encrypted(const QString& /*path*/, const QByteArray& content, const QString& password)
{
    QByteArray block = DataFileCreator().encryptData(content, password);
    requireCompleteBlock(block, content);
    return block;
}

QByteArray decrypted(const QString& path, const QByteArray& content, const QString& password)
{
    const DataFileReader reader(path, password);
    if (beginsLikeArchive(content) || reader.isArchiv())
        throw Failure(QStringLiteral("%1 is an archive; use \"data extract\"").arg(path));
    if (DataBlock::faultOf(content))
        throw Failure(QStringLiteral("File %1 is damaged: it is no protected block").arg(path));
    const PasswordProof proof = proofOf(content, password);
    if (proof == PasswordProof::Wrong)
        throw Failure(QStringLiteral("%1: wrong password or damaged").arg(path));
    if (proof == PasswordProof::None)
        printNote(
            QStringLiteral("note: nothing proves the password: %1 has no padding").arg(printable(path)));
    return reader.decryptData(content);
}

int run(const QCommandLineParser& line, const Conversion& conversion)
{
    const QString path = line.positionalArguments().value(0);
    const QString target = line.positionalArguments().value(1);
    const PasswordSource password(line, PasswordNeed::Required);
    password.requireApartFrom(path);
    requireReplaceable(target, {path}, existingOf(line));
    const QByteArray content = contentOf(path);
    writeTarget(target, conversion.convert(path, content, password.read(conversion.use)));
    return Done;
}

} // namespace

int encryptData(const QCommandLineParser& line)
{
    return run(line, {PasswordUse::Writing, &encrypted});
}

int decryptData(const QCommandLineParser& line)
{
    return run(line, {PasswordUse::Reading, &decrypted});
}

} // namespace globalsctl
