#include "globals/ConfigManager.h"

#include <QOperatingSystemVersion>

#include <array>

namespace TEKLUVA {

namespace {

struct ImageRow
{
    E_OffscreenImage image;
    const char* name; ///< the end of its settings keys
    unsigned int size;
    unsigned int quality;
    const char* format;
};

constexpr ImageRow IMAGES[] = {
    {E_OI_COLOR, "color", 1024, 80, "JPG"},
    {E_OI_DEPTH, "depth", 1024, 0, "PNG"},
    {E_OI_NORMAL, "normal", 1024, 0, "PNG"},
    {E_OI_ID, "id", 512, 0, "PNG"},
};
/// The row of any other number. It has no name, and so nothing is stored.
constexpr ImageRow NO_IMAGE = {E_OffscreenImage(0), nullptr, 0, 0, ""};

const ImageRow& rowOf(E_OffscreenImage image)
{
    for (const ImageRow& row : IMAGES) {
        if (row.image == image)
            return row;
    }
    return NO_IMAGE;
}

struct SuffixRow
{
    E_FileSuffixType type;
    const char* suffix;
};

constexpr SuffixRow SUFFIXES[] = {
    {E_FST_RGM, ".rgm"},
    {E_FST_ARGM, ".argm"},
};

/// Stores \p value as an override of a built-in value of \p image, under "WHAT_NAME".
void store(ConfigManager& config, E_OffscreenImage image, const char* what, const QVariant& value)
{
    if (const char* name = rowOf(image).name) {
        config.setSetting(QStringLiteral("cube_map_settings"),
                          QString::fromLatin1(what) + QLatin1Char('_') + QString::fromLatin1(name), value);
    }
}

} // namespace

unsigned int ConfigManager::getCubeMapRenderSize(const E_OffscreenImage& image) const
{
    return rowOf(image).size;
}

unsigned int ConfigManager::getCubeMapImageQuality(const E_OffscreenImage& image) const
{
    return rowOf(image).quality;
}

QString ConfigManager::getCubeMapFormat(const E_OffscreenImage& image) const
{
    return QString::fromLatin1(rowOf(image).format);
}

QString ConfigManager::getCubeMapFormatSuffix(const E_OffscreenImage& image) const
{
    return QLatin1Char('.') + getCubeMapFormat(image).toLower();
}

void ConfigManager::setCubeMapRenderSize(const E_OffscreenImage& image, const unsigned int& pixels)
{
    store(*this, image, "size", pixels);
}

void ConfigManager::setCubeMapImageQuality(const E_OffscreenImage& image, const unsigned int& quality)
{
    constexpr unsigned int BEST = 100;
    store(*this, image, "quality", qMin(quality, BEST));
}

void ConfigManager::setCubeMapFormat(const E_OffscreenImage& image, const QString& format)
{
    store(*this, image, "format", format);
}

QString ConfigManager::getFileSuffix(const E_FileSuffixType& type) const
{
    for (const SuffixRow& row : SUFFIXES) {
        if (row.type == type)
            return QString::fromLatin1(row.suffix);
    }
    return QString();
}

QString ConfigManager::getOSVersion() const
{
    const QOperatingSystemVersion system = QOperatingSystemVersion::current();
    const bool named = system.type() == QOperatingSystemVersion::MacOS && system.majorVersion() == 10
                       && system.minorVersion() >= 3 && system.minorVersion() <= 9;
    return named ? QStringLiteral("Mac10_%1").arg(system.minorVersion()) : QStringLiteral("Mac");
}

int ConfigManager::getSystemArch() const
{
    constexpr int INTEL_64_BIT = 3;
    return INTEL_64_BIT;
}

} // namespace TEKLUVA
