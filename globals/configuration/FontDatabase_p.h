#pragma once

#include <QFont>
#include <QStringList>

/// The system's fonts. With Qt 5 it takes an object to ask for them, which Qt 6 deprecates.
namespace TEKLUVA::FontDatabase {

QStringList families();
QStringList styles(const QString& family);
/// The application's font, in its own size, where there is no such family.
QFont font(const QString& family, const QString& style, int points);

} // namespace TEKLUVA::FontDatabase
