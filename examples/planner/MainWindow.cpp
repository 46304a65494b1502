#include "MainWindow.h"

#include "ColourPanel.h"
#include "Panel.h"
#include "RoomPanel.h"
#include "StartPanel.h"
#include "WorkPanel.h"

#include "globals/ConfigManager.h"
#include "globals/Exception.h"
#include "globals/LogManager.h"
#include "globals/PresetManager.h"
#include "globals/StateHandler.h"
#include "globals/widgets/LogDock.h"
#include "globals/widgets/PresetTable.h"

#include <QtWidgets>

using namespace TEKLUVA;

namespace {

constexpr int SIGN_OF_LIFE = 10000; ///< milliseconds between two

/// The built-in values stay in force without a file.
void readPresets()
{
    try {
        PresetManager::getInstance()->init();
        if (PresetManager::getInstance()->isFromFile())
            Panel::report(Panel::tr("The presets were read."), E_ST_INFORMATION);
        else
            Panel::report(Panel::tr("\"presets.dat\" is damaged; the built-in presets are in force."),
                          E_ST_WARNING);
    } catch (const Exception& e) {
        if (e.getExceptionType() != E_ET_MISSING_DATA)
            throw;
        Panel::report(Panel::tr("\"presets.dat\" is missing; the built-in presets are in force."),
                      E_ST_WARNING);
    }
}

QWidget* makePresetsPanel()
{
    auto* panel = new Panel(QT_TRANSLATE_NOOP("Panel", "Presets"));
    (new QVBoxLayout(panel))->addWidget(new PresetTable);
    return panel;
}

void addPanels(QGridLayout* grid)
{
    grid->addWidget(makeRoomPanel(), 1, 0);
    grid->addWidget(makeColourPanel(), 2, 0);
    grid->addWidget(makeWorkPanel(), 3, 0);
    grid->addWidget(makePresetsPanel(), 1, 1, 3, 1);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(3, 1);
}

/// Says so while settings cannot be saved, and at once if nothing can.
void showStorage(QStatusBar* bar)
{
    const ConfigManager* config = ConfigManager::getInstance();
    auto* warning = new QLabel;
    bar->addPermanentWidget(warning);
    QObject::connect(config, &ConfigManager::pendingSettingsChanged, warning, [warning](bool hasPending) {
        warning->setText(hasPending ? Panel::tr("The settings are not saved.") : QString());
    });
    const QString problem = config->storageProblem();
    if (!problem.isEmpty())
        Panel::report(problem, E_ST_WARNING);
}

void recordRun(QObject* window)
{
    ConfigManager* config = ConfigManager::getInstance();
    auto* life = new QTimer(window);
    QObject::connect(life, &QTimer::timeout, config, &ConfigManager::updateLifeTime);
    life->start(SIGN_OF_LIFE);
    QObject::connect(qApp, &QGuiApplication::lastWindowClosed, window,
                     [config] { config->setRuntimeState(E_RS_CLOSING); });
    config->setRuntimeState(E_RS_STARTED);
}

} // namespace

std::unique_ptr<QMainWindow> makeMainWindow()
{
    auto window = std::make_unique<QMainWindow>();
    window->setCentralWidget(new QWidget);
    window->resize(1100, 700);
    auto* grid = new QGridLayout(window->centralWidget());
    grid->addWidget(makeStartPanel(), 0, 0, 1, 2);
    ConfigManager::getInstance()->setRuntimeState(E_RS_INITIALIZING);
    auto* status = new QLabel; // of its own: the state handler and not the status bar clears the message
    window->statusBar()->addWidget(status, 1);
    QObject::connect(StateHandler::getInstance(), &StateHandler::statusMessage, status, &QLabel::setText);
    showStorage(window->statusBar());
    readPresets();
    addPanels(grid);
    window->addDockWidget(Qt::BottomDockWidgetArea, new LogDock(LogManager::getInstance()->getActiveLog()));
    auto* quit = new QShortcut(QKeySequence::Quit, window.get());
    QObject::connect(quit, &QShortcut::activated, window.get(), &QWidget::close);
    recordRun(window.get());
    return window;
}
