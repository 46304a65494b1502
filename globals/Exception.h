#pragma once

#include "globals/globals_export.h"

#include <QException>
#include <QSharedDataPointer>

#include <string>

namespace TEKLUVA {

/// What kind of failure an Exception reports.
enum E_ExceptionType : int {
    E_ET_NOT_IMPLEMENTED = 1,
    E_ET_FATAL = 2,        ///< such as a malformed preset file
    E_ET_MISSING_DATA = 3, ///< such as a missing file
    E_ET_CALCULATION = 4,
    E_ET_UNEXPECTED_VALUE = 5,
    E_ET_OUT_OF_RANGE = 6,
    E_ET_UNDEFINED_ELEMENT = 7,
    E_ET_UNKNOWN = 8, ///< also any other number
};

/// The one exception type of the library, thrown by value and caught by reference. It crosses Qt's concurrent
/// framework, too. Copies share what they hold, so that copying never throws. Reentrant.
///
///     try { PresetManager::getInstance()->init(); }
///     catch (Exception& e) { report(e.what(), e.getDescription()); if (e.exitApp()) return 1; }
class GLOBALS_EXPORT Exception : public QException
{
public:
    /// A \p type outside 1 to 8 becomes E_ET_UNKNOWN. What is no UTF-8 in \p description becomes U+FFFD.
    /// \p exitApp tells the application to end once it has reported the failure.
    Exception(E_ExceptionType type, std::string description, bool exitApp);
    Exception(const Exception& other) noexcept;
    Exception& operator=(const Exception& other) noexcept;
    ~Exception() noexcept override;

    /// The fixed text of the exception's type. The description is never part of it.
    const char* what() const noexcept override;

    /// UTF-8, valid as long as the exception lives.
    const char* getDescription() const;

    /// \name Source location
    /// Deliberately not recorded: always "" and 0.
    /// @{
    const char* getFilename() const;
    const char* getFunction() const;
    int getLine() const;
    /// @}

    bool exitApp() const;
    E_ExceptionType getExceptionType() const;

    /// Throws a copy.
    [[noreturn]] void raise() const override;
    /// A copy that the caller owns.
    Exception* clone() const override;

private:
    class Private;
    QSharedDataPointer<Private> d;
};

} // namespace TEKLUVA
