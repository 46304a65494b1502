#include "globals/FilterEvent.h"

#include <QSharedData>

namespace TEKLUVA {

class GLOBALS_NO_EXPORT FilterEvent::Private : public QSharedData
{
public:
    E_FilterType type = E_FilterType(0);
    E_FilterOption option = E_FilterOption(0);
    QVariant value;
    int filterIndex = -1;
};

FilterEvent::FilterEvent()
    : d(new Private)
{
}

FilterEvent::FilterEvent(const FilterEvent& other) = default;
FilterEvent& FilterEvent::operator=(const FilterEvent& other) = default;
FilterEvent::~FilterEvent() = default;

E_FilterType FilterEvent::getType() const
{
    return d->type;
}

void FilterEvent::setType(E_FilterType type)
{
    d->type = type;
}

E_FilterOption FilterEvent::getOption() const
{
    return d->option;
}

void FilterEvent::setOption(E_FilterOption option)
{
    d->option = option;
}

int FilterEvent::getFilterIndex() const
{
    return d->filterIndex;
}

void FilterEvent::setFilterIndex(int index)
{
    d->filterIndex = index;
}

QVariant FilterEvent::getValue() const
{
    return d->value;
}

void FilterEvent::setValue(QVariant value)
{
    d->value = std::move(value);
}

bool FilterEvent::isValid() const
{
    return !d->value.isNull() && d->value.isValid() && d->filterIndex >= 0;
}

} // namespace TEKLUVA
