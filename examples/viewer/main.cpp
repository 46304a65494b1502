// A catalogue viewer: the second example, for long work in a thread, ready-made widgets and two languages.
//
//     viewer [CATALOGUE]        the password is in the environment, CATALOGUE_PASSWORD

#include "SettingsDialog.h"
#include "ViewerWindow.h"

#include "globals/ConfigManager.h"
#include "globals/Log.h"
#include "globals/LogManager.h"

#include <QApplication>

using namespace TEKLUVA;

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    QApplication::setOrganizationName(QStringLiteral("tekluva"));
    QApplication::setApplicationName(QStringLiteral("tekluva Catalogue"));
    ConfigManager::setMovesOlderData(false); // this is not the planner, whose folders they are
    ConfigManager* config = ConfigManager::getInstance();
    LogManager::getInstance()->setActiveLog(new Log("viewer", false)); // the registry deletes it
    config->setRuntimeState(E_RS_STARTED);
    speakPreferredLanguage();
    int result = 0;
    {
        ViewerWindow window(qEnvironmentVariable("CATALOGUE_PASSWORD"));
        window.show();
        if (argc > 1)
            window.open(QApplication::arguments().at(1));
        result = QApplication::exec();
    }
    config->setRuntimeState(E_RS_SHUTDOWN);
    delete StateHandler::getInstance();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    delete LogManager::getInstance();
    return result;
}
