#pragma once

#include "support/Interruption.h"
#include "support/ProgressDisplay.h"

namespace globalsctl {

/// Work on the entries of an archive, one after the other: a process of the StateHandler that is shown on the
/// terminal and that signals end between two entries.
class EntryWork
{
    Q_DISABLE_COPY(EntryWork)

public:
    EntryWork(const QString& title, int entries);

    /// To be asked before each entry: false when the work is to end.
    bool beginEntry(const QString& entry);

    /// How many entries were begun.
    int count() const { return m_count; }

    /// Complains without disturbing the display.
    void printError(const QString& message);

    /// Throws Failure, which names the \p consequence, when beginEntry() has ended the work.
    void throwIfStopped(const QString& consequence);

private:
    ProgressDisplay m_display;
    Interruption m_interruption;
    int m_count = 0;
    bool m_isStopped = false;
};

} // namespace globalsctl
