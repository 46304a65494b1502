// A room planner in small: what an application does with the library from its start to a clean exit.
//
//     planner [--screenshot FILE]
//
// The files go where the application's would go; run it with another HOME to keep yours clean.

#include "MainWindow.h"

#include "globals/ConfigManager.h"
#include "globals/Exception.h"
#include "globals/Log.h"
#include "globals/LogManager.h"

#include <QApplication>
#include <QMainWindow>
#include <QMessageBox>

using namespace TEKLUVA;

namespace {

/// Shows the window until the user closes it, or until there is a picture of it.
int show()
{
    const auto window = makeMainWindow();
    window->show();
    const QStringList arguments = QApplication::arguments();
    if (arguments.value(1) == QLatin1String("--screenshot"))
        return window->grab().save(arguments.value(2)) ? 0 : 1;
    return QApplication::exec();
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("tekluva"));
    QApplication::setApplicationName(QStringLiteral("tekluva 3D-Planner"));
    ConfigManager* config = ConfigManager::getInstance();
    ConfigManager::setRecordsRun(!config->isOtherRunning()); // a second window leaves the record to the first
    LogManager::getInstance()->setActiveLog(new Log("tekluva-3D", false)); // the registry deletes it
    int result = 1;
    try {
        result = show();
        config->setRuntimeState(E_RS_SHUTDOWN);
    } catch (const Exception& e) {
        config->setRuntimeState(E_RS_CRASHED);
        QMessageBox::critical(nullptr, QString::fromUtf8(e.what()), QString::fromUtf8(e.getDescription()));
    }
    delete LogManager::getInstance();
    return result;
}
