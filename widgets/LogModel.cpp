#include "globals/widgets/LogModel.h"

#include "ToolTip_p.h"

#include <QApplication>
#include <QDateTime>
#include <QLocale>
#include <QPointer>
#include <QStyle>
#include <QTimer>

#include <deque>

namespace TEKLUVA {

/// A row, outside of the anonymous namespace because the private class has them as a member.
struct LogModelRow
{
    quint64 number;
    qint64 time;
    E_LogLevel level;
    QString message;
};

namespace {

constexpr int BATCH_MSECS = 50;
constexpr int MAX_ROWS = 10'000;

struct LevelLook
{
    E_LogLevel level;
    const char* name; ///< to be translated
    QStyle::StandardPixmap icon;
};

constexpr LevelLook LEVEL_LOOKS[] = {
    {E_LL_ERROR, QT_TRANSLATE_NOOP("TEKLUVA::LogModel", "Fehler"), QStyle::SP_MessageBoxCritical},
    {E_LL_WARNING, QT_TRANSLATE_NOOP("TEKLUVA::LogModel", "Warnung"), QStyle::SP_MessageBoxWarning},
    {E_LL_INFO, QT_TRANSLATE_NOOP("TEKLUVA::LogModel", "Information"), QStyle::SP_MessageBoxInformation},
    {E_LL_DEBUG, QT_TRANSLATE_NOOP("TEKLUVA::LogModel", "Diagnose"), QStyle::SP_CustomBase}, // none
};

/// That of errors for a level that is none.
const LevelLook& lookOf(E_LogLevel level)
{
    for (const LevelLook& look : LEVEL_LOOKS) {
        if (look.level == level)
            return look;
    }
    return LEVEL_LOOKS[0];
}

QVariant shown(const LogModelRow& row, int column)
{
    if (column == LogModel::E_LC_LEVEL)
        return LogModel::tr(lookOf(row.level).name);
    if (column == LogModel::E_LC_MESSAGE)
        return QString(row.message).replace(QLatin1Char('\n'), QLatin1Char(' ')); // rows are one line high
    return QLocale().toString(QDateTime::fromMSecsSinceEpoch(row.time).time(), QStringLiteral("hh:mm:ss"));
}

QVariant toolTip(const LogModelRow& row, int column)
{
    if (column != LogModel::E_LC_TIME)
        return column == LogModel::E_LC_MESSAGE ? toolTipOf(row.message) : QVariant();
    return QLocale().toString(QDateTime::fromMSecsSinceEpoch(row.time), QLocale::LongFormat);
}

QVariant icon(const LogModelRow& row, int column)
{
    const LevelLook& look = lookOf(row.level);
    const bool hasIcon = column == LogModel::E_LC_LEVEL && look.icon != QStyle::SP_CustomBase;
    return hasIcon ? QVariant(QApplication::style()->standardIcon(look.icon)) : QVariant();
}

} // namespace

class GLOBALS_WIDGETS_NO_EXPORT LogModel::Private
{
public:
    bool isWanted(E_LogLevel level) const { return (lookOf(level).level & levels) != 0; }
    /// Moves on behind \p lines and returns those that are to be shown.
    std::deque<LogModelRow> rowsOf(LogLines lines);
    /// How many rows are to go: those before \p oldest, and as many as \p added are too much then.
    int surplus(quint64 oldest, std::size_t added) const;

    QPointer<Log> log;
    std::deque<LogModelRow> rows;
    quint64 next = 0; ///< the number of the first entry that was not read yet
    int levels = ALL_LEVELS;
    int maxRows = MAX_ROWS;
    QTimer batch;
};

std::deque<LogModelRow> LogModel::Private::rowsOf(LogLines lines)
{
    std::deque<LogModelRow> wanted;
    quint64 number = lines.first;
    for (LogLine& line : lines.lines) {
        if (isWanted(line.level))
            wanted.push_back({number, line.time, line.level, QString::fromStdString(line.message)});
        if (wanted.size() > static_cast<std::size_t>(maxRows))
            wanted.pop_front();
        ++number;
    }
    next = number;
    return wanted;
}

int LogModel::Private::surplus(quint64 oldest, std::size_t added) const
{
    std::size_t count = 0;
    const auto limit = static_cast<std::size_t>(maxRows);
    while (count < rows.size() && (rows[count].number < oldest || rows.size() - count + added > limit))
        ++count;
    return static_cast<int>(count);
}

LogModel::LogModel(Log* log, QObject* parent)
    : QAbstractTableModel(parent)
    , d(std::make_unique<Private>())
{
    d->batch.setSingleShot(true);
    d->batch.setInterval(BATCH_MSECS);
    connect(&d->batch, &QTimer::timeout, this, &LogModel::refresh);
    setLog(log);
}

LogModel::~LogModel() = default;

Log* LogModel::getLog() const
{
    return d->log;
}

void LogModel::setLog(Log* log)
{
    if (d->log)
        d->log->disconnect(this);
    d->log = log;
    if (log) {
        // Also called under the log's lock, and so it only starts the timer. A running one is left to run.
        connect(log, &Log::contentChanged, this, [this] {
            if (!d->batch.isActive())
                d->batch.start();
        });
        connect(log, &QObject::destroyed, this, &LogModel::readAnew);
    }
    readAnew();
}

void LogModel::setLevels(int levels)
{
    if (levels == d->levels)
        return;
    d->levels = levels;
    readAnew();
}

int LogModel::getLevels() const
{
    return d->levels;
}

void LogModel::setMaxRowCount(int rows)
{
    d->maxRows = std::max(rows, 0);
    readAnew();
}

int LogModel::getMaxRowCount() const
{
    return d->maxRows;
}

void LogModel::readAnew()
{
    beginResetModel();
    d->rows.clear();
    d->next = 0;
    if (d->log)
        d->rows = d->rowsOf(d->log->getLines(0));
    endResetModel();
}

void LogModel::refresh()
{
    if (!d->log)
        return;
    LogLines lines = d->log->getLines(d->next);
    const quint64 oldest = lines.oldest;
    std::deque<LogModelRow> added = d->rowsOf(std::move(lines));
    if (const int surplus = d->surplus(oldest, added.size()); surplus > 0) {
        beginRemoveRows({}, 0, surplus - 1);
        d->rows.erase(d->rows.begin(), d->rows.begin() + surplus);
        endRemoveRows();
    }
    if (added.empty())
        return;
    const int first = rowCount();
    beginInsertRows({}, first, first + static_cast<int>(added.size()) - 1);
    std::move(added.begin(), added.end(), std::back_inserter(d->rows));
    endInsertRows();
}

void LogModel::updateLanguage()
{
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
    if (!d->rows.empty())
        Q_EMIT dataChanged(index(0, E_LC_TIME), index(rowCount() - 1, E_LC_LEVEL));
}

int LogModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(d->rows.size());
}

int LogModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : E_LC_MESSAGE + 1;
}

QVariant LogModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const LogModelRow& row = d->rows[static_cast<std::size_t>(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        return shown(row, index.column());
    case Qt::ToolTipRole:
        return toolTip(row, index.column());
    case Qt::DecorationRole:
        return icon(row, index.column());
    case E_LR_LEVEL:
        return static_cast<int>(row.level);
    case E_LR_TIME:
        return QDateTime::fromMSecsSinceEpoch(row.time);
    default:
        return {};
    }
}

QVariant LogModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    const QStringList titles = {tr("Zeit"), tr("Stufe"), tr("Meldung")};
    const bool isTitle = orientation == Qt::Horizontal && role == Qt::DisplayRole;
    return isTitle ? titles.value(section) : QVariant();
}

} // namespace TEKLUVA
