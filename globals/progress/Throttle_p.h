#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <atomic>
#include <chrono>

namespace TEKLUVA {

/// Tells its thread of requests, which any thread makes as often as it likes, at most once in an interval,
/// and of the last one always. Its thread needs an event loop, in which one event at most is waiting.
class Throttle : public QObject
{
    Q_OBJECT

public:
    explicit Throttle(std::chrono::milliseconds interval);

    /// \name For any thread
    /// @{
    void request();
    /// The next request is made anew: an event that was waiting goes with the application object.
    void forget() { m_isRequested = false; }
    /// @}

Q_SIGNALS:
    /// There were requests since the last time. Emitted in the thread of the object, under no lock.
    void due();
    void requested(); ///< for the object itself

private:
    void schedule();
    void serve();

    const std::chrono::milliseconds m_interval;
    std::atomic<bool> m_isRequested = false;
    QElapsedTimer m_sinceLast;
    QTimer m_timer;
};

} // namespace TEKLUVA
