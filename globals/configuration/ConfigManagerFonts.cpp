#include "globals/configuration/ConfigManager_p.h"
#include "globals/configuration/MeasurementFont_p.h"
#include "globals/logs/ActiveLog_p.h"

#include <QFontDatabase>

namespace TEKLUVA {

bool ConfigManager::addFontFamily(const QString& family, const int& id)
{
    return d->data.addFontFamily(family, id);
}

bool ConfigManager::removeFont(const int& id)
{
    return d->data.removeFont(id);
}

QMap<QString, QStringList> ConfigManager::getFonts() const
{
    const QFontDatabase database;
    QMap<QString, QStringList> fonts;
    for (const QString& family : database.families())
        fonts.insert(family, database.styles(family));
    return fonts;
}

QFont ConfigManager::getFont(const QString& family, const QString& style, const int& size) const
{
    const QFontDatabase database;
    if (!database.families().contains(family)) {
        // No blank after the family: those who search logs know the text like this.
        logWarning(QStringLiteral("The Font: ") + family + QStringLiteral("is not available in the system."));
        QFont font;
        font.setPointSize(size);
        return font;
    }
    const QStringList styles = database.styles(family);
    if (!styles.contains(style)) {
        logWarning(QStringLiteral("The Font with Family: ") + family + QStringLiteral(" and Style:") + style
                   + QStringLiteral(" is not available in the system."));
        return database.font(family, styles.value(0), size);
    }
    QFont font = database.font(family, style, size);
    if (font.family() != family)
        logError(QStringLiteral("Could not load Font with family: ") + family);
    return font;
}

QFont ConfigManager::getFont(const E_FontType& type, const int& size) const
{
    constexpr int DEFAULT_SIZE = 8;
    const bool isMeasurement = type == E_FT_MEASUREMENT;
    const int points = isMeasurement ? size : DEFAULT_SIZE;
    QFont font = isMeasurement ? QFontDatabase().font(MEASUREMENT_FONT, QStringLiteral("Normal"), points)
                               : QFontDatabase().font(QString(), QString(), points);
    // For a family that it lacks the database returns the application's font, in that font's own size.
    font.setPointSize(points);
    return font;
}

} // namespace TEKLUVA
