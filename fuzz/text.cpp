#include "Fuzz.h"

#include "globals/ConfigManager.h"
#include "globals/MeasurementManager.h"

using namespace TEKLUVA;

/// Two versions, or abbreviations, with a line feed between them.
void fuzz(const QByteArray& input)
{
    const QString text = textOf(input);
    const QString first = text.section(QLatin1Char('\n'), 0, 0);
    const QString second = text.section(QLatin1Char('\n'), 1);
    const ConfigManager& config = *ConfigManager::getInstance();
    for (const quint16 depth : {quint16(1), quint16(4), quint16(65535)}) {
        const auto result = config.compareVersion(first, second, depth);
        const auto swapped =
            config.compareVersion(second, first, depth); // NOLINT(readability-suspicious-call-argument)
        require((result == E_VC_LOWER) == (swapped == E_VC_HIGHER));
        require((result == E_VC_EQUAL) == (swapped == E_VC_EQUAL));
    }
    const auto* units = MeasurementManager::getInstance();
    const auto unit = units->getMeasurementFromAbbrevation(first);
    const QString known = units->getMeasurementUnitAbbrevation(unit.first, unit.second);
    require(known == QLatin1String("cm") || known.compare(first, Qt::CaseInsensitive) == 0);
}
