#include "globals/widgets/UnitBox.h"

#include <QEvent>

#include <array>
#include <functional>

namespace TEKLUVA {

namespace {

using Units = MeasurementManager;

struct UseRow
{
    E_UnitUse use;
    E_MeasurementUnit (Units::*get)() const;
    void (Units::*set)(const E_MeasurementUnit&);
    void (Units::*changed)();
};

/// Not a constant: those have other addresses on Windows than the library itself has, by which connect()
/// would not know its signals.
std::array<UseRow, 2> uses()
{
    return {{{E_UU_CONSTRUCTION, &Units::getPrefferedConstructionUnit, &Units::setPrefferedConstructionUnit,
              &Units::constructionMeasurementUnitChanged},
             {E_UU_ARRANGEMENT, &Units::getPrefferedArrangementUnit, &Units::setPrefferedArrangementUnit,
              &Units::arrangementMeasurementUnitChanged}}};
}

/// For the unit that the manager offers no text for: "ft - Fuß", in the form of the others.
QString textOf(E_MeasurementUnit unit)
{
    const Units* units = Units::getInstance();
    return QStringLiteral("%1 - %2").arg(units->getLinearMeasurementUnitAbbrevation(unit),
                                         units->getMeasurementUnitName(E_MD_LINEAR, unit));
}

void follow(UnitBox* box, const UseRow& use)
{
    Units* units = Units::getInstance();
    const auto show = [box, units, use] { selectUnit(box, std::invoke(use.get, units)); };
    show();
    QObject::connect(units, use.changed, box, show);
    QObject::connect(box, &UnitBox::unitChanged, units,
                     [units, use](E_MeasurementUnit unit) { std::invoke(use.set, units, unit); });
}

} // namespace

void selectUnit(QComboBox* box, E_MeasurementUnit unit)
{
    const bool isFoot = unit == E_MU_FOOT;
    const bool isFootMissing = isFoot && box->findData(int(unit)) < 0;
    if (isFootMissing)
        box->addItem(textOf(unit), int(unit));
    const int item = box->findData(int(unit));
    box->setCurrentIndex(item < 0 ? box->findData(int(E_MU_CENTIMETER)) : item);
}

E_MeasurementUnit selectedUnit(const QComboBox* box)
{
    return static_cast<E_MeasurementUnit>(box->currentData().toInt());
}

UnitBox::UnitBox(QWidget* parent)
    : UnitBox(E_UU_NONE, parent)
{
}

UnitBox::UnitBox(E_UnitUse use, QWidget* parent)
    : QComboBox(parent)
{
    qRegisterMetaType<E_MeasurementUnit>();
    Units::getInstance()->fillMeasurementComboBox(this);
    connect(this, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            [this] { Q_EMIT unitChanged(getUnit()); });
    for (const UseRow& row : uses()) {
        if (row.use == use)
            follow(this, row);
    }
}

E_MeasurementUnit UnitBox::getUnit() const
{
    return selectedUnit(this);
}

void UnitBox::setUnit(E_MeasurementUnit unit)
{
    selectUnit(this, unit);
}

void UnitBox::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange) {
        Units::getInstance()->updateMeasurementComboBoxLanguage(this);
        const int foot = findData(int(E_MU_FOOT));
        if (foot >= 0)
            setItemText(foot, textOf(E_MU_FOOT));
    }
    QComboBox::changeEvent(event);
}

} // namespace TEKLUVA
