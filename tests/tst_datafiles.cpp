#include "OtherPrograms.h"
#include "TestArchives.h"
#include "TestLog.h"
#include "TestThreads.h"

#include "globals/DataFileCreator.h"
#include "globals/DataFileReader.h"

#include <QRegularExpression>

#include <atomic>

using namespace TEKLUVA;
using namespace OtherPrograms;
using namespace TestArchives;

namespace {

const QString PASSWORD = "house-planner!"_q;
/// In the working folder, for files made by a test.
const QString SUBJECT = "subject"_q;

bool makeSubject(const QByteArray& content)
{
    return TestFiles::write(SUBJECT, content);
}

QByteArray patched(QByteArray bytes, QByteArray::size_type at, const QByteArray& patch)
{
    return bytes.replace(at, patch.size(), patch);
}

/// An archive of tests/data with the changes that the current row has.
QByteArray damagedArchive()
{
    QByteArray archive = TestData::content(TestData::field("archive").toLatin1().constData());
    const auto first = centralHeader(archive);
    const QMap<QString, QByteArray::size_type> places = {
        {"start"_q, 0}, {"first"_q, first}, {"second"_q, centralHeader(archive, first + 1)}};
    for (const QString& change : TestData::field("changes").split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const QStringList parts = change.split(QRegularExpression("[+=]"_q));
        archive = parts.size() == 3 ? patched(archive, places[parts[0]] + parts[1].toInt(),
                                              QByteArray::fromHex(parts[2].toLatin1()))
                                    : parts[0].toLatin1() + archive;
    }
    return archive;
}

/// Decrypts from memory that ends where the block does, so that reading on is seen.
QByteArray decrypt(const QByteArray& block)
{
    const std::vector<char> exact(block.begin(), block.end());
    const DataFileReader reader(QString(), PASSWORD);
    return reader.decryptData(QByteArray::fromRawData(exact.data(), int(exact.size())));
}

/// Runs all operations on a file of any content. Returns what "second.txt" in it holds.
QByteArray readSubject(const QByteArray& content)
{
    if (!makeSubject(content))
        return "not written";
    const DataFileReader reader(SUBJECT, QString());
    reader.getFileContent();
    for (const std::string& name : reader.getListOfArchivedFiles())
        reader.getContentOfArchivedFile(name);
    return reader.getContentOfArchivedFile("second.txt");
}

} // namespace

class DataFilesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_descriptors = TestPlatform::openDescriptors(); }
    void cleanup() const
    {
        QCOMPARE(TestPlatform::openDescriptors(), m_descriptors);
        QFile::remove(SUBJECT);
    }

    void decryptsWhatOpensslEncrypted_data() { TestData::addRows("blocks.txt"); }
    void decryptsWhatOpensslEncrypted()
    {
        const QByteArray password = QByteArray::fromHex(TestData::field("password").toLatin1());
        const QByteArray block = QByteArray::fromHex(TestData::field("block").toLatin1());
        const QByteArray plain = TestData::field("plain").toLatin1();
        const QString text = QString::fromUtf8(password.constData(), password.size());
        const DataFileReader other(QString(), "another"_q);
        QCOMPARE(DataFileReader(QString(), text).decryptData(block).toHex(), plain);
        QCOMPARE(other.decryptData(block, text).toHex(), plain);
        QCOMPARE(other.decryptData(block).toHex() == plain, plain.isEmpty());
    }

    void refusesBlocksThatAreNone()
    {
        const QRegularExpression caught("^8192 Catched exception \".+\" while opening a data file\\.$"_q);
        for (int length = 1; length < 50; ++length) {
            const int cipher = length - 17;
            const int longestPad = cipher < 0 || cipher % 16 != 0 ? -1 : qMin(cipher, 15);
            TestLog::ActiveLog log;
            for (int pad = -128; pad <= 127; ++pad) {
                const TestHome::Turn turn(qMakePair(length, pad));
                const QByteArray block = QByteArray(1, char(pad)) + QByteArray(length - 1, 'x');
                QCOMPARE(decrypt(block).size(), pad < 0 || pad > longestPad ? 0 : cipher - pad);
            }
            QCOMPARE(log.entries().filter(caught).size(), 256 - (longestPad + 1));
        }
        TestLog::ActiveLog log;
        QCOMPARE(decrypt(QByteArray()), QByteArray());
        QCOMPARE(log.entries(), QStringList());
        decrypt(QByteArray(40, '\0'));
        QCOMPARE(log.entries(), QStringList("8192 Catched exception \"StreamTransformationFilter: ciphertext "
                                            "length is not a multiple of block size\" while opening a data "
                                            "file."_q));
    }

    void readsSingleFiles()
    {
        QByteArray numbers;
        for (int i = 1; i <= 8201; ++i)
            numbers += QByteArray::number(i).rightJustified(7, '0') + '\n';
        const QString name = "Küche 1.dat"_q;
        QVERIFY(QFile::copy(TestData::path("large.dat"_q), name));
        TestLog::ActiveLog log;
        const DataFileReader reader(name, PASSWORD);
        QCOMPARE(reader.getFilename(), name);
        QCOMPARE(reader.getFileContent(), numbers);
        QCOMPARE(DataFileReader(name, QString()).getFileContent(), TestData::content("large.dat"));
        QVERIFY(DataFileReader("missing"_q, QString()).getFileContent().isEmpty());
        QCOMPARE(log.entries(), QStringList());
    }

    void tellsWhyItHasFailed()
    {
        const DataFileReader missing("missing"_q, PASSWORD);
        QVERIFY(missing.getFileContent().isEmpty());
        const QString absent = TestPlatform::wordsOf("No such file or directory"_q);
        QCOMPARE(missing.lastError().section(": "_q, 0, 0), "missing"_q);
        QCOMPARE(TestPlatform::wordsOf(missing.lastError().section(": "_q, 1)), absent);
        const DataFileReader archive(TestData::path("small.zip"_q), QString());
        QVERIFY(archive.getFileContent().isEmpty());
        QCOMPARE(archive.lastError(), archive.getFilename() + " is an archive"_q);
        QVERIFY(!archive.getListOfArchivedFiles().empty());
        QCOMPARE(archive.lastError(), QString());
        QVERIFY(archive.getContentOfArchivedFile("none").isEmpty());
        QCOMPARE(archive.lastError(),
                 "Could not locate none in the archiv "_q + archive.getFilename() + "."_q);
        QVERIFY(archive.isArchiv() && archive.lastError().isEmpty());

        const DataFileCreator creator;
        QVERIFY(creator.encryptFile("in"_q, PASSWORD).isEmpty());
        QCOMPARE(TestPlatform::wordsOf(creator.lastError().section(": "_q, 1)), absent);
        QVERIFY(!creator.createArchivFromData({{"n"_q.repeated(70000), "x"}}, SUBJECT, QString()));
        QVERIFY(creator.lastError().startsWith("subject: nnn"_q));
        SKIP_ON_WINDOWS("a disk that tests can fill");
        {
            const TestPlatform::FullDisk disk(20);
            QVERIFY(!creator.createArchivFromData({{"n"_q, "x"}}, SUBJECT, QString()));
        }
        QCOMPARE(creator.lastError(), "subject: n could not be packed: File too large"_q);
        QVERIFY(!creator.encryptData("x", PASSWORD).isEmpty());
        QCOMPARE(creator.lastError(), QString());
    }

    void refusesMoreEntriesThanEveryReaderKnows()
    {
        QMap<QString, QByteArray> entries;
        for (int i = 0; i < 0xffff; ++i)
            entries.insert(QString::number(i), QByteArray());
        const DataFileCreator creator;
        QVERIFY(!creator.createArchivFromData(entries, SUBJECT, QString()));
        QCOMPARE(creator.lastError(), "subject: more than 65534 entries"_q);
        entries.remove("0"_q);
        QVERIFY(creator.createArchivFromData(entries, SUBJECT, QString()));
        QCOMPARE(int(DataFileReader(SUBJECT, QString()).getListOfArchivedFiles().size()), 0xfffe);
    }

    void readsTheArchiveOfToday()
    {
        const DataFileCreator creator;
        const DataFileReader reader(SUBJECT, QString());
        for (const QByteArray& content : {QByteArray("first"), QByteArray("other")}) {
            QVERIFY(creator.createArchivFromData({{"a"_q, content}, {"b"_q, content}}, SUBJECT, QString()));
            for (int i = 0; i < 3; ++i)
                QCOMPARE(reader.getContentOfArchivedFile("b"), content);
        }
    }

    void readsManyEntriesByTheirNames()
    {
        const QMap<QString, QByteArray> entries = {
            {"Stühle"_q, "four legs"}, {"b"_q, "top"}, {"c"_q, "rest"}};
        QVERIFY(DataFileCreator().createArchivFromData(entries, SUBJECT, PASSWORD));
        const DataFileReader reader(SUBJECT, PASSWORD);
        QCOMPARE(reader.getContentOfArchivedFile("Stühle"_q), entries["Stühle"_q]);
        auto expected = entries;
        expected.remove("c"_q);
        QCOMPARE(reader.getContentsOfArchivedFiles({"b"_q, "none"_q, "Stühle"_q}), expected);
        QCOMPARE(reader.lastError(), "Could not locate none in the archiv %1."_q.arg(SUBJECT));
    }

    void readsArchives_data() { TestData::addRows("archives.txt"); }
    void readsArchives()
    {
        TestLog::ActiveLog log;
        const DataFileReader reader(TestData::path(TestData::field("archive")), TestData::field("password"));
        QVERIFY(reader.isArchiv() && reader.getFileContent().isEmpty());
        const auto readAll = [&reader] {
            QByteArrayList read;
            for (const std::string& name : reader.getListOfArchivedFiles())
                read << QByteArray::fromStdString(name) + '=' + reader.getContentOfArchivedFile(name);
            return QString::fromUtf8(read.join("; "));
        };
        const QString entries = TestData::field("entries");
        QCOMPARE(readAll(), entries);
        std::atomic<int> others = 0;
        TestThreads::run(4, [&](int) {
            for (int i = 0; i < 200; ++i)
                others += readAll() == entries ? 0 : 1;
        });
        QCOMPARE(others.load(), 0);
        QCOMPARE(log.entries(), QStringList());
    }

    void reportsWhyAnArchiveCannotBeRead_data() { TestData::addRows("archives-damaged.txt"); }
    void reportsWhyAnArchiveCannotBeRead()
    {
        QVERIFY(TestData::field("archive").isEmpty() || makeSubject(damagedArchive()));
        const DataFileReader reader(SUBJECT, QString());
        const auto messages = [](TestLog::ActiveLog& log) {
            return log.entries().join(QLatin1Char('\n')).remove("8192 "_q);
        };
        TestLog::ActiveLog whileListing;
        const bool isListed = !reader.getListOfArchivedFiles().empty();
        QCOMPARE(messages(whileListing), TestData::field("listing"));
        QCOMPARE(isListed, messages(whileListing).isEmpty());
        TestLog::ActiveLog whileReading;
        const bool isRead = !reader.getContentOfArchivedFile("first.txt").isEmpty();
        QCOMPARE(messages(whileReading), TestData::field("reading"));
        QCOMPARE(isRead, messages(whileReading).isEmpty());
        reader.visitArchivedFiles(
            [](const auto& file) { return file.beginning(INT_MAX).isEmpty(); }); // throws nothing
    }

    void listsAsManyEntriesAsThereAre()
    {
        for (const int count : {0xffff, 0x10001}) { // as many as the count can hold, and more
            // Bytes before the archive are not plain: minizip lists them.
            for (const QByteArray before : {"", "stub"}) {
                const TestHome::Turn turn(qMakePair(count, before));
                QVERIFY(makeSubject(before + archiveOf(count)));
                QCOMPARE(int(DataFileReader(SUBJECT, QString()).getListOfArchivedFiles().size()), count);
            }
        }
    }

    void survivesEveryTruncationAndDamagedByte()
    {
        const QByteArray second = "The second one.";
        QCOMPARE(readSubject(TestData::content("small.zip")), second);
        for (const char* name : {"small.zip", "zip64.zip", "deflated.zip"}) {
            const QByteArray whole = TestData::content(name);
            for (int at = 0; at < whole.size(); ++at) {
                const QByteArray read = readSubject(whole.left(at));
                QVERIFY2(read.isEmpty() || read == second, QByteArray::number(at));
                for (const char damage : {'\0', '\xff'})
                    readSubject(patched(whole, at, QByteArray(1, damage)));
            }
        }
    }

    void doesNotWaitForWhatIsNoFile()
    {
        SKIP_ON_WINDOWS("pipes and devices");
        QVERIFY(TestFiles::makePipe("pipe"));
        for (const QString& name : {"pipe"_q, "."_q, "/dev/zero"_q}) {
            const TestHome::Turn turn(name);
            const DataFileReader reader(name, QString());
            QVERIFY(!reader.isArchiv() && reader.getFileContent().isEmpty());
            QVERIFY(reader.getListOfArchivedFiles().empty());
        }
    }

    void visitsEntriesInOnePass()
    {
        const QByteArray names = TestData::content("names.zip");
        QVERIFY(makeSubject(patched(names, names.indexOf("name of 255 bytes"), "N")));
        QByteArrayList seen;
        TestLog::ActiveLog log;
        QVERIFY(DataFileReader(SUBJECT, QString()).visitArchivedFiles([&seen](const ArchivedFile& file) {
            seen << QByteArray::number(int(file.name.size())) + ' ' + QByteArray::number(file.size) + ' '
                        + file.beginning(2) + file.content().value_or("damaged");
            return file.name[0] != 'd';
        }));
        QCOMPARE(seen.join("; "), QByteArray("255 17 Nadamaged; 256 17 naname of 256 bytes; 257 17 naname of "
                                             "257 bytes; 5000 18 naname of 5000 bytes"));
        QCOMPARE(log.entries().size(), 1);
        QVERIFY(!DataFileReader("missing"_q, QString()).visitArchivedFiles([](const auto&) { return true; }));
        const DataFileReader wrong(TestData::path("small.zip"_q), "wrong"_q);
        QVERIFY(wrong.visitArchivedFiles([](const auto& file) { return !file.size || !file.content(); }));
    }

    void readsOtherEntriesWhileItVisits()
    {
        QVERIFY(DataFileCreator().createArchivFromData({{"a"_q, "first"}, {"b"_q, "second"}}, SUBJECT,
                                                       QString()));
        const DataFileReader reader(SUBJECT, QString());
        QByteArrayList seen = {reader.getContentOfArchivedFile("a")};
        QVERIFY(reader.visitArchivedFiles([&seen, &reader](const ArchivedFile& file) {
            seen << file.beginning(1) << reader.getContentOfArchivedFile("b") << *file.content();
            return true;
        }));
        QCOMPARE(seen.join(' '), QByteArray("first f second first s second second"));
    }

private:
    int m_descriptors = 0;
};

GLOBALS_TEST_MAIN(DataFilesTest)
#include "tst_datafiles.moc"
