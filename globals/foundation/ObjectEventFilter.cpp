#include "globals/ObjectEventFilter.h"

#include <algorithm>

namespace TEKLUVA {

class GLOBALS_NO_EXPORT ObjectEventFilter::Private
{
public:
    QSet<QEvent::Type> types;
};

ObjectEventFilter::ObjectEventFilter(QObject* parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
}

ObjectEventFilter::ObjectEventFilter(QObject* parent, QEvent::Type type)
    : ObjectEventFilter(parent)
{
    addEvent(type);
}

ObjectEventFilter::ObjectEventFilter(QObject* parent, const QSet<QEvent::Type>& types)
    : ObjectEventFilter(parent)
{
    addEvents(types);
}

ObjectEventFilter::~ObjectEventFilter() = default;

bool ObjectEventFilter::addEvent(QEvent::Type type)
{
    if (d->types.contains(type))
        return false;
    d->types.insert(type);
    return true;
}

bool ObjectEventFilter::addEvents(const QSet<QEvent::Type>& types)
{
    const auto isNew = [this](QEvent::Type type) { return !d->types.contains(type); };
    const auto first = std::find_if(types.begin(), types.end(), isNew);
    if (first == types.end())
        return false;
    return addEvent(*first); // one type per call, as required
}

bool ObjectEventFilter::removeEvent(QEvent::Type type)
{
    return d->types.remove(type);
}

bool ObjectEventFilter::removeEvent(const QSet<QEvent::Type>& types)
{
    const auto isHeld = [this](QEvent::Type type) { return d->types.contains(type); };
    const auto first = std::find_if(types.begin(), types.end(), isHeld);
    if (first == types.end())
        return false;
    return removeEvent(*first); // one type per call, as required
}

bool ObjectEventFilter::eventFilter(QObject* watched, QEvent* event)
{
    if (!watched || !event)
        return true;
    return d->types.contains(event->type()) || QObject::eventFilter(watched, event);
}

} // namespace TEKLUVA
