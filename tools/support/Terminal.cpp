#include "support/Terminal.h"

#include "support/Failure.h"

#include <array>
#include <cerrno>

#include <fcntl.h>
#include <poll.h>

namespace globalsctl {

namespace {

int openTerminal()
{
    return open("/dev/tty", O_RDWR | O_CLOEXEC);
}

} // namespace

bool Terminal::isThere()
{
    return TEKLUVA::Descriptor(openTerminal()).isOpen();
}

Terminal::Terminal()
    : m_terminal(openTerminal())
{
    if (!m_terminal.isOpen() || tcgetattr(m_terminal.get(), &m_before) != 0)
        throw Failure(QStringLiteral("there is no terminal to ask for a password"));
    termios silent = m_before;
    silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    silent.c_lflag |= ICANON | ISIG;
    // These keys would leave the shell with a silent terminal.
    silent.c_cc[VQUIT] = _POSIX_VDISABLE;
    silent.c_cc[VSUSP] = _POSIX_VDISABLE;
    tcsetattr(m_terminal.get(), TCSAFLUSH, &silent);
}

Terminal::~Terminal()
{
    tcsetattr(m_terminal.get(), TCSAFLUSH, &m_before);
    static_cast<void>(!::write(m_terminal.get(), "\n", 1));
}

QByteArray Terminal::ask(const QByteArray& prompt)
{
    static_cast<void>(
        !::write(m_terminal.get(), prompt.constData(), static_cast<std::size_t>(prompt.size())));
    waitForInput();
    // What a terminal collects for a line at the most.
    std::array<char, 4096> typed{};
    const ssize_t length = read(m_terminal.get(), typed.data(), typed.size());
    QByteArray line(typed.data(), static_cast<int>(qMax<ssize_t>(0, length)));
    if (line.endsWith('\n'))
        line.chop(1);
    return line;
}

void Terminal::waitForInput()
{
    std::array<pollfd, 2> sources = {
        {{m_terminal.get(), POLLIN, 0}, {m_interruption.descriptor(), POLLIN, 0}}};
    while (poll(sources.data(), sources.size(), -1) < 0 && errno == EINTR)
        continue;
    m_interruption.check(QStringLiteral("no password was read"));
}

} // namespace globalsctl
