#pragma once

#include "support/Console.h"
#include "support/ProgressDisplay.h"

namespace globalsctl {

/// Work on the entries of an archive, one by one: a process of the StateHandler, which is shown on the
/// terminal and which a signal ends between two entries.
class EntryWork
{
    Q_DISABLE_COPY(EntryWork)

public:
    EntryWork(const QString& title, int entries);

    /// Call it before each entry; false when the work is to end.
    bool beginEntry(const QString& entry);

    /// The number of entries begun.
    int count() const { return m_count; }

    /// Prints the error without disturbing the display.
    void printError(const QString& message);

    /// Throws Failure, which names the \p consequence, when a signal has arrived, be it within the last
    /// entry.
    void throwIfInterrupted(const QString& consequence);

private:
    ProgressDisplay m_display;
    Interruption m_interruption;
    int m_count = 0;
};

} // namespace globalsctl
