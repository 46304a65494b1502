#pragma once

#include "globals/system/Descriptor_p.h"
#include "support/Interruption.h"

#include <QByteArray>

#include <termios.h>

namespace globalsctl {

/// The user's terminal, wherever the standard streams lead, which does not show what is typed as long as the
/// scope lives. Ctrl-C restores it, too.
class Terminal
{
    Q_DISABLE_COPY(Terminal)

public:
    /// Whether the process has a terminal.
    static bool isThere();

    /// Throws Failure without a terminal.
    Terminal();
    ~Terminal();

    /// The line that the user types after \p prompt, without its end; empty at the end of input. Throws
    /// Failure when a signal arrives.
    QByteArray ask(const QByteArray& prompt);

private:
    void waitForInput();

    Interruption m_interruption;
    TEKLUVA::Descriptor m_terminal;
    termios m_before{};
};

} // namespace globalsctl
