#include "CommandLine.h"
#include "commands/Command.h"
#include "support/ExitCode.h"
#include "support/Output.h"

#include "globals/MeasurementManager.h"

#include <QCommandLineParser>
#include <QJsonObject>
#include <QLocale>

#include <cmath>
#include <optional>

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

/// The number of the one of \p words that is the value of \p option. For any other value prints a usage error
/// and returns nothing.
std::optional<int> chosen(const QCommandLineParser& line, const QString& option, const Words& words)
{
    const QString given = line.value(option);
    QStringList known;
    for (const auto& [word, number] : words) {
        if (word == given)
            return number;
        known << word;
    }
    printUsageError(QStringLiteral("units: --%1 is \"%2\", not one of %3")
                        .arg(option, given, known.join(QStringLiteral(", "))));
    return std::nullopt;
}

void printValue(const QCommandLineParser& line, double number, const QString& text)
{
    if (line.isSet(QStringLiteral("json"))) {
        printResult(QJsonObject{{QStringLiteral("number"), number}, {QStringLiteral("text"), text}});
        return;
    }
    printResult(QString::number(number, 'g', QLocale::FloatingPointShortest));
    printResult(text);
}

} // namespace

int convertUnits(const QCommandLineParser& line)
{
    const auto from = chosen(line, QStringLiteral("from"), units());
    const auto to = from ? chosen(line, QStringLiteral("to"), units()) : std::nullopt;
    const auto dimension = to ? chosen(line, QStringLiteral("dimension"), dimensions()) : std::nullopt;
    if (!dimension)
        return WrongUsage;

    const QString given = line.positionalArguments().value(0);
    bool isNumber = false;
    const double value = given.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(value))
        return printUsageError(QStringLiteral("units: VALUE is \"%1\", not a number").arg(given));
    const MeasurementManager* manager = MeasurementManager::getInstance();
    const auto in = E_MeasurementDimension(*dimension);
    const auto shown = E_MeasurementUnit(*to);
    const double internal = manager->fromMeasurementUnit(in, E_MeasurementUnit(*from), value);
    const double number = manager->toMeasurementUnit(in, shown, internal);
    if (!std::isfinite(number))
        return printUsageError(QStringLiteral("units: VALUE is too large"));
    printValue(line, number, manager->createMeasurementString(in, shown, internal, true));
    return Done;
}

} // namespace globalsctl
