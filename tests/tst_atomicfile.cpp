#include "TestData.h"
#include "TestTree.h"

#include "globals/AtomicFile.h"
#include "globals/Containment.h"
#include "globals/WholeFile.h"

#include <QRegularExpression>

#include <chrono>

using namespace TEKLUVA;
using namespace TestFiles;
namespace fs = std::filesystem;

namespace {

bool replace(const fs::path& path, const QByteArray& content)
{
    AtomicFile file(path);
    return file.write(content) && file.commit();
}

int permissionsOf(const char* path)
{
    return int(fs::status(path).permissions());
}

} // namespace

class AtomicFileTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { removeAll(); }

    void takesItsPlace_data() { TestData::addRows("atomic-files.txt"); }
    void takesItsPlace()
    {
        if (TestData::field("target").contains(QRegularExpression("link|dang"_q)))
            SKIP_ON_WINDOWS("links");
        const QString written = TestData::field("written");
        TestTree::make("old=old link@old dangling@new"_q);
        TestTree::make("links/1@../old links/2@1 links/3@2 links/4@3 links/5@4"_q);
        fs::create_hard_link("old", "hard");

        AtomicFile file(Path(TestData::field("target")), TestData::field<bool>("replacesLink")
                                                             ? AtomicFile::Link::Replaced
                                                             : AtomicFile::Link::Followed);
        QVERIFY2(file.write("first, "), qPrintable(file.error()));
        QVERIFY(file.write("second"));
        QVERIFY2(file.commit(), qPrintable(file.error()));

        QString expected = TestData::field("names");
        if (!TestPlatform::IS_UNIX)
            expected.remove("dangling "_q).remove("link "_q);
        QCOMPARE(names().join(QLatin1Char(' ')), expected);
        QCOMPARE(contentOf(written), QByteArray("first, second"));
        QVERIFY(fs::is_regular_file(fs::symlink_status(Path(written))));
        QCOMPARE(contentOf("hard"), QByteArray("old"));
        QCOMPARE(contentOf("old"), QByteArray(written == "old"_q ? "first, second" : "old"));
        QVERIFY(!file.commit());
    }

    void refusesWhatIsNoFile_data() { TestData::addRows("atomic-refused.txt"); }
    void refusesWhatIsNoFile()
    {
        if (TestData::field<bool>("ofUnix"))
            SKIP_ON_WINDOWS("pipes, devices and links");
        TestTree::make("folder/ pipe~ old=old circle@circle"_q);
        const QStringList before = names();
        auto file = std::make_unique<AtomicFile>(Path(TestData::field("target")));
        QVERIFY(!file->write("new") || TestData::field<bool>("mayTakeBytes"));
        QVERIFY(!file->commit() && !file->error().isEmpty());
        QVERIFY(!HAS_UNNAMED_FILES || names() == before);
        file.reset();
        QCOMPARE(names(), before);
        QCOMPARE(contentOf("old"), QByteArray("old"));
    }

    void keepsPermissions()
    {
        SKIP_ON_WINDOWS("permissions");
        QVERIFY(write("old", "old"));
        fs::permissions("old", fs::perms(0640));
        QVERIFY(replace("old", "new") && replace("new", "new"));
        QCOMPARE(permissionsOf("old"), 0640);
        QVERIFY(write("any", ""));
        QCOMPARE(permissionsOf("new"), permissionsOf("any"));
    }

    void namesThatAreNoText()
    {
        SKIP_ON_WINDOWS("such names");
        QVERIFY(replace("a\xff", "new"));
        QCOMPARE(contentOf("a\xff").size() + int(fs::file_size("a\xff")), 3);
    }

    void containment()
    {
        TestTree::make("a/b/ ab/ l@a"_q);
        QVERIFY(isWithin("a/b"_q, "a"_q) && isWithin("a/c/d"_q, "a"_q) && isWithin("c/d"_q, "."_q));
        QVERIFY(!isWithin("ab"_q, "a"_q) && !isWithin("a"_q, "a/b"_q) && !isWithin(""_q, "."_q));
        QVERIFY(!TestPlatform::IS_UNIX || isWithin("l/c"_q, "a"_q));
    }

    void nothingIsLeftWithoutCommit()
    {
        QVERIFY(write("old", "old"));
        for (const char* name : {"old", "new"}) {
            AtomicFile file(fs::path{name});
            QVERIFY(file.write("new") && file.sync());
            QVERIFY(!HAS_UNNAMED_FILES || names() == QStringList("old"_q));
        }
        QCOMPARE(contentOf("old"), QByteArray("old"));
        QCOMPARE(names(), QStringList("old"_q));
    }

    void remainsAreCleared()
    {
        // In a folder in which this process has not written yet.
        const QStringList stay = {".globals-0123456789abcdef.tmp2"_q, ".globals-0123456789abcdeg.tmp"_q,
                                  ".globals-fedcba9876543210.tmp"_q};
        for (const QString& name : stay + QStringList(".globals-0123456789abcdef.tmp"_q)) {
            const Path path("remains/"_q + name);
            const std::chrono::minutes age(name == stay.last() ? 59 : 61);
            QVERIFY(write(path, ""));
            fs::last_write_time(path, fs::file_time_type::clock::now() - age);
        }
        QVERIFY(write("remains/file", "old") && replace("remains/file", "new"));
        QCOMPARE(names("remains"_q), stay + QStringList("file"_q));
    }

    void whatAppearsMeanwhileIsReplaced()
    {
        AtomicFile file(fs::path{"new"});
        QVERIFY(file.write("new") && write("new", "theirs") && file.commit());
        QCOMPARE(contentOf("new"), QByteArray("new"));
    }

    void fullDisk()
    {
        SKIP_ON_WINDOWS("a disk that tests can fill");
        QVERIFY(write("old", "old"));
        const TestPlatform::FullDisk disk(4096, true);
        AtomicFile file(fs::path{"old"});
        QVERIFY(file.write(QByteArray(4096, 'a')) && !file.write("b"));
        QCOMPARE(file.error(), "File too large"_q);
        QVERIFY(!file.commit());
        QCOMPARE(contentOf("old"), QByteArray("old"));
        QVERIFY(!HAS_UNNAMED_FILES || names() == QStringList("old"_q));
    }

    void copiesContentAndPermissions()
    {
        const QByteArray content(3 * 1024 * 1024 + 1, 'x');
        QVERIFY(write("source", content));
        fs::permissions("source", fs::perms(0750));
        AtomicFile file(fs::path{"copy"});
        QVERIFY(file.copyFrom("source") && file.commit(AtomicFile::Durability::Later));
        QCOMPARE(contentOf("copy"), content);
        SKIP_ON_WINDOWS("permissions");
        QCOMPARE(permissionsOf("copy"), 0750);
        AtomicFile system(fs::path{"type"});
        QVERIFY(system.copyFrom("/proc/sys/kernel/ostype") && system.commit());
        QCOMPARE(contentOf("type"), QByteArray("Linux\n"));
        AtomicFile missing(fs::path{"none"});
        QVERIFY(!missing.copyFrom("missing"));
        QCOMPARE(missing.error(), "No such file or directory"_q);
        QVERIFY(!AtomicFile(fs::path{"none"}).copyFrom("/dev/null"));
    }

    void streams()
    {
        AtomicFile file(fs::path{"new"});
        std::FILE* stream = file.openStream();
        QVERIFY(stream);
        QVERIFY(std::fputs("a stream", stream) >= 0);
        QCOMPARE(std::fclose(stream), 0);
        QVERIFY(file.commit());
        QCOMPARE(contentOf("new"), QByteArray("a stream"));
    }

    void readsWhole_data() { TestData::addRows("whole-files.txt"); }
    void readsWhole()
    {
        const QString limit = TestData::field("limit");
        const QByteArray content = TestData::field("content").replace("~"_q, "\n"_q).toLatin1();
        TestTree::make("file=12345 empty= large*2147483648 pipe~"_q);
        QString reason;
        const auto read = readWhole(TestData::field("path"),
                                    limit.isEmpty() ? LARGEST_WHOLE_FILE : limit.toLongLong(), &reason);
        QCOMPARE(TestPlatform::wordsOf(reason), TestPlatform::wordsOf(TestData::field("error")));
        QCOMPARE(read.has_value(), reason.isEmpty());
        QCOMPARE(read.value_or(QByteArray()), content);
    }
};

GLOBALS_TEST_MAIN(AtomicFileTest)
#include "tst_atomicfile.moc"
