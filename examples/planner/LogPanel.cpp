#include "LogPanel.h"

#include "Panel.h"

#include <QtWidgets>

using namespace TEKLUVA;

namespace {

constexpr std::tuple<E_LogLevel, const char*, Qt::GlobalColor> LEVELS[] = {
    {E_LL_DEBUG, QT_TRANSLATE_NOOP("Panel", "Debug"), Qt::darkGray},
    {E_LL_INFO, QT_TRANSLATE_NOOP("Panel", "Information"), Qt::darkGreen},
    {E_LL_WARNING, QT_TRANSLATE_NOOP("Panel", "Warning"), Qt::darkYellow},
    {E_LL_ERROR, QT_TRANSLATE_NOOP("Panel", "Error"), Qt::darkRed},
};

void add(const LogEntry& entry, QTreeWidget* table)
{
    auto* item = new QTreeWidgetItem(table);
    item->setText(0, entry.getTimeStamp().toString(QStringLiteral("hh:mm:ss")));
    item->setText(2, QString::fromStdString(entry.getMessage()));
    for (const auto& [level, text, colour] : LEVELS) {
        if (level != entry.getLevel())
            continue;
        item->setText(1, Panel::tr(text));
        item->setForeground(1, QColor(colour));
    }
}

} // namespace

QWidget* makeLogPanel(Log* log)
{
    auto* panel = new Panel(QT_TRANSLATE_NOOP("Panel", "Log"));
    auto* table = panel->addTable({QT_TRANSLATE_NOOP("Panel", "Time"), QT_TRANSLATE_NOOP("Panel", "Level"),
                                   QT_TRANSLATE_NOOP("Panel", "Message")});
    const auto showNew = [log, table] {
        for (auto i = table->topLevelItemCount(); i < static_cast<int>(log->getEntryCount()); ++i)
            add(*log->getEntry(static_cast<unsigned int>(i)), table);
        table->scrollToBottom();
    };
    showNew();
    QObject::connect(log, &Log::contentChanged, table, showNew);
    QObject::connect(panel, &Panel::languageChanged, table, &QTreeWidget::clear);
    QObject::connect(panel, &Panel::languageChanged, table, showNew);
    return panel;
}
