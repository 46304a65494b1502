#include "globals/widgets/PresetTable.h"

#include "ToolTip_p.h"

#include "globals/PresetManager.h"

#include <QEvent>
#include <QHeaderView>
#include <QStandardItemModel>

#include <limits>

namespace TEKLUVA {

namespace {

/// As a file has it: of a float no more digits than it holds, 0.0022 and not 0.002199999988079071.
QString valueText(const QVariant& value)
{
    if (value.userType() != QMetaType::Float)
        return value.toString();
    return QString::number(static_cast<double>(value.toFloat()), 'g', std::numeric_limits<float>::digits10);
}

QStandardItem* makeItem(const QVariant& content)
{
    auto* item = new QStandardItem;
    item->setData(content, Qt::DisplayRole);
    item->setToolTip(toolTipOf(content.toString())); // bounds may be longer than the column
    item->setEditable(false);
    return item;
}

} // namespace

PresetTable::PresetTable(QWidget* parent)
    : QTreeView(parent)
{
    setModel(new QStandardItemModel(this));
    setLayoutDirection(Qt::LeftToRight); // as files are read; otherwise -1500 would be shown as "1500-"
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAlternatingRowColors(true);
    header()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignAbsolute | Qt::AlignVCenter);
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    refresh();
}

E_PresetValue PresetTable::getPresetAt(const QModelIndex& index) const
{
    const QVariant value = index.siblingAtColumn(E_PC_KEY).data(Qt::UserRole);
    return static_cast<E_PresetValue>(value.toInt());
}

void PresetTable::refresh()
{
    auto* rows = static_cast<QStandardItemModel*>(model());
    rows->removeRows(0, rows->rowCount());
    for (const PresetDescription& preset : PresetManager::describePresets()) {
        QStandardItem* key = makeItem(preset.key);
        key->setData(static_cast<int>(preset.value), Qt::UserRole);
        rows->appendRow({key, makeItem(preset.type),
                         makeItem(valueText(PresetManager::getPreset(preset.value))),
                         makeItem(preset.bounds)});
    }
    setTitles();
}

void PresetTable::setTitles()
{
    setAccessibleName(tr("Voreinstellungen"));
    auto* rows = static_cast<QStandardItemModel*>(model());
    rows->setHorizontalHeaderLabels({tr("Schlüssel"), tr("Typ"), tr("Wert"), tr("Grenzen")});
}

void PresetTable::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        setTitles();
    QTreeView::changeEvent(event);
}

} // namespace TEKLUVA
