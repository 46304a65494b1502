#include "globals/Exception.h"

#include <array>

namespace TEKLUVA {

namespace {

/// The text of each type, by its number. The uneven wording is what support staff search logs for.
constexpr std::array<const char*, E_ET_UNKNOWN + 1> WHAT = {
    nullptr,
    "A tekluva exception was caused because some content is not implemented yet.",
    "A fatal tekluva exception occurred.",
    "A tekluva missing data exception occured.",
    "A calculation caused a tekluva exception.",
    "An unexpected value caused an tekluva exception.",
    "A tekluva exception was caused by a value out of range.",
    "A tekluva exception was caused by an undefined element.",
    "An unknown tekluva exception occurred.",
};

E_ExceptionType knownType(E_ExceptionType type)
{
    return type >= E_ET_NOT_IMPLEMENTED && type <= E_ET_UNKNOWN ? type : E_ET_UNKNOWN;
}

} // namespace

Exception::Exception(E_ExceptionType type, std::string description, bool exitApp)
    : m_description(std::move(description))
    , m_exitApp(exitApp)
    , m_type(knownType(type))
{
}

const char* Exception::what() const noexcept
{
    return WHAT[static_cast<std::size_t>(m_type)];
}

const char* Exception::getDescription() const
{
    return m_description.c_str();
}

const char* Exception::getFilename() const
{
    return "";
}

const char* Exception::getFunction() const
{
    return "";
}

int Exception::getLine() const
{
    return 0;
}

bool Exception::exitApp() const
{
    return m_exitApp;
}

E_ExceptionType Exception::getExceptionType() const
{
    return m_type;
}

void Exception::raise() const
{
    throw *this;
}

Exception* Exception::clone() const
{
    return new Exception(*this);
}

} // namespace TEKLUVA
