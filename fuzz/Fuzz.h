#pragma once

#include <QByteArray>
#include <QString>

#include <cstdlib>

/// What a fuzz target does with one input, any bytes; each program defines its own. It may use the one active
/// log, and files in the working folder.
void fuzz(const QByteArray& input);

/// Ends the process, and so shows the input, when a promise of the library does not hold.
inline void require(bool holds)
{
    if (!holds)
        std::abort();
}

inline QString textOf(const QByteArray& bytes)
{
    return QString::fromUtf8(bytes.constData(), bytes.size());
}
