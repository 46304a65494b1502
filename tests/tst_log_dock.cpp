#include "TestHome.h"

#include "globals/ConfigManager.h"
#include "globals/LogManager.h"
#include "globals/Translations.h"
#include "globals/widgets/LogDock.h"
#include "globals/widgets/LogModel.h"

#include <QApplication>
#include <QMainWindow>
#include <QScrollBar>
#include <QSignalSpy>
#include <QStyle>
#include <QTimer>
#include <QTreeView>

#include <thread>

using namespace TEKLUVA;

namespace {

QStringList column(const LogModel& model, int column)
{
    QStringList texts;
    for (int row = 0; row < model.rowCount(); ++row)
        texts << model.index(row, column).data().toString();
    return texts;
}

QString messagesIn(const LogModel& model)
{
    return column(model, LogModel::E_LC_MESSAGE).join(QLatin1Char(' '));
}

void write(Log& log, std::initializer_list<const char*> messages)
{
    for (const char* message : messages)
        log.logStatusMessage(message, "", 0);
}

} // namespace

class LogDockTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void newRowsComeInBatches()
    {
        Log log("batches", true);
        write(log, {"before"});
        LogModel model(&log);
        QCOMPARE(messagesIn(model), "before"_q);
        QSignalSpy inserted(&model, &LogModel::rowsInserted);
        std::thread([&log] {
            for (int i = 0; i < 500; ++i)
                log.logStatusMessage(std::to_string(i), "", 0);
        }).join();
        write(log, {"last but one", "last"});
        QTRY_COMPARE(model.rowCount(), 503);
        QCOMPARE(inserted.size(), 1);
        QCOMPARE(inserted[0][1].toInt(), 1);
        QCOMPARE(inserted[0][2].toInt(), 502);
        QCOMPARE(model.index(502, LogModel::E_LC_MESSAGE).data().toString(), "last"_q);
        QTimer writer;
        connect(&writer, &QTimer::timeout, [&log] { write(log, {"more"}); });
        writer.start(1);
        QTRY_VERIFY(model.rowCount() > 503); // although messages go on
    }

    void levelsAreFiltered()
    {
        Log log("levels", true);
        LogModel model(&log);
        model.setLevels(E_LL_WARNING | E_LL_ERROR);
        for (const int level : {E_LL_DEBUG, E_LL_INFO, E_LL_WARNING, E_LL_ERROR, E_LogLevel(0)})
            log.logMessage(E_LogLevel(level), std::to_string(level), "", 0);
        model.refresh();
        QCOMPARE(messagesIn(model), "4096 8192 0"_q);
        QCOMPARE(model.index(0, 2).data(LogModel::E_LR_LEVEL).toInt(), int(E_LL_WARNING));
        const QDateTime time = log.getEntry(2)->getTimeStamp();
        QCOMPARE(model.index(0, 2).data(LogModel::E_LR_TIME).toDateTime(), time);
        QCOMPARE(model.index(0, 0).data().toString(), time.toString("HH:mm:ss"_q));
        const QIcon warning = QApplication::style()->standardIcon(QStyle::SP_MessageBoxWarning);
        QCOMPARE(model.index(0, 1).data(Qt::DecorationRole).value<QIcon>().pixmap(16).toImage(),
                 warning.pixmap(16).toImage());
        model.setLevels(LogModel::ALL_LEVELS);
        QCOMPARE(messagesIn(model), "1024 2048 4096 8192 0"_q);
    }

    void rowsGoWithTheirEntries()
    {
        auto log = std::make_unique<Log>("bound", true);
        LogModel model(log.get());
        write(*log, {"a", "b", "c", "d"});
        model.refresh();
        model.setMaxRowCount(3);
        QCOMPARE(messagesIn(model), "b c d"_q);
        write(*log, {"e"});
        model.refresh();
        QCOMPARE(messagesIn(model), "c d e"_q);
        log->setMaxEntryCount(2);
        model.refresh();
        QCOMPARE(messagesIn(model), "d e"_q);
        log->resetLog(true);
        write(*log, {"f"});
        model.refresh();
        QCOMPARE(messagesIn(model), "f"_q);
        log.reset();
        QCOMPARE(model.rowCount(), 0);
        model.refresh();
        QCOMPARE(model.getLog(), nullptr);
    }

    void theDockSpeaksTheUsersLanguage()
    {
        Log log("language", true);
        write(log, {"a"});
        const LogDock dock(&log);
        QSignalSpy titles(dock.getModel(), &LogModel::headerDataChanged);
        QSignalSpy rows(dock.getModel(), &LogModel::dataChanged);
        for (const auto& [language, texts] : {std::pair("de"_q, "Protokoll Zeit Stufe Meldung Information"_q),
                                              std::pair("en"_q, "Log Time Level Message Information"_q)}) {
            showLanguage(language);
            QCoreApplication::sendPostedEvents();
            QStringList shown = {dock.windowTitle()};
            for (int i = 0; i < 3; ++i)
                shown << dock.getModel()->headerData(i, Qt::Horizontal).toString();
            shown << column(*dock.getModel(), LogModel::E_LC_LEVEL);
            QCOMPARE(shown.join(QLatin1Char(' ')), texts);
        }
        QVERIFY(titles.size() >= 2 && rows.size() >= 2);
    }

    void theDockFollowsTheEnd()
    {
        Log log("end", true);
        QMainWindow window;
        auto* dock = new LogDock(&log);
        window.addDockWidget(Qt::BottomDockWidgetArea, dock);
        window.show();
        const auto writeLines = [&log, dock] {
            for (int i = 0; i < 200; ++i)
                log.logDebugMessage("line", "", 0);
            dock->getModel()->refresh();
            QCoreApplication::processEvents();
        };
        const QScrollBar* bar = dock->findChild<QTreeView*>()->verticalScrollBar();
        writeLines();
        QTRY_VERIFY(bar->maximum() > 0);
        QCOMPARE(bar->value(), bar->maximum());
        const int lines = bar->maximum();
        window.resize(window.width(), window.height() / 2);
        QTRY_VERIFY(bar->maximum() > lines);
        QCOMPARE(bar->value(), bar->maximum()); // in less room, too
        dock->findChild<QTreeView*>()->scrollToTop();
        writeLines();
        QCOMPARE(bar->value(), 0); // whoever reads is left in peace
        write(log, {"<b>two\nlines"});
        dock->setLowestLevel(E_LL_INFO);
        dock->setLowestLevel(E_LogLevel(0));
        QCOMPARE(dock->getLowestLevel(), E_LL_INFO);
        QCOMPARE(messagesIn(*dock->getModel()), "<b>two lines"_q);
        QVERIFY(!dock->getModel()->index(0, 2).data(Qt::ToolTipRole).toString().contains("<b>"_q));
        dock->setLowestLevel(E_LL_DEBUG);
        QTRY_VERIFY(bar->maximum() > 0);
        QCOMPARE(bar->value(), bar->maximum());
    }

    void aLongMessageIsCutWhereItIsShown()
    {
        Log log("long", true);
        const std::string message(100'000, 'x');
        write(log, {message.c_str()});
        const LogDock dock(&log);
        QCOMPARE(messagesIn(*dock.getModel()).toStdString(), message);
        const auto* view = dock.findChild<QTreeView*>();
        QVERIFY(view->sizeHintForIndex(view->model()->index(0, 2)).width() < 50'000);
        QCOMPARE(view->model()->index(0, 2).data(Qt::ToolTipRole).toString().size(), 4001);
    }
};

GLOBALS_TEST_MAIN(LogDockTest, QApplication)
#include "tst_log_dock.moc"
