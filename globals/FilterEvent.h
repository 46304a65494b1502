#pragma once

#include "globals/globals_export.h"

#include <QSharedDataPointer>
#include <QVariant>

namespace TEKLUVA {

/// What a filter looks at, and how it compares. The application defines the enumerators, in the same words
/// followed by "{ ... }"; the library only stores the numbers.
enum E_FilterType : int;
enum E_FilterOption : int;

/// One criterion of a filter: a plain value, implicitly shared. Reentrant.
class GLOBALS_EXPORT FilterEvent
{
public:
    /// Type and option are 0, there is no value, and the index is -1.
    FilterEvent();
    FilterEvent(const FilterEvent& other);
    FilterEvent& operator=(const FilterEvent& other);
    ~FilterEvent();

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
    class Private;
    QSharedDataPointer<Private> d;
};

} // namespace TEKLUVA
