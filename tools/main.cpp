#include "CommandLine.h"
#include "commands/Command.h"
#include "support/Console.h"
#include "support/Failure.h"
#include "support/Output.h"

#include "globals/Exception.h"

#include <QCoreApplication>
#include <QStringList>

#include <exception>

namespace {

/// Returns the exit code. All exceptions end here.
int runGuarded(const QStringList& arguments)
{
    try {
        return globalsctl::runCommandLine(arguments);
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
    const int exitCode = runGuarded(QCoreApplication::arguments().mid(1));
    if (globalsctl::flushResults())
        return exitCode;
    globalsctl::printError(
        QStringLiteral("the answer could not be written: %1").arg(globalsctl::reasonOfResults()));
    return globalsctl::Failed;
}
