#include "SystemCalls.h"
#include "TestData.h"
#include "TestTree.h"

#include "globals/AtomicFile.h"
#include "globals/ConfigManager.h"
#include "globals/DataFileCreator.h"
#include "globals/DataFileReader.h"

#include <QApplication>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>

#include <cerrno>

using namespace TEKLUVA;

namespace {

const auto config = &ConfigManager::getInstance;

/// What the rows call; whether it succeeds.
const QMap<QString, bool (*)()> OPERATIONS = {
    {"move"_q, [] { return config()->copyDirectory("source"_q, "target"_q, true, true, {}); }},
    {"move to two disks"_q,
     [] {
         const QTemporaryDir elsewhere("/dev/shm/XXXXXX"_q);
         return QFile::link(elsewhere.path(), "target/folder"_q)
                && config()->copyDirectory("source"_q, "target"_q, true, true, {});
     }},
    {"copy over"_q,
     [] {
         const auto agree = [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Return); };
         QTimer::singleShot(0, agree);
         return config()->copyDirectory("source/folder"_q, "target"_q, false, false, {});
     }},
    {"write"_q, [] { return config()->writeDataToFile("old"_q, "new", false); }},
    {"pack"_q,
     [] {
         return DataFileCreator().createArchivFromData({{"a"_q, "new"}}, "old"_q, QString());
     }},
    {"read"_q,
     [] {
         bool ok = false;
         config()->readDataFromFile("large"_q, ok);
         return ok;
     }},
    {"read block"_q, [] { return !DataFileReader("large"_q, QString()).getFileContent().isEmpty(); }},
};

} // namespace

/// What fails in the system, and in which order it is asked.
class FaultsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestFiles::removeAll();
        TestTree::make("source/first=1 source/folder/second=2 target/second=0 old=old large*20000"_q);
    }

    void order_data() { TestData::addRows("fault-order.txt"); }
    void order()
    {
        const QStringList calls = TestData::field("calls").split("; "_q);
        const SystemCalls watched;
        QVERIFY(OPERATIONS[TestData::field("operation")]());
        const QByteArrayList changes = SystemCalls::changes();
        int next = 0;
        for (const QByteArray& change : changes)
            next += next < calls.size() && (change + ' ').startsWith(calls[next].toLatin1() + ' ');
        QVERIFY2(next == calls.size(), changes.join(", ").constData());
        QCOMPARE(SystemCalls::inherited(), QByteArrayList());
    }

    void failure_data() { TestData::addRows("faults.txt"); }
    /// Everything is as it was, and nothing but whole copies is left.
    void failure()
    {
        const auto before = TestFiles::treeBelow();
        {
            SystemCalls calls;
            calls.fail(TestData::field("call").toLatin1(), TestData::field<int>("error"),
                       TestData::field<int>("first"));
            QVERIFY(!OPERATIONS[TestData::field("operation")]());
        }
        for (const QByteArray& change : TestFiles::changes(before, TestFiles::treeBelow()).keys())
            QVERIFY2(change.startsWith("target/"), change.constData()); // a copy of what is still there
    }

    void severalSettingsAreOneWrite()
    {
        Settings settings("settings.ini"_q, QSettings::IniFormat, nullptr);
        settings.setSettings("G"_q, {{"a"_q, 1}, {"b"_q, 2}});
        const SystemCalls watched;
        settings.changeSettings({{"G"_q, "a"_q, {}}, {"H"_q, {}, {}}, {"H"_q, "d"_q, 4}, {"I"_q, "e"_q, 5}});
        QCOMPARE(SystemCalls::changes().join(' ').count("rename "), 1);
    }

    void writesWhatCannotBeReplaced()
    {
        SystemCalls calls;
        calls.fail("rename", EBUSY);
        QVERIFY(OPERATIONS["write"_q]());
        QCOMPARE(TestFiles::contentOf("old"_q), QByteArray("new"));
    }

    void anotherGroupMayNotReadOn()
    {
        if (QProcess::execute("chown"_q, {"1:1"_q, "old"_q}) != 0)
            QSKIP("Only root can give files away.");
        std::filesystem::permissions("old", std::filesystem::perms(0640));
        SystemCalls calls;
        calls.fail("chown", EPERM);
        QVERIFY(OPERATIONS["write"_q]());
        QCOMPARE(int(std::filesystem::status("old").permissions()), 0600);
    }

    void whoMayNotReadAFileMayNotReadTheBeginningOfItsCopy()
    {
        SystemCalls calls;
        calls.forbidUnnamedFiles();
        calls.fail("write", ENOSPC);
        AtomicFile copy("copy"_q);
        QVERIFY(!copy.copyFrom("/proc/self/environ")); // which is its owner's alone
        QCOMPARE(int(std::filesystem::status(TestFiles::Path(TestFiles::names().first())).permissions()),
                 0400);
    }

    void writesWithoutUnnamedFiles()
    {
        SystemCalls calls;
        calls.forbidUnnamedFiles();
        QVERIFY(OPERATIONS["write"_q]());
        AtomicFile discarded("discarded"_q);
        QVERIFY(discarded.write("x") && AtomicFile("none"_q).write("x") && discarded.commit());
        QCOMPARE(TestFiles::contentOf("old"_q), QByteArray("new"));
        QCOMPARE(TestFiles::contentOf("discarded"_q), QByteArray("x"));
        QCOMPARE(TestFiles::names().size(), 5);
    }
};

GLOBALS_TEST_MAIN(FaultsTest, QApplication)
#include "tst_faults.moc"
