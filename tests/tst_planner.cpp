#include "TestData.h"
#include "TestLog.h"

#include "examples/planner/MainWindow.h"

#include "globals/ConfigManager.h"
#include "globals/PresetManager.h"
#include "globals/widgets/LogDock.h"
#include "globals/widgets/LogModel.h"
#include "globals/widgets/PresetTable.h"
#include "globals/widgets/ProgressDialog.h"
#include "globals/widgets/UnitBox.h"

#include <QtWidgets>

#include <thread>

using namespace TEKLUVA;

class PlannerTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_config->setPrefferedLang("en"_q);
        m_log = std::make_unique<TestLog::ActiveLog>();
        open();
    }
    void cleanup()
    {
        m_window.reset();
        m_log.reset();
        m_config->clearSettings();
        QVERIFY(QDir(m_config->getPath(E_PT_TEMP_CACHE)).isEmpty()); // the work leaves nothing behind
    }

    void tellsHowTheLastRunEnded_data() { TestData::addRows("planner-verdicts.txt"); }
    void tellsHowTheLastRunEnded()
    {
        m_config->setRuntimeState(E_RuntimeState(TestData::field<int>("state")));
        m_config->removeSetting("Application"_q, "run_pid"_q); // that of this process, which still runs
        open();
        QVERIFY(find<QLabel>(TestData::field("verdict")));
        QCOMPARE(m_config->getLastRuntimeState(), E_RS_STARTED);
    }

    void showsTheRoomInTheChosenUnits()
    {
        auto* length = field<QDoubleSpinBox>("&Length"_q);
        openSettings();
        QTest::keyClick(field<UnitBox>("Unit for &constructing"_q), Qt::Key_Down);
        QCOMPARE(length->text(), "4,200 m"_q);
        length->selectAll();
        QTest::keyClicks(length, "1.,234"_q); // the point is no part of it
        QVERIFY(find<QLabel>("Units: m, cm"_q) && find<QLabel>("123,4 cm"_q) && find<QLabel>("4,442 m²"_q));
        QTest::keyClick(field<UnitBox>("Unit for &constructing"_q), Qt::Key_Down);
        QCOMPARE(length->text(), "48,58 in"_q);
        QVERIFY(find<QLabel>("11,55 m³"_q)); // not of the rounded sides
        QTest::keyClick(field<UnitBox>("Unit for &arranging"_q), Qt::Key_Up);
        QVERIFY(find<QLabel>("Units: in, mm"_q) && find<QLabel>("1234 mm"_q));
        QTest::mouseClick(find<QPushButton>("Clos&e"_q), Qt::LeftButton);
        QVERIFY(!m_window->findChild<UnitBox*>()->isVisible());
    }

    void endsTheWorkOnRequest()
    {
        startWork();
        QTest::mouseClick(find<QPushButton>("A&bort"_q), Qt::LeftButton);
        QTRY_VERIFY(find<QLabel>("The work was aborted."_q));
        QVERIFY(!dialog()->isVisible() && !inStatusBar()->isVisible());
        QVERIFY(bar("Total"_q)->value() < 100 && bar("Check"_q)->value() <= 0);
    }

    void doesTheWork()
    {
        startWork();
        QTRY_VERIFY_WITH_TIMEOUT(find<QLabel>("Packed and checked 200 files."_q), 240000);
        QVERIFY(!dialog()->isVisible() && !inStatusBar()->isVisible());
        QCOMPARE(bar("Total"_q)->value(), 100);
        QCOMPARE(bar("Check"_q)->value(), 200);
    }

    void endsTheWorkWhenTheWindowCloses()
    {
        startWork();
        QTimer::singleShot(0, m_window.get(), &QWidget::close);
        QApplication::exec();
        QCOMPARE(m_config->getLastRuntimeState(), E_RS_CLOSING);
    }

    void keepsTheLanguage()
    {
        Q_EMIT m_config->pendingSettingsChanged(true);
        QCOMPARE(keysInTheWindow(), "f g h l t v w"_q);
        openSettings();
        QTest::keyClick(field<QComboBox>("&Language"_q), Qt::Key_Up);
        QVERIFY(find<QLabel>("&Länge"_q));
        QVERIFY(find<QLabel>("Die Einstellungen sind nicht gespeichert."_q)->isVisible());
        QCOMPARE(keysInTheWindow(), "a b d e h l t"_q);
        QVERIFY(find<QLabel>("Das ist der erste Start."_q));
        QTRY_COMPARE(field<UnitBox>("Einheit beim &Konstruieren"_q)->currentText(), "cm - Zentimeter"_q);
        QCOMPARE(presets()->model()->headerData(0, Qt::Horizontal).toString(), "Schlüssel"_q);
        QVERIFY(find<QAction>("&Beenden"_q) && find<QAction>("Protokoll"_q)
                && find<QPushButton>("Schl&ießen"_q));
        open();
        QVERIFY(find<QLabel>("&Länge"_q));
    }

    void followsADarkScheme()
    {
        const QPalette before = QApplication::palette();
        QApplication::setPalette(QColor(49, 54, 59));
        QCoreApplication::processEvents(); // with Qt 6 the widgets learn of it later
        const auto* swatch = find<QLabel>("2700 K"_q);
        for (const auto* widget : m_window->findChildren<QWidget*>()) {
            const int lightness = widget->palette().color(widget->backgroundRole()).lightness();
            QVERIFY2(lightness < 128 || widget == swatch, widget->metaObject()->className());
        }
        QApplication::setPalette(before);
    }

    void tellsWhatItIs()
    {
        QString text;
        QTimer::singleShot(0, this, [&text] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            text = box->text();
            box->accept();
        });
        find<QAction>("&About"_q)->trigger();
        QVERIFY2(text.startsWith("Version 1.6"_q), qPrintable(text));
    }

    void showsTheColourOfLight()
    {
        QTest::keyClick(field<QSlider>("Colour &temperature"_q), Qt::Key_End);
        auto* swatch = find<QLabel>("15000 K   #acc2ff"_q);
        QVERIFY(swatch);
        QCOMPARE(swatch->grab().toImage().pixel(1, 1), 0xffacc2ffU);
    }

    void showsTheLogLive()
    {
        std::thread([this] { m_log->log().logWarningMessage("from a thread", "", 0); }).join();
        const auto* dock = m_window->findChild<LogDock*>();
        const LogModel* rows = dock->getModel();
        QTRY_COMPARE(rows->rowCount(), 2);
        QCOMPARE(rows->index(1, LogModel::E_LC_LEVEL).data().toString(), "Warning"_q);
        find<QAction>("Log"_q)->trigger();
        QVERIFY(!dock->isVisible());
        find<QAction>("Log"_q)->trigger();
        QVERIFY(dock->isVisible());
    }

    void showsThePresets()
    {
        const auto height = [this] {
            return presets()->model()->index(2, PresetTable::E_PC_VALUE).data().toString();
        };
        QCOMPARE(height(), "260"_q);
        const QString file = QCoreApplication::applicationDirPath() + "/presets.dat"_q;
        delete PresetManager::getInstance();
        QVERIFY(QFile::rename(file, file + "_"_q));
        open();
        QVERIFY(QFile::rename(file + "_"_q, file));
        QCOMPARE(height(), "270"_q);
        QVERIFY(m_log->entries().last().startsWith("4096 \"presets.dat\" is missing"_q));
    }

private:
    void open()
    {
        m_window = makeMainWindow();
        m_window->show();
        QCoreApplication::processEvents(); // the change of the language
    }
    void openSettings()
    {
        find<QAction>("&Settings"_q)->trigger();
        QVERIFY(m_window->findChild<UnitBox*>()->isVisible());
    }
    /// Those that go with Alt, each as often as it leads somewhere.
    QString keysInTheWindow() const
    {
        QStringList keys;
        const auto add = [&keys](const QString& text) {
            keys << text.mid(text.indexOf("&"_q) + 1, 1).toLower();
        };
        for (const QAction* menu : m_window->menuBar()->actions())
            add(menu->text());
        for (const QLabel* label : m_window->centralWidget()->findChildren<QLabel*>()) {
            if (label->buddy())
                add(label->text());
        }
        keys.sort();
        return keys.join(" "_q);
    }
    void startWork()
    {
        find<QAction>("&Pack"_q)->trigger();
        QTRY_VERIFY(dialog()->isVisible() && bar("Total"_q)->value() > 0);
        QVERIFY(inStatusBar()->isVisible());
    }
    /// The first one whose text begins so.
    template <typename Widget>
    Widget* find(const QString& text) const
    {
        const auto all = m_window->findChildren<Widget*>();
        const auto isIt = [&text](const Widget* widget) { return widget->text().startsWith(text); };
        const auto found = std::find_if(all.begin(), all.end(), isIt);
        return found == all.end() ? nullptr : *found;
    }
    template <typename Widget>
    Widget* field(const QString& label) const
    {
        return qobject_cast<Widget*>(find<QLabel>(label)->buddy());
    }
    QProgressBar* bar(const QString& label) const { return field<QProgressBar>(label); }
    PresetTable* presets() const { return m_window->findChild<PresetTable*>(); }
    ProgressDialog* dialog() const { return m_window->findChild<ProgressDialog*>(); }
    QProgressBar* inStatusBar() const { return m_window->statusBar()->findChild<QProgressBar*>(); }

    ConfigManager* m_config = ConfigManager::getInstance();
    std::unique_ptr<TestLog::ActiveLog> m_log;
    std::unique_ptr<QMainWindow> m_window;
};

GLOBALS_TEST_MAIN(PlannerTest, QApplication)
#include "tst_planner.moc"
