#pragma once

#include "globals/Log.h"
#include "globals/widgets/globals_widgets_export.h"

#include <QAbstractTableModel>

#include <memory>

namespace TEKLUVA {

/// The entries of a log as rows, oldest first. New ones come in batches, at most 20 times a second, and only
/// the newest are kept; what the log itself drops goes here, too.
///
///     auto* model = new LogModel(LogManager::getInstance()->getActiveLog(), view);
///     model->setLevels(E_LL_WARNING | E_LL_ERROR);
///     view->setModel(model);
///
/// Main thread only; the log may be written from any thread. A model without a log, or whose log was deleted,
/// is empty; the log must not be deleted on another thread.
class GLOBALS_WIDGETS_EXPORT LogModel : public QAbstractTableModel
{
    Q_OBJECT
    Q_DISABLE_COPY(LogModel)

public:
    enum E_Column : int { E_LC_TIME = 0, E_LC_LEVEL = 1, E_LC_MESSAGE = 2 };
    /// For every column of a row, beside what is shown: a message in one line, and its tip with all lines, up
    /// to 4000 characters.
    enum E_Role : int {
        E_LR_LEVEL = Qt::UserRole, ///< the E_LogLevel, a number
        E_LR_TIME,                 ///< the QDateTime
    };
    static constexpr int ALL_LEVELS = E_LL_DEBUG | E_LL_INFO | E_LL_WARNING | E_LL_ERROR;

    explicit LogModel(Log* log, QObject* parent = nullptr);
    ~LogModel() override;

    Log* getLog() const;
    void setLog(Log* log);

    /// Which levels are shown, a sum of E_LogLevel. An entry of another level counts as an error.
    void setLevels(int levels);
    int getLevels() const;
    /// How many rows there are at most, 10000 at first.
    void setMaxRowCount(int rows);
    int getMaxRowCount() const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

public Q_SLOTS:
    /// Takes over at once what has changed in the log.
    void refresh();
    /// Shows titles and levels in the current language.
    void updateLanguage();

private:
    void readAnew();

    class Private;
    const std::unique_ptr<Private> d;
};

} // namespace TEKLUVA
