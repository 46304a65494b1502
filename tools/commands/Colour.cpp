#include "commands/Command.h"
#include "support/Console.h"
#include "support/Failure.h"
#include "support/Files.h"
#include "support/LightColour.h"
#include "support/Output.h"
#include "support/Table.h"

#include <QBuffer>
#include <QCommandLineParser>
#include <QImage>
#include <QJsonArray>
#include <QJsonObject>

#include <cmath>

namespace globalsctl {

namespace {

constexpr int LIST_STEP = 500; ///< kelvins, in the list

bool mayPrintColours()
{
    return qEnvironmentVariableIsEmpty("NO_COLOR") && isCapableTerminal(StandardStream::Output);
}

/// \p columns blanks on \p rgb.
QByteArray swatchOf(const Components& rgb, int columns)
{
    return QStringLiteral("\033[48;2;%1;%2;%3m%4\033[0m")
        .arg(byteOf(rgb[0]))
        .arg(byteOf(rgb[1]))
        .arg(byteOf(rgb[2]))
        .arg(QString(columns, QLatin1Char(' ')))
        .toLatin1();
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

QJsonObject objectOf(double kelvin)
{
    const Components rgb = colourOf(kelvin);
    const Components shown = clamped(rgb);
    return {{QStringLiteral("kelvin"), kelvin},
            {QStringLiteral("rgb"), arrayOf(rgb)},
            {QStringLiteral("hex"), hexOf(shown)},
            {QStringLiteral("hsv"), arrayOf(hsvOf(shown))}};
}

void printColour(double kelvin)
{
    constexpr int COLUMNS = 16;
    const Components rgb = colourOf(kelvin);
    const Components shown = clamped(rgb);
    printTable({{QStringLiteral("RGB"), listOf(rgb)},
                {QStringLiteral("hex"), hexOf(shown)},
                {QStringLiteral("HSV"), listOf(hsvOf(shown), 1)}});
    if (mayPrintColours())
        printBytes(swatchOf(shown, COLUMNS) + '\n');
}

void printNearest(const Components& given, bool inJson)
{
    const int kelvin = nearestTemperature(given);
    if (inJson) {
        QJsonObject answer = objectOf(kelvin);
        answer.insert(QStringLiteral("given"), hexOf(given));
        answer.insert(QStringLiteral("distance"), decimals(distanceTo(kelvin, given)).toDouble());
        printAnswer(answer);
        return;
    }
    printTable({{QStringLiteral("nearest"), QStringLiteral("%1 K").arg(kelvin)},
                {QStringLiteral("distance"), decimals(distanceTo(kelvin, given))}});
    printColour(kelvin);
}

/// In one line of the terminal, from the coldest to the hottest.
void printStrip()
{
    const int columns = resultColumns();
    QByteArray strip;
    for (int column = 0; column < columns; ++column) {
        const double kelvin = COLDEST + (HOTTEST - COLDEST) * column / qMax(1.0, columns - 1.0);
        strip += swatchOf(clamped(colourOf(kelvin)), 1);
    }
    printBytes(strip + '\n');
}

void printList(bool inJson)
{
    QJsonArray colours;
    QList<QStringList> rows = {{QStringLiteral("KELVIN"), QStringLiteral("HEX"), QStringLiteral("RGB")}};
    for (int kelvin = COLDEST; kelvin <= HOTTEST; kelvin += LIST_STEP) {
        const Components rgb = colourOf(kelvin);
        colours << objectOf(kelvin);
        rows << QStringList{QString::number(kelvin), hexOf(clamped(rgb)), listOf(rgb)};
    }
    if (inJson) {
        printAnswer({{QStringLiteral("colours"), colours}});
        return;
    }
    if (mayPrintColours())
        printStrip();
    printTable(rows);
}

/// An image with a column for each ten kelvins.
void writeImage(const QCommandLineParser& line)
{
    constexpr int STEP_OF_COLUMNS = 10;
    constexpr int ROWS = 128;
    const QString target = line.value(QStringLiteral("image"));
    requireReplaceable(target, {}, existingOf(line));
    QImage image((HOTTEST - COLDEST) / STEP_OF_COLUMNS + 1, ROWS, QImage::Format_RGB32);
    for (int x = 0; x < image.width(); ++x) {
        const Components rgb = clamped(colourOf(COLDEST + x * STEP_OF_COLUMNS));
        for (int y = 0; y < ROWS; ++y)
            image.setPixel(x, y, qRgb(byteOf(rgb[0]), byteOf(rgb[1]), byteOf(rgb[2])));
    }
    QBuffer png;
    if (image.isNull() || !png.open(QIODevice::WriteOnly) || !image.save(&png, "PNG"))
        throw Failure(QStringLiteral("%1 could not be written: there is no PNG in this installation of Qt")
                          .arg(target));
    writeTarget(target, png.data());
}

void printAnswerTo(const QString& argument, bool inJson)
{
    bool isNumber = false;
    const double kelvin = argument.toDouble(&isNumber);
    const auto given = isNumber ? std::nullopt : colourFromHex(argument);
    if (!given && (!isNumber || !std::isfinite(kelvin) || kelvin <= 0))
        throw UsageError(
            QStringLiteral("\"%1\" is no temperature above 0 and no colour like #ffb16e").arg(argument));
    if (given)
        printNearest(*given, inJson);
    else if (inJson)
        printAnswer(objectOf(kelvin));
    else
        printColour(kelvin);
}

} // namespace

int showColour(const QCommandLineParser& line)
{
    const QStringList arguments = line.positionalArguments();
    const bool inJson = line.isSet(QStringLiteral("json"));
    const bool isImage = line.isSet(QStringLiteral("image"));
    if (!isImage && line.isSet(QStringLiteral("force")))
        throw UsageError(QStringLiteral("--force is for --image only"));
    if (!arguments.isEmpty())
        printAnswerTo(arguments.first(), inJson);
    else if (!isImage)
        printList(inJson);
    if (isImage)
        writeImage(line); // at last: nothing is written for an argument that is wrong
    return Done;
}

} // namespace globalsctl
