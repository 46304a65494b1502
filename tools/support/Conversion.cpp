#include "support/Conversion.h"

#include "support/Files.h"

#include <QCommandLineParser>

namespace globalsctl {

void convertFile(const QCommandLineParser& line, const Conversion& conversion)
{
    const QString path = line.positionalArguments().value(0);
    const QString target = line.positionalArguments().value(1);
    const PasswordSource password(line, PasswordNeed::Required);
    password.requireApartFrom(path);
    requireReplaceable(target, {path}, existingOf(line));
    const QByteArray content = contentOf(path);
    writeTarget(target, conversion.convert(path, content, password.read(conversion.use)));
}

} // namespace globalsctl
