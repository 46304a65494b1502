#include "commands/Command.h"
#include "support/Conversion.h"
#include "support/ExitCode.h"
#include "support/Files.h"

#include "globals/DataFileCreator.h"

namespace globalsctl {

namespace {

QByteArray encrypted(const QString& /*path*/, const QByteArray& content, const QString& password)
{
    QByteArray block = TEKLUVA::DataFileCreator().encryptData(content, password);
    requireCompleteBlock(block, content);
    return block;
}

} // namespace

int encryptData(const QCommandLineParser& line)
{
    convertFile(line, {PasswordUse::Writing, &encrypted});
    return Done;
}

} // namespace globalsctl
