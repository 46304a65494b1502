#pragma once

#include <QMutex>
#include <QMutexLocker>

namespace TEKLUVA {

/// The base of the private part of a record whose values several threads share. Each access holds the
/// record's own lock, and nothing is called back under it.
///
///     class Thing::Private : public LockedRecord { public: int size = 0; };
///     int Thing::getSize() const { return d->get(d->size); }
class LockedRecord
{
    Q_DISABLE_COPY(LockedRecord)

public:
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

protected:
    LockedRecord() = default;
    ~LockedRecord() = default;

private:
    mutable QMutex m_lock;
};

} // namespace TEKLUVA
