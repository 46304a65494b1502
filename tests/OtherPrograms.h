#pragma once

#include "TestData.h"

#include "globals/DataFileReader.h"

#include <QProcess>

/// Programs that share no code with the library.
namespace OtherPrograms {

/// How a program ended.
struct Result
{
    int exitCode; ///< -1 if it did not start, did not end or crashed
    QByteArray output;
    QString errors;
    QString text() const { return QString::fromUtf8(output); }
};

/// Runs a program until it ends.
inline Result run(const QString& program, const QStringList& arguments, const QByteArray& input = {},
                  const QString& locale = "C.UTF-8"_q)
{
    QProcess process;
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert("LC_ALL"_q, locale);
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    const bool hasEnded = process.waitForFinished() && process.exitStatus() == QProcess::NormalExit;
    return {hasEnded ? process.exitCode() : -1, process.readAllStandardOutput(),
            hasEnded ? QString::fromUtf8(process.readAllStandardError()) : process.errorString()};
}

/// What a program writes for \p input; an error text when it fails.
inline QByteArray outputOf(const QString& program, const QStringList& arguments, const QByteArray& input = {})
{
    const Result result = run(program, arguments, input);
    return result.exitCode == 0 ? result.output : program.toUtf8() + " fails: " + result.errors.toUtf8();
}

/// What openssl finds in a protected block; \p split is the number of bytes in the password's first half. On
/// Windows, where it may be missing, what the library finds, which is held against blocks of openssl.
inline QByteArray openBlock(const QByteArray& block, const QByteArray& password, int split)
{
    if (!TestPlatform::IS_UNIX)
        return TEKLUVA::DataFileReader(QString(), QString::fromUtf8(password)).decryptData(block);
    return outputOf(TestData::path("open-block"_q),
                    {QString::fromLatin1(password.toHex()), QString::number(split)}, block);
}

} // namespace OtherPrograms
