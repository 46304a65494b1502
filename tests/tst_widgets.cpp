#include "TestData.h"
#include "TestHome.h"

#include "globals/ConfigManager.h"
#include "globals/PresetManager.h"
#include "globals/Translations.h"
#include "globals/widgets/PresetTable.h"
#include "globals/widgets/UnitBox.h"

#include <QApplication>
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

void speak(const QString& language)
{
    showLanguage(language);
    QCoreApplication::sendPostedEvents();
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

    void aUnitBoxShowsAnyUnit_data()
    {
        QTest::addColumn<int>("unit");
        QTest::addColumn<QString>("text");
        QTest::newRow("millimetre") << int(E_MU_MILLIMETER) << "mm - Millimeter"_q;
        QTest::newRow("foot") << int(E_MU_FOOT) << "ft - Fuß"_q;
        QTest::newRow("none") << int(E_MU_UNDEFINED) << "cm - Zentimeter"_q;
        QTest::newRow("unknown") << 7 << "cm - Zentimeter"_q;
    }
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
        speak("en"_q);
        QCOMPARE(itemsOf(box), QStringList({"mm - Millimetre"_q, "cm - Centimetre"_q, "m - Metre"_q,
                                            "in - Inch (US/GB)"_q, "ft - Foot"_q}));
        QStringList titles;
        for (int column = 0; column < table.model()->columnCount(); ++column)
            titles << table.model()->headerData(column, Qt::Horizontal).toString();
        QCOMPARE(titles, QStringList({"Key"_q, "Type"_q, "Value"_q, "Bounds"_q}));
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
        QCOMPARE(table.getPresetAt(table.model()->index(2, 3)), E_PV_ROOM_HEIGHT);
        QCOMPARE(table.getPresetAt(QModelIndex()), E_PV_NONE);
        presets->setPreset(E_PV_ROOM_HEIGHT, 300);
        QCOMPARE(rows(), before);
        table.refresh();
        QCOMPARE(rows().mid(4, 3), QStringList({"room_height"_q, "double"_q, "300"_q}));
        QCOMPARE(table.model()->rowCount(), PresetManager::describePresets().size());
        delete presets;
    }

private:
    ConfigManager* m_config = ConfigManager::getInstance();
};

GLOBALS_TEST_MAIN(WidgetsTest, QApplication)
#include "tst_widgets.moc"
