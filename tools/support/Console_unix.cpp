#include "support/Console.h"
#include "support/Failure.h"

#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <cstdio>

#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#ifdef __linux__
#include <sys/prctl.h>
#endif
#include <termios.h>
#include <unistd.h>

namespace globalsctl {

/// A file descriptor that is closed at the end of its scope; a negative one stands for none.
class Descriptor
{
    Q_DISABLE_COPY(Descriptor)

public:
    explicit Descriptor(int descriptor)
        : m_descriptor(descriptor)
    {
    }
    ~Descriptor()
    {
        if (isOpen())
            ::close(m_descriptor);
    }

    bool isOpen() const { return m_descriptor >= 0; }
    int get() const { return m_descriptor; }

private:
    const int m_descriptor;
};

namespace {

constexpr std::array<int, 3> SIGNALS = {SIGHUP, SIGINT, SIGTERM};

/// Ctrl-Z, while the terminal is silent.
constexpr int SUSPENSION = SIGTSTP;

/// Where the signal handler writes to.
volatile std::sig_atomic_t signalPipe = -1;

/// Writes the number of the signal and does nothing else: a handler may run in the middle of any function.
void noteSignal(int signal)
{
    const int before = errno;
    const char number = static_cast<char>(signal);
    // A full pipe has told of a signal already.
    static_cast<void>(!::write(signalPipe, &number, 1));
    errno = before;
}

/// From now on \p signal is noted, unless it is ignored. Returns what was done with it before.
struct sigaction catchSignal(int signal)
{
    struct sigaction action = {};
    action.sa_handler = &noteSignal;
    action.sa_flags = SA_RESTART;
    struct sigaction before = {};
    sigaction(signal, nullptr, &before);
    if (before.sa_handler != SIG_IGN)
        sigaction(signal, &action, nullptr);
    return before;
}

std::array<int, 2> openPipe()
{
    std::array<int, 2> ends{};
    bool isOpen = ::pipe(ends.data()) == 0;
    for (const int end : ends)
        isOpen = isOpen && ::fcntl(end, F_SETFD, FD_CLOEXEC) == 0 && ::fcntl(end, F_SETFL, O_NONBLOCK) == 0;
    if (!isOpen)
        throw Failure(QStringLiteral("signals cannot be waited for: %1").arg(qt_error_string(errno)));
    return ends;
}

int descriptorOf(StandardStream stream)
{
    return stream == StandardStream::Output ? STDOUT_FILENO : STDERR_FILENO;
}

int openTerminal()
{
    return ::open("/dev/tty", O_RDWR | O_CLOEXEC);
}

/// \p terminal as it is to be while a password is typed.
termios silent(termios terminal)
{
    terminal.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    terminal.c_lflag |= ICANON | ISIG;
    // This key would leave the shell with a silent terminal.
    terminal.c_cc[VQUIT] = _POSIX_VDISABLE;
    return terminal;
}

void show(const Descriptor& terminal, const QByteArray& text)
{
    // A terminal that takes no prompt may still give a line.
    static_cast<void>(!::write(terminal.get(), text.constData(), static_cast<std::size_t>(text.size())));
}

} // namespace

void prepareStandardStreams()
{
    // Opened for reading only: printing to it has to fail.
    int descriptor = 0;
    do {
        descriptor = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    } while (descriptor >= 0 && descriptor <= STDERR_FILENO);
    if (descriptor >= 0)
        ::close(descriptor);
}

bool write(StandardStream stream, const QByteArray& bytes)
{
    const auto size = static_cast<std::size_t>(bytes.size());
    return std::fwrite(bytes.constData(), 1, size, stream == StandardStream::Output ? stdout : stderr)
           == size;
}

QString reasonOf(int error)
{
    return qt_error_string(error);
}

std::optional<QByteArray> environmentVariable(const QString& name)
{
    const QByteArray variable = name.toLocal8Bit();
    if (!qEnvironmentVariableIsSet(variable.constData()))
        return {};
    return qgetenv(variable.constData());
}

void forbidCoreDumps()
{
    const rlimit none = {};
    static_cast<void>(::setrlimit(RLIMIT_CORE, &none));
#ifdef __linux__
    // A program of the system that receives the images does not heed the limit.
    static_cast<void>(::prctl(PR_SET_DUMPABLE, 0));
#endif
}

bool isTerminal(StandardStream stream)
{
    return ::isatty(descriptorOf(stream)) != 0;
}

bool isCapableTerminal(StandardStream stream)
{
    const QByteArray kind = qgetenv("TERM");
    return isTerminal(stream) && !kind.isEmpty() && kind != "dumb";
}

int terminalColumns(StandardStream stream)
{
    constexpr int USUAL_COLUMNS = 80;
    winsize size{};
    const bool isKnown = ::ioctl(descriptorOf(stream), TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
    return isKnown ? size.ws_col : USUAL_COLUMNS;
}

struct Interruption::System
{
    explicit System(const std::array<int, 2>& pipe)
        : readEnd(pipe[0])
        , writeEnd(pipe[1])
        , notifier(pipe[0], QSocketNotifier::Read)
    {
    }

    const Descriptor readEnd;
    const Descriptor writeEnd;
    QSocketNotifier notifier;
    std::array<struct sigaction, SIGNALS.size()> before{};
    int signal = 0;
};

Interruption::Interruption()
    : m_system(std::make_unique<System>(openPipe()))
{
    QObject::connect(&m_system->notifier, &QSocketNotifier::activated, [this] {
        m_system->notifier.setEnabled(false);
        requestAbort();
    });
    signalPipe = m_system->writeEnd.get();
    for (std::size_t i = 0; i < SIGNALS.size(); ++i)
        m_system->before[i] = catchSignal(SIGNALS[i]);
}

Interruption::~Interruption()
{
    for (std::size_t i = 0; i < SIGNALS.size(); ++i)
        sigaction(SIGNALS[i], &m_system->before[i], nullptr);
}

int Interruption::signal()
{
    char number = 0;
    if (m_system->signal == 0 && ::read(m_system->readEnd.get(), &number, 1) == 1)
        m_system->signal = static_cast<uchar>(number);
    return m_system->signal;
}

struct Terminal::System
{
    void silence() const;
    /// False when the user wants to suspend the program.
    bool waitForInput(Interruption& interruption) const;
    /// Returns when the program goes on.
    void suspend(Interruption& interruption);

    const Descriptor terminal{openTerminal()};
    termios before{};
    struct sigaction beforeSuspension = {};
};

void Terminal::System::silence() const
{
    const termios wanted = silent(before);
    tcsetattr(terminal.get(), TCSAFLUSH, &wanted);
}

bool Terminal::System::waitForInput(Interruption& interruption) const
{
    std::array<pollfd, 2> sources = {
        {{terminal.get(), POLLIN, 0}, {interruption.m_system->readEnd.get(), POLLIN, 0}}};
    while (::poll(sources.data(), sources.size(), -1) < 0 && errno == EINTR)
        continue;
    if (interruption.signal() == SUSPENSION)
        return false;
    interruption.check(QStringLiteral("no password was read"));
    return true;
}

void Terminal::System::suspend(Interruption& interruption)
{
    tcsetattr(terminal.get(), TCSAFLUSH, &before);
    sigaction(SUSPENSION, &beforeSuspension, nullptr);
    static_cast<void>(::raise(SUSPENSION)); // returns when the shell goes on with the program
    beforeSuspension = catchSignal(SUSPENSION);
    interruption.m_system->signal = 0;
    silence();
}

bool Terminal::isAvailable()
{
    return Descriptor(openTerminal()).isOpen();
}

Terminal::Terminal()
    : m_system(std::make_unique<System>())
{
    const Descriptor& terminal = m_system->terminal;
    if (!terminal.isOpen() || tcgetattr(terminal.get(), &m_system->before) != 0)
        throw Failure(QStringLiteral("there is no terminal to ask for a password"));
    m_system->beforeSuspension = catchSignal(SUSPENSION);
    m_system->silence();
}

Terminal::~Terminal()
{
    sigaction(SUSPENSION, &m_system->beforeSuspension, nullptr);
    tcsetattr(m_system->terminal.get(), TCSAFLUSH, &m_system->before);
    show(m_system->terminal, "\n");
}

QByteArray Terminal::ask(const QByteArray& prompt)
{
    show(m_system->terminal, prompt);
    while (!m_system->waitForInput(m_interruption)) {
        m_system->suspend(m_interruption);
        show(m_system->terminal, prompt);
    }
    // What a terminal collects for a line at the most.
    std::array<char, 4096> typed{};
    const ssize_t length = ::read(m_system->terminal.get(), typed.data(), typed.size());
    if (length <= 0)
        throw Failure(QStringLiteral("no password was read"));
    QByteArray line(typed.data(), static_cast<int>(length));
    if (line.endsWith('\n'))
        line.chop(1);
    return line;
}

} // namespace globalsctl
