#pragma once

#include <QMutex>
#include <QObject>

/// The least that a step of many threads needs: a lock, a value and a signal.
class BareStep : public QObject
{
    Q_OBJECT

public:
    void setStep(unsigned int step)
    {
        const QMutexLocker lock(&m_mutex);
        m_step = step;
        Q_EMIT stepChanged(this);
    }

Q_SIGNALS:
    void stepChanged(BareStep* step);

private:
    QMutex m_mutex;
    unsigned int m_step = 0;
};
