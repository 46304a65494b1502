#include "TestData.h"
#include "TestLog.h"

#include "globals/ConfigManager.h"
#include "globals/PathRegistry.h"

#include <QSignalSpy>

using namespace TEKLUVA;

namespace {

const auto config = &ConfigManager::getInstance;

/// The path type whose number names the current row.
int typeOfRow()
{
    return TestData::valueOf<int>(QString::fromLatin1(QTest::currentDataTag()));
}

/// A path with its first letter spelt out: the application's Data, the Home, the application's Cache, the
/// Location of all data, that of all (K)aches, that of Programs, the folder of the Application or the Working
/// directory.
QString spelt(const QString& path)
{
    const QString names = "/tekluva/tekluva 3D-Planner"_q;
    const QString data = TestPlatform::dataFolder();
    const QString caches = QDir::homePath() + "/.cache"_q;
    const QMap<QChar, QString> bases = {
        {QLatin1Char('D'), data + names},
        {QLatin1Char('H'), QDir::homePath()},
        {QLatin1Char('C'), TestPlatform::IS_UNIX ? caches + names : data + names + "/cache"_q},
        {QLatin1Char('L'), data},
        {QLatin1Char('K'), caches},
        {QLatin1Char('P'), QStandardPaths::writableLocation(QStandardPaths::ApplicationsLocation)},
        {QLatin1Char('A'), QCoreApplication::applicationDirPath()},
        {QLatin1Char('W'), QDir::currentPath()},
    };
    return path.isEmpty() ? path : bases.value(path[0]) + path.mid(1) + QLatin1Char('/');
}

/// Puts a file in the place of the home folder.
void blockHome()
{
    QVERIFY(TestFiles::write("obstacle"_q, {}));
    qputenv("HOME", QFile::encodeName(QDir::current().absoluteFilePath("obstacle"_q)));
}

} // namespace

class ConfigurationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        QCoreApplication::setOrganizationName("tekluva"_q);
        QCoreApplication::setApplicationName("tekluva 3D-Planner"_q);
        qputenv("HOME", m_home);
        config()->removeSettingGroup("User_Pathes"_q);
    }

    void settingsThatCannotBeSavedAreTold()
    {
        SKIP_ON_WINDOWS("a full disk");
        const QSignalSpy told(config(), &ConfigManager::pendingSettingsChanged);
        QVERIFY(!config()->hasPendingSettings());
        {
            const TestPlatform::FullDisk full(0);
            config()->setSetting("G"_q, "k"_q, 1);
            QVERIFY(config()->hasPendingSettings());
        }
        config()->removeSetting("G"_q, "k"_q);
        QVERIFY(!config()->hasPendingSettings());
        QCOMPARE(told, QList<QVariantList>({{true}, {false}}));
    }

    void eachTypeHasItsFolder_data() { TestData::addRows("paths.txt"); }
    void eachTypeHasItsFolder()
    {
        const int type = typeOfRow();
        const QString path = spelt(TestData::field("path"));
        QCOMPARE(describePaths().value(type - 1).path, path);
        QCOMPARE(config()->getPath(E_PathType(type)), path);
        const bool isMade = !path.isEmpty() && QFileInfo(path).isDir();
        QCOMPARE(isMade ? "made"_q : QString(), TestData::field("made"));
        QCOMPARE(config()->getDirName(E_PathType(type)), TestData::field("dirName"));
    }

    void tableHereIsComplete()
    {
        const QByteArray rows = TestData::content("paths.txt");
        for (const PathDescription& path : describePaths())
            QVERIFY2(rows.contains("\n" + QByteArray::number(path.type) + " |"), qPrintable(path.role));
    }

    void describingMakesNothing()
    {
        SKIP_ON_WINDOWS("a variable with the home folder");
        qputenv("HOME", m_home + "/untouched");
        const QList<PathDescription> paths = describePaths();
        QVERIFY(!QFileInfo::exists(QDir::homePath()));
        QCOMPARE(paths[16].rule, "type 18, then \"adds\""_q);
        QVERIFY(paths[0].exists && !paths[1].exists);
    }

    void anUnusualEnvironmentLeadsNowhereElse()
    {
        SKIP_ON_WINDOWS("a variable with the home folder");
        const auto settings = [] { return describePaths()[E_PT_SETTINGS - 1].path; };
        const auto cache = [] { return describePaths()[E_PT_WEB_CACHE - 1].path; };
        const QString usualSettings = settings();
        const QString usualCache = cache();
        qputenv("XDG_DATA_HOME", "relative");
        qputenv("XDG_CACHE_HOME", "./relative");
        QCOMPARE(settings(), usualSettings);
        QCOMPARE(cache(), usualCache);
        qputenv("XDG_DATA_HOME", "/elsewhere");
        QCOMPARE(settings(), "/elsewhere/data/tekluva/tekluva 3D-Planner/"_q);
        qunsetenv("XDG_DATA_HOME");
        qunsetenv("XDG_CACHE_HOME");
        qunsetenv("HOME");
        for (const QString& path : {settings(), cache()})
            QVERIFY2(!path.startsWith("/."_q) && !path.startsWith("//"_q), qPrintable(path));
    }

    void aFolderThatCannotBeMadeIsReported_data() { TestData::addRows("path-errors.txt"); }
    void aFolderThatCannotBeMadeIsReported()
    {
        SKIP_ON_WINDOWS("a variable with the home folder");
        const int type = typeOfRow();
        TestLog::ActiveLog active;
        blockHome();
        config()->getPath(E_PathType(type));
        QStringList expected;
        for (const QString& message : TestData::field("messages").split(QLatin1Char(';'), Qt::SkipEmptyParts))
            expected << "8192 "_q + message.trimmed();
        QCOMPARE(active.entries(), expected);
    }

    void usersOverrideFourFolders_data() { TestData::addRows("path-overrides.txt"); }
    void usersOverrideFourFolders()
    {
        const QString key = TestData::field("key");
        const int type = typeOfRow();
        const auto pathType = E_PathType(type);
        const QString rule = config()->getPath(pathType);
        const QString chosen = QDir::currentPath() + QLatin1Char('/') + key + QLatin1Char('/');

        QVERIFY(config()->setPath(pathType, key));
        QCOMPARE(config()->getSetting("User_Pathes"_q, key).toString(), key);
        const bool isChosen = config()->getPath(pathType) == chosen;
        const bool isMade = QFileInfo::exists(chosen);
        const QString whenChosen = isMade ? "made"_q : "used"_q;
        QCOMPARE(isChosen ? whenChosen : "ignored"_q, TestData::field("whenMissing"));
        QVERIFY(isChosen || !isMade);
        QCOMPARE(config()->getPath(pathType), isChosen ? chosen : rule);
        QDir().mkpath(chosen);
        QCOMPARE(config()->getPath(pathType), chosen);
        QCOMPARE(describePaths()[type - 1].path, chosen);
        QVERIFY(describePaths()[type - 1].overridden);
        if (pathType == E_PT_DATA)
            QCOMPARE(config()->getPath(E_PT_MODEL_CACHE), chosen + "model/"_q);

        QVERIFY(config()->setPath(pathType, QString()));
        QVERIFY(config()->hasSetting("User_Pathes"_q, key)); // empty
        QCOMPARE(config()->getPath(pathType), rule);
    }

    void otherFoldersAreFixed()
    {
        TestLog::ActiveLog active;
        QVERIFY(!config()->setPath(E_PT_LOGS, QString())); // which resets it first
        QCOMPARE(active.entries(),
                 (QStringList{"8192 The given path type is not be supported to be reseted yet."_q,
                              "8192 The given path type is unsupported to be changed yet."_q}));
    }

    void foldersFollowTheApplicationsName_data() { TestData::addRows("path-names.txt"); }
    void foldersFollowTheApplicationsName()
    {
        QCoreApplication::setOrganizationName(TestData::field("organization"));
        QCoreApplication::setApplicationName(TestData::field("application"));
        QCOMPARE(config()->getPath(E_PT_SETTINGS), spelt(TestData::field("settings")));
        QCOMPARE(config()->getPath(E_PT_USER_PROJECTS), spelt(TestData::field("projects")));
        SKIP_ON_WINDOWS("a folder of all caches");
        QCOMPARE(config()->getPath(E_PT_WEB_CACHE), spelt(TestData::field("cache")));
    }

    /// Which Qt 6 returns for a name that was not set, too. An application of old has a folder under it.
    void anExecutablesNameThatWasSetCounts()
    {
        const QString name = QFileInfo(QCoreApplication::arguments()[0]).fileName();
        const QString folder = spelt("L/Own/"_q + name);
        QVERIFY(QDir().mkpath(folder));
        QCoreApplication::setOrganizationName("Own"_q);
        QCoreApplication::setApplicationName(name);
        QCOMPARE(config()->getPath(E_PT_SETTINGS), folder);
    }

    void anErrorDuringConstructionFindsTheOneManager()
    {
        SKIP_ON_WINDOWS("a variable with the home folder");
        TestLog::ActiveLog active;
        delete config();
        blockHome();
        config()->setAutosaveInterval(1);
        QStringList entries = active.entries();
        entries.removeDuplicates();
        QCOMPARE(entries, QStringList{"8192 Could not create storage path."_q});
        QCOMPARE(QCoreApplication::instance()->findChildren<ConfigManager*>().count(), 1);
        delete config();
        qputenv("HOME", m_home);
        QCOMPARE(config()->getAutosaveInterval(), 60000U);
    }

    void aFolderThatMayNotBeUsedIsTold()
    {
        TestLog::ActiveLog active;
        QVERIFY(config()->setPath(E_PT_DOWNLOAD, "/missing"_q));
        QVERIFY(config()->setPath(E_PT_USER_SCREENSHOT, "here"_q));
        QVERIFY(config()->setPath(E_PT_UPLOAD, "/missing"_q)); // used all the same
        QVERIFY(config()->setPath(E_PT_DOWNLOAD, QString()));
        QCOMPARE(
            active.entries(),
            (QStringList{
                "4096 The folder /missing does not exist. It is not used before it does."_q,
                "4096 The folder here is relative. Where it leads depends on the working directory."_q}));
    }

    void aHomeThatCannotBeWrittenIsTold()
    {
        const auto before = TestFiles::treeBelow(m_home.toStdString());
        QCOMPARE(config()->storageProblem(), QString());
        QCOMPARE(TestFiles::changes(before, TestFiles::treeBelow(m_home.toStdString())).keys(),
                 QByteArrayList());
        SKIP_ON_WINDOWS("a full disk");
        {
            const TestPlatform::FullDisk full(0);
            QCOMPARE(config()->storageProblem(), "In %1 kann nichts gespeichert werden: File too large"_q.arg(
                                                     config()->getPath(E_PT_SETTINGS)));
        }
        qputenv("HOME", "/dev/null");
        QVERIFY(config()->storageProblem().startsWith("In /dev/"_q));
    }

    void changesAreAnnounced()
    {
        QSignalSpy interval(config(), &ConfigManager::autosaveIntervalChanged);
        QSignalSpy force(config(), &ConfigManager::navigationForceChanged);
        config()->setAutosaveInterval(5000);
        config()->setForceNavigation(true);
        QCOMPARE(interval, (QList<QVariantList>{{5000U}}));
        QCOMPARE(force, (QList<QVariantList>{{true}}));
        QCOMPARE(config()->getAutosaveInterval(), 5000U);
        QVERIFY(config()->forceNavigation());
    }

private:
    const QByteArray m_home = qgetenv("HOME");
};

GLOBALS_TEST_MAIN(ConfigurationTest)
#include "tst_configuration.moc"
