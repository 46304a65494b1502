#include "commands/Command.h"
#include "support/Console.h"
#include "support/Failure.h"
#include "support/Output.h"
#include "support/Table.h"

#include "globals/Colour.h"

#include <QCommandLineParser>
#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>
#include <array>
#include <cmath>

namespace globalsctl {

namespace {

using Components = std::array<float, 3>;

Components colourOf(double kelvin)
{
    Components rgb = {};
    TEKLUVA::temperaturToColor(kelvin, rgb[0], rgb[1], rgb[2]);
    return rgb;
}

/// What a screen can show of a colour.
Components clamped(Components rgb)
{
    for (float& component : rgb)
        component = std::clamp(component, 0.0F, 1.0F);
    return rgb;
}

Components hsvOf(const Components& rgb)
{
    Components hsv = {};
    TEKLUVA::RGBtoHSV(rgb[0], rgb[1], rgb[2], hsv[0], hsv[1], hsv[2]);
    return hsv;
}

int byteOf(float component)
{
    return static_cast<int>(std::lround(component * 255));
}

QString hexOf(const Components& rgb)
{
    QString hex(QLatin1Char('#'));
    for (const float component : rgb)
        hex += QStringLiteral("%1").arg(byteOf(component), 2, 16, QLatin1Char('0'));
    return hex;
}

QString swatchOf(const Components& rgb)
{
    return QStringLiteral("\033[48;2;%1;%2;%3m%4\033[0m")
        .arg(byteOf(rgb[0]))
        .arg(byteOf(rgb[1]))
        .arg(byteOf(rgb[2]))
        .arg(QString(16, QLatin1Char(' ')));
}

bool mayPrintColours()
{
    return qEnvironmentVariableIsEmpty("NO_COLOR") && isCapableTerminal(StandardStream::Output);
}

QString decimals(float value, int count = 3)
{
    return QString::number(static_cast<double>(value), 'f', count);
}

/// Three decimals, as in the text; more would only show the rounding of single precision.
QJsonArray arrayOf(const Components& values)
{
    QJsonArray array;
    for (const float value : values)
        array << decimals(value).toDouble();
    return array;
}

QString listOf(const Components& values, int countOfFirst = 3)
{
    return aligned({{decimals(values[0], countOfFirst), decimals(values[1]), decimals(values[2])}});
}

void printText(const Components& rgb, const Components& shown)
{
    printResult(aligned({{QStringLiteral("RGB"), listOf(rgb)},
                         {QStringLiteral("hex"), hexOf(shown)},
                         {QStringLiteral("HSV"), listOf(hsvOf(shown), 1)}}));
    if (mayPrintColours())
        printBytes(swatchOf(shown).toLatin1() + '\n');
}

} // namespace

int showColour(const QCommandLineParser& line)
{
    const QString argument = line.positionalArguments().value(0);
    bool isNumber = false;
    const double kelvin = argument.toDouble(&isNumber);
    if (!isNumber || !std::isfinite(kelvin) || kelvin <= 0)
        throw UsageError(QStringLiteral("\"%1\" is no temperature above 0").arg(argument));

    const Components rgb = colourOf(kelvin);
    if (!std::all_of(rgb.begin(), rgb.end(), [](float component) { return std::isfinite(component); })) {
        throw Failure(
            QStringLiteral("the light of %1 kelvins is too weak or too strong to compute its colour")
                .arg(argument));
    }
    const Components shown = clamped(rgb);
    if (line.isSet(QStringLiteral("json"))) {
        printAnswer({{QStringLiteral("kelvin"), kelvin},
                                {QStringLiteral("rgb"), arrayOf(rgb)},
                                {QStringLiteral("hex"), hexOf(shown)},
                                {QStringLiteral("hsv"), arrayOf(hsvOf(shown))}});
    } else {
        printText(rgb, shown);
    }
    return Done;
}

} // namespace globalsctl
