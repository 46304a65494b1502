#include "globals/FilterEvent.h"

#include <QBitArray>
#include <QDateTime>
#include <QLineF>
#include <QRectF>
#include <QSharedData>
#include <QUuid>

#include <algorithm>
#include <iterator>

namespace TEKLUVA {

namespace {

struct NullRow
{
    int type;
    bool (*isNull)(const QVariant& value);
};

template <typename Type>
constexpr NullRow nullRow()
{
    return {qMetaTypeId<Type>(), [](const QVariant& value) { return value.value<Type>().isNull(); }};
}

/// The types of values that may be null themselves, which Qt 5 looks at in QVariant::isNull() and Qt 6 does
/// not.
constexpr NullRow NULL_TYPES[] = {
    nullRow<QChar>(),   nullRow<QString>(), nullRow<QByteArray>(), nullRow<QBitArray>(),
    nullRow<QDate>(),   nullRow<QTime>(),   nullRow<QDateTime>(),  nullRow<QRect>(),
    nullRow<QRectF>(),  nullRow<QLine>(),   nullRow<QLineF>(),     nullRow<QPoint>(),
    nullRow<QPointF>(), nullRow<QSize>(),   nullRow<QSizeF>(),     nullRow<QUuid>(),
};

bool holdsNull(const QVariant& value)
{
    return value.isNull()
           || std::any_of(std::begin(NULL_TYPES), std::end(NULL_TYPES), [&value](const NullRow& row) {
                  return row.type == value.userType() && row.isNull(value);
              });
}

} // namespace

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
    return !holdsNull(d->value) && d->value.isValid() && d->filterIndex >= 0;
}

} // namespace TEKLUVA
