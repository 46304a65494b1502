#pragma once

#include "globals/globals_export.h"

#include <QObject>
#include <QTimer>

#include <memory>

namespace TEKLUVA {

/// The machine's memory figures in bytes, updated once per second. The timer runs in the thread that made the
/// object, which needs an event loop.
///
/// This build queries no platform: every figure is 0, and memoryLimitReached() is never emitted. The
/// application knows that and then shows no memory display.
class GLOBALS_EXPORT SystemInfo : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY(SystemInfo)

public:
    SystemInfo();
    ~SystemInfo() override;

    quint64 getMaximumRam() const;
    quint64 getFreeRam() const;
    quint64 getUsedRam() const;

Q_SIGNALS:
    /// For a warning when memory runs short.
    void memoryLimitReached();

private Q_SLOTS:
    void timerShot();

private:
    class Private;
    const std::unique_ptr<Private> d;
    const std::unique_ptr<QTimer> m_timer;
    quint64 m_maximumRam = 0;
    quint64 m_freeRam = 0;
    quint64 m_usedRam = 0;
};

} // namespace TEKLUVA
