#pragma once

#include "globals/globals_export.h"

#include <QString>

namespace TEKLUVA {

/// Shows the library's texts in \p language, "en" or "de", from now on; ConfigManager::getPrefferedLang()
/// names one of them. False, and nothing changes, for any other name, "de_AT" for one. Call it on the main
/// thread, once the application object exists and again to switch; widgets then get their
/// QEvent::LanguageChange, and a unit box is re-translated with
/// MeasurementManager::updateMeasurementComboBoxLanguage().
///
///     showLanguage(ConfigManager::getInstance()->getPrefferedLang());
///
/// Without it the texts appear as they stand in the sources, which is German with one exception.
GLOBALS_EXPORT bool showLanguage(const QString& language);

} // namespace TEKLUVA
