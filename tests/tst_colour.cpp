#include "TestData.h"

#include "globals/Colour.h"

#include <algorithm>
#include <array>
#include <cmath>

using namespace TEKLUVA;

namespace {

const std::array systems = {NTSCsystem, EBUsystem,    SMPTEsystem, HDTVsystem,
                            CIEsystem,  Rec709system, AdobeRGB98,  AppleRGB};

double line(const double& wavelength)
{
    return wavelength == _bbTemp ? 1 : 0;
}

/// What a row tests, from three numbers to three. \p of is the row's temperature or wavelength, which _bbTemp
/// holds, too, its gamma or number of a system.
using Function = void (*)(double of, float* c);
const QHash<QString, Function>& functions()
{
    static const QHash<QString, Function> FUNCTIONS = {
        {"line"_q, [](double, float* c) { spectrum_to_xyz(&line, c[0], c[1], c[2]); }},
        {"body"_q, [](double, float* c) { spectrum_to_xyz(&bb_spectrum, c[0], c[1], c[2]); }},
        {"exitance"_q, [](double, float* c) { c[0] = float(bb_spectrum(c[0])); }},
        {"match"_q,
         [](double of, float* c) {
             std::copy_n(cie_colour_match[int((of - CIE_FIRST_WAVELENGTH) / CIE_WAVELENGTH_STEP)], 3, c);
         }},
        {"temperature"_q, [](double of, float* c) { temperaturToColor(of, c[0], c[1], c[2]); }},
        {"xyz"_q,
         [](double of, float* c) {
             xyz_to_rgb(&systems.at(std::size_t(of)), c[0], c[1], c[2], c[0], c[1], c[2]);
         }},
        {"own xyz"_q,
         [](double of, float* c) {
             colourSystem own = systems.at(std::size_t(of));
             xyz_to_rgb(&own, c[0], c[1], c[2], c[0], c[1], c[2]);
         }},
        {"white"_q,
         [](double of, float* c) {
             c[0] = float(systems.at(std::size_t(of)).whiteTemperature);
             c[1] = float(systems.at(std::size_t(of)).gamma);
         }},
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
    return FUNCTIONS;
}

const auto isNear = [](double a, double b, double tolerance = 5e-5) {
    return a == b || (std::isnan(a) && std::isnan(b)) || std::abs(a - b) <= tolerance;
};

} // namespace

class ColourTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsTheColourOfLight() // first, because the temperature is to stay at that of the start
    {
        QCOMPARE(colourOf(15000).rgb(), qRgb(0xac, 0xc2, 0xff));
        QCOMPARE(colourOf(1000).rgb(), qRgb(0xff, 10, 0));
        QVERIFY(colourOf(1000).blueF() >= 0 && !colourOf(100).isValid());
        QCOMPARE(_bbTemp, 5000.0);
    }

    void converts_data() { TestData::addRows("colours.txt"); }
    void converts()
    {
        const Function function = functions().value(TestData::field("function"));
        QVERIFY2(function, "there is no such function");
        const QStringList numbers =
            (TestData::field("given") + " "_q + TestData::field("result")).split(" "_q);
        QCOMPARE(numbers.size(), 6);
        float c[6];
        std::transform(numbers.begin(), numbers.end(), c, TestData::valueOf<float>);
        _bbTemp = TestData::field<double>("of");
        function(_bbTemp, c);
        for (int i = 0; i < 3; ++i)
            QVERIFY2(isNear(c[i], c[3 + i], TestData::field<double>("near")),
                     qPrintable("component %1 is %2"_q.arg(i).arg(c[i])));
    }

    void takesNoOtherWayThanForAnySpectrum()
    {
        for (int kelvin = 200; kelvin < 40000; kelvin += 100) {
            const TestHome::Turn turn(kelvin);
            float c[2][3] = {};
            functions()["temperature"_q](kelvin, c[0]); // leaves it behind for the spectrum
            for (const QString& step : {"body"_q, "xyz"_q, "norm"_q})
                functions()[step](5, c[1]);
            QVERIFY(std::equal(c[0], c[0] + 3, c[1]));
        }
    }

    void liftsColoursIntoTheGamut()
    {
        QVERIFY(inside_gamut(0, 0, 0));
        for (int lowest = 0; lowest < 3; ++lowest) {
            const TestHome::Turn turn(lowest);
            double c[] = {1, 0.5, -0.2, 1, 0.5};
            double* rgb = c + 2 - lowest;
            QVERIFY(!inside_gamut(rgb[0], rgb[1], rgb[2]));
            QVERIFY(constrain_rgb(rgb[0], rgb[1], rgb[2]));
            QCOMPARE(c[2], 0.0);
            QCOMPARE(rgb[(lowest + 1) % 3] + rgb[(lowest + 2) % 3], 1.9);
            QVERIFY(!constrain_rgb(rgb[0], rgb[1], rgb[2]));
        }
    }

    void convertsBetweenChromaticities()
    {
        double c[4] = {};
        xy_to_upvp(0.3127, 0.3290, c[0], c[1]); // D65, published as 0.1978, 0.4683
        upvp_to_xy(c[0], c[1], c[2], c[3]);
        const double expected[] = {0.1978, 0.4683, 0.3127, 0.3290};
        for (int i = 0; i < 4; ++i)
            QVERIFY2(isNear(c[i], expected[i]), qPrintable("%1 is %2"_q.arg(i).arg(c[i])));
    }
};

GLOBALS_TEST_MAIN(ColourTest)
#include "tst_colour.moc"
