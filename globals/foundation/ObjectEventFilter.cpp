#include "globals/ObjectEventFilter.h"

#include <algorithm>

namespace TEKLUVA {

ObjectEventFilter::ObjectEventFilter(QObject* parent)
    : QObject(parent)
{
}

ObjectEventFilter::ObjectEventFilter(QObject* parent, QEvent::Type type)
    : QObject(parent)
{
    addEvent(type);
}

ObjectEventFilter::ObjectEventFilter(QObject* parent, const QSet<QEvent::Type>& types)
    : QObject(parent)
{
    addEvents(types);
}

bool ObjectEventFilter::addEvent(QEvent::Type type)
{
    if (m_types.contains(type))
        return false;
    m_types.insert(type);
    return true;
}

bool ObjectEventFilter::addEvents(const QSet<QEvent::Type>& types)
{
    return std::any_of(types.begin(), types.end(), [this](QEvent::Type type) { return addEvent(type); });
}

bool ObjectEventFilter::removeEvent(QEvent::Type type)
{
    return m_types.remove(type);
}

bool ObjectEventFilter::removeEvent(const QSet<QEvent::Type>& types)
{
    return std::any_of(types.begin(), types.end(), [this](QEvent::Type type) { return removeEvent(type); });
}

bool ObjectEventFilter::eventFilter(QObject* watched, QEvent* event)
{
    if (!watched || !event)
        return true;
    return m_types.contains(event->type()) || QObject::eventFilter(watched, event);
}

} // namespace TEKLUVA
