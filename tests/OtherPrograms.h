#pragma once

#include "TestData.h"
#include "TestHome.h"

#include <QProcess>

/// Programs that share no code with the library.
namespace OtherPrograms {

/// What a program writes for \p input; an error text when it fails.
inline QByteArray outputOf(const QString& program, const QStringList& arguments, const QByteArray& input = {})
{
    QProcess process;
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    const bool isGood = process.waitForFinished() && process.exitCode() == 0;
    return isGood ? process.readAllStandardOutput() : program.toUtf8() + " fails";
}

/// What openssl finds in a protected block; \p split is the number of bytes in the password's first half.
inline QByteArray openBlock(const QByteArray& block, const QByteArray& password, int split)
{
    return outputOf(TestData::path("open-block"_q),
                    {QString::fromLatin1(password.toHex()), QString::number(split)}, block);
}

} // namespace OtherPrograms
