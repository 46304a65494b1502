#include "support/PresetTypes.h"

#include <QStringList>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace globalsctl {

namespace {

/// The number that \p number was written as: 0.0022, not 0.0022000000154972076.
double asWritten(float number)
{
    constexpr std::size_t LONGEST = 32;
    std::array<char, LONGEST> text{};
    const auto result = std::to_chars(text.data(), text.data() + text.size(), number);
    return QByteArray(text.data(), static_cast<int>(result.ptr - text.data())).toDouble();
}

bool isFiniteNumber(const QString& text)
{
    bool isNumber = false;
    const double number = text.toDouble(&isNumber);
    return isNumber && std::isfinite(number);
}

bool isWholeNumber(const QString& text)
{
    bool isNumber = false;
    text.toInt(&isNumber);
    return isNumber;
}

bool isTruthValue(const QString& text)
{
    // Not trimmed: the application takes any other text for true, " false" included.
    const QStringList words = {QStringLiteral("true"), QStringLiteral("false"), QStringLiteral("1"),
                               QStringLiteral("0")};
    return words.contains(text, Qt::CaseInsensitive);
}

bool isText(const QString& /*text*/)
{
    return true;
}

QJsonValue number(const QVariant& value)
{
    return value.userType() == QMetaType::Float ? asWritten(value.toFloat()) : value.toDouble();
}

QJsonValue wholeNumber(const QVariant& value)
{
    return value.toInt();
}

QJsonValue truthValue(const QVariant& value)
{
    return value.toBool();
}

QJsonValue text(const QVariant& value)
{
    return value.toString();
}

/// The last one, text, stands for every other name.
constexpr std::array<PresetType, 5> TYPES = {{
    {"double", "a number", &isFiniteNumber, &number},
    {"float", "a number", &isFiniteNumber, &number},
    {"int", "a whole number", &isWholeNumber, &wholeNumber},
    {"bool", "true, false, 1 or 0", &isTruthValue, &truthValue},
    {"string", "text", &isText, &text},
}};

QString inWords(double number)
{
    // A million is written in full, 1e300 is not.
    constexpr double LARGEST_IN_FULL = 1e15;
    const bool inFull = std::fabs(number) < LARGEST_IN_FULL && std::trunc(number) == number;
    return QString::number(number, inFull ? 'f' : 'g', QLocale::FloatingPointShortest);
}

} // namespace

const PresetType& presetType(const QString& name)
{
    const auto* found = std::find_if(TYPES.begin(), TYPES.end(), [&name](const PresetType& type) {
        return name == QLatin1String(type.name);
    });
    return found == TYPES.end() ? TYPES.back() : *found;
}

QString inWords(const QJsonValue& normal)
{
    return normal.isDouble() ? inWords(normal.toDouble()) : normal.toVariant().toString();
}

} // namespace globalsctl
