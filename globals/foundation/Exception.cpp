#include "globals/Exception.h"

#include <QSharedData>
#include <QString>

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

/// \p text, with U+FFFD in the place of what is no UTF-8.
std::string validUtf8(std::string text)
{
    const std::string valid = QString::fromUtf8(text.data(), static_cast<int>(text.size())).toStdString();
    const std::string withMark = "\xEF\xBB\xBF" + valid; // which QString drops, although it is valid
    return text == withMark ? text : valid;
}

} // namespace

class GLOBALS_NO_EXPORT Exception::Private : public QSharedData
{
public:
    Private(std::string text, bool isFinal, E_ExceptionType kind)
        : description(std::move(text))
        , exitApp(isFinal)
        , type(kind)
    {
    }

    const std::string description;
    const bool exitApp;
    const E_ExceptionType type;
};

Exception::Exception(E_ExceptionType type, std::string description, bool exitApp)
    // NOLINTNEXTLINE(bugprone-throw-keyword-missing): this is the private part
    : d(new Private(validUtf8(std::move(description)), exitApp, knownType(type)))
{
}

Exception::Exception(const Exception& other) noexcept = default;
Exception& Exception::operator=(const Exception& other) noexcept = default;
Exception::~Exception() noexcept = default;

const char* Exception::what() const noexcept
{
    return WHAT[static_cast<std::size_t>(d->type)];
}

const char* Exception::getDescription() const
{
    return d->description.c_str();
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
    return d->exitApp;
}

E_ExceptionType Exception::getExceptionType() const
{
    return d->type;
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
