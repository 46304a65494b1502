#pragma once

#include <QFontDatabase>
#include <QStringList>

/// What Qt itself knows of the machine's fonts.
namespace TestFontDatabase {

inline QStringList families()
{
    return QFontDatabase::families();
}

inline QStringList styles(const QString& family)
{
    return QFontDatabase::styles(family);
}

} // namespace TestFontDatabase
