#include "globals/configuration/ConfigManager_p.h"
#include "globals/configuration/FontDatabase_p.h"
#include "globals/configuration/MeasurementFont_p.h"
#include "globals/logs/ActiveLog_p.h"

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
    QMap<QString, QStringList> fonts;
    for (const QString& family : FontDatabase::families())
        fonts.insert(family, FontDatabase::styles(family));
    return fonts;
}

QFont ConfigManager::getFont(const QString& family, const QString& style, const int& size) const
{
    if (!FontDatabase::families().contains(family)) {
        // No blank after the family: those who search logs know the text like this.
        logWarning(QStringLiteral("The Font: ") + family + QStringLiteral("is not available in the system."));
        QFont font;
        font.setPointSize(size);
        return font;
    }
    const QStringList styles = FontDatabase::styles(family);
    if (!styles.contains(style)) {
        logWarning(QStringLiteral("The Font with Family: ") + family + QStringLiteral(" and Style:") + style
                   + QStringLiteral(" is not available in the system."));
        return FontDatabase::font(family, styles.value(0), size);
    }
    QFont font = FontDatabase::font(family, style, size);
    if (font.family() != family)
        logError(QStringLiteral("Could not load Font with family: ") + family);
    return font;
}

QFont ConfigManager::getFont(const E_FontType& type, const int& size) const
{
    constexpr int DEFAULT_SIZE = 8;
    const bool isMeasurement = type == E_FT_MEASUREMENT;
    const int points = isMeasurement ? size : DEFAULT_SIZE;
    QFont font = isMeasurement ? FontDatabase::font(MEASUREMENT_FONT, QStringLiteral("Normal"), points)
                               : FontDatabase::font(QString(), QString(), points);
    // For a family that it lacks the database returns the application's font, in that font's own size.
    font.setPointSize(points);
    return font;
}

} // namespace TEKLUVA
