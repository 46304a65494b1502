#pragma once

#include <QList>
#include <QStringList>

class QJsonArray;
class QJsonObject;

/// What the tool writes: UTF-8, whatever the locale. Answers go to the standard output, all else to the
/// standard error output.
namespace globalsctl {

/// Takes the numbers of standard streams that are closed, so that no file opened later gets one and receives
/// the answer. To be called before anything is opened.
void reserveStandardStreams();

/// Writes \p text and a line end. Whether that worked, flushResults() tells.
void printResult(const QString& text);
void printResult(const QJsonArray& array);
void printResult(const QJsonObject& object);

/// False when not all answers could be written.
[[nodiscard]] bool flushResults();

/// Writes \p text and a line end beside the answer.
void printNote(const QString& text);
/// The same behind the name of the program, and printable.
void printError(const QString& message);

/// \p text with control characters as escapes, "\x1b": names from files must not steer the terminal.
QString printable(const QString& text);

/// Lines with the cells of \p rows in columns two blanks apart.
QString aligned(const QList<QStringList>& rows);

} // namespace globalsctl
