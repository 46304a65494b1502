#pragma once

#include "OtherPrograms.h"

#include <QRegularExpression>

#include <algorithm>

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

/// Whether the current row is about links, pipes, devices, permissions or an empty variable, or has the words
/// of Unix for a failure.
inline bool isRowOfUnix(std::initializer_list<const char*> columns)
{
    static const QRegularExpression OF_UNIX("flink|links|pipe|/dev/|/proc/|/stdout|read by other|PW_0|"
                                            "No such file|ot a directory|is a directory"_q);
    return std::any_of(columns.begin(), columns.end(),
                       [](const char* column) { return TestData::field(column).contains(OF_UNIX); });
}

inline QStringList arguments()
{
    return wordsOf(TestData::field("arguments"));
}

} // namespace ToolRun
