#pragma once

#include <QDir>
#include <QStandardPaths>
#include <QTest>

#include <cstdlib>
#include <filesystem>

/// Leaves out a test, or the rest of it, that Windows has no \p what for.
#define SKIP_ON_WINDOWS(what) QSKIP("not on Windows: " what)

/// What tests ask of the system beyond what Qt and the standard library offer on all. What Windows does not
/// have is here for the compiler.
namespace TestPlatform {

constexpr bool IS_UNIX = false;

inline QString wordsOf(const QString& failure)
{
    return failure.isEmpty() ? QString() : QStringLiteral("failed");
}

inline std::filesystem::path pathOf(const QString& text)
{
    return text.toStdWString();
}

inline QString textOf(const std::filesystem::path& path)
{
    return QString::fromStdWString(path.generic_wstring());
}

inline QString dataFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
}

/// Tests empty the folder of all applications' data, which no variable leads elsewhere here. scripts/windows
/// gives each program one of its own and says so; nobody else's is touched.
inline void requireOwnHome()
{
    if (qEnvironmentVariable("GLOBALS_TEST_DATA") != dataFolder())
        qFatal("These tests would empty %s. Run them by scripts/windows.", qPrintable(dataFolder()));
}

/// Not the home folder, which has more in it.
inline QString userFolder()
{
    return dataFolder();
}

/// An empty value removes it.
inline void setVariable(const char* name, const QString& value)
{
    _wputenv_s(QString::fromLatin1(name).toStdWString().c_str(), value.toStdWString().c_str());
}

[[nodiscard]] inline bool makePipe(const std::filesystem::path& /*path*/)
{
    return false;
}

inline int openDescriptors()
{
    return 0;
}

inline qint64 allocated()
{
    return 0;
}

class OpenFile
{
public:
    explicit OpenFile(const QString& path, int flags = 0)
        : m_file(path)
    {
        m_file.open(flags == NEW ? QIODevice::ReadWrite | QIODevice::NewOnly : QIODevice::ReadOnly);
    }
    static constexpr int NEW = 1;

    bool write(const QByteArray& text) { return m_file.write(text) == text.size() && m_file.flush(); }
    bool lock() const { return false; }
    void close() { m_file.close(); }

private:
    QFile m_file;
};

struct FullDisk
{
    static constexpr quint64 WITH_ROOM = ~quint64{0};
    explicit FullDisk(quint64 /*bytes*/, bool /*endsProcess*/ = false) {}
};

struct NoThreads
{
    NoThreads() {}
};

struct NoDescriptors
{
    NoDescriptors() {}
};

} // namespace TestPlatform
