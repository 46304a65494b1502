#pragma once

#include "globals/globals_export.h"

#include <QEvent>
#include <QObject>
#include <QSet>

#include <memory>

namespace TEKLUVA {

/// An event filter that swallows chosen types of events. Install it with QObject::installEventFilter() in the
/// thread of the watched object, and use it there only.
///
/// The calls that take a set change at most one type each. That is required: callers repeat the call until it
/// returns false, or name the types one by one.
class GLOBALS_EXPORT ObjectEventFilter : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY(ObjectEventFilter)

public:
    explicit ObjectEventFilter(QObject* parent);
    ObjectEventFilter(QObject* parent, QEvent::Type type);
    /// Adds through addEvents(), so only one of \p types is filtered afterwards.
    ObjectEventFilter(QObject* parent, const QSet<QEvent::Type>& types);
    ~ObjectEventFilter() override;

    /// True when \p type was not filtered before.
    bool addEvent(QEvent::Type type);
    /// Adds the first type, in the set's order, that is not filtered yet; false when all were.
    bool addEvents(const QSet<QEvent::Type>& types);

    /// True when \p type was filtered before.
    bool removeEvent(QEvent::Type type);
    /// Removes the first type, in the set's order, that is filtered; false when none was.
    bool removeEvent(const QSet<QEvent::Type>& types);

    /// True, which swallows the event, for a filtered type and also when either pointer is null.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    class Private;
    const std::unique_ptr<Private> d;
};

} // namespace TEKLUVA
