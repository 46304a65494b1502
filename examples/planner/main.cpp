// A room planner in small: what an application does with the library from its start to a clean exit.
//
//     planner [--dark] [--screenshot FILE]        --dark: as on a desktop with a dark scheme
//
// The files go where the application's would go; run it with another HOME to keep yours clean.

#include "MainWindow.h"

#include "globals/ConfigManager.h"
#include "globals/Exception.h"
#include "globals/Log.h"
#include "globals/LogManager.h"
#include "globals/StateHandler.h"

#include <QApplication>
#include <QMainWindow>
#include <QMessageBox>

using namespace TEKLUVA;

namespace {

/// Shows the window until the user closes it, or until there is a picture of it.
int show(const QStringList& arguments)
{
    const auto window = makeMainWindow();
    window->show();
    const auto picture = arguments.indexOf(QStringLiteral("--screenshot")) + 1;
    if (picture == 0)
        return QApplication::exec();
    QApplication::processEvents(); // of the language
    return window->grab().save(arguments.value(picture)) ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("tekluva"));
    QApplication::setApplicationName(QStringLiteral("tekluva 3D-Planner"));
    const QStringList arguments = QApplication::arguments();
    if (arguments.contains(QStringLiteral("--dark"))) {
        QPalette dark(QColor(49, 54, 59), QColor(42, 46, 50)); // the others are derived from these
        dark.setColor(QPalette::Base, QColor(35, 38, 41));
        QApplication::setPalette(dark);
    }
    ConfigManager* config = ConfigManager::getInstance();
    const bool isSecond =
        config->isOtherRunning(); // which leaves the record to the first, and has its own log
    ConfigManager::setRecordsRun(!isSecond);
    LogManager::getInstance()->setActiveLog(new Log(isSecond ? "tekluva-3D-second" : "tekluva-3D", false));
    int result = 1;
    try {
        result = show(arguments);
        config->setRuntimeState(E_RS_SHUTDOWN);
    } catch (const Exception& e) {
        config->setRuntimeState(E_RS_CRASHED);
        QMessageBox::critical(nullptr, QString::fromUtf8(e.what()), QString::fromUtf8(e.getDescription()));
    }
    delete StateHandler::getInstance();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    delete LogManager::getInstance(); // and with it the logs
    return result;
}
