#pragma once

#include "globals/Log.h"
#include "globals/widgets/globals_widgets_export.h"

#include <QDockWidget>

#include <memory>

namespace TEKLUVA {

class LogModel;

/// Shows a log at the edge of a main window, in the user's language, with a choice of the lowest level. While
/// the last row is in sight new ones scroll into it.
///
///     window->addDockWidget(Qt::BottomDockWidgetArea, new LogDock(log));
///
/// Main thread only, see LogModel. The object's name is "LogDock", for QMainWindow::saveState().
class GLOBALS_WIDGETS_EXPORT LogDock : public QDockWidget
{
    Q_OBJECT
    Q_DISABLE_COPY(LogDock)

public:
    explicit LogDock(Log* log, QWidget* parent = nullptr);
    ~LogDock() override;

    /// Belongs to the dock.
    LogModel* getModel() const;
    /// The lowest level that is shown, E_LL_DEBUG at first. A number that is no level changes nothing.
    void setLowestLevel(E_LogLevel level);
    E_LogLevel getLowestLevel() const;

protected:
    void changeEvent(QEvent* event) override;

private:
    void setTexts();

    class Private;
    const std::unique_ptr<Private> d;
};

} // namespace TEKLUVA
