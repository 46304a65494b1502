#include "RoomPanel.h"

#include "Panel.h"

#include "globals/MeasurementManager.h"
#include "globals/PresetManager.h"
#include "globals/widgets/UnitBox.h"

#include <QtWidgets>

#include <array>
#include <functional>
#include <numeric>

using namespace TEKLUVA;

namespace {

using Units = MeasurementManager;

/// With the presets that bound them.
constexpr std::tuple<const char*, E_PresetValue, E_PresetValue> SIDES[] = {
    {QT_TRANSLATE_NOOP("Panel", "&Length"), E_PV_MIN_WALL_LENGTH, E_PV_MAX_CONSTRUCTION_X},
    {QT_TRANSLATE_NOOP("Panel", "&Width"), E_PV_MIN_WALL_LENGTH, E_PV_MAX_CONSTRUCTION_Y},
    {QT_TRANSLATE_NOOP("Panel", "&Height"), E_PV_MIN_ROOM_HEIGHT, E_PV_MAX_ROOM_HEIGHT},
};

/// What a unit is chosen for.
struct UseRow
{
    const char* text;
    E_UnitUse use;
    E_MeasurementUnit (Units::*get)() const;
    void (Units::*changed)();
};

constexpr UseRow USES[] = {
    {QT_TRANSLATE_NOOP("Panel", "&Construction"), E_UU_CONSTRUCTION, &Units::getPrefferedConstructionUnit,
     &Units::constructionMeasurementUnitChanged},
    {QT_TRANSLATE_NOOP("Panel", "&Arrangement"), E_UU_ARRANGEMENT, &Units::getPrefferedArrangementUnit,
     &Units::arrangementMeasurementUnitChanged},
};

constexpr std::pair<const char*, E_MeasurementDimension> VALUES[] = {
    {QT_TRANSLATE_NOOP("Panel", "Wall"), E_MD_LINEAR},
    {QT_TRANSLATE_NOOP("Panel", "Floor area"), E_MD_SQUARED},
    {QT_TRANSLATE_NOOP("Panel", "Volume"), E_MD_CUBIC},
};

constexpr int VALUES_ROW = 5; ///< of the grid, below the sides and the units' labels

class RoomPanel : public Panel
{
public:
    RoomPanel();

private:
    void addSide(std::size_t side, int row);
    void addUse(const UseRow& use, int column);
    void showSides();

    Units* m_units = Units::getInstance();
    /// In cm, by SIDES.
    std::array<double, 3> m_room = {420, 360, PresetManager::getPreset(E_PV_ROOM_HEIGHT).toDouble()};
    std::array<QDoubleSpinBox*, std::size(SIDES)> m_sides{};
    std::vector<std::function<void()>> m_showValues;
    QGridLayout* m_grid = new QGridLayout(this);
};

RoomPanel::RoomPanel()
    : Panel(QT_TRANSLATE_NOOP("Panel", "Room"))
{
    for (std::size_t side = 0; side < m_room.size(); ++side)
        addSide(side, m_grid->rowCount());
    for (const auto& [text, dimension] : VALUES)
        m_grid->addWidget(makeLabel(text), VALUES_ROW + dimension, 0);
    for (const UseRow& use : USES)
        addUse(use, 1 + static_cast<int>(&use - USES));
    showSides();
}

void RoomPanel::addSide(std::size_t side, int row)
{
    auto* box = m_sides[side] = new QDoubleSpinBox;
    QLocale locale(QLocale::German); // writes a comma in every language, as measurement strings do
    locale.setNumberOptions(QLocale::RejectGroupSeparator); // a point typed for a comma is none
    box->setLocale(locale);
    m_grid->addWidget(makeLabel(std::get<0>(SIDES[side]), box), row, 0);
    m_grid->addWidget(box, row, 1);
    connect(box, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, [this, side](double value) {
        m_room[side] = m_units->fromLinearMeasurementUnit(m_units->getPrefferedConstructionUnit(), value);
        for (const auto& showValue : m_showValues)
            showValue();
    });
}

/// A column with the choice of the unit and the values in it.
void RoomPanel::addUse(const UseRow& use, int column)
{
    auto* box = new UnitBox(use.use);
    m_grid->addWidget(makeLabel(use.text, box), VALUES_ROW - 1, column);
    m_grid->addWidget(box, VALUES_ROW, column);
    connect(m_units, use.changed, this, [this, box] {
        showSides();
        report(Panel::tr("Values are shown in %1 now.").arg(box->currentText()), E_ST_INFORMATION);
    });
    for (const auto& row : VALUES) {
        auto* label = new QLabel;
        m_grid->addWidget(label, VALUES_ROW + row.second, column);
        m_showValues.emplace_back([this, label, &use, dimension = row.second] {
            // A length is one side, an area the product of two, and a volume of three.
            const double value =
                std::accumulate(m_room.begin(), m_room.begin() + dimension, 1.0, std::multiplies<>());
            label->setText(m_units->createMeasurementString(dimension, (m_units->*use.get)(), value, true));
        });
    }
}

void RoomPanel::showSides()
{
    const E_MeasurementUnit unit = m_units->getPrefferedConstructionUnit();
    const auto shown = [this, unit](double cm) { return m_units->toLinearMeasurementUnit(unit, cm); };
    for (std::size_t side = 0; side < m_room.size(); ++side) {
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
    for (const auto& showValue : m_showValues)
        showValue();
}

} // namespace

QWidget* makeRoomPanel()
{
    return new RoomPanel;
}
