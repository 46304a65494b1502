#pragma once

#include <QElapsedTimer>
#include <QObject>

namespace TEKLUVA {
class ProgressStep;
}

namespace globalsctl {

/// Shows the steps of the StateHandler's processes in one line of the terminal, as long as the scope lives:
///
///     [############..................]  40%  chairs.3ds
///
/// The line is on the standard error output; when that is no terminal, nothing is shown. The destructor
/// removes the line. Main thread only; make it before the process whose steps it shows.
class ProgressDisplay
{
    Q_DISABLE_COPY(ProgressDisplay)

public:
    ProgressDisplay();
    ~ProgressDisplay();

    /// Removes the line until the next change, so that a message can take its place.
    void clear();

private:
    void follow(TEKLUVA::ProgressStep* step);
    void update(const TEKLUVA::ProgressStep& step);
    void draw(const QString& line);

    QObject m_connections; ///< the receiver: the connections end with it
    QElapsedTimer m_sinceDrawn;
    int m_percent = -1;
    QString::size_type m_drawn = 0; ///< columns
};

} // namespace globalsctl
