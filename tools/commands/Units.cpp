#include "commands/Command.h"
#include "support/Failure.h"
#include "support/Output.h"

#include "globals/MeasurementManager.h"

#include <QCommandLineParser>
#include <QJsonArray>
#include <QJsonObject>
#include <QLocale>

#include <cmath>

namespace globalsctl {

using namespace TEKLUVA;

namespace {

struct DimensionRow
{
    const char* name;
    E_MeasurementDimension dimension;
};

constexpr DimensionRow DIMENSIONS[] = {
    {"linear", E_MD_LINEAR},
    {"squared", E_MD_SQUARED},
    {"cubic", E_MD_CUBIC},
};

using Words = QList<std::pair<QString, int>>;

/// The word for each dimension, with its number.
Words dimensions()
{
    Words words;
    for (const DimensionRow& row : DIMENSIONS)
        words.append({QString::fromLatin1(row.name), row.dimension});
    return words;
}

/// The word for each unit, with its number.
Words units()
{
    Words words;
    for (const E_MeasurementUnit unit : MeasurementManager::getMeasurementUnits())
        words.append({MeasurementManager::getInstance()->getLinearMeasurementUnitAbbrevation(unit), unit});
    return words;
}

/// The number of the one of \p words that is the value of \p option. Throws UsageError for any other value.
int chosen(const QCommandLineParser& line, const QString& option, const Words& words)
{
    const QString given = line.value(option);
    QStringList known;
    for (const auto& [word, number] : words) {
        if (word == given)
            return number;
        known << word;
    }
    throw UsageError(
        QStringLiteral("--%1 is \"%2\", not one of %3").arg(option, given, known.join(QStringLiteral(", "))));
}

void printValue(const QCommandLineParser& line, double number, const QString& text)
{
    if (line.isSet(QStringLiteral("json"))) {
        printAnswer({{QStringLiteral("number"), number}, {QStringLiteral("text"), text}});
        return;
    }
    printResult(QString::number(number, 'g', QLocale::FloatingPointShortest));
    printResult(text);
}

/// What a length of one \p unit is in cm.
double centimetresOf(E_MeasurementUnit unit)
{
    return MeasurementManager::getInstance()->fromLinearMeasurementUnit(unit, 1);
}

void printUnits()
{
    const MeasurementManager* manager = MeasurementManager::getInstance();
    QList<QStringList> rows = {{QStringLiteral("UNIT"), QStringLiteral("IN CM"), QStringLiteral("DECIMALS"),
                                QStringLiteral("AREA"), QStringLiteral("VOLUME")}};
    for (const E_MeasurementUnit unit : MeasurementManager::getMeasurementUnits()) {
        rows << QStringList{manager->getLinearMeasurementUnitAbbrevation(unit),
                            QString::number(centimetresOf(unit)),
                            QString::number(manager->getLinearMeasurementUnitPrecision(unit)),
                            manager->getSquaredMeasurementUnitAbbrevation(unit),
                            manager->getCubicMeasurementUnitAbbrevation(unit)};
    }
    printTable(rows);
}

QJsonArray arrayOfUnits()
{
    const MeasurementManager* manager = MeasurementManager::getInstance();
    QJsonArray array;
    for (const E_MeasurementUnit unit : MeasurementManager::getMeasurementUnits()) {
        array << QJsonObject{
            {QStringLiteral("unit"), manager->getLinearMeasurementUnitAbbrevation(unit)},
            {QStringLiteral("centimetres"), centimetresOf(unit)},
            {QStringLiteral("decimals"), static_cast<int>(manager->getLinearMeasurementUnitPrecision(unit))},
            {QStringLiteral("area"), manager->getSquaredMeasurementUnitAbbrevation(unit)},
            {QStringLiteral("volume"), manager->getCubicMeasurementUnitAbbrevation(unit)}};
    }
    return array;
}

/// Throws UsageError for options that a list has no use for.
int listUnits(const QCommandLineParser& line)
{
    for (const char* option : {"from", "to", "dimension"}) {
        if (line.isSet(QLatin1String(option)))
            throw UsageError(QStringLiteral("--%1 needs a VALUE").arg(QLatin1String(option)));
    }
    if (line.isSet(QStringLiteral("json")))
        printAnswer({{QStringLiteral("units"), arrayOfUnits()}});
    else
        printUnits();
    return Done;
}

} // namespace

int convertUnits(const QCommandLineParser& line)
{
    if (line.positionalArguments().isEmpty())
        return listUnits(line);
    const auto from = E_MeasurementUnit(chosen(line, QStringLiteral("from"), units()));
    const auto to = E_MeasurementUnit(chosen(line, QStringLiteral("to"), units()));
    const auto in = E_MeasurementDimension(chosen(line, QStringLiteral("dimension"), dimensions()));

    const QString given = line.positionalArguments().value(0);
    bool isNumber = false;
    const double value = given.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(value))
        throw UsageError(QStringLiteral("VALUE is \"%1\", not a number").arg(given));
    const MeasurementManager* manager = MeasurementManager::getInstance();
    const double internal = manager->fromMeasurementUnit(in, from, value);
    const double number = manager->toMeasurementUnit(in, to, internal);
    if (!std::isfinite(number))
        throw UsageError(QStringLiteral("VALUE is too large"));
    printValue(line, number, manager->createMeasurementString(in, to, internal, true));
    return Done;
}

} // namespace globalsctl
