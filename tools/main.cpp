#include "tools/CommandLine.h"
#include "tools/commands/Command.h"
#include "tools/support/Failure.h"
#include "tools/support/Output.h"

#include "globals/Exception.h"

#include <QCoreApplication>
#include <QStringList>

#include <exception>

namespace {

/// The one place where exceptions end.
int runGuarded(const QStringList& arguments)
{
    try {
        return globalsctl::runCommandLine(arguments);
    } catch (const globalsctl::Failure& e) {
        if (e.exitCode() == globalsctl::WrongUsage)
            return globalsctl::complainOfUsage(e.reason());
        globalsctl::complain(e.reason());
        return e.exitCode();
    } catch (const TEKLUVA::Exception& e) {
        globalsctl::complain(QString::fromUtf8(e.getDescription()));
    } catch (const std::exception& e) {
        globalsctl::complain(QString::fromLocal8Bit(e.what()));
    }
    return globalsctl::Failed;
}

} // namespace

int main(int argc, char** argv)
{
    globalsctl::reserveStandardStreams();
    const QCoreApplication application(argc, argv);
    const int exitCode = runGuarded(QCoreApplication::arguments().mid(1));
    if (globalsctl::flushAnswers())
        return exitCode;
    globalsctl::complain(QStringLiteral("the answer could not be written"));
    return globalsctl::Failed;
}
