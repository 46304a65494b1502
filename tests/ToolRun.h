#pragma once

#include "TestData.h"
#include "TestHome.h"

#include <QCryptographicHash>
#include <QProcess>

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

/// What openssl makes of a protected block, behind the pad count: plain text and padding.
inline QByteArray decryptedByOpenssl(const QByteArray& block, const QByteArray& password)
{
    const auto sha1 = [](const QByteArray& half) {
        return QCryptographicHash::hash(half, QCryptographicHash::Sha1).toHex();
    };
    const int half = password.size() / 2;
    const QByteArray key = (sha1(password.mid(half)) + sha1(password.left(half))).left(64);
    const auto hex = [](const QByteArray& digits) { return QString::fromLatin1(digits); };
    QProcess openssl;
    openssl.start("openssl"_q, {"enc"_q, "-d"_q, "-aes-256-cbc"_q, "-nopad"_q, "-K"_q, hex(key), "-iv"_q,
                                hex(block.mid(1, 16).toHex())});
    openssl.write(block.mid(17));
    openssl.closeWriteChannel();
    openssl.waitForFinished();
    return block.left(1) + openssl.readAllStandardOutput();
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
