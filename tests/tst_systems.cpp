#include "SettingsValues.h"
#include "TestData.h"
#include "TestPassword.h"

#include "globals/DataFileCreator.h"
#include "globals/DataFileReader.h"
#include "globals/PresetManager.h"

using namespace TEKLUVA;

namespace {

const QString PASSWORD = "house-planner!"_q;
const QByteArray TEXT = "Größe\r\n日本\n";
const QByteArray PRESETS = "# Räume\r\nroom_height=260\r\n\nscreenshot_aspect_ratio=16:9\n";

using Contents = QMap<QString, QByteArray>;
const Contents ENTRIES = {{"leer"_q, ""}, {"Möbel/Stühle.txt"_q, TEXT}, {"a"_q, "A"}, {"A"_q, "a"}};
const Contents PROTECTED = {{"Stühle.txt"_q, TEXT}, {"a"_q, "A"}, {"A"_q, "a"}}; // without folders

/// Where runs on several systems find what the others wrote.
QString exchange()
{
    return qEnvironmentVariable("GLOBALS_EXCHANGE", "written"_q);
}

} // namespace

/// The files that Unix and Windows share. Each folder has those of one system, which is its name: in
/// tests/data as they were written once, in the folder GLOBALS_EXCHANGE of the environment as this program
/// writes them.
class SystemsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        const QString folder = exchange() + "/"_q + QSysInfo::kernelType() + "/"_q;
        const DataFileCreator creator;
        QVERIFY(QDir(folder).removeRecursively() && QDir().mkpath(folder));
        SettingsValues::writtenTo(folder + "settings.ini"_q, SettingsValues::samples());
        QVERIFY(creator.createArchivFromData(ENTRIES, folder + "plain.zip"_q, QString()));
        QVERIFY(creator.createArchivFromData(PROTECTED, folder + "protected.zip"_q, PASSWORD));
        QVERIFY(TestFiles::write(folder + "block"_q, creator.encryptData(TEXT, PASSWORD)));
        QVERIFY(TestFiles::write(folder + "presets.dat"_q,
                                 creator.encryptData(PRESETS, QStringLiteral(GLOBALS_PRESET_PASSWORD))));
    }

    void readsWhatEachSystemWrites_data()
    {
        QTest::addColumn<QString>("folder");
        for (const QString& parent : {TestData::path("systems"_q), exchange()}) {
            for (const QString& system : TestFiles::names(parent))
                QTest::newRow(qPrintable(parent + "/"_q + system)) << parent + "/"_q + system + "/"_q;
        }
    }
    void readsWhatEachSystemWrites()
    {
        QFETCH(QString, folder);
        readsSettings(folder + "settings.ini"_q);
        QCOMPARE(entriesOf(folder + "plain.zip"_q, QString()), ENTRIES);
        QCOMPARE(entriesOf(folder + "protected.zip"_q, PASSWORD), PROTECTED);
        QCOMPARE(DataFileReader(folder + "block"_q, PASSWORD).getFileContent(), TEXT);
        if (qstrcmp(GLOBALS_PRESET_PASSWORD, "globals-demo-presets") != 0)
            QSKIP("The presets of other systems have the usual password.");
        QVERIFY(TestFiles::write(QCoreApplication::applicationDirPath() + "/presets.dat"_q,
                                 TestFiles::contentOf(folder + "presets.dat"_q)));
        delete PresetManager::getInstance();
        PresetManager::getInstance()->init();
        QCOMPARE(PresetManager::getPreset(E_PV_ROOM_HEIGHT), QVariant(260.0));
        QCOMPARE(PresetManager::getPreset(E_PV_SCREENSHOT_ASPECT_RATIO), QVariant("16:9"_q));
    }

private:
    static void readsSettings(const QString& path)
    {
        const QByteArray content = TestFiles::textOf(path);
        QCOMPARE(content, TestData::content("settings-samples.ini"));
        QCOMPARE(SettingsValues::writtenTo("written.ini"_q, SettingsValues::samples()), content);
        QFile::remove("settings.ini"_q);
        QVERIFY(QFile::copy(path, "settings.ini"_q));
        Settings settings("settings.ini"_q, QSettings::IniFormat, nullptr);
        const QVariantMap values = SettingsValues::samples();
        for (auto value = values.begin(); value != values.end(); ++value) {
            const TestHome::Turn turn(value.key());
            const QVariant read = settings.getSetting(QString(), value.key());
            QVERIFY(read == *value || read.toString() == value->toString()); // numbers are texts in a file
        }
        settings.setSetting("text"_q, "more"_q, 1); // and so all others go through a change
        settings.removeSetting("text"_q, "more"_q);
        QCOMPARE(TestFiles::textOf("settings.ini"_q), content);
    }

    static Contents entriesOf(const QString& archive, const QString& password)
    {
        Contents contents;
        DataFileReader(archive, password).visitArchivedFiles([&contents](const ArchivedFile& entry) {
            contents[QString::fromStdString(entry.name)] = entry.content().value_or("damaged");
            return true;
        });
        return contents;
    }
};

GLOBALS_TEST_MAIN(SystemsTest)
#include "tst_systems.moc"
