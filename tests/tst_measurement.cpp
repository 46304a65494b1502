#include "TestData.h"
#include "TestLog.h"

#include "globals/ConfigManager.h"
#include "globals/MeasurementManager.h"

#include <QApplication>
#include <QComboBox>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QTranslator>

#include <cmath>

using namespace TEKLUVA;

namespace {

const auto units = &MeasurementManager::getInstance;

E_MeasurementUnit unitOfRow()
{
    return E_MeasurementUnit(TestData::field<int>("unit"));
}

E_MeasurementDimension dimensionOfRow()
{
    return E_MeasurementDimension(TestData::field<int>("dimension"));
}

/// With all digits, because comparing doubles as such allows for a difference.
QString exact(double value)
{
    return QString::number(value, 'g', 17);
}

/// "Translates" to the context and the text.
class Echo : public QTranslator
{
public:
    QString translate(const char* context, const char* text, const char*, int) const override
    {
        return QString::fromUtf8(context) + "/"_q + QString::fromUtf8(text);
    }
    bool isEmpty() const override { return false; }
};

QStringList textsOf(const QComboBox& box)
{
    QStringList texts;
    for (int i = 0; i < box.count(); ++i)
        texts << "%1 %2"_q.arg(box.itemData(i).toInt()).arg(box.itemText(i));
    return texts;
}

} // namespace

class MeasurementTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void knowsUnits_data() { TestData::addRows("measurement-units.txt"); }
    void knowsUnits()
    {
        const auto dimension = dimensionOfRow();
        const auto unit = unitOfRow();
        const auto number = [](const char* column) { return TestData::field<double>(column); };
        QCOMPARE(exact(units()->toMeasurementUnit(dimension, unit, number("value"))), exact(number("to")));
        QCOMPARE(exact(units()->fromMeasurementUnit(dimension, unit, number("value"))),
                 exact(number("from")));
        QCOMPARE(units()->getMeasurementUnitPrecision(dimension, unit),
                 TestData::field<unsigned int>("decimals"));
        QCOMPARE(units()->getMeasurementUnitStep(dimension, unit), number("step"));
        QCOMPARE(units()->getMeasurementUnitName(dimension, unit), TestData::field("name"));
        QCOMPARE(units()->getMeasurementUnitAbbrevation(dimension, unit), TestData::field("short"));
    }

    void tableHereIsComplete()
    {
        const QByteArray rows = TestData::content("measurement-units.txt");
        for (const E_MeasurementUnit unit : MeasurementManager::getMeasurementUnits())
            QVERIFY2(rows.contains(" | 1 | " + QByteArray::number(unit) + " | "), QByteArray::number(unit));
    }

    void functionsOfOneDimensionAgree()
    {
        QCOMPARE(units()->toLinearMeasurementUnit(E_MU_FOOT, 30.48), 1.0);
        QCOMPARE(units()->fromLinearMeasurementUnit(E_MU_INCH, 1.0), 2.54);
        QCOMPARE(units()->toSquaredMeasurementUnit(E_MU_MILLIMETER, 10000.0), 1.0);
        QCOMPARE(units()->fromSquaredMeasurementUnit(E_MU_INCH, 1.0), 929.0304);
        QCOMPARE(units()->toCubicMeasurementUnit(E_MU_METER, 1000000.0), 1.0);
        QCOMPARE(units()->fromCubicMeasurementUnit(E_MU_FOOT, 1.0), 28316.846592);
        QCOMPARE(units()->getLinearMeasurementUnitPrecision(E_MU_INCH), 2U);
        QCOMPARE(units()->getLinearMeasurementUnitStep(E_MU_METER), 0.005);
        QCOMPARE(units()->getSquaredMeasurementUnitAbbrevation(E_MU_METER), "m²"_q);
        QCOMPARE(units()->getCubicMeasurementUnitAbbrevation(E_MU_METER), "m³"_q);
    }

    void writesValues_data() { TestData::addRows("measurement-strings.txt"); }
    void writesValues()
    {
        const auto dimension = dimensionOfRow();
        const auto unit = unitOfRow();
        const auto value = TestData::field<double>("value");
        const QString precision = TestData::field("precision");
        for (const bool whole : {false, true}) {
            const QString text =
                precision.isEmpty()
                    ? units()->createMeasurementString(dimension, unit, value, whole)
                    : units()->createMeasurementString(dimension, unit, value,
                                                       TestData::valueOf<unsigned int>(precision), whole);
            QCOMPARE("["_q + text + "]"_q, TestData::field(whole ? "whole" : "number"));
        }
    }

    void writesTheDigitsOfQt()
    {
        QRandomGenerator random(1);
        for (int i = 0; i < 100000; ++i) {
            const double quarters = random.bounded(-1000000, 1000001) / 4.0; // halves of a decimal
            const double nearHalf = quarters / 25 + 0.05;
            for (const double value :
                 {quarters, nearHalf, std::nextafter(nearHalf, 0), nearHalf * 1e11, -0.0}) {
                QString digits = QString::number(value, 'f', 1).replace(QLatin1Char('.'), QLatin1Char(','));
                if (digits.endsWith(",0"_q))
                    digits.chop(2);
                QCOMPARE(units()->createMeasurementString(E_MD_LINEAR, E_MU_CENTIMETER, value, false),
                         digits);
            }
        }
    }

    void readsAbbreviations_data() { TestData::addRows("measurement-abbreviations.txt"); }
    void readsAbbreviations()
    {
        const QString text = TestData::field("text");
        const auto found = units()->getMeasurementFromAbbrevation(text.mid(1, text.size() - 2));
        QCOMPARE(int(found.first), int(dimensionOfRow()));
        QCOMPARE(int(found.second), int(unitOfRow()));
    }

    void keepsPreferredUnits()
    {
        const QString file = ConfigManager::getInstance()->getPath(E_PT_SETTINGS) + "settings.ini"_q;
        QCOMPARE(units()->getPrefferedConstructionUnit(), E_MU_CENTIMETER);
        QVERIFY(TestFiles::write(file, "[Locale]\narrange_unit=FT\n"));
        QCOMPARE(units()->getPrefferedArrangementUnit(), E_MU_FOOT);

        QSignalSpy construction(units(), &MeasurementManager::constructionMeasurementUnitChanged);
        QSignalSpy arrangement(units(), &MeasurementManager::arrangementMeasurementUnitChanged);
        units()->setPrefferedConstructionUnit(E_MU_INCH);
        units()->setPrefferedConstructionUnit(E_MU_INCH);
        QCOMPARE(construction.count(), 1);
        units()->setPrefferedArrangementUnit(E_MU_UNDEFINED);
        QCOMPARE(arrangement.count(), 1);
        QCOMPARE(TestFiles::textOf(file), QByteArray("[Locale]\narrange_unit=cm\nconst_unit=in\n"));
        units()->resetPrefferedConstructionUnit();
        units()->resetPrefferedArrangementUnit();
        QCOMPARE(units()->getPrefferedConstructionUnit(), E_MU_CENTIMETER);
        QVERIFY(!TestFiles::contentOf(file).contains("_unit"));
        QCOMPARE(construction.count() + arrangement.count(), 2);
    }

    void offersUnits()
    {
        QComboBox box;
        box.addItem("own"_q);
        units()->fillMeasurementComboBox(&box);
        units()->fillMeasurementComboBox(&box);
        const QStringList german = {"0 own"_q, "1 mm - Millimeter"_q, "2 cm - Zentimeter"_q, "3 m - Meter"_q,
                                    "4 in - Zoll (US/GB)"_q};
        QCOMPARE(textsOf(box), german + QStringList({"1 "_q, "2 "_q, "3 "_q, "4 "_q}));
        Echo echo;
        QCoreApplication::installTranslator(&echo);
        box.removeItem(1);
        units()->updateMeasurementComboBoxLanguage(&box);
        QCOMPARE(textsOf(box).mid(0, 3),
                 (QStringList{"0 own"_q, "2 QObject/cm - Zentimeter"_q, "3 QObject/m - Meter"_q}));
        QCOMPARE(units()->getMeasurementUnitName(E_MD_LINEAR, E_MU_FOOT),
                 "TEKLUVA::MeasurementManager/Fuß"_q);
        QCOMPARE(units()->getMeasurementUnitName(E_MeasurementDimension(4), E_MU_FOOT), QString());
    }

    void whatIsTypedIsRead_data() { TestData::addRows("measurement-typed.txt"); }
    void whatIsTypedIsRead()
    {
        const auto value = units()->parseMeasurement(dimensionOfRow(), unitOfRow(), TestData::field("text"));
        QCOMPARE(value.has_value(), !TestData::field("value").isEmpty());
        if (value)
            QCOMPARE(*value, TestData::field("value").toDouble());
        if (dimensionOfRow() == E_MD_LINEAR && unitOfRow() == E_MU_CENTIMETER)
            QCOMPARE(units()->parseMeasurement(" "_q + TestData::field("text") + " "_q), value);
    }

    void whatIsShownIsReadBack()
    {
        auto* random = QRandomGenerator::global();
        for (int i = 0; i < 3000; ++i) {
            const auto dimension = E_MeasurementDimension(1 + i % 3);
            const auto unit = E_MeasurementUnit(random->bounded(7));
            const double value = (random->generateDouble() - 0.5) * std::pow(10, random->bounded(7));
            const QString shown = units()->createMeasurementString(dimension, unit, value, true);
            const auto read = units()->parseMeasurement(dimension, E_MU_UNDEFINED, shown);
            QVERIFY2(read, qPrintable(shown));
            // Half of the last decimal: of the unit, or of an inch with two of them.
            const bool isInFeet = dimension == E_MD_LINEAR && (unit == E_MU_INCH || unit == E_MU_FOOT);
            const double last =
                isInFeet ? units()->fromLinearMeasurementUnit(E_MU_INCH, 0.01)
                         : units()->fromMeasurementUnit(
                             dimension, unit,
                             std::pow(10, -int(units()->getMeasurementUnitPrecision(dimension, unit))));
            QVERIFY2(std::abs(*read - value) <= 0.501 * last, qPrintable(shown));
        }
    }
};

GLOBALS_TEST_MAIN(MeasurementTest, QApplication)
#include "tst_measurement.moc"
