#include "globals/widgets/LogDock.h"

#include "ToolTip_p.h"

#include "globals/widgets/LogModel.h"

#include <QComboBox>
#include <QEvent>
#include <QHeaderView>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QTreeView>
#include <QVBoxLayout>

namespace TEKLUVA {

namespace {

struct LowestLevel
{
    E_LogLevel level;
    const char* text; ///< to be translated
};

constexpr LowestLevel LOWEST_LEVELS[] = {
    {E_LL_DEBUG, QT_TRANSLATE_NOOP("TEKLUVA::LogDock", "Alle Meldungen")},
    {E_LL_INFO, QT_TRANSLATE_NOOP("TEKLUVA::LogDock", "Ab Information")},
    {E_LL_WARNING, QT_TRANSLATE_NOOP("TEKLUVA::LogDock", "Ab Warnung")},
    {E_LL_ERROR, QT_TRANSLATE_NOOP("TEKLUVA::LogDock", "Nur Fehler")},
};

/// \p level and those above it: each is a bit of its own, in the order of their weight.
int levelsFrom(int level)
{
    return LogModel::ALL_LEVELS & ~(level - 1);
}

/// Shows the beginnings of long messages.
class Beginnings : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QString displayText(const QVariant& value, const QLocale& locale) const override
    {
        constexpr int LONGEST = 1000;
        return QStyledItemDelegate::displayText(beginningOf(value.toString(), LONGEST), locale);
    }
};

/// Keeps the last row in sight where it is in sight, whatever makes it more to scroll: new rows, or less
/// room, for a horizontal scroll bar, say, which comes after the rows.
void followEnd(QScrollBar* bar)
{
    auto isAtEnd = std::make_shared<bool>(true);
    QObject::connect(bar, &QScrollBar::valueChanged, bar,
                     [bar, isAtEnd](int value) { *isAtEnd = value == bar->maximum(); });
    QObject::connect(bar, &QScrollBar::rangeChanged, bar, [bar, isAtEnd](int, int maximum) {
        if (*isAtEnd)
            bar->setValue(maximum);
        *isAtEnd = bar->value() == maximum;
    });
}

} // namespace

class GLOBALS_WIDGETS_NO_EXPORT LogDock::Private
{
public:
    LogModel* model = nullptr;
    QComboBox* lowest = nullptr;
    QTreeView* view = nullptr;
};

LogDock::LogDock(Log* log, QWidget* parent)
    : QDockWidget(parent)
    , d(std::make_unique<Private>())
{
    setObjectName(QStringLiteral("LogDock"));
    auto* content = new QWidget(this);
    auto* layout = new QVBoxLayout(content);
    d->lowest = new QComboBox;
    for (const LowestLevel& row : LOWEST_LEVELS)
        d->lowest->addItem(QString(), static_cast<int>(row.level));
    layout->addWidget(d->lowest, 0, Qt::AlignLeft);

    auto* view = d->view = new QTreeView;
    d->model = new LogModel(log, this);
    view->setModel(d->model);
    view->setItemDelegate(new Beginnings(view));
    view->setRootIsDecorated(false);
    view->setUniformRowHeights(true);
    view->setAlternatingRowColors(true);
    view->header()->setResizeContentsPrecision(0); // of the rows in sight only
    view->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    followEnd(view->verticalScrollBar());
    layout->addWidget(view);
    setWidget(content);
    connect(d->lowest, QOverload<int>::of(&QComboBox::currentIndexChanged), this, [this, view] {
        d->model->setLevels(levelsFrom(d->lowest->currentData().toInt()));
        view->scrollToBottom();
    });
    setTexts();
}

LogDock::~LogDock() = default;

LogModel* LogDock::getModel() const
{
    return d->model;
}

void LogDock::setLowestLevel(E_LogLevel level)
{
    const int row = d->lowest->findData(static_cast<int>(level));
    if (row >= 0)
        d->lowest->setCurrentIndex(row);
}

E_LogLevel LogDock::getLowestLevel() const
{
    return static_cast<E_LogLevel>(d->lowest->currentData().toInt());
}

void LogDock::setTexts()
{
    setWindowTitle(tr("Protokoll"));
    d->view->setAccessibleName(windowTitle());
    d->lowest->setAccessibleName(tr("Welche Meldungen gezeigt werden"));
    for (int i = 0; i < d->lowest->count(); ++i)
        d->lowest->setItemText(i, tr(LOWEST_LEVELS[i].text));
    d->model->updateLanguage();
}

void LogDock::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        setTexts();
    QDockWidget::changeEvent(event);
}

} // namespace TEKLUVA
