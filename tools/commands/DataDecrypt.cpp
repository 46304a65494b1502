#include "commands/Command.h"
#include "support/Block.h"
#include "support/Conversion.h"
#include "support/Failure.h"
#include "support/Output.h"

#include "globals/DataBlock.h"
#include "globals/DataFileReader.h"

namespace globalsctl {

using namespace TEKLUVA;

namespace {

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

} // namespace

int decryptData(const QCommandLineParser& line)
{
    convertFile(line, {PasswordUse::Reading, &decrypted});
    return Done;
}

} // namespace globalsctl
