#include "MainWindow.h"

#include "PackingJob.h"
#include "Panels.h"
#include "SettingsDialog.h"
#include "StatusBar.h"
#include "Texts.h"

#include "globals/ConfigManager.h"
#include "globals/Exception.h"
#include "globals/LogManager.h"
#include "globals/PresetManager.h"
#include "globals/Worker.h"
#include "globals/widgets/LogDock.h"
#include "globals/widgets/PresetTable.h"
#include "globals/widgets/ProgressDialog.h"

#include <QtWidgets>

using namespace TEKLUVA;

namespace {

constexpr int SIGN_OF_LIFE = 60'000; ///< milliseconds between two
constexpr int LOG_HEIGHT = 180;      ///< pixels

/// The built-in values stay in force without a file.
void readPresets()
{
    auto* presets = PresetManager::getInstance();
    try {
        presets->init();
    } catch (const Exception& e) {
        if (e.getExceptionType() != E_ET_MISSING_DATA)
            throw;
        report(Texts::tr("\"presets.dat\" is missing; the built-in presets are in force."), E_ST_WARNING);
        return;
    }
    if (presets->isFromFile())
        report(Texts::tr("The presets were read."), E_ST_INFORMATION);
    else
        report(Texts::tr("\"presets.dat\" is damaged; the built-in presets are in force."), E_ST_WARNING);
}

class MainWindow : public QMainWindow
{
public:
    MainWindow();
    ~MainWindow() override;

private:
    void makePanels();
    void makeMenus();
    void recordRun();
    void showEnd(E_ProcessResult result);

    LogDock* m_log = nullptr;
    std::future<E_ProcessResult> m_work;
};

MainWindow::MainWindow()
{
    fillStatusBar(statusBar());
    ConfigManager::getInstance()->setRuntimeState(E_RS_INITIALIZING);
    readPresets();
    makePanels();
    makeMenus();
    resize(1100, 700);
    (new ProgressDialog(this))->setWindowModality(Qt::WindowModal);
    connect(StateHandler::getInstance(), &StateHandler::processFinished, this, &MainWindow::showEnd);
    recordRun();
}

MainWindow::~MainWindow()
{
    StateHandler::getInstance()->setAbort(); // the future waits
}

void MainWindow::makePanels()
{
    setCentralWidget(new QWidget);
    auto* grid = new QGridLayout(centralWidget());
    auto* presets = translated(new QGroupBox, QT_TRANSLATE_NOOP("Texts", "Presets"), "title");
    (new QVBoxLayout(presets))->addWidget(new PresetTable);
    grid->addWidget(makeRoomPanel(), 0, 0);
    grid->addWidget(makeLightPanel(), 1, 0);
    grid->addWidget(presets, 0, 1, 3, 1);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(2, 1);
    m_log = new LogDock(LogManager::getInstance()->getActiveLog());
    addDockWidget(Qt::BottomDockWidgetArea, m_log);
    resizeDocks({m_log}, {LOG_HEIGHT}, Qt::Vertical);
}

void MainWindow::makeMenus()
{
    QDialog* settings = makeSettingsDialog(this);
    const auto addMenu = [this](const char* title) {
        return translated(menuBar()->addMenu(QString()), title, "title");
    };
    const auto add = [](QMenu* menu, const char* text, const QKeySequence& keys, const auto& slot) {
        translated(menu->addAction(QString(), slot), text)->setShortcut(keys);
    };
    QMenu* file = addMenu(QT_TRANSLATE_NOOP("Texts", "&File"));
    add(file, QT_TRANSLATE_NOOP("Texts", "&Pack and check files"), {}, [this] {
        if (!StateHandler::getInstance()->isProcessRunning())
            m_work = runWorker(Texts::tr("Packing"), &packAndCheck);
    });
    add(file, QT_TRANSLATE_NOOP("Texts", "&Settings..."), QKeySequence::Preferences,
        [settings] { settings->open(); });
    file->addSeparator();
    add(file, QT_TRANSLATE_NOOP("Texts", "&Quit"), QKeySequence::Quit, [this] { close(); });
    QMenu* view = addMenu(QT_TRANSLATE_NOOP("Texts", "&View"));
    view->addAction(m_log->toggleViewAction());
    QMenu* help = addMenu(QT_TRANSLATE_NOOP("Texts", "&Help"));
    add(help, QT_TRANSLATE_NOOP("Texts", "&About"), {}, [this] {
        const QString version = ConfigManager::getInstance()->getCurrentDisplayVersion();
        QMessageBox::about(
            this, QApplication::applicationName(),
            Texts::tr("Version %1. A room planner in small, and an example for libglobals.").arg(version));
    });
}

void MainWindow::recordRun()
{
    ConfigManager* config = ConfigManager::getInstance();
    auto* life = new QTimer(this);
    connect(life, &QTimer::timeout, config, &ConfigManager::updateLifeTime);
    life->start(SIGN_OF_LIFE);
    connect(qApp, &QGuiApplication::lastWindowClosed, this,
            [config] { config->setRuntimeState(E_RS_CLOSING); });
    config->setRuntimeState(E_RS_STARTED);
}

void MainWindow::showEnd(E_ProcessResult result)
{
    const std::pair<QString, E_StateType> messages[] = {
        // By E_ProcessResult.
        {Texts::tr("Packed and checked %n file(s).", nullptr, PACKED_FILES), E_ST_INFORMATION},
        {Texts::tr("The work was aborted."), E_ST_WARNING},
        {Texts::tr("The work failed."), E_ST_ERROR},
    };
    report(messages[result].first, messages[result].second);
}

} // namespace

std::unique_ptr<QMainWindow> makeMainWindow()
{
    Texts::getInstance()->speakPreferredLanguage();
    return std::make_unique<MainWindow>();
}
