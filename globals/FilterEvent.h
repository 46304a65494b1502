#pragma once

#include "globals/globals_export.h"

#include <QVariant>

namespace TEKLUVA {

/// What a filter looks at, and how it compares. The application defines the enumerators, in the same words
/// with "{ ... }" behind them; the library only stores the numbers.
enum E_FilterType : int;
enum E_FilterOption : int;

/// One criterion of a filter: a plain value. Reentrant.
class GLOBALS_EXPORT FilterEvent
{
public:
    E_FilterType getType() const;
    void setType(E_FilterType type);

    E_FilterOption getOption() const;
    void setOption(E_FilterOption option);

    /// -1 until set.
    int getFilterIndex() const;
    void setFilterIndex(int index);

    QVariant getValue() const;
    void setValue(QVariant value);

    /// True when there is a value (neither null nor of an invalid type) and an index of 0 or above.
    bool isValid() const;

private:
    E_FilterType m_type = E_FilterType(0);
    E_FilterOption m_option = E_FilterOption(0);
    QVariant m_value;
    int m_filterIndex = -1;
};

} // namespace TEKLUVA
