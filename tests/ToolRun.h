#pragma once

#include "OtherPrograms.h"

/// How tests run globalsctl.
namespace ToolRun {

struct Result
{
    int exitCode;
    QString answer;
    QString report;
};

/// Runs the real program, in a locale that does not know UTF-8.
inline Result run(const QStringList& arguments, const QString& outputFile = QString())
{
    QProcess process;
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert("LC_ALL"_q, "C"_q);
    process.setProcessEnvironment(environment);
    if (!outputFile.isEmpty())
        process.setStandardOutputFile(outputFile);
    process.start(QStringLiteral(GLOBALSCTL), arguments);
    if (!process.waitForFinished(20000) || process.exitStatus() != QProcess::NormalExit)
        return {-1, QString(), "hangs or crashed"_q};
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

inline void write(const QString& name, const QByteArray& bytes)
{
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

/// The words of \p command, where "" is an empty one.
inline QStringList wordsOf(const QString& command)
{
    QStringList words = command.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    return words.replaceInStrings("\"\""_q, QString());
}

inline QStringList arguments()
{
    return wordsOf(TestData::field("arguments"));
}

} // namespace ToolRun
