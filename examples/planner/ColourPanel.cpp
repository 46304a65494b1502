#include "ColourPanel.h"

#include "Panel.h"

#include "globals/Colour.h"

#include <QtWidgets>

using namespace TEKLUVA;

namespace {

constexpr int COLDEST = 1000, HOTTEST = 15000, PAGE_STEP = 500, LAMP = 2700; ///< kelvin

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
