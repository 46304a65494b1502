#include "ColourPanel.h"

#include "Panel.h"

#include "globals/Colour.h"

#include <QtWidgets>

using namespace TEKLUVA;

namespace {

constexpr int COLDEST = 1000, HOTTEST = 15000, PAGE_STEP = 500, LAMP = 2700; ///< kelvin

/// What a screen shows of the light of a black body.
QColor colourOf(int kelvin)
{
    float light[3] = {};
    temperaturToColor(kelvin, light[0], light[1], light[2]);
    double rgb[3] = {};
    std::transform(std::begin(light), std::end(light), rgb, [](float c) { return qBound(0.0F, c, 1.0F); });
    gamma_correct_rgb(&Rec709system, rgb[0], rgb[1], rgb[2]);
    const auto channel = [&rgb](int i) { return static_cast<float>(rgb[i]); };
    return QColor::fromRgbF(channel(0), channel(1), channel(2));
}

} // namespace

QWidget* makeColourPanel()
{
    auto* panel = new Panel(QT_TRANSLATE_NOOP("Panel", "Light"));
    auto* slider = new QSlider(Qt::Horizontal);
    slider->setRange(COLDEST, HOTTEST);
    slider->setPageStep(PAGE_STEP);
    auto* swatch = new QLabel;

    swatch->setAutoFillBackground(true);
    swatch->setMargin(8);
    swatch->setAlignment(Qt::AlignCenter);
    auto* form = new QFormLayout(panel);
    form->addRow(panel->makeLabel(QT_TRANSLATE_NOOP("Panel", "Colour &temperature"), slider), slider);
    form->addRow(swatch);
    QObject::connect(slider, &QSlider::valueChanged, panel, [swatch](int kelvin) {
        const QColor c = colourOf(kelvin);
        swatch->setPalette(c);
        const QString text = QStringLiteral("%1 K   R %2   G %3   B %4");
        swatch->setText(text.arg(kelvin).arg(c.red()).arg(c.green()).arg(c.blue()));
    });
    slider->setValue(LAMP);
    return panel;
}
