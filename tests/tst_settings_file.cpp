#include "FullDisk.h"
#include "TestData.h"
#include "TestHome.h"
#include "TestLog.h"

#include "globals/Settings.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QLockFile>

#include <array>
#include <filesystem>
#include <functional>
#include <limits>
#include <memory>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace TEKLUVA;
namespace fs = std::filesystem;

using Make = std::function<int()>;
Q_DECLARE_METATYPE(Make)
using End = std::function<void(std::unique_ptr<QObject>&, std::unique_ptr<Settings>&)>;
Q_DECLARE_METATYPE(End)

namespace {

const QString FILE_NAME = "settings.ini"_q;
const char* const LOCK_NAME = "settings.ini.lock";

QByteArray content(const QString& name = FILE_NAME)
{
    return TestFiles::contentOf(name);
}

QStringList names()
{
    return QDir().entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

/// Counts how often the settings file is replaced or made.
class Writes
{
public:
    Writes()
        : m_events(inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
    {
        inotify_add_watch(m_events, ".", IN_MOVED_TO | IN_CREATE);
    }
    ~Writes() { close(m_events); }

    auto count() const
    {
        std::array<char, 65536> buffer{};
        const ssize_t size = read(m_events, buffer.data(), buffer.size());
        return QByteArray(buffer.data(), int(qMax<ssize_t>(size, 0))).count(QByteArray("settings.ini", 13));
    }

private:
    const int m_events;
};

} // namespace

class SettingsFileTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_settings = std::make_unique<Settings>(FILE_NAME, QSettings::IniFormat, nullptr); }
    void cleanup()
    {
        m_settings.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        for (const QString& name : names())
            fs::remove_all(name.toStdString());
    }

    void whatIsWrittenInTheSameTickIsSeen()
    {
        QVERIFY(TestFiles::write(FILE_NAME, "k=1000\n"));
        const int file = open("settings.ini", O_WRONLY | O_CLOEXEC);
        for (int i = 1001; i < 1500; ++i) { // the same inode, size and often time
            QCOMPARE(pwrite(file, QByteArray::number(i).constData(), 4, 2), ssize_t(4));
            QCOMPARE(m_settings->getSetting(QString(), "k"_q).toInt(), i);
        }
        close(file);
    }

    void writersLoseNothing()
    {
        std::vector<std::thread> writers;
        for (int writer = 0; writer < 4; ++writer) {
            writers.emplace_back([writer] {
                Settings settings(FILE_NAME, QSettings::IniFormat, nullptr);
                for (int i = 0; i < 50; ++i)
                    settings.setSetting(QString::number(writer), QString::number(i), i);
            });
        }
        for (std::thread& writer : writers)
            writer.join();
        m_settings->getSetting("0"_q, "0"_q);
        for (int writer = 0; writer < 4; ++writer)
            QCOMPARE(m_settings->getAllGroupMembers(QString::number(writer)).count(), 50);
        QCOMPARE(names(), QStringList(FILE_NAME));
    }

    void aRemovalOfNothingWritesNothing()
    {
        m_settings->setSetting("G"_q, "k"_q, 1);
        const Writes writes;
        const FullDisk full(0);
        m_settings->removeSetting("G"_q, "none"_q);
        m_settings->removeSettingGroup("None"_q);
        m_settings->setSetting("G"_q, "k"_q, 1);
        QVERIFY(!m_settings->hasPendingChanges());
        QCOMPARE(writes.count(), 0);
    }

    void severalChangesAreOneWrite()
    {
        m_settings->setSettings("G"_q, {{"a"_q, 1}, {"b"_q, 2}});
        m_settings->setSetting("H/sub"_q, "c"_q, 3);
        m_settings->setSetting("H"_q, "c"_q, 3);
        const Writes writes;
        m_settings->changeSettings(
            {{"G"_q, "a"_q, {}}, {"H"_q, {}, {}}, {"H"_q, "d"_q, 4}, {"I"_q, "e"_q, 5}});
        QCOMPARE(content(), QByteArray("[G]\nb=2\n\n[H]\nd=4\n\n[I]\ne=5\n"));
        QCOMPARE(writes.count(), 1);
    }

    void aPendingChangeHoldsUpNoOtherKey()
    {
        QVERIFY(TestFiles::write(FILE_NAME, "[G]\na=1\nb=1\n"));
        const FullDisk full(0);
        m_settings->setSetting("G"_q, "a"_q, 2);
        {
            const Limit room(RLIMIT_FSIZE, RLIM_INFINITY);
            QVERIFY(TestFiles::write("other"_q, "[G]\na=3\nb=3\n") && QFile::remove(FILE_NAME));
            QVERIFY(QFile::rename("other"_q, FILE_NAME));
        }
        QCOMPARE(m_settings->getSetting("G"_q, "b"_q).toInt(), 3);
        QCOMPARE(m_settings->getSetting("G"_q, "a"_q).toInt(), 2);
    }

    void pendingChangesAreTold()
    {
        QVector<bool> told;
        TestLog::ActiveLog active;
        m_settings->whenPendingChanges([&](bool hasPending) {
            told << hasPending;
            m_settings->hasSetting("G"_q, "k"_q);
        });
        {
            const FullDisk full(10);
            m_settings->setSetting("G"_q, "k"_q, 1);
            m_settings->setSetting("G"_q, "l"_q, 1);
        }
        m_settings->getSetting("G"_q, "k"_q);
        QCOMPARE(told, QVector<bool>({true, false}));
        QCOMPARE(active.entries()[0],
                 "8192 Could not write the settings file %1 (File too large). The change is "
                 "kept in memory."_q.arg(QFileInfo(FILE_NAME).absoluteFilePath()));
    }

    void aChangeThatIsGivenUpIsAnError_data()
    {
        QTest::addColumn<End>("end");
        QTest::newRow("with the parent") << End([](auto& parent, auto&) { parent.reset(); });
        QTest::newRow("with the settings") << End([](auto&, auto& settings) { settings.reset(); });
        QTest::newRow("when another is opened") << End([](auto&, auto& settings) {
            settings->openSettingsFile("other.ini"_q, QSettings::IniFormat, nullptr);
        });
    }
    void aChangeThatIsGivenUpIsAnError()
    {
        TestLog::ActiveLog active;
        auto parent = std::make_unique<QObject>();
        auto settings = std::make_unique<Settings>(FILE_NAME, QSettings::IniFormat, parent.get());
        const FullDisk full(0);
        settings->setSetting("G"_q, "k"_q, 1);
        QFETCH(End, end);
        end(parent, settings);
        QCOMPARE(active.log().getEntryCount(), 2U);
        QVERIFY(active.entries()[1].endsWith(" The change is lost."_q));
    }

    void whatIsNoFileIsAnErrorAndNotWaitedFor_data()
    {
        QTest::addColumn<Make>("make");
        QTest::addColumn<QString>("reason");
        QTest::newRow("pipe") << Make([] { return mkfifo("settings.ini", 0600); })
                              << "Operation not supported"_q;
        QTest::newRow("folder") << Make([] { return mkdir("settings.ini", 0700); }) << "Is a directory"_q;
        QTest::newRow("device") << Make([] { return symlink("/dev/zero", "settings.ini"); })
                                << "Operation not supported"_q;
        QTest::newRow("link to itself") << Make([] { return symlink("settings.ini", "settings.ini"); })
                                        << "Too many levels of symbolic links"_q;
    }
    void whatIsNoFileIsAnErrorAndNotWaitedFor()
    {
        QFETCH(Make, make);
        QFETCH(QString, reason);
        QCOMPARE(make(), 0);
        TestLog::ActiveLog active;
        init();
        for (int i = 0; i < 3; ++i)
            QVERIFY(!m_settings->getSetting("G"_q, "k"_q).isValid());
        const QString path = QFileInfo(FILE_NAME).absoluteFilePath();
        QCOMPARE(active.entries(),
                 QStringList("8192 Could not read the settings file %1 (%2)."_q.arg(path, reason)));
        m_settings->setSetting("G"_q, "k"_q, 1);
        QCOMPARE(active.entries().count(), 2);
        QVERIFY(
            active.entries()[1].contains("Could not write the settings file %1 (%2)"_q.arg(path, reason)));
        QVERIFY(fs::remove("settings.ini"));
        QCOMPARE(m_settings->getSetting("G"_q, "k"_q).toInt(), 1);
        QCOMPARE(content(), QByteArray("[G]\nk=1\n"));
    }

    void linksAreFollowed()
    {
        for (const char* target : {"there.ini", "folder/missing.ini"}) {
            QVERIFY(QDir().mkpath("folder"_q));
            QFile::remove(FILE_NAME);
            QCOMPARE(symlink(target, "settings.ini"), 0);
            init();
            m_settings->setSetting("G"_q, "k"_q, 1);
            QVERIFY(QFileInfo(FILE_NAME).isSymLink());
            QCOMPARE(content(QString::fromLatin1(target)), QByteArray("[G]\nk=1\n"));
        }
    }

    void whatIsNoLineIsKeptAside_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QList<int>>("lines");
        const auto utf16 = QByteArray("\xff\xfe[\0G\0]\0\n\0k\0=\0001\0\n\0", 18);
        QTest::newRow("a line without a key") << QByteArray("[G]\r\nk=1\r\n\r\nnote\r\n") << QList<int>{4};
        QTest::newRow("after lines that go on")
            << QByteArray("[G]\nk=\"1\n2\"\nl=3\\\n4\nnote\n") << QList<int>{6};
        QTest::newRow("an open section") << QByteArray("; [\n[G\nk=1\n") << QList<int>{2};
        QTest::newRow("UTF-16") << utf16 << QList<int>{1, 2, 3};
        QTest::newRow("binary") << QByteArray("a=\0\1\2\n\0", 7) << QList<int>{1, 2};
    }
    void whatIsNoLineIsKeptAside()
    {
        QFETCH(QByteArray, before);
        QFETCH(QList<int>, lines);
        QVERIFY(TestFiles::write(FILE_NAME, before));
        init();
        QCOMPARE(m_settings->damagedLines(), lines);
        m_settings->setSetting("N"_q, "n"_q, 1);
        QCOMPARE(content("settings.ini.damaged"_q), before);
        QVERIFY(m_settings->damagedLines().isEmpty());
        QVERIFY(QFile::remove("settings.ini.damaged"_q));
        m_settings->setSetting("N"_q, "n"_q, 2);
        QCOMPARE(names(), QStringList(FILE_NAME));
    }

    void valuesThatCannotBeReadAreToldAndStay()
    {
        const QByteArray nested = "@Variant(" + QByteArray(R"(\0\0\0\t\0\0\0\x1)").repeated(100'000) + ')';
        const QByteArray before =
            "[G]\na=1\nd=" + nested + "\ne=@Variant(\\0\\0\\0\\x42\\xf)\ni=@Invalid()\n";
        QVERIFY(TestFiles::write(FILE_NAME, before));
        init();
        QVERIFY(!m_settings->getSetting("G"_q, "d"_q).isValid());
        QCOMPARE(m_settings->damagedLines(), QList<int>({3, 4}));
        QVERIFY(TestFiles::write(FILE_NAME, "\n" + before));
        QCOMPARE(m_settings->damagedLines(), QList<int>({4, 5})); // of the file as it is now
        QVERIFY(TestFiles::write(FILE_NAME, before));
        m_settings->setSetting("G"_q, "a"_q, 2);
        QCOMPARE(m_settings->damagedLines(), QList<int>({3, 4})); // in what was written
        QCOMPARE(content(), QByteArray(before).replace("a=1", "a=2"));
    }

    void anotherFormatIsLeftToQt()
    {
        const auto read = [](QIODevice& file, QSettings::SettingsMap& map) {
            for (const QByteArray& line : file.readAll().trimmed().split('\n'))
                map.insert(QString::fromUtf8(line.split(' ').value(0)), line.split(' ').value(1));
            return true;
        };
        const auto save = [](QIODevice& file, const QSettings::SettingsMap& map) {
            for (auto entry = map.begin(); entry != map.end(); ++entry)
                file.write('\n' + entry.key().toUtf8() + ' ' + entry->toByteArray());
            return true;
        };
        const auto format = QSettings::registerFormat("txt"_q, read, save);
        Settings settings("settings.txt"_q, format, nullptr);
        settings.setSetting("G"_q, "k"_q, "v"_q);
        settings.setSetting("G"_q, "l"_q, "w"_q);
        settings.removeSetting("G"_q, "k"_q);
        QCOMPARE(content("settings.txt"_q), QByteArray("\nG/l w"));
        QVERIFY(TestFiles::write("settings.txt"_q, "\nG/m x\n"));
        QCOMPARE(settings.getSetting("G"_q, "m"_q).toByteArray(), QByteArray("x"));
    }

    void aLockThatWasLeftBehindHoldsNobodyUp_data()
    {
        QTest::addColumn<Make>("leave");
        const auto addText = [](const char* name, const QByteArray& text, int age = 0) {
            QTest::newRow(name) << Make([=] {
                const timespec times[] = {{time(nullptr) - age, 0}, {time(nullptr) - age, 0}};
                return TestFiles::write(LOCK_NAME, text) ? utimensat(AT_FDCWD, LOCK_NAME, times, 0) : -1;
            });
        };
        const QByteArray host =
            QSysInfo::machineHostName().toLocal8Bit() + '\n' + QSysInfo::machineUniqueId() + '\n';
        addText("empty", {});
        addText("half written", "123");
        addText("of a process that is gone", "999999999\nplanner\n" + host);
        addText("of another process with our number", QByteArray::number(QCoreApplication::applicationPid())
                                                          + "\ntst_settings_file\n" + host
                                                          + QSysInfo::bootUniqueId());
        addText("of another host, old", "1\nplanner\nelsewhere\nid\nboot\n", 31);
        addText("of another host, in the future", "1\nplanner\nelsewhere\nid\nboot\n", -3600);
        QTest::newRow("folder") << Make([] { return mkdir(LOCK_NAME, 0700); });
        QTest::newRow("pipe") << Make([] { return mkfifo(LOCK_NAME, 0600); });
        QTest::newRow("link") << Make([] { return symlink("/dev/null", LOCK_NAME); });
    }
    void aLockThatWasLeftBehindHoldsNobodyUp()
    {
        QFETCH(Make, leave);
        QCOMPARE(leave(), 0);
        QElapsedTimer timer;
        timer.start();
        m_settings->setSetting("G"_q, "k"_q, 1);
        QVERIFY2(timer.elapsed() < 3000,
                 QByteArray::number(timer.elapsed())); // half a second, on a machine at rest
        QCOMPARE(content(), QByteArray("[G]\nk=1\n"));
        QCOMPARE(names(), QStringList(FILE_NAME));
    }

    /// Made, then locked, then unlocked, then removed, and held up before each step.
    void aSlowHolderKeepsItsLock()
    {
        const int lock = open(LOCK_NAME, O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        QByteArray meanwhile;
        qint64 longestHoldUp = 0;
        std::thread holder([&] {
            const auto wait = [&longestHoldUp](int milliseconds) {
                QElapsedTimer timer;
                timer.start();
                std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
                longestHoldUp = qMax(longestHoldUp, timer.elapsed() - milliseconds);
            };
            wait(200);
            flock(lock, LOCK_EX | LOCK_NB);
            wait(600);
            close(lock);
            wait(200);
            meanwhile = content();
            unlink(LOCK_NAME);
        });
        m_settings->setSetting("G"_q, "k"_q, 1);
        holder.join();
        QCOMPARE(content(), QByteArray("[G]\nk=1\n"));
        if (longestHoldUp > 100)
            QSKIP("The machine is too busy to tell who was slow.");
        QCOMPARE(meanwhile, QByteArray());
    }

    /// Looking again would take 100 ms. One try of several shows it on a busy machine, too.
    void whoeverWaitsIsWoken()
    {
        qint64 shortest = std::numeric_limits<qint64>::max();
        for (int i = 0; i < 10 && shortest >= 90; ++i) {
            QLockFile lock{QLatin1String(LOCK_NAME)};
            QVERIFY(lock.lock());
            std::thread holder([&lock] {
                std::this_thread::sleep_for(std::chrono::milliseconds(50));
                lock.unlock();
            });
            QElapsedTimer timer;
            timer.start();
            m_settings->setSetting("G"_q, "k"_q, i);
            shortest = qMin(shortest, timer.elapsed());
            holder.join();
        }
        QVERIFY2(shortest < 90, QByteArray::number(shortest));
    }

private:
    std::unique_ptr<Settings> m_settings;
};

GLOBALS_TEST_MAIN(SettingsFileTest)
#include "tst_settings_file.moc"
