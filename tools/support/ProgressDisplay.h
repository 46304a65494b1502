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
/// on the standard error output, and nothing when that is no terminal. The line is gone in the end. On the
/// main thread; to be made before the process whose steps it shows.
class ProgressDisplay
{
    Q_DISABLE_COPY(ProgressDisplay)

public:
    ProgressDisplay();
    ~ProgressDisplay();

    /// Takes the line away until something changes, so that a message can stand in its place.
    void clear();

private:
    void follow(TEKLUVA::ProgressStep* step);
    void update(const TEKLUVA::ProgressStep& step);
    void draw(const QString& line);

    QObject m_connections; ///< which end with it
    QElapsedTimer m_sinceDrawn;
    int m_percent = -1;
    int m_drawn = 0; ///< columns
};

} // namespace globalsctl
