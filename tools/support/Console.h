#pragma once

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>

/// What the tool asks of the operating system besides files: standard streams, terminal, signals and
/// environment.
namespace globalsctl {

enum class StandardStream {
    Output,
    Error,
};

/// Takes the descriptors of standard streams that are closed, so that no file opened later gets one and
/// receives what is printed. From now on bytes are read and printed as they are. Call it before anything is
/// opened.
void prepareStandardStreams();

/// Prints \p bytes, which on a terminal are UTF-8, or keeps them until the stream is flushed. False, with a
/// reason in errno, when that fails.
bool write(StandardStream stream, const QByteArray& bytes);

/// The system's words for a value of errno.
QString reasonOf(int error);

/// The value of an environment variable, in UTF-8 where the system has texts and not bytes; nothing if it is
/// not set.
std::optional<QByteArray> environmentVariable(const QString& name);

/// From now on a crash leaves no image of the process's memory.
void forbidCoreDumps();

bool isTerminal(StandardStream stream);

/// Whether the stream is a terminal that can move its cursor and show colours: on Unix not TERM=dumb.
bool isCapableTerminal(StandardStream stream);

/// The width of the terminal's window at the stream; 80 when that is unknown.
int terminalColumns(StandardStream stream);

/// Keeps the signals that ask the program to end (SIGHUP, SIGINT, SIGTERM) from ending it, as long as the
/// scope lives, so that nothing is left half done. When events are processed, a signal becomes the abort
/// request of the StateHandler. On Windows, Ctrl-C and Ctrl-Break count as SIGINT; a console that is closed
/// and the end of the session as SIGTERM, after which the system waits for a few seconds.
///
/// Main thread only, one at a time. A signal that is ignored already, as by nohup, stays ignored.
class Interruption
{
    Q_DISABLE_COPY(Interruption)

public:
    /// Throws Failure when the process cannot open another descriptor.
    Interruption();
    ~Interruption();

    /// Throws Failure, which names the \p consequence, when a signal has arrived.
    void check(const QString& consequence);

private:
    friend class Terminal; // waits for input and signals at once
    struct System;

    /// The number of the signal that has arrived, 0 for none.
    int signal();
    void requestAbort();

    const std::unique_ptr<System> m_system;
};

/// The terminal of the process, wherever the standard streams lead. It does not show what is typed as long as
/// the scope lives; a signal such as Ctrl-C ends the scope, too, and Ctrl-Z interrupts it on Unix.
class Terminal
{
    Q_DISABLE_COPY(Terminal)

public:
    /// Whether the process has a terminal.
    static bool isAvailable();

    /// Throws Failure when there is no terminal.
    Terminal();
    ~Terminal();

    /// Prints \p prompt and returns the line that the user types, without its end. Throws Failure when a
    /// signal arrives, and at the end of input (Ctrl-D, on Windows Ctrl-Z).
    QByteArray ask(const QByteArray& prompt);

private:
    struct System;

    Interruption m_interruption; ///< outlives the change of the terminal
    const std::unique_ptr<System> m_system;
};

} // namespace globalsctl
