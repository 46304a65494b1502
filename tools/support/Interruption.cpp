#include "support/Interruption.h"

#include "support/Failure.h"

#include "globals/StateHandler.h"

#include <cerrno>

#include <fcntl.h>

namespace globalsctl {

namespace {

/// Where the signal handler writes to.
volatile std::sig_atomic_t pipeEnd = -1;

/// Writes the number of the signal and does nothing else, because it may run in the midst of anything.
void noteSignal(int signal)
{
    const int before = errno;
    const char number = static_cast<char>(signal);
    // A full pipe has told of a signal already.
    static_cast<void>(!write(pipeEnd, &number, 1));
    errno = before;
}

std::array<int, 2> openPipe()
{
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        throw Failure(QStringLiteral("signals cannot be waited for: %1").arg(qt_error_string(errno)));
    return ends;
}

} // namespace

Interruption::Interruption()
    : Interruption(openPipe())
{
}

Interruption::Interruption(const std::array<int, 2>& pipe)
    : m_readEnd(pipe[0])
    , m_writeEnd(pipe[1])
    , m_notifier(pipe[0], QSocketNotifier::Read)
{
    QObject::connect(&m_notifier, &QSocketNotifier::activated, [this] { requestAbort(); });
    pipeEnd = m_writeEnd.get();
    struct sigaction action = {};
    action.sa_handler = &noteSignal;
    action.sa_flags = SA_RESTART;
    for (std::size_t i = 0; i < SIGNALS.size(); ++i) {
        sigaction(SIGNALS[i], nullptr, &m_before[i]);
        if (m_before[i].sa_handler != SIG_IGN)
            sigaction(SIGNALS[i], &action, nullptr);
    }
}

Interruption::~Interruption()
{
    for (std::size_t i = 0; i < SIGNALS.size(); ++i)
        sigaction(SIGNALS[i], &m_before[i], nullptr);
}

int Interruption::signal()
{
    char number = 0;
    if (m_signal == 0 && read(m_readEnd.get(), &number, 1) == 1)
        m_signal = static_cast<uchar>(number);
    return m_signal;
}

void Interruption::check(const QString& consequence)
{
    if (signal() != 0)
        throw Failure(QStringLiteral("interrupted, %1").arg(consequence), Interrupted + signal());
}

void Interruption::requestAbort()
{
    m_notifier.setEnabled(false);
    if (signal() != 0)
        TEKLUVA::StateHandler::getInstance()->setAbort();
}

} // namespace globalsctl
