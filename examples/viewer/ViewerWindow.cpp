#include "ViewerWindow.h"

#include "SettingsDialog.h"

#include "globals/Log.h"
#include "globals/LogManager.h"
#include "globals/MeasurementManager.h"
#include "globals/widgets/LogDock.h"
#include "globals/widgets/ProgressDialog.h"

#include <QtWidgets>

#include <utility>

using namespace TEKLUVA;

namespace {

constexpr int SHOWN_FOR = 8000; ///< milliseconds

/// In the status line for a while, and in the log.
void report(const QString& message, E_StateType type)
{
    StateHandler::getInstance()->newStatusMessage(message, type, SHOWN_FOR);
    const E_LogLevel level = type == E_ST_ERROR ? E_LL_ERROR : E_LL_INFO;
    LogManager::getInstance()->getActiveLog()->logMessage(level, message);
}

QString measure(double cm)
{
    const auto* units = MeasurementManager::getInstance();
    return units->createMeasurementString(E_MD_LINEAR, units->getPrefferedArrangementUnit(), cm, true);
}

} // namespace

ViewerWindow::ViewerWindow(QString password, QWidget* parent)
    : QMainWindow(parent)
    , m_password(std::move(password))
    , m_text(new QLineEdit)
    , m_rows(new QStandardItemModel(this))
    , m_table(new QTreeView)
    , m_log(new LogDock(LogManager::getInstance()->getActiveLog()))
{
    m_table->setModel(m_rows);
    m_table->setRootIsDecorated(false);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    setCentralWidget(new QWidget);
    auto* layout = new QVBoxLayout(centralWidget());
    layout->addWidget(m_text);
    layout->addWidget(m_table);
    auto* status = new QLabel; // of its own: the state handler and not the status bar clears the message
    statusBar()->addWidget(status, 1);
    addDockWidget(Qt::BottomDockWidgetArea, m_log);
    makeMenus();
    setTexts();
    resize(700, 500);

    (new ProgressDialog(this))->setWindowModality(Qt::WindowModal);
    const auto* states = StateHandler::getInstance();
    connect(states, &StateHandler::statusMessage, status, &QLabel::setText);
    connect(states, &StateHandler::processFinished, this, &ViewerWindow::showEnd);
    connect(MeasurementManager::getInstance(), &MeasurementManager::arrangementMeasurementUnitChanged, this,
            &ViewerWindow::showArticles);
    connect(m_text, &QLineEdit::returnPressed, this, &ViewerWindow::search);
}

ViewerWindow::~ViewerWindow()
{
    StateHandler::getInstance()->setAbort(); // the future waits
}

void ViewerWindow::makeMenus()
{
    m_fileMenu = menuBar()->addMenu(QString());
    m_open = m_fileMenu->addAction(QString(), this, [this] {
        const QString path = QFileDialog::getOpenFileName(this);
        if (!path.isEmpty())
            open(path);
    });
    m_settings = m_fileMenu->addAction(QString(), this, [this] { SettingsDialog(this).exec(); });
    m_quit = m_fileMenu->addAction(QString(), this, &QWidget::close);
    m_open->setShortcut(QKeySequence::Open);
    m_settings->setShortcut(QKeySequence::Preferences);
    m_quit->setShortcut(QKeySequence::Quit);
    m_viewMenu = menuBar()->addMenu(QString());
    m_viewMenu->addAction(m_log->toggleViewAction());
}

void ViewerWindow::open(const QString& path)
{
    m_path = path;
    search();
}

void ViewerWindow::search()
{
    if (m_work.valid())
        return;
    m_work = runWorker(tr("Searching"), [this, path = m_path, text = m_text->text()] {
        m_articles = findArticles(path, m_password, text); // the window looks at them when the work has ended
    });
}

void ViewerWindow::showEnd(E_ProcessResult result)
{
    try {
        m_work.get();
        const int count = static_cast<int>(m_articles.size());
        report(result == E_PR_ABORTED ? tr("The search was aborted.")
                                      : tr("%n article(s) found.", nullptr, count),
               E_ST_INFORMATION);
    } catch (const std::exception& e) {
        m_articles.clear();
        report(QString::fromUtf8(e.what()), E_ST_ERROR);
    }
    showArticles();
}

void ViewerWindow::showArticles()
{
    if (m_work.valid())
        return; // they are the worker's, and shown when it has ended
    m_rows->removeRows(0, m_rows->rowCount());
    for (const Article& article : std::as_const(m_articles)) {
        QList<QStandardItem*> row;
        for (const QString& text : {article.group, article.name, measure(article.width),
                                    measure(article.depth), measure(article.height)})
            row << new QStandardItem(text);
        m_rows->appendRow(row);
    }
}

void ViewerWindow::setTexts()
{
    setWindowTitle(tr("Catalogue"));
    m_fileMenu->setTitle(tr("&File"));
    m_viewMenu->setTitle(tr("&View"));
    m_open->setText(tr("&Open..."));
    m_settings->setText(tr("&Settings..."));
    m_quit->setText(tr("&Quit"));
    m_text->setPlaceholderText(tr("Search"));
    m_text->setAccessibleName(m_text->placeholderText());
    m_table->setAccessibleName(windowTitle());
    m_rows->setHorizontalHeaderLabels({tr("Group"), tr("Name"), tr("Width"), tr("Depth"), tr("Height")});
}

void ViewerWindow::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        setTexts();
    QMainWindow::changeEvent(event);
}
