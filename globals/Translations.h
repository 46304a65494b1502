#pragma once

#include "globals/globals_export.h"

#include <QString>

namespace TEKLUVA {

/// Shows the library's texts in \p language from now on: "en" or "de", as ConfigManager::getPrefferedLang()
/// returns them. False, and nothing changes, for any other name, for example "de_AT".
///
/// Call it on the main thread, after the application object was made, and again to switch. Widgets then get
/// their QEvent::LanguageChange; a unit box is translated again by
/// MeasurementManager::updateMeasurementComboBoxLanguage().
///
///     showLanguage(ConfigManager::getInstance()->getPrefferedLang());
///
/// Without it the texts appear as they stand in the sources, which is German with one exception.
GLOBALS_EXPORT bool showLanguage(const QString& language);

} // namespace TEKLUVA
