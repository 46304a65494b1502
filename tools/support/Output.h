#pragma once

#include <QByteArray>
#include <QList>
#include <QStringList>

class QJsonObject;

/// What the tool prints: UTF-8, whatever the locale. Results go to the standard output, notes and errors to
/// the standard error output.
namespace globalsctl {

/// Prints \p text and a line end; on a terminal with control characters as escapes. Call flushResults() to
/// learn whether that worked.
void printResult(const QString& text);
/// Prints \p answer in JSON, with the version of its schema.
void printAnswer(QJsonObject answer);
/// The same in one line: one of many answers.
void printAnswerInLine(QJsonObject answer);
/// Prints \p rows in columns, which on a terminal fit its window.
void printTable(const QList<QStringList>& rows);
/// Prints \p bytes as they are.
void printBytes(const QByteArray& bytes);

/// False when a result could not be written.
[[nodiscard]] bool flushResults();
/// Why not, in the words of the system.
QString reasonOfResults();

/// Prints \p text, as it is, and a line end.
void printNote(const QString& text);
/// Prints "globalsctl: " and \p message, with control characters as escapes.
void printError(const QString& message);

/// \p text with control characters as escapes, "\x1b": names from files must not control the terminal.
QString printable(const QString& text);

/// Whether \p text has no control characters but those that lay text out.
bool isReadableText(const QString& text);
/// The same for bytes, which must be UTF-8.
bool isReadableText(const QByteArray& bytes);

/// The characters that a line of a result may have: those of the terminal's window. Without a terminal, lines
/// are for programs and as long as they are.
int resultColumns();

} // namespace globalsctl
