#include "SystemCalls.h"
#include "TestData.h"
#include "TestHome.h"
#include "TestLog.h"

#include "globals/AtomicFile.h"
#include "globals/ConfigManager.h"
#include "globals/DataFileCreator.h"
#include "globals/DataFileReader.h"
#include "globals/WholeFile.h"

#include <cerrno>
#include <filesystem>

using namespace TEKLUVA;
namespace fs = std::filesystem;

namespace {

ConfigManager& config()
{
    return *ConfigManager::getInstance();
}

bool moveFolder()
{
    return config().copyDirectory("source"_q, "target"_q, true, true, {});
}

bool writeFile()
{
    return config().writeDataToFile("old"_q, "new", false);
}

bool packArchive()
{
    return DataFileCreator().createArchivFromData({{"a"_q, "new"}}, "old"_q, QString());
}

bool readFile()
{
    bool ok = false;
    config().readDataFromFile("large"_q, ok);
    return ok;
}

bool readBlock()
{
    return !DataFileReader("large"_q, QString()).getFileContent().isEmpty();
}

using Operation = bool (*)();

struct Fault
{
    QByteArray call;
    int error = 0;
    int first = 1;
};

} // namespace
Q_DECLARE_METATYPE(Operation)
Q_DECLARE_METATYPE(Fault)

/// What fails in the system, and in which order it is asked.
class FaultsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        for (const fs::directory_entry& entry : fs::directory_iterator("."))
            fs::remove_all(entry);
        fs::create_directories("source/folder");
        fs::create_directories("target");
        QVERIFY(TestFiles::write("source/first"_q, "1"));
        QVERIFY(TestFiles::write("source/folder/second"_q, "2"));
        QVERIFY(TestFiles::write("old"_q, "old"));
        QVERIFY(TestFiles::write("large"_q, QByteArray(20000, 'x')));
    }

    void order_data()
    {
        QTest::addColumn<Operation>("operation");
        QTest::addColumn<QByteArrayList>("calls"); ///< these, in this order, among others

        QTest::newRow("a replaced file is on disk before it gets its name")
            << Operation(writeFile) << QByteArrayList{"sync", "rename old"};
        QTest::newRow("an archive is on disk before it gets its name")
            << Operation(packArchive) << QByteArrayList{"sync", "rename old"};
        QTest::newRow("moved files are on disk before their sources go")
            << Operation(moveFolder) << QByteArrayList{"link ", "link ", "syncfs", "unlink ", "unlink "};
    }
    void order()
    {
        QFETCH(Operation, operation);
        QFETCH(QByteArrayList, calls);
        const SystemCalls watched;
        QVERIFY(operation());
        const QByteArrayList changes = SystemCalls::changes();
        int next = 0;
        for (const QByteArray& change : changes)
            next += next < calls.size() && change.startsWith(calls[next]);
        QVERIFY2(next == calls.size(), changes.join(", ").constData());
        QCOMPARE(SystemCalls::inherited(), QByteArrayList());
    }

    void failure_data()
    {
        QTest::addColumn<Operation>("operation");
        QTest::addColumn<Fault>("fault");

        const auto row = [](const char* name, Operation operation, const Fault& fault) {
            QTest::newRow(name) << operation << fault;
        };
        row("a folder that cannot be listed is not moved", moveFolder, {"readdir", EIO, 2});
        row("nor is one of which the disk does not tell", moveFolder, {"syncfs", EIO});
        row("nor one whose files get no name", moveFolder, {"link", EIO});
        row("nor one that cannot be read", moveFolder, {"open", EMFILE});
        row("a file that does not reach the disk", writeFile, {"sync", EIO});
        row("a file that cannot be written", writeFile, {"write", ENOSPC});
        row("an archive that does not reach the disk", packArchive, {"sync", EIO});
        row("an archive that gets no name", packArchive, {"rename", EACCES});
        row("a file that cannot be read on", readFile, {"read", EIO, 2});
        row("a block that cannot be read on", readBlock, {"read", EIO, 2});
    }
    /// Everything is as it was, and nothing is left.
    void failure()
    {
        QFETCH(Operation, operation);
        QFETCH(Fault, fault);
        {
            SystemCalls calls;
            calls.fail(fault.call, fault.error, fault.first);
            QVERIFY(!operation());
        }
        QCOMPARE(TestFiles::contentOf("source/first"_q), QByteArray("1"));
        QCOMPARE(TestFiles::contentOf("source/folder/second"_q), QByteArray("2"));
        QCOMPARE(TestFiles::contentOf("old"_q), QByteArray("old"));
        QCOMPARE(QDir().entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size(), 4);
    }

    void writesWhatCannotBeReplaced()
    {
        SystemCalls calls;
        calls.fail("rename", EBUSY);
        QVERIFY(writeFile());
        QCOMPARE(TestFiles::contentOf("old"_q), QByteArray("new"));
    }

    void writesWithoutUnnamedFiles()
    {
        SystemCalls calls;
        calls.forbidUnnamedFiles();
        QVERIFY(writeFile());
        AtomicFile discarded("discarded"_q);
        QVERIFY(discarded.write("x"));
        QVERIFY(AtomicFile("none"_q).write("x"));
        QVERIFY(discarded.commit());
        QCOMPARE(TestFiles::contentOf("old"_q), QByteArray("new"));
        QCOMPARE(TestFiles::contentOf("discarded"_q), QByteArray("x"));
        QCOMPARE(QDir().entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot).size(), 5);
    }
};

GLOBALS_TEST_MAIN(FaultsTest)
#include "tst_faults.moc"
