#include "Panels.h"

#include "Texts.h"

#include "globals/Colour.h"
#include "globals/MeasurementManager.h"
#include "globals/PresetManager.h"

#include <QtWidgets>

using namespace TEKLUVA;

namespace {

constexpr int COLDEST = 1000, HOTTEST = 15000, LAMP = 2700; ///< kelvin

/// With the presets that bound them.
constexpr std::tuple<const char*, E_PresetValue, E_PresetValue> SIDES[] = {
    {QT_TRANSLATE_NOOP("Texts", "&Length"), E_PV_MIN_WALL_LENGTH, E_PV_MAX_CONSTRUCTION_X},
    {QT_TRANSLATE_NOOP("Texts", "&Width"), E_PV_MIN_WALL_LENGTH, E_PV_MAX_CONSTRUCTION_Y},
    {QT_TRANSLATE_NOOP("Texts", "Hei&ght"), E_PV_MIN_ROOM_HEIGHT, E_PV_MAX_ROOM_HEIGHT},
};

constexpr std::pair<const char*, E_MeasurementDimension> VALUES[] = {
    {QT_TRANSLATE_NOOP("Texts", "Wall"), E_MD_LINEAR},
    {QT_TRANSLATE_NOOP("Texts", "Floor area"), E_MD_SQUARED},
    {QT_TRANSLATE_NOOP("Texts", "Volume"), E_MD_CUBIC},
};

class RoomPanel : public QGroupBox
{
public:
    RoomPanel();

private:
    QDoubleSpinBox* makeSide(std::size_t side);
    void showSides();
    void showValues();

    MeasurementManager* m_units = MeasurementManager::getInstance();
    /// In cm, by SIDES.
    double m_room[std::size(SIDES)] = {420, 360, PresetManager::getPreset(E_PV_ROOM_HEIGHT).toDouble()};
    QDoubleSpinBox* m_sides[std::size(SIDES)] = {};
    QLabel* m_values[std::size(VALUES)] = {};
};

RoomPanel::RoomPanel()
{
    auto* form = new QFormLayout(this);
    for (std::size_t side = 0; side < std::size(SIDES); ++side) {
        m_sides[side] = makeSide(side);
        form->addRow(makeLabel(std::get<0>(SIDES[side]), m_sides[side]), m_sides[side]);
    }
    for (std::size_t value = 0; value < std::size(VALUES); ++value) {
        m_values[value] = new QLabel;
        form->addRow(makeLabel(VALUES[value].first), m_values[value]);
    }
    showSides();
    connect(m_units, &MeasurementManager::constructionMeasurementUnitChanged, this, &RoomPanel::showSides);
    connect(m_units, &MeasurementManager::arrangementMeasurementUnitChanged, this, &RoomPanel::showValues);
}

QDoubleSpinBox* RoomPanel::makeSide(std::size_t side)
{
    auto* box = new QDoubleSpinBox;
    QLocale locale(QLocale::German); // writes a comma in every language, as measurement strings do
    locale.setNumberOptions(QLocale::RejectGroupSeparator); // a point typed for a comma is none
    box->setLocale(locale);
    connect(box, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, [this, side](double value) {
        m_room[side] = m_units->fromLinearMeasurementUnit(m_units->getPrefferedConstructionUnit(), value);
        showValues();
    });
    return box;
}

void RoomPanel::showSides()
{
    const E_MeasurementUnit unit = m_units->getPrefferedConstructionUnit();
    const auto shown = [this, unit](double cm) { return m_units->toLinearMeasurementUnit(unit, cm); };
    for (std::size_t side = 0; side < std::size(SIDES); ++side) {
        const auto& [text, min, max] = SIDES[side];
        QDoubleSpinBox* box = m_sides[side];
        const QSignalBlocker quiet(box); // what is rounded to be shown is not what the room measures
        box->setDecimals(static_cast<int>(m_units->getLinearMeasurementUnitPrecision(unit)));
        box->setSingleStep(m_units->getLinearMeasurementUnitStep(unit));
        box->setRange(shown(PresetManager::getPreset(min).toDouble()),
                      shown(PresetManager::getPreset(max).toDouble()));
        box->setSuffix(QLatin1Char(' ') + m_units->getLinearMeasurementUnitAbbrevation(unit));
        box->setValue(shown(m_room[side]));
    }
    showValues();
}

void RoomPanel::showValues()
{
    const E_MeasurementUnit unit = m_units->getPrefferedArrangementUnit();
    double value = 1;
    for (std::size_t i = 0; i < std::size(VALUES); ++i) {
        value *= m_room[i]; // a length is one side, an area the product of two, and a volume of three
        m_values[i]->setText(m_units->createMeasurementString(VALUES[i].second, unit, value, true));
    }
}

} // namespace

QWidget* makeRoomPanel()
{
    return translated(new RoomPanel, QT_TRANSLATE_NOOP("Texts", "Room"), "title");
}

QWidget* makeLightPanel()
{
    auto* panel = translated(new QGroupBox, QT_TRANSLATE_NOOP("Texts", "Light"), "title");
    auto* slider = new QSlider(Qt::Horizontal);
    slider->setRange(COLDEST, HOTTEST);
    auto* swatch = new QLabel;
    swatch->setAutoFillBackground(true);
    swatch->setMargin(8);
    swatch->setAlignment(Qt::AlignCenter);
    auto* form = new QFormLayout(panel);
    form->addRow(makeLabel(QT_TRANSLATE_NOOP("Texts", "Colour &temperature"), slider), slider);
    form->addRow(swatch);
    QObject::connect(slider, &QSlider::valueChanged, panel, [swatch](int kelvin) {
        const QColor c = colourOf(kelvin);
        swatch->setPalette(c); // with a text that can be read on it
        swatch->setText(QStringLiteral("%1 K   %2").arg(kelvin).arg(c.name()));
    });
    slider->setValue(LAMP);
    return panel;
}
