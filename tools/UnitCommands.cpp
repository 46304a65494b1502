#include "tools/Command.h"
#include "tools/CommandLine.h"
#include "tools/Output.h"

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

std::optional<E_MeasurementDimension> dimensionOf(const QString& name)
{
    for (const DimensionRow& row : DIMENSIONS) {
        if (name == QLatin1String(row.name))
            return row.dimension;
    }
    return std::nullopt;
}

std::optional<E_MeasurementUnit> unitOf(const QString& abbreviation)
{
    for (int unit = E_MU_MILLIMETER; unit <= E_MU_FOOT; ++unit) {
        const auto candidate = E_MeasurementUnit(unit);
        if (MeasurementManager::getInstance()->getLinearMeasurementUnitAbbrevation(candidate) == abbreviation)
            return candidate;
    }
    return std::nullopt;
}

int complainOfWord(const char* option, const QString& word, const char* expected)
{
    return complainOfUsage(QStringLiteral("units: --%1 is \"%2\", not one of %3")
                               .arg(QString::fromLatin1(option), word, QString::fromLatin1(expected)));
}

void answerValue(const QCommandLineParser& line, double number, const QString& text)
{
    if (line.isSet(QStringLiteral("json"))) {
        answer(QJsonObject{{QStringLiteral("number"), number}, {QStringLiteral("text"), text}});
        return;
    }
    answer(QString::number(number, 'g', QLocale::FloatingPointShortest));
    answer(text);
}

} // namespace

int convertUnits(const QCommandLineParser& line)
{
    const QString words[] = {line.value(QStringLiteral("from")), line.value(QStringLiteral("to")),
                             line.value(QStringLiteral("dimension"))};
    const auto from = unitOf(words[0]);
    const auto to = unitOf(words[1]);
    const auto dimension = dimensionOf(words[2]);
    if (!from)
        return complainOfWord("from", words[0], "mm, cm, m, in, ft");
    if (!to)
        return complainOfWord("to", words[1], "mm, cm, m, in, ft");
    if (!dimension)
        return complainOfWord("dimension", words[2], "linear, squared, cubic");

    const QString given = line.positionalArguments().value(0);
    bool isNumber = false;
    const double value = given.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(value))
        return complainOfUsage(QStringLiteral("units: VALUE is \"%1\", not a number").arg(given));
    const MeasurementManager* units = MeasurementManager::getInstance();
    const double internal = units->fromMeasurementUnit(*dimension, *from, value);
    const double number = units->toMeasurementUnit(*dimension, *to, internal);
    if (!std::isfinite(number))
        return complainOfUsage(QStringLiteral("units: VALUE is too large"));
    answerValue(line, number, units->createMeasurementString(*dimension, *to, internal, true));
    return Done;
}

} // namespace globalsctl
