#include "support/Console.h"
#include "support/ExitCode.h"
#include "support/Failure.h"

#include <QObject>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <functional>
#include <mutex>

#include <fcntl.h>
#include <io.h>
#include <windows.h>

namespace globalsctl {

namespace {

std::FILE* streamOf(StandardStream stream)
{
    return stream == StandardStream::Output ? stdout : stderr;
}

HANDLE handleOf(StandardStream stream)
{
    return ::GetStdHandle(stream == StandardStream::Output ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE);
}

/// Prints UTF-8, whatever encoding the console has for other programs.
bool show(HANDLE console, const QByteArray& bytes)
{
    constexpr int PIECE = 8192; // some consoles refuse larger ones
    const std::wstring text = QString::fromUtf8(bytes).toStdWString();
    for (std::size_t done = 0; done < text.size(); done += PIECE) {
        const auto count = static_cast<DWORD>(std::min<std::size_t>(text.size() - done, PIECE));
        DWORD written = 0;
        if (!::WriteConsoleW(console, text.data() + done, count, &written, nullptr)) {
            errno = EIO;
            return false;
        }
    }
    return true;
}

/// What asks the program to end, as the console's own thread tells it.
struct Request
{
    std::atomic<int> signal = 0;
    std::mutex lock;
    std::function<void()> receiver; ///< guarded by the lock; empty when nobody waits
};
Request request;

BOOL WINAPI noteEvent(DWORD event)
{
    const bool isKey = event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT;
    {
        const std::lock_guard lock(request.lock);
        if (!request.receiver)
            return FALSE;
        request.signal = isKey ? SIGINT : SIGTERM;
        request.receiver();
    }
    if (!isKey)
        ::Sleep(INFINITE); // the system ends the process when this function returns
    return TRUE;
}

void receive(std::function<void()> receiver)
{
    const std::lock_guard lock(request.lock);
    request.receiver = std::move(receiver);
}

struct CloseConsole
{
    void operator()(void* console) const { ::CloseHandle(console); }
};
/// Null where the process has no console.
using Console = std::unique_ptr<void, CloseConsole>;

Console openConsole(const wchar_t* name)
{
    HANDLE console = ::CreateFileW(name, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                   nullptr, OPEN_EXISTING, 0, nullptr);
    return Console(console == INVALID_HANDLE_VALUE ? nullptr : console);
}

} // namespace

void prepareStandardStreams()
{
    // A stream that is closed keeps its descriptor here.
    for (std::FILE* stream : {stdin, stdout, stderr})
        static_cast<void>(::_setmode(::_fileno(stream), _O_BINARY));
}

bool write(StandardStream stream, const QByteArray& bytes)
{
    if (isTerminal(stream))
        return show(handleOf(stream), bytes);
    const auto size = static_cast<std::size_t>(bytes.size());
    return std::fwrite(bytes.constData(), 1, size, streamOf(stream)) == size;
}

QString reasonOf(int error)
{
    return QString::fromLocal8Bit(std::strerror(error));
}

std::optional<QByteArray> environmentVariable(const QString& name)
{
    const wchar_t* value = ::_wgetenv(name.toStdWString().c_str());
    return value ? std::optional(QString::fromWCharArray(value).toUtf8()) : std::nullopt;
}

void forbidCoreDumps()
{
    ::SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
}

bool isTerminal(StandardStream stream)
{
    DWORD mode = 0;
    return ::GetConsoleMode(handleOf(stream), &mode);
}

bool isCapableTerminal(StandardStream stream)
{
    DWORD mode = 0;
    return ::GetConsoleMode(handleOf(stream), &mode)
           && ::SetConsoleMode(handleOf(stream), mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
}

int terminalColumns(StandardStream stream)
{
    constexpr int USUAL_COLUMNS = 80;
    CONSOLE_SCREEN_BUFFER_INFO info = {};
    const bool isKnown = ::GetConsoleScreenBufferInfo(handleOf(stream), &info);
    return isKnown ? info.srWindow.Right - info.srWindow.Left + 1 : USUAL_COLUMNS;
}

struct Interruption::System
{
    QObject context; ///< of what other threads want to have done in the main one
};

Interruption::Interruption()
    : m_system(std::make_unique<System>())
{
    request.signal = 0;
    receive([this] {
        QMetaObject::invokeMethod(
            &m_system->context, [this] { requestAbort(); }, Qt::QueuedConnection);
    });
    ::SetConsoleCtrlHandler(&noteEvent, TRUE);
}

Interruption::~Interruption()
{
    ::SetConsoleCtrlHandler(&noteEvent, FALSE);
    receive({});
}

int Interruption::signal()
{
    return request.signal;
}

struct Terminal::System
{
    const Console input = openConsole(L"CONIN$");
    const Console output = openConsole(L"CONOUT$");
    DWORD before = 0; ///< the mode of the input
};

bool Terminal::isAvailable()
{
    return openConsole(L"CONIN$") != nullptr;
}

Terminal::Terminal()
    : m_system(std::make_unique<System>())
{
    HANDLE input = m_system->input.get();
    if (!m_system->output || !::GetConsoleMode(input, &m_system->before))
        throw Failure(QStringLiteral("there is no terminal to ask for a password"));
    ::SetConsoleMode(input, ENABLE_LINE_INPUT | ENABLE_PROCESSED_INPUT);
}

Terminal::~Terminal()
{
    ::SetConsoleMode(m_system->input.get(), m_system->before);
    show(m_system->output.get(), "\n");
}

QByteArray Terminal::ask(const QByteArray& prompt)
{
    constexpr wchar_t END_OF_INPUT = 0x1a;
    show(m_system->output.get(), prompt);
    std::array<wchar_t, 4096> typed{};
    DWORD length = 0;
    ::SetLastError(ERROR_SUCCESS);
    ::ReadConsoleW(m_system->input.get(), typed.data(), typed.size(), &length, nullptr);
    if (::GetLastError() == ERROR_OPERATION_ABORTED)
        noteEvent(CTRL_C_EVENT); // the console's thread may come later
    m_interruption.check(QStringLiteral("no password was read"));
    if (length == 0 || typed.front() == END_OF_INPUT)
        throw Failure(QStringLiteral("no password was read"));
    QString line = QString::fromWCharArray(typed.data(), static_cast<int>(length));
    while (line.endsWith(QLatin1Char('\n')) || line.endsWith(QLatin1Char('\r')))
        line.chop(1);
    return line.toUtf8();
}

} // namespace globalsctl
