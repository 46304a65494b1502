#pragma once

#include <QByteArray>
#include <QStringList>

#include <limits>

class QCommandLineParser;
class QFile;

/// The files that users name on the command line. All functions throw Failure with the reason. The name "-"
/// stands for the standard input where a file is read, and for the standard output where one is written.
namespace globalsctl {

/// What fits into memory in one piece, with room for a protected block's header and padding.
constexpr qint64 LARGEST_CONTENT = std::numeric_limits<int>::max() - 128;

/// Refuses what cannot be opened for reading, what is no regular file, and what has more than \p largest
/// bytes.
void requireReadable(const QString& path, qint64 largest = LARGEST_CONTENT);

bool isStandardInput(const QString& path);
bool isStandardOutput(const QString& path);

/// Opens \p file for the standard input. Throws UsageError from the second time on: it has been read then.
void openStandardInput(QFile& file);

/// The whole content of a file, which must be one that requireReadable() accepts, or of the standard input.
QByteArray contentOf(const QString& path, qint64 largest = LARGEST_CONTENT);

/// What becomes of a file that is in a target's place already.
enum class Existing {
    Refused,
    Replaced,
};

/// As the option --force says.
Existing existingOf(const QCommandLineParser& line);

/// Refuses a target that exists, unless it is to be replaced, and one that is no regular file or one of \p
/// sources: with a wrong password, for example, the result is worth less than what it would replace. Refuses
/// links of the system, such as /dev/fd/2, too.
void requireReplaceable(const QString& target, const QStringList& sources, Existing existing);

/// Writes \p content to the file \p target; it is on disk when the function returns. A link is replaced, not
/// followed. A failure or a signal to end leaves an older file as it was. A terminal gets text only.
void writeTarget(const QString& target, const QByteArray& content);

/// Refuses a \p block that lacks the cipher text of \p plain: the library had no memory for it.
void requireCompleteBlock(const QByteArray& block, const QByteArray& plain);

} // namespace globalsctl
