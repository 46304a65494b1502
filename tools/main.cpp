#include "CommandLine.h"
#include "commands/Command.h"
#include "support/Console.h"
#include "support/Failure.h"
#include "support/Output.h"

#include "globals/Exception.h"

#include <QCoreApplication>
#include <QFile>
#include <QStringList>

#include <exception>

namespace {

/// All but the first. Throws UsageError for one that is not in the encoding of the system: with U+FFFD in the
/// place of some bytes it would be the name of another file.
QStringList decodedArguments(char** argv)
{
    const QStringList arguments = QCoreApplication::arguments();
    for (int i = 1; i < arguments.size(); ++i) {
        const QString& argument = arguments[i];
        if (argument.contains(QChar::ReplacementCharacter) && QFile::encodeName(argument) != argv[i])
            throw globalsctl::UsageError(QStringLiteral("the argument \"%1\" is not UTF-8").arg(argument));
    }
    return arguments.mid(1);
}

/// Returns the exit code. All exceptions end here.
int runGuarded(char** argv)
{
    try {
        return globalsctl::runCommandLine(decodedArguments(argv));
    } catch (const globalsctl::Failure& e) {
        globalsctl::printError(e.reason());
        return e.exitCode();
    } catch (const TEKLUVA::Exception& e) {
        globalsctl::printError(QString::fromUtf8(e.getDescription()));
    } catch (const std::exception& e) {
        globalsctl::printError(QString::fromLocal8Bit(e.what()));
    }
    return globalsctl::Failed;
}

/// What Qt has to say is for developers; the tool names the reasons of failures itself.
void dropMessage(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& /*message*/)
{
}

} // namespace

int main(int argc, char** argv)
{
    qInstallMessageHandler(&dropMessage);
    globalsctl::prepareStandardStreams();
    const QCoreApplication application(argc, argv);
    const int exitCode = runGuarded(argv);
    if (globalsctl::flushResults())
        return exitCode;
    globalsctl::printError(
        QStringLiteral("the answer could not be written: %1").arg(globalsctl::reasonOfResults()));
    return globalsctl::Failed;
}
