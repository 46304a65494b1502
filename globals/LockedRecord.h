#pragma once

#include <QMutex>
#include <QMutexLocker>

namespace TEKLUVA {

/// The base of records whose values several threads share: each access holds the record's own lock, and
/// nothing is called back under it.
class LockedRecord
{
    Q_DISABLE_COPY(LockedRecord)

protected:
    LockedRecord() = default;
    ~LockedRecord() = default;

    template <typename Value>
    Value get(const Value& member) const
    {
        const QMutexLocker lock(&m_lock);
        return member;
    }

    template <typename Value>
    void set(Value& member, const Value& value)
    {
        const QMutexLocker lock(&m_lock);
        member = value;
    }

    /// For accesses to more than one value, with a QMutexLocker.
    QMutex* mutex() const { return &m_lock; }

private:
    mutable QMutex m_lock;
};

} // namespace TEKLUVA
