#include "TestPassword.h"
#include "TestTree.h"
#include "ToolRun.h"

#include "globals/DataFileCreator.h"
#include "globals/PathRegistry.h"
#include "globals/PresetManager.h"

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
    if (!TestPlatform::IS_UNIX)
        return TEKLUVA::DataFileCreator().encryptData(plain, QString::fromUtf8(password));
    qputenv("GLOBALS_PRESET_PASSWORD", password);
    if (!TestFiles::write("plain"_q, plain)
        || OtherPrograms::run(QStringLiteral(ENCRYPT_PRESETS), {"plain"_q, "protected"_q}).exitCode != 0)
        return "not protected";
    return TestFiles::contentOf("protected"_q);
}

/// The member of the answer that is called like the first word of the command.
QJsonArray arrayFrom(const QStringList& arguments)
{
    return QJsonDocument::fromJson(globalsctl(arguments).output).object()[arguments[0]].toArray();
}

/// The lines that the current row has in \p column, where "@" is \p name.
QString linesOf(const char* column, const QString& name)
{
    QString text = TestData::field(column).replace(QLatin1Char('@'), name);
    return text.isEmpty() ? text : text.replace(QLatin1Char(';'), QLatin1Char('\n')) + "\n"_q;
}

TestFiles::Tree treeAtHome()
{
    return TestFiles::treeBelow(TestPlatform::userFolder());
}

} // namespace

class GlobalsctlTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsItsUsage_data() { TestData::addRows("globalsctl-usage.txt"); }
    void tellsItsUsage()
    {
        const Result result = globalsctl(arguments());
        QCOMPARE(result.exitCode, TestData::field<int>("exitCode"));
        const QString said = result.exitCode == 0 ? result.text() : result.errors;
        QVERIFY2(said.contains(TestData::field("says")), qPrintable(said));
        QCOMPARE(result.exitCode == 0 ? result.errors : result.text(), QString());
    }

    void readsPresetFiles_data() { TestData::addRows("globalsctl-files.txt"); }
    void readsPresetFiles()
    {
        QString content = TestData::field("content");
        content.replace("\\n"_q, "\n"_q).replace("\\r"_q, "\r"_q).replace("\\t"_q, "\t"_q);
        const int exitCode = TestData::field<int>("exitCode");
        QFile::remove("built"_q);
        QVERIFY(TestFiles::write(FILE_NAME, content.toUtf8()));
        QCOMPARE(globalsctl({"presets"_q, "build"_q, FILE_NAME, "built"_q}).exitCode, exitCode);
        QCOMPARE(QFile::exists("built"_q), exitCode == 0);
        if (exitCode == 0)
            QCOMPARE(openBlock(TestFiles::contentOf("built"_q), GLOBALS_PRESET_PASSWORD, 10),
                     content.toUtf8());
        QCOMPARE(globalsctl({"presets"_q, "build"_q, "built"_q, "again"_q}).exitCode, 1);
        for (const QByteArray& bytes : {content.toUtf8(), protectedContent(content.toUtf8())}) {
            const TestHome::Turn turn(bytes);
            QVERIFY(TestFiles::write(FILE_NAME, bytes));
            const Result result = globalsctl(arguments() << FILE_NAME);
            QCOMPARE(result.text(), linesOf("output", FILE_NAME));
            QCOMPARE(result.errors, linesOf("errors", FILE_NAME));
            QCOMPARE(result.exitCode, exitCode);
        }
    }

    void readsCommentsInAnOldEncoding()
    {
        QVERIFY(TestFiles::write(FILE_NAME, "#R\xE4ume\nroom_height=260\n"));
        QCOMPARE(globalsctl({"presets"_q, "check"_q, FILE_NAME}).text(),
                 FILE_NAME + ": good, 1 preset set\n"_q);
    }

    void refusesWhatIsNoPresetFile_data() { TestData::addRows("globalsctl-refused.txt"); }
    void refusesWhatIsNoPresetFile()
    {
        if (isRowOfUnix({"file"}))
            SKIP_ON_WINDOWS("pipes and devices");
        const QByteArray whole = protectedContent("room_height=260\nwall_strength=21\nwall_strength=22\n");
        QVERIFY(TestFiles::write("cut"_q, whole.chopped(1)));
        QVERIFY(TestFiles::write("bad-pad"_q, QByteArray(whole).replace(0, 1, "\x10")));
        QVERIFY(TestFiles::write("header"_q, QByteArray("\x05", 1) + QByteArray(16, 'v')));
        QVERIFY(TestFiles::write("other-password"_q,
                                 protectedContent(QByteArray(1024, 'a'), "another password of ")));
        QVERIFY(TestFiles::write("large"_q, {}) && QFile::resize("large"_q, Q_INT64_C(5) << 30));
        TestTree::make("pipe~"_q);
        QVERIFY(TestFiles::write("archive"_q, TestData::content("small.zip")));
        for (const QString& command : {"check"_q, "show"_q}) {
            const TestHome::Turn turn(command);
            const Result result = globalsctl({"presets"_q, command, TestData::field("file")});
            QVERIFY2(result.errors.contains(TestData::field("file") + " "_q + TestData::field("reason")),
                     qPrintable(result.errors));
            QCOMPARE(result.text(), QString());
            QCOMPARE(result.exitCode, 1);
        }
    }

    void showsAllPresets()
    {
        QVERIFY(TestFiles::write(FILE_NAME,
                                 "room_height=260\nlight_linear_attenuation=0.0022\nshow_endstrips=0"));
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
        const auto before = treeAtHome();
        QCOMPARE(globalsctl({"paths"_q}).output.count('\n'), 1 + TEKLUVA::describePaths().count());
        QCOMPARE(TestFiles::changes(before, treeAtHome()).keys(), QByteArrayList());
    }

    void saysWhoSetAPath()
    {
        const QStringList command = {"paths"_q, "--organization"_q, "acme"_q, "--application"_q, "Plän"_q};
        const QJsonArray paths = arrayFrom(command + QStringList("--json"_q));
        const QString settings = paths[23].toObject()["path"_q].toString();
        QVERIFY2(settings.endsWith("/acme/Plän/"_q), qPrintable(settings));
        const QString nowhere = QDir::rootPath() + "nowhere"_q;
        QVERIFY(TestFiles::write(settings + "settings.ini"_q,
                                 "[User_Pathes]\nE_PT_DATA=" + nowhere.toUtf8() + '\n'));
        const QJsonObject data = arrayFrom(command + QStringList("--json"_q))[7].toObject();
        QCOMPARE(data["path"_q], QJsonValue(nowhere + "/"_q));
        QCOMPARE(data["overridden"_q], QJsonValue(true));
        QVERIFY(globalsctl(command).output.contains("  no      set by the user: E_PT_DATA in User_Pathes\n"));
    }

    void keepsSettings_data() { TestData::addRows("globalsctl-settings.txt"); }
    void keepsSettings()
    {
        if (isRowOfUnix({"arguments", "errors"}))
            SKIP_ON_WINDOWS("pipes, and the words of Unix");
        const QString folder = TestPlatform::dataFolder() + "/tekluva"_q;
        const QString file = folder + "/tekluva 3D-Planner/settings.ini"_q;
        const QByteArray boot =
            TestPlatform::IS_UNIX ? QSysInfo::bootUniqueId() : QSysInfo::machineUniqueId();
        // Beside it, an application whose settings are no file, and one whose folder cannot be made.
        QVERIFY(QDir(folder).removeRecursively());
        TestTree::make("FOLDER/directory/settings.ini/ FOLDER/pipe/settings.ini~ FOLDER/blocked="_q.replace(
            "FOLDER"_q, folder));
        if (const QString content = linesOf("content", "@"_q); !content.isEmpty())
            QVERIFY(TestFiles::write(file, content.toLatin1().replace("@BOOT@", boot)));
        const auto before = treeAtHome();
        const Result result = globalsctl(arguments());
        QCOMPARE(result.text(), linesOf("output", folder));
        QCOMPARE(result.errors, linesOf("errors", folder));
        QCOMPARE(result.exitCode, TestData::field<int>("exitCode"));
        if (TestData::field("after").isEmpty())
            QCOMPARE(TestFiles::changes(before, treeAtHome()).keys(), QByteArrayList());
        else
            QCOMPARE(QString::fromLatin1(TestFiles::contentOf(file).replace("\r\n", "\n")),
                     linesOf("after", "@"_q));
    }
};

GLOBALS_TEST_MAIN(GlobalsctlTest)
#include "tst_globalsctl.moc"
