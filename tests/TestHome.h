#pragma once

#include "TestPlatform.h"

#include <QCoreApplication>
#include <QDebug>
#include <QDir>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

/// A text in a test, "like this"_q.
inline QString operator""_q(const char* text, std::size_t length)
{
    return QString::fromUtf8(text, static_cast<int>(length));
}

namespace TestHome {

/// A home folder of its own for a test program: whatever a test writes, nobody else's files are touched, and
/// nothing that lies on the machine changes a result. The working directory is in it, too.
class Home
{
public:
    Home()
    {
        TestPlatform::requireOwnHome();
        qputenv("HOME", QFile::encodeName(folder()));
        for (const char* variable : {"XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_CONFIG_HOME", "XDG_DATA_DIRS"})
            qunsetenv(variable);
        qputenv("QT_QPA_PLATFORM", "offscreen");
        qputenv("TZ", "Europe/Berlin");
        qputenv("LC_ALL", "C.UTF-8");
        QDir(folder()).mkdir("work"_q);
        QDir::setCurrent(folder() + "/work"_q);
    }

    QString folder() const { return m_folder.path(); }

private:
    QTemporaryDir m_folder;
};

/// Deletes what was left to the event loop.
inline void sendDeletions()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

inline void nameApplication()
{
    QCoreApplication::setOrganizationName("tekluva"_q);
    QCoreApplication::setApplicationName("tekluva 3D-Planner"_q);
}

/// Names the turn of a loop in which a check fails: "const TestHome::Turn turn(size);" in the loop's body.
template <typename Value>
class Turn
{
    Q_DISABLE_COPY(Turn)

public:
    explicit Turn(Value value)
        : m_value(std::move(value))
    {
    }
    ~Turn()
    {
        if (QTest::currentTestFailed())
            qWarning() << "This was the turn of" << m_value;
    }

private:
    const Value m_value;
};

/// The application object of \p Test is a QApplication, say, for a test that shows message boxes.
template <typename Test, typename Application = QCoreApplication>
int run(int argc, char** argv)
{
    const Home home;
    Application application(argc, argv);
    nameApplication();
    Test test;
    return QTest::qExec(&test, argc, argv);
}

} // namespace TestHome

/// The main function of a test program: the one test class and, if need be, that of the application.
#define GLOBALS_TEST_MAIN(...)                                                                               \
    int main(int argc, char** argv)                                                                          \
    {                                                                                                        \
        return TestHome::run<__VA_ARGS__>(argc, argv);                                                       \
    }
