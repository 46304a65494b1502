#include "TestData.h"
#include "TestHome.h"

#include "globals/Colour.h"

#include <algorithm>
#include <cmath>

using namespace TEKLUVA;

namespace {

const colourSystem systems[] = {NTSCsystem, EBUsystem,    SMPTEsystem, HDTVsystem,
                                CIEsystem,  Rec709system, AdobeRGB98,  AppleRGB};

double line(const double& wavelength)
{
    return wavelength == _bbTemp ? 1 : 0;
}

/// What a row tests, from three numbers to three. \p of is the row's temperature or wavelength, which _bbTemp
/// holds, too, its gamma or number of a system.
const QHash<QString, void (*)(double of, float* c)> FUNCTIONS = {
    {"line"_q, [](double, float* c) { spectrum_to_xyz(&line, c[0], c[1], c[2]); }},
    {"body"_q, [](double, float* c) { spectrum_to_xyz(&bb_spectrum, c[0], c[1], c[2]); }},
    {"temperature"_q, [](double of, float* c) { temperaturToColor(of, c[0], c[1], c[2]); }},
    {"xyz"_q, [](double of, float* c) { xyz_to_rgb(&systems[int(of)], c[0], c[1], c[2], c[0], c[1], c[2]); }},
    {"own xyz"_q,
     [](double of, float* c) {
         colourSystem own = systems[int(of)];
         xyz_to_rgb(&own, c[0], c[1], c[2], c[0], c[1], c[2]);
     }},
    {"white"_q, [](double of, float* c) { c[0] = float(systems[int(of)].whiteTemperature); }},
    {"to hsv"_q, [](double, float* c) { RGBtoHSV(c[0], c[1], c[2], c[0], c[1], c[2]); }},
    {"to rgb"_q, [](double, float* c) { HSVtoRGB(c[0], c[1], c[2], c[0], c[1], c[2]); }},
    {"norm"_q, [](double, float* c) { norm_rgb(c[0], c[1], c[2]); }},
    {"gamma"_q,
     [](double of, float* c) {
         const colourSystem system = {std::string(), 0, 0, 0, 0, 0, 0, 0, 0, 0, of};
         double rgb[] = {c[0], c[1], c[2]};
         gamma_correct_rgb(&system, rgb[0], rgb[1], rgb[2]);
         std::transform(rgb, rgb + 3, c, [](double component) { return float(component); });
     }},
};

const auto isNear = [](double a, double b, double tolerance = 5e-5) {
    return a == b || (std::isnan(a) && std::isnan(b)) || std::abs(a - b) <= tolerance;
};

} // namespace

class ColourTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void converts_data() { TestData::addRows("colours.txt", {"function", "of", "given", "result", "near"}); }
    void converts()
    {
        const QString numbers = TestData::field("given") + " "_q + TestData::field("result");
        const QStringList n = (numbers + " "_q + TestData::field("near")).split(" "_q);
        float c[] = {n[0].toFloat(), n[1].toFloat(), n[2].toFloat()};
        _bbTemp = TestData::field("of").toDouble();
        FUNCTIONS[TestData::field("function")](_bbTemp, c);
        for (int i = 0; i < 3; ++i)
            QVERIFY2(isNear(c[i], n[3 + i].toFloat(), n[6].toDouble()), qPrintable(QString::number(c[i])));
    }

    void takesNoOtherWayThanForAnySpectrum()
    {
        for (int kelvin = 200; kelvin < 40000; kelvin += 100) {
            float c[2][3] = {};
            FUNCTIONS["temperature"_q](kelvin, c[0]); // leaves it behind for the spectrum
            for (const QString& step : {"body"_q, "xyz"_q, "norm"_q})
                FUNCTIONS[step](5, c[1]);
            QVERIFY(std::equal(c[0], c[0] + 3, c[1]));
        }
    }

    void liftsColoursIntoTheGamut()
    {
        double c[] = {-0.2, 0.5, 1};
        QVERIFY(inside_gamut(0, 0, 1) && !inside_gamut(c[0], c[1], c[2]) && constrain_rgb(c[0], c[1], c[2]));
        QVERIFY(c[0] == 0 && isNear(c[1], 0.7, 1e-9) && isNear(c[2], 1.2, 1e-9)
                && !constrain_rgb(c[0], c[1], c[2]));
    }

    void convertsBetweenChromaticities()
    {
        double c[4] = {};
        xy_to_upvp(0.3127, 0.3290, c[0], c[1]); // D65, published as 0.1978, 0.4683
        upvp_to_xy(c[0], c[1], c[2], c[3]);
        QVERIFY(isNear(c[0], 0.1978) && isNear(c[1], 0.4683) && isNear(c[2], 0.3127) && isNear(c[3], 0.3290));
    }
};

GLOBALS_TEST_MAIN(ColourTest)
#include "tst_colour.moc"
