#pragma once

#include <QByteArray>
#include <QStringList>

#include <limits>

/// The files that users name on the command line. All functions throw Failure with the reason.
namespace globalsctl {

/// What fits into memory in one piece, with room for a protected block's header and padding.
constexpr qint64 LARGEST_CONTENT = std::numeric_limits<int>::max() - 128;

/// Refuses what cannot be opened for reading, what is no regular file, and what has more than \p largest
/// bytes.
void requireReadable(const QString& path, qint64 largest = LARGEST_CONTENT);

/// The whole content of a file that requireReadable() accepts.
QByteArray contentOf(const QString& path, qint64 largest = LARGEST_CONTENT);

/// Refuses a place that is taken by something other than a regular file, or by one of \p sources: what comes
/// out may be worth less than what it would replace, with a wrong password for one.
void requireReplaceable(const QString& target, const QStringList& sources);

/// Writes the file \p target, which is whole and on disk then. A failure, and a signal to end, leave an older
/// one as it was.
void writeTarget(const QString& target, const QByteArray& content);

/// Refuses a \p block without the cipher text of \p plain, for which there was no memory.
void requireCompleteBlock(const QByteArray& block, const QByteArray& plain);

} // namespace globalsctl
