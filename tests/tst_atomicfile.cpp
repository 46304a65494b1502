#include "FullDisk.h"
#include "TestFiles.h"
#include "TestHome.h"

#include "globals/AtomicFile.h"
#include "globals/WholeFile.h"

#include <chrono>
#include <filesystem>

using namespace TEKLUVA;
using namespace TestFiles;
namespace fs = std::filesystem;
using Link = AtomicFile::Link;
Q_DECLARE_METATYPE(Link)

namespace {

QStringList names()
{
    return QDir().entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                            QDir::Name);
}

fs::perms permissionsOf(const char* path)
{
    return fs::status(path).permissions();
}

} // namespace

class TestAtomicFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void takesItsPlace_data();
    void takesItsPlace();
    void isRefused_data();
    void isRefused();
    void keepsPermissions();
    void namesThatAreNoText();
    void nothingIsLeftWithoutCommit();
    void remainsAreCleared();
    void fullDisk();
    void copiesContentAndPermissions();
    void streams();

    void readsWhole_data();
    void readsWhole();
};

void TestAtomicFile::init()
{
    for (const fs::directory_entry& entry : fs::directory_iterator("."))
        fs::remove_all(entry);
}

void TestAtomicFile::takesItsPlace_data()
{
    QTest::addColumn<QByteArray>("target");
    QTest::addColumn<Link>("link");
    QTest::addColumn<QByteArray>("written"); ///< where the content is then
    QTest::addColumn<QStringList>("after");

    const QStringList before = {"dangling"_q, "hard"_q, "link"_q, "old"_q};
    QTest::newRow("a new file") << QByteArray("a") << Link::Followed << QByteArray("a")
                                << (QStringList("a"_q) + before);
    QTest::newRow("an old file") << QByteArray("old") << Link::Followed << QByteArray("old") << before;
    QTest::newRow("through a link") << QByteArray("link") << Link::Followed << QByteArray("old") << before;
    QTest::newRow("a link itself") << QByteArray("link") << Link::Replaced << QByteArray("link") << before;
    QTest::newRow("through a dangling link")
        << QByteArray("dangling") << Link::Followed << QByteArray("new") << before + QStringList("new"_q);
    QTest::newRow("a dangling link itself")
        << QByteArray("dangling") << Link::Replaced << QByteArray("dangling") << before;
}

void TestAtomicFile::takesItsPlace()
{
    QFETCH(QByteArray, target);
    QFETCH(Link, link);
    QFETCH(QByteArray, written);
    QFETCH(QStringList, after);
    QVERIFY(write("old", "old"));
    fs::create_hard_link("old", "hard");
    fs::create_symlink("old", "link");
    fs::create_symlink("new", "dangling");

    AtomicFile file(target.toStdString(), link);
    QVERIFY2(file.write("first, "), qPrintable(file.error()));
    QVERIFY(file.write("second"));
    QVERIFY2(file.commit(), qPrintable(file.error()));

    after.sort();
    QCOMPARE(names(), after);
    QCOMPARE(contentOf(written.toStdString()), QByteArray("first, second"));
    QVERIFY(fs::is_regular_file(fs::symlink_status(written.toStdString())));
    QCOMPARE(contentOf("hard"), QByteArray("old"));
    QCOMPARE(contentOf("old"), QByteArray(written == "old" ? "first, second" : "old"));
    QVERIFY(!file.commit());
}

void TestAtomicFile::isRefused_data()
{
    QTest::addColumn<QByteArray>("target");

    QTest::newRow("a folder") << QByteArray("folder");
    QTest::newRow("a pipe") << QByteArray("pipe");
    QTest::newRow("a device") << QByteArray("/dev/null");
    QTest::newRow("a missing folder") << QByteArray("missing/file");
    QTest::newRow("a folder that is a file") << QByteArray("old/file");
    QTest::newRow("links in a circle") << QByteArray("circle");
    QTest::newRow("no name") << QByteArray();
}

void TestAtomicFile::isRefused()
{
    QFETCH(QByteArray, target);
    fs::create_directory("folder");
    QVERIFY(makePipe("pipe"));
    QVERIFY(write("old", "old"));
    fs::create_symlink("circle", "circle");
    const QStringList before = names();

    AtomicFile file(target.toStdString());
    const bool isWritten = file.write("new");
    QVERIFY(!file.commit());
    QVERIFY(!file.error().isEmpty());
    QVERIFY(!isWritten || target.isEmpty() || target == "circle");
    QCOMPARE(names(), before);
    QCOMPARE(contentOf("old"), QByteArray("old"));
}

void TestAtomicFile::keepsPermissions()
{
    QVERIFY(write("old", "old"));
    fs::permissions("old", fs::perms(0640));
    for (const char* name : {"old", "new"}) {
        AtomicFile file(fs::path{name});
        QVERIFY(file.write("new"));
        QVERIFY(file.commit());
    }
    QCOMPARE(int(permissionsOf("old")), 0640);
    QVERIFY(write("any", ""));
    QCOMPARE(int(permissionsOf("new")), int(permissionsOf("any")));
}

void TestAtomicFile::namesThatAreNoText()
{
    AtomicFile file(fs::path{"a\xff"});
    QVERIFY(file.write("new"));
    QVERIFY(file.commit());
    QCOMPARE(contentOf("a\xff").size() + int(fs::file_size("a\xff")), 3);
}

void TestAtomicFile::nothingIsLeftWithoutCommit()
{
    QVERIFY(write("old", "old"));
    for (const char* name : {"old", "new"}) {
        AtomicFile file(fs::path{name});
        QVERIFY(file.write("new"));
        QVERIFY(file.sync());
        QCOMPARE(names(), QStringList("old"_q));
    }
    QCOMPARE(contentOf("old"), QByteArray("old"));
    QCOMPARE(names(), QStringList("old"_q));
}

void TestAtomicFile::remainsAreCleared()
{
    const fs::path folder = "remains"; // in which this process has not written yet
    fs::create_directory(folder);
    const char* const oldOnes[] = {".globals-0123456789abcdef.tmp", ".globals-0123456789abcdeg.tmp",
                                   ".globals-0123456789abcdef.tmp2"};
    const auto now = fs::file_time_type::clock::now();
    for (const char* name : oldOnes) {
        QVERIFY(write(folder / name, ""));
        fs::last_write_time(folder / name, now - std::chrono::minutes(61));
    }
    QVERIFY(write(folder / ".globals-fedcba9876543210.tmp", ""));
    fs::last_write_time(folder / ".globals-fedcba9876543210.tmp", now - std::chrono::minutes(59));
    QVERIFY(write(folder / "file", "old"));

    AtomicFile file(folder / "file");
    QVERIFY(file.write("new"));
    QVERIFY(file.commit());
    QVERIFY(!fs::exists(folder / oldOnes[0]));
    QVERIFY(fs::exists(folder / oldOnes[1]));
    QVERIFY(fs::exists(folder / oldOnes[2]));
    QVERIFY(fs::exists(folder / ".globals-fedcba9876543210.tmp"));
}

void TestAtomicFile::fullDisk()
{
    QVERIFY(write("old", "old"));
    const FullDisk disk(4096);
    AtomicFile file(fs::path{"old"});
    QVERIFY(file.write(QByteArray(4096, 'a')));
    QVERIFY(!file.write("b"));
    QCOMPARE(file.error(), "File too large"_q);
    QVERIFY(!file.commit());
    QCOMPARE(contentOf("old"), QByteArray("old"));
    QCOMPARE(names(), QStringList("old"_q));
}

void TestAtomicFile::copiesContentAndPermissions()
{
    const QByteArray content(3 * 1024 * 1024 + 1, 'x');
    QVERIFY(write("source", content));
    fs::permissions("source", fs::perms(0750));
    AtomicFile file(fs::path{"copy"});
    QVERIFY(file.copyFrom("source"));
    QVERIFY(file.commit(AtomicFile::Durability::Later));
    QCOMPARE(contentOf("copy"), content);
    QCOMPARE(int(permissionsOf("copy")), 0750);
    AtomicFile system(fs::path{"type"});
    QVERIFY(system.copyFrom("/proc/sys/kernel/ostype"));
    QVERIFY(system.commit());
    QCOMPARE(contentOf("type"), QByteArray("Linux\n"));
    AtomicFile missing(fs::path{"none"});
    QVERIFY(!missing.copyFrom("missing"));
    QCOMPARE(missing.error(), "No such file or directory"_q);
}

void TestAtomicFile::streams()
{
    AtomicFile file(fs::path{"new"});
    std::FILE* stream = file.openStream();
    QVERIFY(stream);
    QVERIFY(std::fputs("a stream", stream) >= 0);
    QCOMPARE(std::fclose(stream), 0);
    QVERIFY(file.commit());
    QCOMPARE(contentOf("new"), QByteArray("a stream"));
}

void TestAtomicFile::readsWhole_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<qint64>("limit");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("error"); ///< empty when it is read

    const qint64 any = LARGEST_WHOLE_FILE;
    QTest::newRow("a file") << "file"_q << any << QByteArray("12345") << QString();
    QTest::newRow("an empty file") << "empty"_q << any << QByteArray() << QString();
    QTest::newRow("as large as allowed") << "file"_q << qint64(5) << QByteArray("12345") << QString();
    QTest::newRow("larger") << "file"_q << qint64(4) << QByteArray() << "File too large"_q;
    QTest::newRow("of 2 GiB") << "large"_q << any << QByteArray() << "File too large"_q;
    QTest::newRow("one that tells no size")
        << "/proc/sys/kernel/ostype"_q << any << QByteArray("Linux\n") << QString();
    QTest::newRow("one that tells no size and is larger")
        << "/proc/sys/kernel/ostype"_q << qint64(3) << QByteArray() << "File too large"_q;
    QTest::newRow("missing") << "none"_q << any << QByteArray() << "No such file or directory"_q;
    QTest::newRow("a folder") << "."_q << any << QByteArray() << "Is a directory"_q;
    QTest::newRow("a pipe") << "pipe"_q << any << QByteArray() << "Operation not supported"_q;
    QTest::newRow("fails on the way") << "/proc/self/mem"_q << any << QByteArray() << "Input/output error"_q;
}

void TestAtomicFile::readsWhole()
{
    QFETCH(QString, path);
    QFETCH(qint64, limit);
    QFETCH(QByteArray, content);
    QFETCH(QString, error);
    QVERIFY(write("file", "12345"));
    QVERIFY(write("empty", ""));
    QVERIFY(write("large", ""));
    fs::resize_file("large", std::uintmax_t{1} << 31);
    QVERIFY(makePipe("pipe"));

    QString reason;
    const auto read = readWhole(path, limit, &reason);
    QCOMPARE(reason, error);
    QCOMPARE(read.has_value(), error.isEmpty());
    QCOMPARE(read.value_or(QByteArray()), content);
}

GLOBALS_TEST_MAIN(TestAtomicFile)
#include "tst_atomicfile.moc"
