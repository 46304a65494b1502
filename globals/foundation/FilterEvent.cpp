#include "globals/FilterEvent.h"

namespace TEKLUVA {

E_FilterType FilterEvent::getType() const
{
    return m_type;
}

void FilterEvent::setType(E_FilterType type)
{
    m_type = type;
}

E_FilterOption FilterEvent::getOption() const
{
    return m_option;
}

void FilterEvent::setOption(E_FilterOption option)
{
    m_option = option;
}

int FilterEvent::getFilterIndex() const
{
    return m_filterIndex;
}

void FilterEvent::setFilterIndex(int index)
{
    m_filterIndex = index;
}

QVariant FilterEvent::getValue() const
{
    return m_value;
}

void FilterEvent::setValue(QVariant value)
{
    m_value = std::move(value);
}

bool FilterEvent::isValid() const
{
    return !m_value.isNull() && m_value.isValid() && m_filterIndex >= 0;
}

} // namespace TEKLUVA
