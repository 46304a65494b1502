#pragma once

#include <exception>

namespace TEKLUVA {

/// Runs \p operation and returns its result, or an empty one when it throws; \p report gets the exception's
/// text then, null for one of an unknown type. Where there is no memory for the report either, the empty
/// result has to do.
///
/// For operations that promise no exception: each of them may still run out of memory.
template <typename Operation, typename Report>
auto withoutExceptions(Operation&& operation, Report&& report) noexcept -> decltype(operation())
{
    const auto reportCaught = [&report](const char* what) {
        try {
            report(what);
        } catch (const std::exception&) {
            return;
        }
    };
    try {
        return operation();
    } catch (const std::exception& e) {
        reportCaught(e.what());
    } catch (...) {
        reportCaught(nullptr);
    }
    return decltype(operation())();
}

/// The same where nobody can be told.
template <typename Operation>
auto withoutExceptions(Operation&& operation) noexcept -> decltype(operation())
{
    return withoutExceptions(operation, [](const char*) {});
}

/// For a message about an exception.
inline const char* orUnknown(const char* what)
{
    return what ? what : "unknown exception";
}

} // namespace TEKLUVA
