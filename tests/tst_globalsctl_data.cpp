#include "JsonSchema.h"
#include "TestArchives.h"
#include "TestTree.h"
#include "ToolRun.h"

#include "globals/PresetManager.h"

#include <QJsonDocument>

#include <csignal>

using namespace OtherPrograms;
using namespace ToolRun;

namespace {

/// The last field of a row of blocks.txt, which openssl wrote.
QByteArray blockFor(const char* row)
{
    const QByteArray rows = TestData::content("blocks.txt");
    const auto at = rows.indexOf(QByteArray("\n") + row + " |");
    if (at < 0)
        qFatal("There is no block \"%s\"", row);
    return QByteArray::fromHex(rows.mid(at + 1).split('\n')[0].split('|').last());
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
        qputenv("TERM", "xterm");
        for (const QString& password : {"ab"_q, "geheim"_q, "ü"_q, QString()})
            TestPlatform::setVariable("PW_" + QByteArray::number(password.size()), password);
    }

    void init()
    {
        TestFiles::removeAll();
        const QByteArray small = TestData::content("small.zip");
        const QByteArray block = blockFor("password ab");
        TestTree::make(QString::fromUtf8(TestData::content("globalsctl-tree.txt")).simplified());
        const QMap<QString, QByteArray> files = {
            {"long"_q, QByteArray(5000, 'x')},
            {"block"_q, block},
            {"cut"_q, block.chopped(1)},
            {"cut.zip"_q, small.left(small.indexOf("PK\1\2"))},
            {"empty.zip"_q, TestData::content("empty.zip")},
            {"ü-block"_q, blockFor("password halved inside a character")},
            {"small.zip"_q, small},
            {"protected.zip"_q, TestData::content("protected.zip")},
            {"damaged.zip"_q, QByteArray(small).replace("first one", "First one")},
            {"half.zip"_q, QByteArray(small).replace(small.lastIndexOf("PK\1\2"), 2, "PX")}};
        for (auto file = files.begin(); file != files.end(); ++file)
            QVERIFY(TestFiles::write(file.key(), *file));
        if (!TestPlatform::IS_UNIX)
            return; // a file that may not be written could not be removed
        QVERIFY(QFile::setPermissions("read-only"_q, QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));
        for (const QString& password : {"words"_q, "long"_q, "latin"_q})
            QVERIFY(QFile::setPermissions(password, QFile::ReadOwner | QFile::WriteOwner));
    }
    void cleanup()
    {
        QCOMPARE(TestFiles::names(".."_q), QStringList("work"_q)); // nothing outside
    }

    void doesWhatItIsAskedFor_data() { TestData::addRows("globalsctl-data.txt"); }
    void doesWhatItIsAskedFor()
    {
        if (isRowOfUnix({"arguments", "name", "says"}))
            SKIP_ON_WINDOWS("links, pipes and permissions, and the words of Unix");
        const QByteArray name = TestData::field("name").replace("\\e"_q, "\x1b\xc2\x9b"_q).toUtf8();
        QVERIFY(TestFiles::write("named.zip"_q, TestData::content("small.zip").replace("first.txt", name)));
        const TestFiles::Tree before = TestFiles::treeBelow();
        const Result result = globalsctl(arguments());
        QCOMPARE((result.text() + result.errors).trimmed().replace("\n"_q, ";"_q), TestData::field("says"));
        const TestFiles::Tree changed = TestFiles::changes(before, TestFiles::treeBelow());
        QStringList changes;
        for (auto file = changed.begin(); file != changed.end(); ++file)
            changes << QString::fromUtf8(file.key() + *file);
        QCOMPARE(changes.join("; "_q), TestData::field("changes"));
        QCOMPARE(result.exitCode, TestData::field<int>("exitCode"));
    }

    void windowsRefusesNamesThatItTakesForOthers()
    {
        for (const char* name : {"ab:cd.txt", "AUX.b.txt", "dir/com1.", "ab.c.txt.", "ab.c.txt ",
                                 "dir\\a.txt", "nul .text", "q?ery.txt", "ab\x1f.texts", "\xff\xfe.abcdef"}) {
            const TestHome::Turn turn(name);
            QVERIFY(
                TestFiles::write("named.zip"_q, TestData::content("small.zip").replace("first.txt", name)));
            const Result result = globalsctl(wordsOf("data extract --output new named.zip"_q));
            QCOMPARE(result.exitCode, TestPlatform::IS_UNIX ? 0 : 1);
            QCOMPARE(result.errors.count("has "_q), result.exitCode);
            const std::filesystem::directory_iterator written("new");
            QCOMPARE(int(std::distance(begin(written), end(written))), 3 - result.exitCode);
            std::filesystem::remove_all("new");
        }
    }

    void answersInJsonAsDocumented()
    {
        QStringList documented;
        const auto page = QString::fromUtf8(TestFiles::contentOf(QStringLiteral(JSON_PAGE)));
        for (const JsonSchema::Section& section : JsonSchema::sectionsOf(page)) {
            const TestHome::Turn turn(section.name);
            documented << section.name;
            QVERIFY(section.example.startsWith(section.name));
            QByteArray answer = globalsctl(wordsOf(section.example)).output;
            if (section.name == "logs"_q)
                answer = answer.left(answer.indexOf('\n'));
            const QJsonObject object = QJsonDocument::fromJson(answer).object();
            QCOMPARE(object["schema"_q], QJsonValue(1));
            QCOMPARE(JsonSchema::difference(section, object), QString());
        }
        for (const QString& form : globalsctl({"--help"_q}).text().split("\n  "_q)) {
            static const QRegularExpression WORDS("^([a-z]+( [a-z]+)?)\\b"_q);
            const QString words = WORDS.match(form).captured(1);
            const bool hasJson =
                !words.isEmpty()
                && globalsctl(QStringList("help"_q) + wordsOf(words)).text().contains("--json"_q);
            QVERIFY2(hasJson == documented.contains(words) || words.isEmpty(), qPrintable(words));
        }
    }

    void writesWhatOthersRead()
    {
        SKIP_ON_WINDOWS("unzip");
        QCOMPARE(globalsctl(wordsOf("data encrypt --password-env PW_6 old old2"_q)).exitCode, 0);
        QCOMPARE(openBlock(TestFiles::contentOf("old2"_q), "geheim", 3), QByteArray("before"));
        for (const QString& password : {QString(), "--password-env PW_6 "_q}) {
            const TestHome::Turn turn(password);
            QCOMPARE(
                globalsctl(wordsOf("data pack --force "_q + password + "old dir/first.txt words"_q)).exitCode,
                0);
            const QByteArray entry = outputOf("unzip"_q, {"-p"_q, "old"_q, "words"_q});
            QCOMPARE(password.isEmpty() ? entry : openBlock(entry, "geheim", 3),
                     TestFiles::contentOf("words"_q));
        }
    }

    void talksToTheUser_data() { TestData::addRows("globalsctl-terminal.txt"); }
    void talksToTheUser()
    {
        SKIP_ON_WINDOWS("a terminal of Unix");
        QVERIFY(TestFiles::write("long.zip"_q, TestArchives::archiveOf(65534)));
        QVERIFY(TestFiles::write("part"_q, QByteArray(4 << 20, '\0')));
        for (int i = 10; i < 99; ++i)
            QVERIFY(QFile::link("part"_q, "part-%1"_q.arg(i)));
        const TestFiles::Tree before = TestFiles::treeBelow();
        const QString command = TestData::field("command").replace("@"_q, QStringLiteral(GLOBALSCTL));
        QProcess script; // runs it on a terminal of its own
        script.start("script"_q, {"-qec"_q, command, "/dev/null"_q});
        QString screen;
        QString::size_type seen = 0;
        for (const QString& turn : TestData::field("talk").split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
            QStringList promptAndTyped = turn.split(QLatin1Char('>'));
            while (!screen.mid(seen).contains(promptAndTyped[0])) {
                QVERIFY2(script.waitForReadyRead(), qPrintable(screen));
                screen += QString::fromUtf8(script.readAll());
            }
            seen = screen.indexOf(promptAndTyped[0], seen) + promptAndTyped[0].size();
            script.write(promptAndTyped[1]
                             .replace("^C"_q, "\3"_q)
                             .replace("^D"_q, "\4"_q)
                             .replace("^Z"_q, "\x1a"_q)
                             .replace("\\n"_q, "\n"_q)
                             .toUtf8());
        }
        QVERIFY(script.waitForFinished());
        screen += QString::fromUtf8(script.readAll());
        const auto presets = TEKLUVA::PresetManager::describePresets().size();
        const QRegularExpression says(TestData::field("says").replace("@all"_q, QString::number(presets)),
                                      QRegularExpression::DotMatchesEverythingOption);
        QVERIFY2(screen.contains(says), qPrintable(screen));
        QVERIFY2(!screen.contains("geheim"_q), "a password is on the screen");
        QCOMPARE(script.exitCode(), TestData::field<int>("exitCode"));
        const QByteArrayList changed = TestFiles::changes(before, TestFiles::treeBelow()).keys();
        QCOMPARE(QString::fromUtf8(changed.join(' ')), TestData::field("changes"));
    }
};

GLOBALS_TEST_MAIN(GlobalsctlDataTest)
#include "tst_globalsctl_data.moc"
