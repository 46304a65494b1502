#pragma once

#include "TestData.h"

#include <functional>

/// Calls that the rows of text files make by name. Each takes its arguments from the front of a row's words,
/// as many and such as the function has parameters.
namespace TestCalls {

using Call = std::function<QVariant(QStringList& words)>;
using Calls = QMap<QString, Call>;

template <typename Result, typename... Arguments>
Call callOf(const std::function<Result(Arguments...)>& function)
{
    return [function](QStringList& words) {
        if (words.size() < int(sizeof...(Arguments)))
            return TestData::refuse(words.join(QLatin1Char(' ')), "whole list of arguments"), QVariant();
        const auto arguments = std::tuple{TestData::valueOf<std::decay_t<Arguments>>(words.takeFirst())...};
        if constexpr (std::is_void_v<Result>)
            return std::apply(function, arguments), QVariant();
        else
            return QVariant(std::apply(function, arguments));
    };
}

template <typename Function>
Call call(Function function)
{
    return callOf(std::function(function));
}

/// A call on the object that \p object returns then.
template <typename Class, typename Result, typename... Arguments>
Call call(Class* (*object)(), Result (Class::*method)(Arguments...))
{
    return call([=](Arguments... arguments) { return (object()->*method)(arguments...); });
}

template <typename Class, typename Result, typename... Arguments>
Call call(Class* (*object)(), Result (Class::*method)(Arguments...) const)
{
    return call([=](Arguments... arguments) { return (object()->*method)(arguments...); });
}

/// Makes the call that the first word names; a name that is none fails the row. Other words may be left over.
inline QVariant make(const Calls& calls, QStringList& words)
{
    const QString name = words.takeFirst();
    if (calls.contains(name))
        return calls[name](words);
    return TestData::refuse(name, "call"), QVariant();
}

} // namespace TestCalls
