#include "TestData.h"
#include "TestHome.h"
#include "TestPassword.h"
#include "ToolRun.h"

#include "globals/PathRegistry.h"
#include "globals/PresetManager.h"

#include <QDirIterator>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace OtherPrograms;
using namespace ToolRun;

namespace {

const QString FILE_NAME = "ä.txt"_q;

/// The content of a file protected by the script that the example shows, which uses openssl.
QByteArray protectedContent(const QByteArray& plain, const char* password = GLOBALS_PRESET_PASSWORD)
{
    write("plain"_q, plain);
    qputenv("GLOBALS_PRESET_PASSWORD", password);
    QProcess::execute(QStringLiteral(ENCRYPT_PRESETS), {"plain"_q, "protected"_q});
    return TestData::contentOf("protected"_q);
}

QJsonArray arrayFrom(const QStringList& arguments)
{
    return QJsonDocument::fromJson(run(arguments).answer.toUtf8()).array();
}

/// The lines that the current row has in \p column, where "@" is \p name.
QString linesOf(const char* column, const QString& name)
{
    QString text = TestData::field(column).replace(QLatin1Char('@'), name);
    return text.isEmpty() ? text : text.replace(QLatin1Char(';'), QLatin1Char('\n')) + "\n"_q;
}

/// All there is below the home folder.
QStringList everythingAtHome()
{
    QStringList entries;
    QDirIterator walk(QDir::homePath(), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                      QDirIterator::Subdirectories);
    while (walk.hasNext())
        entries << walk.next();
    return entries;
}

} // namespace

class GlobalsctlTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsItsUsage_data()
    {
        TestData::addRows("globalsctl-usage.txt", {"arguments", "exitCode", "says"});
    }
    void tellsItsUsage()
    {
        const Result result = run(arguments());
        QCOMPARE(result.exitCode, TestData::field("exitCode").toInt());
        const bool isAnswer = result.exitCode == 0;
        QVERIFY((isAnswer ? result.answer : result.report).contains(TestData::field("says")));
        QCOMPARE(isAnswer ? result.report : result.answer, QString());
    }

    void readsPresetFiles_data()
    {
        TestData::addRows("globalsctl-files.txt", {"content", "arguments", "exitCode", "answer", "report"});
    }
    void readsPresetFiles()
    {
        QString content = TestData::field("content");
        content.replace("\\n"_q, "\n"_q).replace("\\r"_q, "\r"_q).replace("\\t"_q, "\t"_q);
        QFile::remove("built"_q);
        write(FILE_NAME, content.toUtf8());
        const Result build = run({"presets"_q, "build"_q, FILE_NAME, "built"_q});
        QCOMPARE(build.exitCode, TestData::field("exitCode").toInt());
        QCOMPARE(QFile::exists("built"_q), build.exitCode == 0);
        const QByteArray built = TestData::contentOf("built"_q);
        QVERIFY(built.isEmpty() || openBlock(built, GLOBALS_PRESET_PASSWORD, 10) == content.toUtf8());
        QCOMPARE(run({"presets"_q, "build"_q, "built"_q, "again"_q}).exitCode, 1);
        for (const QByteArray& bytes : {content.toUtf8(), protectedContent(content.toUtf8())}) {
            write(FILE_NAME, bytes);
            const Result result = run(arguments() << FILE_NAME);
            QCOMPARE(result.answer, linesOf("answer", FILE_NAME));
            QCOMPARE(result.report, linesOf("report", FILE_NAME));
            QCOMPARE(result.exitCode, TestData::field("exitCode").toInt());
        }
    }

    void readsCommentsInAnOldEncoding()
    {
        write(FILE_NAME, "#R\xE4ume\nroom_height=260\n");
        QCOMPARE(run({"presets"_q, "check"_q, FILE_NAME}).answer, FILE_NAME + ": good, 1 preset set\n"_q);
    }

    void refusesWhatIsNoPresetFile_data() { TestData::addRows("globalsctl-refused.txt", {"file", "reason"}); }
    void refusesWhatIsNoPresetFile()
    {
        const QByteArray whole = protectedContent("room_height=260\nwall_strength=21\nwall_strength=22\n");
        write("cut"_q, whole.chopped(1));
        write("bad-pad"_q, QByteArray(whole).replace(0, 1, "\x10"));
        write("header"_q, QByteArray("\x05", 1) + QByteArray(16, 'v'));
        write("other-password"_q, protectedContent(QByteArray(1024, 'a'), "another password of "));
        QFile large("large"_q);
        QVERIFY(large.open(QIODevice::WriteOnly) && large.resize(Q_INT64_C(5) << 30));
        QProcess::execute("mkfifo"_q, {"pipe"_q});
        QVERIFY(QFile::exists("archive"_q) || QFile::copy(TestData::path("small.zip"_q), "archive"_q));
        for (const QString& command : {"check"_q, "show"_q}) {
            const Result result = run({"presets"_q, command, TestData::field("file")});
            QVERIFY2(result.report.contains(TestData::field("file") + " "_q + TestData::field("reason")),
                     qPrintable(result.report));
            QCOMPARE(result.answer, QString());
            QCOMPARE(result.exitCode, 1);
        }
    }

    void showsAllPresets()
    {
        write(FILE_NAME, "room_height=260\nlight_linear_attenuation=0.0022\nshow_endstrips=0");
        const QJsonArray presets = arrayFrom({"presets"_q, "show"_q, "--json"_q, FILE_NAME});
        QCOMPARE(presets.size(), TEKLUVA::PresetManager::describePresets().size());
        QCOMPARE(presets[2].toObject(), (QJsonObject{{"value"_q, 4},
                                                     {"key"_q, "room_height"_q},
                                                     {"type"_q, "double"_q},
                                                     {"default"_q, 270},
                                                     {"current"_q, 260},
                                                     {"bounds"_q, "min_room_height to max_room_height"_q},
                                                     {"changed"_q, true}}));
        // Single precision in the program, but people wrote 0.0022.
        QCOMPARE(presets[98].toObject()["default"_q], QJsonValue(0.0022));
        QCOMPARE(presets[98].toObject()["changed"_q], QJsonValue(false));
        QCOMPARE(presets[17].toObject()["current"_q], QJsonValue(false));
    }

    void looksAtPathsWithoutMakingThem()
    {
        const QStringList before = everythingAtHome();
        QCOMPARE(run({"paths"_q}).answer.count(QLatin1Char('\n')), 1 + TEKLUVA::describePaths().size());
        QCOMPARE(everythingAtHome(), before);
    }

    void saysWhoSetAPath()
    {
        const QStringList command = {"paths"_q, "--organization"_q, "acme"_q, "--application"_q, "Plän"_q};
        const QJsonArray paths = arrayFrom(command + QStringList("--json"_q));
        const QString settings = paths[23].toObject()["path"_q].toString();
        QVERIFY2(settings.endsWith("/acme/Plän/"_q), qPrintable(settings));
        QVERIFY(QDir().mkpath(settings));
        write(settings + "settings.ini"_q, "[User_Pathes]\nE_PT_DATA=/elsewhere\n");
        const QJsonObject data = arrayFrom(command + QStringList("--json"_q))[7].toObject();
        QCOMPARE(data["path"_q], QJsonValue("/elsewhere/"_q));
        QCOMPARE(data["overridden"_q], QJsonValue(true));
        QVERIFY(run(command).answer.contains("  no      set by the user: E_PT_DATA in User_Pathes\n"_q));
    }

    void keepsSettings_data()
    {
        TestData::addRows("globalsctl-settings.txt",
                          {"content", "arguments", "exitCode", "answer", "report", "after"});
    }
    void keepsSettings()
    {
        const QString folder = QDir::homePath() + "/.local/share/data/tekluva"_q;
        const QString file = folder + "/tekluva 3D-Planner/settings.ini"_q;
        // Beside it, an application whose settings are no file, and one whose folder cannot be made.
        QVERIFY(QDir(folder).removeRecursively() && QDir().mkpath(folder + "/directory/settings.ini"_q));
        write(folder + "/blocked"_q, QByteArray());
        if (const QString content = linesOf("content", "@"_q); !content.isEmpty()) {
            QVERIFY(QDir().mkpath(QFileInfo(file).path()));
            write(file, content.toLatin1());
        }
        const QStringList before = everythingAtHome();
        const Result result = run(arguments());
        QCOMPARE(result.answer, linesOf("answer", folder));
        QCOMPARE(result.report, linesOf("report", folder));
        QCOMPARE(result.exitCode, TestData::field("exitCode").toInt());
        const bool isChanged = !TestData::field("after").isEmpty();
        QCOMPARE(QString::fromLatin1(TestData::contentOf(file)),
                 linesOf(isChanged ? "after" : "content", "@"_q));
        if (!isChanged)
            QCOMPARE(everythingAtHome(), before);
    }

    void failsWhenTheAnswerCannotBeWritten()
    {
        const Result full = run({"paths"_q}, "/dev/full"_q);
        QCOMPARE(full.exitCode, 1);
        QVERIFY(full.report.contains("could not be written"_q));
        const QString closed = "exec \"$0\" --version >&- 2>&-"_q;
        QCOMPARE(QProcess::execute("sh"_q, {"-c"_q, closed, QStringLiteral(GLOBALSCTL)}), 1);
    }
};

GLOBALS_TEST_MAIN(GlobalsctlTest)
#include "tst_globalsctl.moc"
