#include "ToolRun.h"

#include <QDirIterator>
#include <QRegularExpression>

#include <csignal>

using namespace OtherPrograms;
using namespace ToolRun;

namespace {

using Files = QMap<QString, QByteArray>;

/// All there is in the working folder; folders have "/" behind their names, links their target as content.
Files allFiles()
{
    Files files;
    QDirIterator walk("."_q, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                      QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        const QString path = walk.next().mid(2);
        const QFileInfo info = walk.fileInfo();
        if (info.isSymLink())
            files.insert(path, info.symLinkTarget().toUtf8());
        else
            files.insert(info.isDir() ? path + "/"_q : path,
                         info.isFile() ? TestData::contentOf(path) : QByteArray());
    }
    return files;
}

/// What is new or differs; "-" stands before what is gone.
Files changesSince(const Files& before)
{
    Files changes = allFiles();
    for (auto file = before.begin(); file != before.end(); ++file) {
        if (!changes.contains(file.key()))
            changes.insert("-"_q + file.key(), QByteArray());
        else if (changes[file.key()] == *file)
            changes.remove(file.key());
    }
    return changes;
}

/// The last field of a row of blocks.txt, which openssl wrote.
QByteArray blockFor(const char* row)
{
    const QByteArray rows = TestData::content("blocks.txt");
    const QByteArray line = rows.mid(rows.indexOf(row)).split('\n')[0];
    return QByteArray::fromHex(line.split('|').last());
}

/// Lists the first entry of small.zip 65534 times, so that there is time to interrupt the work on it.
QByteArray longArchive()
{
    const QByteArray small = TestData::content("small.zip");
    const int first = small.indexOf("PK\1\2");
    const QByteArray directory = small.mid(first, small.indexOf("PK\1\2", first + 1) - first).repeated(65534);
    QByteArray end = small.mid(small.indexOf("PK\5\6")).replace(8, 4, "\xfe\xff\xfe\xff");
    for (int i = 0; i < 4; ++i)
        end[12 + i] = char(directory.size() >> (8 * i));
    return small.left(first) + directory + end;
}

} // namespace

class GlobalsctlDataTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // Ignored in the background jobs of a shell, and it would stay so in the tool.
        static_cast<void>(std::signal(SIGINT, SIG_DFL));
        for (const char* password : {"ab", "geheim", "ü", ""})
            qputenv("PW_" + QByteArray::number(QString::fromUtf8(password).size()), password);
    }

    void init()
    {
        const QString work = QDir::homePath() + "/work"_q;
        QVERIFY(QDir(work).removeRecursively() && QDir().mkpath(work + "/folder.md"_q));
        QVERIFY(QDir::setCurrent(work) && QDir().mkpath("dir"_q));
        const QByteArray small = TestData::content("small.zip");
        const QByteArray block = blockFor("password ab");
        const Files files = {{"old"_q, "before"},
                             {"file"_q, "before"},
                             {"dir/first.txt"_q, "before"},
                             {"words"_q, "ab\r\nsecond line\n"},
                             {"long"_q, QByteArray(5000, 'x')},
                             {"latin"_q, "\xfc"},
                             {"block"_q, block},
                             {"cut"_q, block.chopped(1)},
                             {"ü-block"_q, blockFor("password halved inside a character")},
                             {"small.zip"_q, small},
                             {"protected.zip"_q, TestData::content("protected.zip")},
                             {"damaged.zip"_q, QByteArray(small).replace("first one", "First one")},
                             {"half.zip"_q, QByteArray(small).replace(small.lastIndexOf("PK\1\2"), 2, "PX")}};
        for (auto file = files.begin(); file != files.end(); ++file)
            write(file.key(), *file);
        QVERIFY(QFile::link(".."_q, "links"_q) && QFile::link("../outside"_q, "flink.txt"_q));
        QCOMPARE(QProcess::execute("mkfifo"_q, {"fifo.pipe"_q}), 0);
    }
    void cleanup()
    {
        const auto everything = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
        QCOMPARE(QDir(QDir::homePath()).entryList(everything), QStringList("work"_q)); // nothing outside
    }

    void doesWhatItIsAskedFor_data()
    {
        TestData::addRows("globalsctl-data.txt", {"arguments", "name", "exitCode", "says", "changes"});
    }
    void doesWhatItIsAskedFor()
    {
        const QByteArray name = TestData::field("name").replace("\\e"_q, "\x1b\xc2\x9b"_q).toUtf8();
        write("named.zip"_q, TestData::content("small.zip").replace("first.txt", name));
        const Files before = allFiles();
        const Result result = run(arguments());
        QCOMPARE((result.answer + result.report).trimmed().replace("\n"_q, ";"_q), TestData::field("says"));
        QStringList changes;
        const Files changed = changesSince(before);
        for (auto file = changed.begin(); file != changed.end(); ++file)
            changes << file.key() + "="_q + QString::fromUtf8(*file);
        QCOMPARE(changes.join("; "_q), TestData::field("changes"));
        QCOMPARE(result.exitCode, TestData::field("exitCode").toInt());
    }

    void writesWhatOthersRead()
    {
        QCOMPARE(run(wordsOf("data encrypt --password-env PW_6 old old2"_q)).exitCode, 0);
        QCOMPARE(openBlock(TestData::contentOf("old2"_q), "geheim", 3), QByteArray("before"));
        for (const QString& password : {QString(), "--password-env PW_6 "_q}) {
            QCOMPARE(run(wordsOf("data pack "_q + password + "old dir/first.txt words"_q)).exitCode, 0);
            const QByteArray entry = outputOf("unzip"_q, {"-p"_q, "old"_q, "words"_q});
            QCOMPARE(password.isEmpty() ? entry : openBlock(entry, "geheim", 3),
                     TestData::contentOf("words"_q));
        }
    }

    void talksToTheUser_data()
    {
        TestData::addRows("globalsctl-terminal.txt", {"command", "talk", "exitCode", "says", "changes"});
    }
    void talksToTheUser()
    {
        write("long.zip"_q, longArchive());
        write("part"_q, QByteArray(4 << 20, '\0'));
        for (int i = 10; i < 99; ++i)
            QVERIFY(QFile::link("part"_q, "part-%1"_q.arg(i)));
        const Files before = allFiles();
        const QString command = TestData::field("command").replace("@"_q, QStringLiteral(GLOBALSCTL));
        QProcess script; // runs it on a terminal of its own
        script.start("script"_q, {"-qec"_q, command, "/dev/null"_q});
        QString screen;
        int seen = 0;
        for (const QString& turn : TestData::field("talk").split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
            QStringList promptAndTyped = turn.split(QLatin1Char('>'));
            while (!screen.mid(seen).contains(promptAndTyped[0])) {
                QVERIFY2(script.waitForReadyRead(), qPrintable(screen));
                screen += QString::fromUtf8(script.readAll());
            }
            seen = screen.indexOf(promptAndTyped[0], seen) + promptAndTyped[0].size();
            script.write(promptAndTyped[1].replace("^C"_q, "\3"_q).replace("\\n"_q, "\n"_q).toUtf8());
        }
        QVERIFY(script.waitForFinished());
        screen += QString::fromUtf8(script.readAll());
        const QRegularExpression says(TestData::field("says"),
                                      QRegularExpression::DotMatchesEverythingOption);
        QVERIFY2(screen.contains(says) && !screen.contains("geheim"_q), qPrintable(screen));
        QCOMPARE(script.exitCode(), TestData::field("exitCode").toInt());
        QCOMPARE(QStringList(changesSince(before).keys()).join(QLatin1Char(' ')), TestData::field("changes"));
    }
};

GLOBALS_TEST_MAIN(GlobalsctlDataTest)
#include "tst_globalsctl_data.moc"
