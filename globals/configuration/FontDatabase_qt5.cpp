#include "globals/configuration/FontDatabase_p.h"

#include <QFontDatabase>

namespace TEKLUVA::FontDatabase {

QStringList families()
{
    return QFontDatabase().families();
}

QStringList styles(const QString& family)
{
    return QFontDatabase().styles(family);
}

QFont font(const QString& family, const QString& style, int points)
{
    return QFontDatabase().font(family, style, points);
}

} // namespace TEKLUVA::FontDatabase
