#pragma once

#include <QtGlobal>

#include <system_error>

#include <windows.h>

namespace TEKLUVA::System {

/// A handle of the system, closed with its scope.
class Handle
{
    Q_DISABLE_COPY(Handle)

public:
    explicit Handle(HANDLE handle)
        : m_handle(handle)
    {
    }
    ~Handle()
    {
        if (isOpen())
            ::CloseHandle(m_handle);
    }

    /// Some functions return one value for none, some the other.
    bool isOpen() const { return m_handle != nullptr && m_handle != INVALID_HANDLE_VALUE; }
    HANDLE get() const { return m_handle; }

private:
    const HANDLE m_handle;
};

/// Why the last call of the system failed, in the calling thread.
inline std::error_code lastSystemError()
{
    return {static_cast<int>(::GetLastError()), std::system_category()};
}

/// The error of a call of the system that returned \p result.
inline std::error_code resultOf(BOOL result)
{
    return result ? std::error_code() : lastSystemError();
}

} // namespace TEKLUVA::System
