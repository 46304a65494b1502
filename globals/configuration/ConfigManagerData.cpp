#include "globals/ConfigManagerData.h"

#include <QFontDatabase>

#include <iterator>

namespace TEKLUVA {

bool ConfigManagerData::addFontFamily(const QString& family, int id)
{
    const QMutexLocker lock(mutex());
    if (m_systemFontMap.contains(family))
        return false;
    m_systemFontMap.insert(family, id);
    return true;
}

bool ConfigManagerData::removeFont(int id)
{
    // The database has a lock of its own, and is asked without ours.
    return unregister(id) && QFontDatabase::removeApplicationFont(id);
}

bool ConfigManagerData::unregister(int id)
{
    const QMutexLocker lock(mutex());
    const int before = m_systemFontMap.size();
    // A file with several families has one id for all of them.
    for (auto font = m_systemFontMap.begin(); font != m_systemFontMap.end();)
        font = *font == id ? m_systemFontMap.erase(font) : std::next(font);
    return m_systemFontMap.size() < before;
}

bool ConfigManagerData::hasFont(const QString& family) const
{
    const QMutexLocker lock(mutex());
    return m_systemFontMap.contains(family);
}

} // namespace TEKLUVA
