#include "OtherPrograms.h"
#include "TestArchives.h"
#include "TestLog.h"
#include "TestTree.h"

#include "globals/DataFileCreator.h"
#include "globals/DataFileReader.h"

using namespace TEKLUVA;
using namespace OtherPrograms;

namespace {

const QString PASSWORD = "house-planner!"_q;
/// In the working folder, for archives made by a test.
const QString SUBJECT = "subject"_q;

} // namespace

class DataFileCreatorTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_descriptors = TestPlatform::openDescriptors(); }
    void cleanup() const
    {
        QCOMPARE(TestPlatform::openDescriptors(), m_descriptors);
        QFile::remove(SUBJECT);
    }

    void opensslDecryptsWhatWeEncrypt_data() { TestData::addRows("written-blocks.txt"); }
    void opensslDecryptsWhatWeEncrypt()
    {
        const QByteArray bytes = QByteArray::fromHex(TestData::field("password").toLatin1());
        const QString password = QString::fromUtf8(bytes.constData(), bytes.size());
        const bool canBeRead = TestData::field<bool>("canBeRead");
        if (!canBeRead || bytes.contains('\0'))
            SKIP_ON_WINDOWS("openssl");
        QCOMPARE(DataFileCreator::canBeReadBack(password), canBeRead);
        for (const int size : {0, 1, 15, 16, 17, 50000}) {
            const TestHome::Turn turn(size);
            const QByteArray plain = QByteArray("Two lines\n\0", 11).repeated(size).left(size);
            const QByteArray block = DataFileCreator().encryptData(plain, password);
            QCOMPARE(block.size(), 17 + (size + 15) / 16 * 16);
            QCOMPARE(openBlock(block, bytes, TestData::field<int>("split")), plain);
            if (canBeRead || size != 1) // one byte may be right by chance
                QCOMPARE(DataFileReader(QString(), password).decryptData(block) == plain,
                         canBeRead || size == 0);
            QVERIFY(DataFileCreator().encryptData(plain, password).mid(1, 16) != block.mid(1, 16));
        }
    }

    void keepsTheHeaderOfWhatDoesNotFit()
    {
        TestLog::ActiveLog log;
        const QByteArray huge = QByteArray::fromRawData("x", std::numeric_limits<int>::max() - 20);
        const QByteArray block = DataFileCreator().encryptData(huge, PASSWORD);
        QCOMPARE(block.size(), 17);
        QCOMPARE(int(block[0]), 5);
        QCOMPARE(log.entries().filter("while opening a data file."_q).size(), 1);
    }

    void unzipReadsWhatWePack_data() { TestData::addRows("written-archives.txt"); }
    void unzipReadsWhatWePack()
    {
        QMap<QString, QByteArray> data;
        QStringList files;
        for (const QString& entry : TestData::field("entries").split(QLatin1Char(';'))) {
            files << entry.section(QLatin1Char('='), 0, 0);
            data[files.last()] = entry.section(QLatin1Char('='), 1).toUtf8();
            QVERIFY(TestFiles::write(files.last(), data[files.last()]));
        }
        const QString password = TestData::field("password");
        QVERIFY(TestFiles::write(SUBJECT, QByteArray(9999, 'o')));
        const DataFileCreator creator;
        const auto isEntry = [&files](int entry) { return entry >= 0 && entry < files.size(); };
        QVERIFY(TestData::field<bool>("files")
                    ? creator.createArchivFromFiles(files, SUBJECT, password, isEntry)
                    : creator.createArchivFromData(data, SUBJECT, password, isEntry));

        QCOMPARE(QString::fromUtf8(TestArchives::namesIn(TestFiles::contentOf(SUBJECT)).join(';')),
                 TestData::field("names"));
        const QByteArray header = TestFiles::contentOf(SUBJECT).left(14);
        // Deflated; the date that minizip makes of none.
        QCOMPARE(header.mid(8).toHex(), QByteArray("080000002000"));
        QByteArrayList contents;
        const DataFileReader reader(SUBJECT, password);
        for (const std::string& name : reader.getListOfArchivedFiles())
            contents << reader.getContentOfArchivedFile(name);
        QCOMPARE(QString::fromUtf8(contents.join(';')), TestData::field("contents"));
        QVERIFY(QFileInfo(SUBJECT).permissions() & QFile::ReadOther);
        SKIP_ON_WINDOWS("unzip");
        QVERIFY(outputOf("unzip"_q, {"-tq"_q, SUBJECT}).startsWith("No errors"));
    }

    void keepsTheOlderArchiveOnFailure()
    {
        TestTree::make("in/good=content pipe~ subject=old"_q);
        QVERIFY(TestFiles::write("in/large"_q, TestData::content("large.dat")));
        const auto before = TestFiles::treeBelow();
        const DataFileCreator creator;
        const auto packs = [&creator](const QStringList& files, const QString& target = SUBJECT) {
            return creator.createArchivFromFiles(files, target, QString())
                   || creator.createArchivFromFiles(files, target, PASSWORD);
        };
        for (const QString& target : {QString(), "no/such/folder"_q, "in"_q})
            QVERIFY2(!packs({"in/good"_q}, target), qPrintable(target));
        for (const QString& file : {"missing"_q, "in"_q}) {
            QVERIFY2(!packs({"in/good"_q, file}) && !packs({file}), qPrintable(file));
            QVERIFY2(creator.encryptFile(file, PASSWORD).isEmpty(), qPrintable(file));
        }
        QVERIFY(!packs({}));
        QVERIFY(!creator.createArchivFromData({{"n"_q.repeated(70000), "x"}}, SUBJECT, QString()));
        QVERIFY(!creator.packData(nullptr, "n"_q, "x") && !creator.packFile(nullptr, "in/good"_q));
        QVERIFY(!creator.createArchivFromFiles({"in/good"_q, "in/large"_q}, SUBJECT, PASSWORD,
                                               [](int entry) { return entry == 0; }));
        QCOMPARE(TestFiles::changes(before, TestFiles::treeBelow()).keys(), QByteArrayList());
        SKIP_ON_WINDOWS("pipes, files of the system, and a disk that tests can fill");
        QVERIFY(!packs({"in/good"_q}, "pipe"_q));
        for (const QString& file : {"pipe"_q, "/proc/self/status"_q})
            QVERIFY2(!packs({"in/good"_q, file}) && !packs({file}), qPrintable(file));
        for (const quint64 room : {0U, 20U, 100U, 40000U}) {
            const TestPlatform::FullDisk disk(room);
            QVERIFY2(!packs({"in/good"_q, "in/large"_q}), QByteArray::number(room));
        }
        QCOMPARE(TestFiles::changes(before, TestFiles::treeBelow()).keys(), QByteArrayList());
    }

private:
    int m_descriptors = 0;
};

GLOBALS_TEST_MAIN(DataFileCreatorTest)
#include "tst_datafilecreator.moc"
