#include "TestSettings.h"
#include "TestTree.h"

#include <QDeadlineTimer>
#include <QFileInfo>

#include <array>
#include <atomic>
#include <limits>

using namespace TEKLUVA;
using namespace TestSettings;
using TestFiles::names;
namespace fs = std::filesystem;

class SettingsFileTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_settings = open(); }
    void cleanup()
    {
        m_settings.reset();
        TestHome::sendDeletions();
        TestFiles::removeAll();
    }

    void whatIsWrittenInTheSameTickIsSeen()
    {
        replace("k=1000\n");
        QFile file(FILE_NAME);
        QVERIFY(file.open(QIODevice::ReadWrite | QIODevice::Unbuffered));
        for (int i = 1001; i < 1500; ++i) { // the same inode, size and often time
            QVERIFY(file.seek(2));
            QCOMPARE(file.write(QByteArray::number(i)), qint64(4));
            QCOMPARE(m_settings->getSetting(QString(), "k"_q).toInt(), i);
        }
    }

    void writersLoseNothing()
    {
        for (const bool share : {true, false}) {
            const TestHome::Turn turn(share);
            TestThreads::run(4, [this, share](int writer) {
                const auto own = open();
                for (int i = 0; i < 50; ++i)
                    (share ? m_settings : own)
                        ->setSetting(QString::number(writer), QString::number(i) + (share ? "s"_q : "o"_q),
                                     i);
            });
            m_settings->getSetting("0"_q, "0"_q);
            QCOMPARE(m_settings->getAllGroups().count(), 4);
            for (int writer = 0; writer < 4; ++writer)
                QCOMPARE(m_settings->getAllGroupMembers(QString::number(writer)).count(), share ? 50 : 100);
            QCOMPARE(names(), QStringList(FILE_NAME));
        }
    }

    void aRemovalOfNothingWritesNothing()
    {
        m_settings->setSetting("G"_q, "k"_q, 1);
        const TestPlatform::FullDisk full(0);
        m_settings->removeSetting("G"_q, "none"_q);
        m_settings->removeSettingGroup("None"_q);
        m_settings->setSetting("G"_q, "k"_q, 1);
        QVERIFY(!m_settings->hasPendingChanges());
    }

    void severalChangesAreMadeAtOnce()
    {
        m_settings->setSettings("G"_q, {{"a"_q, 1}, {"b"_q, 2}});
        QVariantMap many; // in time that grows with their number
        for (int i = 0; i < 50'000; ++i)
            many.insert(QString::number(i), i);
        m_settings->setSettings("H/many"_q, many);
        QCOMPARE(m_settings->getAllGroupMembers("H/many"_q).size(), 50'000);
        m_settings->setSetting("H/sub"_q, "c"_q, 3);
        m_settings->setSetting("H"_q, "c"_q, 3);
        m_settings->changeSettings(
            {{"G"_q, "a"_q, {}}, {"H"_q, {}, {}}, {"H"_q, "d"_q, 4}, {"I"_q, "e"_q, 5}});
        QCOMPARE(content(), QByteArray("[G]\nb=2\n\n[H]\nd=4\n\n[I]\ne=5\n"));
    }

    void aPendingChangeHoldsUpNoOtherKey()
    {
        SKIP_ON_WINDOWS("a full disk");
        replace("[G]\na=1\nb=1\n");
        const TestPlatform::FullDisk full(0);
        m_settings->setSetting("G"_q, "a"_q, 2);
        {
            const TestPlatform::FullDisk room(TestPlatform::FullDisk::WITH_ROOM);
            replace("[G]\na=3\nb=3\n");
        }
        QCOMPARE(m_settings->getSetting("G"_q, "b"_q).toInt(), 3);
        QCOMPARE(m_settings->getSetting("G"_q, "a"_q).toInt(), 2);
    }

    /// To QSettings it is the same file else.
    void aNewFileIsNewer()
    {
        replace("[G]\nk=1\n");
        const QDateTime future = QDateTime::currentDateTime().addSecs(3600);
        QFile file(FILE_NAME);
        QVERIFY(file.open(QIODevice::ReadWrite) && file.setFileTime(future, QFile::FileModificationTime));
        file.close();
        m_settings->setSetting("G"_q, "k"_q, 2);
        QVERIFY(QFileInfo(FILE_NAME).lastModified() > future);
    }

    void pendingChangesAreTold()
    {
        SKIP_ON_WINDOWS("a full disk");
        QVector<bool> told;
        TestLog::ActiveLog active;
        m_settings->whenPendingChanges([&](bool hasPending) {
            told << hasPending;
            m_settings->hasSetting("G"_q, "k"_q);
        });
        {
            const TestPlatform::FullDisk full(10);
            m_settings->setSetting("G"_q, "k"_q, 1);
            m_settings->setSetting("G"_q, "l"_q, 1);
        }
        m_settings->getSetting("G"_q, "k"_q);
        QCOMPARE(told, QVector<bool>({true, false}));
        QCOMPARE(active.entries()[0],
                 "8192 Could not write the settings file %1 (File too large). The change is "
                 "kept in memory."_q.arg(QFileInfo(FILE_NAME).absoluteFilePath()));
    }

    void aChangeThatIsGivenUpIsAnErrorAndDoesNotComeBack()
    {
        SKIP_ON_WINDOWS("a full disk");
        using End = std::function<void(std::unique_ptr<QObject>&, std::unique_ptr<Settings>&)>;
        const QMap<QString, End> ends = {
            {"with the parent"_q, [](auto& parent, auto&) { parent.reset(); }},
            {"with the settings"_q, [](auto&, auto& settings) { settings.reset(); }},
            {"when another is opened"_q, [](auto&, auto& settings) {
                 settings->openSettingsFile("other.ini"_q, QSettings::IniFormat, nullptr);
             }}};
        for (const QString& end : ends.keys()) {
            const TestHome::Turn turn(end);
            replace("[G]\nk=1\n");
            TestLog::ActiveLog active;
            auto parent = std::make_unique<QObject>();
            auto settings = open(parent.get());
            {
                const TestPlatform::FullDisk full(4096);
                settings->setSetting("G"_q, "k"_q, QString(5000, QLatin1Char('x')));
                init();
                ends[end](parent, settings);
                TestHome::sendDeletions();
            }
            QCOMPARE(content(), QByteArray("[G]\nk=1\n"));
            QCOMPARE(active.log().getEntryCount(), 2U);
            QVERIFY(active.entries()[1].endsWith(" The change is lost."_q));
            m_settings->setSetting("G"_q, "l"_q, 1);
            QCOMPARE(content(), QByteArray("[G]\nk=1\nl=1\n"));
        }
    }

    void whatIsNoFileIsAnErrorAndNotWaitedFor_data() { TestData::addRows("settings-not-files.txt"); }
    void whatIsNoFileIsAnErrorAndNotWaitedFor()
    {
        const QString reason = TestData::field("reason");
        if (reason != "Is a directory"_q)
            SKIP_ON_WINDOWS("links and pipes");
        TestTree::make(TestData::field("tree"));
        TestLog::ActiveLog active;
        init();
        for (int i = 0; i < 3; ++i)
            QVERIFY(!m_settings->getSetting("G"_q, "k"_q).isValid());
        const QString path = QFileInfo(FILE_NAME).absoluteFilePath();
        QCOMPARE(active.entries(),
                 QStringList("8192 Could not read the settings file %1 (%2)."_q.arg(path, reason)));
        for (int i = 0; i < 2; ++i)
            m_settings->setSetting("G"_q, "k"_q, i);
        QVERIFY(
            active.entries()[1].contains("Could not write the settings file %1 (%2)"_q.arg(path, reason)));
        QVERIFY(fs::remove("settings.ini"));
        QCOMPARE(m_settings->getSetting("G"_q, "k"_q).toInt(), 1);
        QCOMPARE(active.entries().count(), 3);
        QCOMPARE(content(), QByteArray("[G]\nk=1\n"));
    }

    void whatCouldNotBeReadAgainIsNotWritten()
    {
        m_settings->setSetting("G"_q, "k"_q, 1);
        m_settings->setSetting("G"_q, "large"_q, QString(11'200'000, QChar(0xffff))); // six bytes for each
        QVERIFY(m_settings->hasPendingChanges());
        QCOMPARE(content(), QByteArray("[G]\nk=1\n"));
        m_settings->removeSetting("G"_q, "large"_q);
        QVERIFY(!m_settings->hasPendingChanges());

        const QVariantMap values = {{"a"_q, 1}, {"b"_q, 2}, {"c"_q, 3}, {"d"_q, 4}, {"e"_q, 5}, {"f"_q, 6}};
        m_settings->setSettings(QString(11'000'000, QLatin1Char('s')), values); // which stands before each
        QVERIFY(m_settings->hasPendingChanges());
        m_settings->clearSettings();
        replace('[' + QByteArray(70'000, 's') + "]\n" + QByteArray("k=\n").repeated(1000));
        QVERIFY(m_settings->getSettings("G"_q).isEmpty() && !m_settings->lastError().isEmpty());
    }

    void linksAreFollowed()
    {
        SKIP_ON_WINDOWS("links");
        TestTree::make("folder/"_q);
        for (const QString& target : {"there.ini"_q, "folder/missing.ini"_q}) {
            QFile::remove(FILE_NAME);
            QVERIFY(QFile::link(target, FILE_NAME));
            init();
            m_settings->setSetting("G"_q, "k"_q, 1);
            QVERIFY(QFileInfo(FILE_NAME).isSymLink());
            QCOMPARE(content(target), QByteArray("[G]\nk=1\n"));
        }
    }

    void whatIsNoLineIsKeptAside_data() { TestData::addRows("settings-lines.txt"); }
    void whatIsNoLineIsKeptAside()
    {
        const auto before = QByteArray::fromPercentEncoding(TestData::field("before").toUtf8());
        replace(before);
        QVERIFY(QFile::setPermissions(FILE_NAME, QFile::ReadOwner | QFile::WriteOwner));
        const auto allowed = QFile::permissions(FILE_NAME);
        init();
        QStringList lines;
        for (const int line : m_settings->damagedLines())
            lines << QString::number(line);
        QCOMPARE(lines.join(QLatin1Char(' ')), TestData::field("lines"));
        QStringList aside("settings.ini.damaged"_q);
        for (int number = 2; number <= 9; ++number)
            aside << aside[0] + QLatin1Char('.') + QString::number(number);
        for (const QString& path : aside)
            QVERIFY(QDir().mkdir(path)); // where they would be kept
        m_settings->setSetting("N"_q, "n"_q, 0);
        QVERIFY(m_settings->hasPendingChanges() && TestFiles::contentOf(FILE_NAME) == before);
        for (const QString& path : aside.mid(1))
            QVERIFY(QDir().rmdir(path));
        for (int n = 1; n < 4; ++n) { // the same again is not kept twice
            m_settings->setSetting("N"_q, "n"_q, n);
            QVERIFY(m_settings->damagedLines().isEmpty());
            replace(before);
        }
        QCOMPARE(TestFiles::contentOf(aside[1]), before);
        QCOMPARE(QFile::permissions(aside[1]), allowed); // no secret spreads
        QVERIFY(QFile::remove(aside[1]) && QDir().rmdir(aside[0]));
        QCOMPARE(names(), QStringList(FILE_NAME));
    }

    void valuesThatCannotBeReadAreToldAndStay()
    {
        const QByteArray nested = "@Variant(" + QByteArray(R"(\0\0\0\t\0\0\0\x1)").repeated(100'000) + ')';
        const QByteArray maps =
            "@Variant(" + QByteArray(R"(\0\0\0\b\0\0\0\x1\xff\xff\xff\xff)").repeated(100'000) + ')';
        const QByteArray before =
            "[G]\na=1\nd=" + nested + "\ne=@Variant(\\0\\0\\0\\x42\\xf)\nf=" + maps + "\ni=@Invalid()\n";
        replace(before);
        init();
        QVERIFY(!m_settings->getSetting("G"_q, "d"_q).isValid());
        QCOMPARE(m_settings->damagedLines(), QList<int>({3, 4, 5}));
        replace("\n" + before);
        QCOMPARE(m_settings->damagedLines(), QList<int>({4, 5, 6})); // of the file as it is now
        replace(QByteArray("[\n").repeated(1'000'000));              // in time that grows with the file
        QCOMPARE(m_settings->damagedLines().size(), 1'000'000);
        replace(before);
        m_settings->setSetting("G"_q, "a"_q, 2);
        QCOMPARE(m_settings->damagedLines(), QList<int>({3, 4, 5})); // in what was written
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

    void aLockThatWasLeftBehindHoldsNobodyUp_data() { TestData::addRows("settings-locks.txt"); }
    void aLockThatWasLeftBehindHoldsNobodyUp()
    {
        const QString name = QSysInfo::machineHostName() + "%0A"_q;
        const QString host = name + QString::fromLatin1(QSysInfo::machineUniqueId()) + "%0A"_q;
        const QString tree = TestData::field("tree")
                                 .replace("HOST"_q, host)
                                 .replace("NAME%0A"_q, name)
                                 .replace("BOOT"_q, QString::fromLatin1(QSysInfo::bootUniqueId()))
                                 .replace("PID"_q, QString::number(QCoreApplication::applicationPid()));
        if (tree.contains(QLatin1Char('~')) || tree.contains(QLatin1Char('@')))
            SKIP_ON_WINDOWS("links and pipes");
        const std::chrono::seconds age(TestData::field<int>("age"));
        const int limit = TestData::field<int>("limit");
        qint64 shortest = limit;
        for (int i = 0; i < 10 && shortest >= limit; ++i) { // one try of several shows it on a busy machine
            TestTree::make(tree);
            if (age.count() != 0)
                fs::last_write_time("settings.ini.lock", fs::file_time_type::clock::now() - age);
            QElapsedTimer timer;
            timer.start();
            m_settings->setSetting("G"_q, "k"_q, i);
            shortest = qMin(shortest, timer.elapsed());
            QCOMPARE(content(), "[G]\nk=" + QByteArray::number(i) + "\n");
            QCOMPARE(names(), QStringList(FILE_NAME));
        }
        QVERIFY2(shortest < limit, "each write takes as long as that, or longer");
    }

    void theLockTellsWhoseItIs()
    {
        std::atomic<bool> isSeen{false};
        const auto write = [&isSeen](int) {
            for (int i = 0; !isSeen; ++i)
                open()->setSetting("G"_q, "k"_q, i);
        };
        const TestThreads writer(1, write, [&isSeen] { isSeen = true; });
        const QLockFile lock(LOCK_NAME);
        qint64 process = 0;
        QString host;
        QString program;
        const QDeadlineTimer end(10000);
        while (!lock.getLockInfo(&process, &host, &program) && !end.hasExpired())
            std::this_thread::yield();
        QCOMPARE(process, QCoreApplication::applicationPid());
        QCOMPARE(host + program, QSysInfo::machineHostName() + "tst_settings_file"_q);
    }

    void aSlowHolderKeepsItsLock_data() { TestData::addRows("settings-holders.txt"); }
    /// Made, then locked, then unlocked, then removed, and held up before each step.
    void aSlowHolderKeepsItsLock()
    {
        const auto text = QByteArray::fromPercentEncoding(TestData::field("text").toUtf8());
        if (text.isEmpty())
            SKIP_ON_WINDOWS("a lock from elsewhere");
        TestPlatform::OpenFile lock(LOCK_NAME, TestPlatform::OpenFile::NEW);
        QVERIFY(lock.write(text));
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
            if (text.isEmpty())
                lock.lock();
            wait(600);
            lock.close();
            wait(200);
            meanwhile = content();
            QFile::remove(LOCK_NAME);
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
            QLockFile lock(LOCK_NAME);
            QVERIFY(lock.lock());
            QByteArray meanwhile;
            std::thread holder([&lock, &meanwhile] {
                std::this_thread::sleep_for(std::chrono::milliseconds(50));
                meanwhile = content();
                lock.unlock();
            });
            QElapsedTimer timer;
            timer.start();
            m_settings->setSetting("G"_q, "k"_q, i);
            shortest = qMin(shortest, timer.elapsed());
            holder.join();
            QVERIFY(meanwhile != content());
        }
        QVERIFY2(shortest < 90, QByteArray::number(shortest));
    }

private:
    std::unique_ptr<Settings> m_settings;
};

GLOBALS_TEST_MAIN(SettingsFileTest)
#include "tst_settings_file.moc"
