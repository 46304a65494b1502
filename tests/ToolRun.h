#pragma once

#include "OtherPrograms.h"

/// How tests run globalsctl.
namespace ToolRun {

/// Runs the real program, in a locale that does not know UTF-8.
inline OtherPrograms::Result globalsctl(const QStringList& arguments)
{
    return OtherPrograms::run(QStringLiteral(GLOBALSCTL), arguments, {}, "C"_q);
}

/// The words of \p command, where "" is an empty one.
inline QStringList wordsOf(const QString& command)
{
    QStringList words = command.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    return words.replaceInStrings("\"\""_q, QString());
}

inline QStringList arguments()
{
    return wordsOf(TestData::field("arguments"));
}

} // namespace ToolRun
