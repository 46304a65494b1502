#include "TestData.h"

#include "globals/ConfigManager.h"
#include "globals/PresetManager.h"
#include "globals/Translations.h"
#include "globals/Worker.h"
#include "globals/widgets/PresetTable.h"
#include "globals/widgets/ProgressDialog.h"
#include "globals/widgets/UnitBox.h"

#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>

using namespace TEKLUVA;

namespace {

QStringList itemsOf(const QComboBox& box)
{
    QStringList items;
    for (int i = 0; i < box.count(); ++i)
        items << box.itemText(i);
    return items;
}

const auto states = &StateHandler::getInstance;

/// The visible rows: "label value/maximum", without a maximum for a bar that is busy.
QStringList rowsOf(const QDialog& dialog)
{
    QStringList rows;
    const auto labels = dialog.findChildren<QLabel*>();
    for (const QLabel* label : labels) {
        const auto* bar = qobject_cast<QProgressBar*>(label->buddy());
        if (label->isVisibleTo(&dialog) || bar->isVisibleTo(&dialog))
            rows << "%1 %2/%3"_q.arg(label->text()).arg(bar->value()).arg(bar->maximum());
    }
    return rows;
}

void speak(const QString& language)
{
    showLanguage(language);
    QCoreApplication::sendPostedEvents();
}

void addStep(const QString& name, ProgressStep::E_ProgressType type, bool inFront = false)
{
    states()->addProgressStep(name, type, name, QString(), inFront, ProgressStep::E_PS_WAITING);
}

void addStepsOfAllKinds()
{
    addStep("bar"_q, ProgressStep::E_PRT_BAR);
    addStep("percent"_q, ProgressStep::E_PRT_PERCENT);
    addStep("files & more"_q, ProgressStep::E_PRT_TRANSFER, true);
    addStep("busy"_q, ProgressStep::E_PRT_BAR);
    addStep("huge"_q, ProgressStep::E_PRT_BAR);
    addStep("hidden"_q, ProgressStep::E_PRT_BAR);
    states()->setCurrentProgressBarStep("bar"_q, 40);
    states()->getStepData("percent"_q)->handleProgressState(3, 4);
    states()->setProgressStepText("files & more"_q, "a.zip"_q);
    states()->getStepData("files & more"_q)->handleProgressState(1024, 4096);
    states()->setProgressBarSteps("busy"_q, 0);
    states()->setProgressBarSteps("huge"_q, 4294967295U);
    states()->setCurrentProgressBarStep("huge"_q, 2147483648U);
    states()->getStepData("hidden"_q)->setVisible(false);
}

} // namespace

class WidgetsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        speak("de"_q);
        m_config->clearSettings();
    }

    void aUnitBoxShowsAnyUnit_data() { TestData::addRows("unit-boxes.txt"); }
    void aUnitBoxShowsAnyUnit()
    {
        const auto unit = E_MeasurementUnit(TestData::field<int>("unit"));
        QComboBox plain;
        MeasurementManager::getInstance()->fillMeasurementComboBox(&plain);
        UnitBox box;
        for (int times = 0; times < 2; ++times) {
            selectUnit(&plain, unit);
            box.setUnit(unit);
        }
        QCOMPARE(plain.currentText(), TestData::field("text"));
        QCOMPARE(itemsOf(box), itemsOf(plain));
        QCOMPARE(box.count(), unit == E_MU_FOOT ? 5 : 4);
        QCOMPARE(box.getUnit(), selectedUnit(&plain));
    }

    void anEmptyBoxHasNoUnit()
    {
        QComboBox empty;
        selectUnit(&empty, E_MU_METER);
        QCOMPARE(selectedUnit(&empty), E_MU_UNDEFINED);
    }

    void aUnitBoxStoresTheChoice()
    {
        auto* units = MeasurementManager::getInstance();
        units->setPrefferedArrangementUnit(E_MU_FOOT);
        UnitBox construction(E_UU_CONSTRUCTION);
        UnitBox arrangement(E_UU_ARRANGEMENT);
        QSignalSpy changes(&arrangement, &UnitBox::unitChanged);
        QCOMPARE(construction.getUnit(), E_MU_CENTIMETER);
        QCOMPARE(arrangement.getUnit(), E_MU_FOOT);
        QVERIFY(!m_config->hasSetting("Locale"_q, "const_unit"_q)); // shown, not chosen
        QTest::keyClick(&arrangement, Qt::Key_Up);
        QCOMPARE(units->getPrefferedArrangementUnit(), E_MU_INCH);
        units->setPrefferedArrangementUnit(E_MU_METER);
        QCOMPARE(arrangement.getUnit(), E_MU_METER);
        QCOMPARE(changes.size(), 2);
        QCOMPARE(construction.getUnit(), E_MU_CENTIMETER);
    }

    void widgetsSpeakTheUsersLanguage()
    {
        UnitBox box;
        box.setUnit(E_MU_FOOT);
        const PresetTable table;
        const ProgressDialog dialog;
        speak("en"_q);
        QCOMPARE(dialog.findChild<QPushButton*>()->text(), "A&bort"_q);
        QCOMPARE(itemsOf(box), QStringList({"mm - Millimetre"_q, "cm - Centimetre"_q, "m - Metre"_q,
                                            "in - Inch (US/GB)"_q, "ft - Foot"_q}));
        QStringList titles = {table.accessibleName()};
        for (int column = 0; column < table.model()->columnCount(); ++column)
            titles << table.model()->headerData(column, Qt::Horizontal).toString();
        QCOMPARE(titles, QStringList({"Presets"_q, "Key"_q, "Type"_q, "Value"_q, "Bounds"_q}));
    }

    void aPresetTableShowsWhatIsInForce()
    {
        auto* presets = PresetManager::getInstance();
        presets->setInitialPresets();
        PresetTable table;
        const auto rows = [&table] {
            QStringList texts;
            for (int row : {0, 2, 99}) {
                for (int column = 0; column < table.model()->columnCount(); ++column)
                    texts << table.model()->index(row, column).data().toString();
            }
            return texts;
        };
        const QStringList before = rows();
        QCOMPARE(table.model()->rowCount(), PresetManager::describePresets().size());
        QCOMPARE(before.mid(4, 4),
                 QStringList({"room_height"_q, "double"_q, "270"_q, "min_room_height to max_room_height"_q}));
        QCOMPARE(before[10], "2.1e-05"_q);                       // in single precision
        QVERIFY(table.testAttribute(Qt::WA_SetLayoutDirection)); // also where texts run to the left
        const QModelIndex bounds = table.model()->index(2, 3);
        QCOMPARE(table.getPresetAt(bounds), E_PV_ROOM_HEIGHT);
        QCOMPARE(bounds.data(Qt::ToolTipRole), bounds.data());
        QVERIFY(!bounds.flags().testFlag(Qt::ItemIsEditable));
        QCOMPARE(table.getPresetAt(QModelIndex()), E_PV_NONE);
        presets->setPreset(E_PV_ROOM_HEIGHT, 300);
        QCOMPARE(rows(), before);
        table.refresh();
        QCOMPARE(rows().mid(4, 3), QStringList({"room_height"_q, "double"_q, "300"_q}));
        QCOMPARE(table.model()->rowCount(), PresetManager::describePresets().size());
        delete presets;
    }

    void aProgressDialogShowsAProcess()
    {
        ProgressDialog dialog;
        states()->newProcess("Packing"_q, true, false);
        addStepsOfAllKinds();
        QTRY_VERIFY(dialog.isVisible());
        QTRY_COMPARE((QStringList(dialog.windowTitle()) + rowsOf(dialog)).join("; "_q),
                     "Packing; Gesamt 31/100; files && more: a.zip (4 kB) 1024/4096; bar 40/100; "
                     "percent 75/100; busy 0/0; huge 715827882/1431655765"_q);
        states()->setProgressStepState("busy"_q, ProgressStep::E_PS_FINISHED);
        states()->setProcessName("Testing"_q);
        QTRY_COMPARE(dialog.windowTitle(), "Testing"_q);
        QCOMPARE(rowsOf(dialog).mid(4).join("; "_q), "busy 1/1; huge 715827882/1431655765"_q);
        dialog.reject(); // without a button there is no abort
        QVERIFY(dialog.isVisible() && !states()->wasAborted());
        states()->endProcess(E_PR_DONE);
        QVERIFY(!dialog.isVisible());
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        states()->newProcess("Next"_q, false, true);
        addStep("first"_q, ProgressStep::E_PRT_PERCENT_ALT); // with the number that another one had
        states()->getStepData("first"_q)->handleProgressState(3, 4);
        QTRY_COMPARE(rowsOf(dialog), QStringList({"first 75/100"_q}));
        QCOMPARE(dialog.findChildren<QLabel*>().last()->textFormat(), Qt::PlainText);
        states()->setProgressStepState("first"_q, ProgressStep::E_PS_FINISHED);
        QTRY_COMPARE(rowsOf(dialog), QStringList({"first 100/100"_q}));
        states()->endProcess(E_PR_FAILED);
        QCOMPARE(dialog.result(), int(QDialog::Rejected));
    }

    void aLongLabelKeepsItsEnds()
    {
        ProgressDialog dialog;
        states()->newProcess("P"_q, false, false);
        addStep("<a>"_q + QString(300, QLatin1Char('m')) + "&z"_q, ProgressStep::E_PRT_BAR);
        const auto label = [&dialog] { return dialog.findChildren<QLabel*>().last(); };
        QTRY_VERIFY2(label()->text().startsWith("<a>m"_q), qPrintable(label()->text()));
        QVERIFY(label()->text().endsWith("m&&z"_q) && label()->toolTip().contains("&lt;a&gt;m"_q));
        QTRY_VERIFY(label()->width() >= label()->sizeHint().width());
        states()->endProcess(E_PR_DONE);
    }

    void aLateEndDoesNotHideTheNextProcess()
    {
        ProgressDialog dialog;
        runWorker("P"_q, [] {}).wait(); // its last signal is still waiting for the event loop
        states()->newProcess("Next"_q, false, false);
        QTRY_VERIFY(dialog.isVisible());
        states()->endProcess(E_PR_DONE);
    }

    void aProgressDialogAborts()
    {
        ProgressDialog dialog;
        auto* button = dialog.findChild<QPushButton*>();
        const QMap<QString, std::function<void()>> ways = {
            {"button"_q, [button] { QTest::keyClick(button, Qt::Key_Space); }},
            {"escape"_q, [&dialog] { QTest::keyClick(&dialog, Qt::Key_Escape); }},
            {"close"_q, [&dialog] { dialog.close(); }}};
        for (const QString& way : ways.keys()) {
            const TestHome::Turn turn(way);
            const auto result = runWorker("P"_q, [] {
                while (!states()->wasAborted())
                    QThread::msleep(1);
            });
            QTRY_VERIFY(button->isVisible() && button->isEnabled());
            ways[way]();
            QVERIFY(dialog.isVisible()); // until the work has ended
            QTRY_VERIFY(!dialog.isVisible());
            QVERIFY(states()->wasAborted());
        }
    }

    void aShortProcessIsNotShown()
    {
        ProgressDialog dialog;
        dialog.setMinimumDuration(20);
        QCOMPARE(dialog.getMinimumDuration(), 20);
        for (const bool isShort : {true, false}) {
            bool wasShown = false;
            QElapsedTimer clock;
            clock.start();
            states()->newProcess("P"_q, true, true);
            while (isShort ? clock.elapsed() < 10 : !wasShown) {
                QCoreApplication::processEvents();
                wasShown = dialog.isVisible();
            }
            QVERIFY(clock.elapsed() >= 20 || !wasShown); // a busy machine makes a short process long
            states()->endProcess(E_PR_DONE);
            QTest::qWait(25);
            QVERIFY(!dialog.isVisible());
        }
    }

private:
    ConfigManager* m_config = ConfigManager::getInstance();
};

GLOBALS_TEST_MAIN(WidgetsTest, QApplication)
#include "tst_widgets.moc"
