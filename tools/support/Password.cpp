#include "support/Password.h"

#include "support/Console.h"
#include "support/Failure.h"
#include "support/FileSystem.h"
#include "support/Files.h"
#include "support/Output.h"

#include "globals/DataFileCreator.h"

#include <QCommandLineParser>
#include <QFile>

namespace globalsctl {

namespace {

QByteArray fromEnvironment(const QString& name, PasswordUse /*use*/)
{
    const auto value = environmentVariable(name);
    if (!value)
        throw Failure(QStringLiteral("the environment variable %1 is not set").arg(name));
    return *value;
}

QByteArray fromFile(const QString& path, PasswordUse /*use*/)
{
    constexpr qint64 LONGEST_LINE = 4096;
    QFile file(path);
    if (isStandardInput(path))
        openStandardInput(file);
    else if (!file.open(QIODevice::ReadOnly))
        throw Failure(QStringLiteral("File %1 cannot be read: %2").arg(path, file.errorString()));
    if (!isStandardInput(path) && FileSystem::isReadableByOthers(file))
        printNote(QStringLiteral("note: %1 can be read by other users").arg(path));
    QByteArray line = file.readLine(LONGEST_LINE);
    if (line.size() >= LONGEST_LINE - 1)
        throw Failure(QStringLiteral("the first line of %1 is too long for a password").arg(path));
    if (line.endsWith('\n'))
        line.chop(1);
    if (line.endsWith('\r'))
        line.chop(1);
    return line;
}

QByteArray fromTerminal(const QString& /*value*/, PasswordUse use)
{
    Terminal terminal;
    QByteArray password = terminal.ask("Password: ");
    if (use == PasswordUse::Writing && terminal.ask("\nThe same again: ") != password)
        throw Failure(QStringLiteral("the two passwords differ"));
    return password;
}

struct SourceRow
{
    const char* option;
    QByteArray (*read)(const QString& value, PasswordUse use);
};

constexpr SourceRow SOURCES[] = {
    {"password-env", &fromEnvironment},
    {"password-file", &fromFile},
    {"password-ask", &fromTerminal},
};

} // namespace

PasswordSource::PasswordSource(const QCommandLineParser& line, PasswordNeed need)
{
    for (const SourceRow& row : SOURCES) {
        const QString option = QLatin1String(row.option);
        if (!line.isSet(option))
            continue;
        if (m_source)
            throw UsageError(QStringLiteral("--%1 is one source of the password too many").arg(option));
        m_source = row.read;
        if (row.read != &fromTerminal) // the option has no value, and Qt 6 objects to the question
            m_value = line.value(option);
    }
    if (m_source || need == PasswordNeed::Optional)
        return;
    if (!Terminal::isAvailable())
        throw UsageError(QStringLiteral("--password-env, --password-file or --password-ask is missing"));
    m_source = &fromTerminal;
}

QString PasswordSource::read(PasswordUse use) const
{
    if (!m_source)
        return {};
    forbidCoreDumps();
    const QByteArray bytes = m_source(m_value, use);
    // For the library an empty one means "not encrypted".
    if (bytes.isEmpty())
        throw Failure(QStringLiteral("the password is empty"));
    QString password = QString::fromUtf8(bytes);
    if (password.toUtf8() != bytes)
        throw Failure(QStringLiteral("the password is not UTF-8"));
    if (use == PasswordUse::Writing && !TEKLUVA::DataFileCreator::canBeReadBack(password))
        throw Failure(
            QStringLiteral("the application could not read back what is written with this password; "
                           "use ASCII characters only"));
    return password;
}

void PasswordSource::requireApartFrom(const QString& path) const
{
    if (m_source == &fromFile && isStandardInput(m_value) && isStandardInput(path))
        throw UsageError(QStringLiteral("password and content cannot both be the standard input"));
}

} // namespace globalsctl
