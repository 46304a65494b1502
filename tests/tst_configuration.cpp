#include "TestHome.h"
#include "TestLog.h"

#include "globals/ConfigManager.h"
#include "globals/PathRegistry.h"

#include <QRegularExpression>
#include <QSignalSpy>

using namespace TEKLUVA;

namespace {

QString text(const char* literal)
{
    return QString::fromUtf8(literal);
}

ConfigManager* config()
{
    return ConfigManager::getInstance();
}

/// A path with its first letter spelt out: the Data location, the Home, the Cache location, the Application's
/// folder or the Working directory.
QString spelt(const QString& path)
{
    const QMap<QChar, QString> bases = {
        {QLatin1Char('D'), QDir::homePath() + text("/.local/share/data/tekluva/tekluva 3D-Planner")},
        {QLatin1Char('H'), QDir::homePath()},
        {QLatin1Char('C'), QDir::homePath() + text("/.cache/tekluva/tekluva 3D-Planner")},
        {QLatin1Char('A'), QCoreApplication::applicationDirPath()},
        {QLatin1Char('W'), QDir::currentPath()},
    };
    return path.isEmpty() ? path : bases.value(path[0]) + path.mid(1) + QLatin1Char('/');
}

enum Making { Made, NotMade };

struct PathRow
{
    int type;
    const char* path;
    Making making;
    const char* dirName = "";
};

const PathRow PATHS[] = {
    {0, "", NotMade},
    {1, "A", Made},
    {2, "D/projects", Made},
    {3, "D", Made},
    {4, "D", Made},
    {5, "W/tmp", Made},
    {6, "D", Made},
    {7, "W", Made},
    {8, "D/data", Made, "data"},
    {9, "H/tekluva 3D-Planner", Made},
    {10, "D/data/environments", Made, "environments"},
    {11, "A/media/fonts", NotMade},
    {12, "W/installer", NotMade},
    {13, "", NotMade},
    {14, "D/data/kmz", Made, "kmz"},
    {15, "W/launcher", NotMade},
    {16, "D/logs", Made},
    {17, "D/data/materials/adds", Made, "adds"},
    {18, "D/data/materials", Made, "materials"},
    {19, "D/data/model/adds", Made, "adds"},
    {20, "D/data/model", Made, "model"},
    {21, "A/media/objects", NotMade},
    {22, "W/tekluva", NotMade},
    {23, "A/media/scripts", NotMade},
    {24, "D", Made},
    {25, "A/media/shader", NotMade},
    {26, "A/media/static", NotMade},
    {27, "", NotMade},
    {28, "A/media/textures", NotMade},
    {29, "D/data/tmp", Made, "tmp"},
    {30, "H/.local/share/applications/Downloads", Made},
    {31, "W/packages", Made},
    {32, "W", Made},
    {33, "H/tekluva 3D-Planner/Meine Modelle/adds", Made, "adds"},
    {34, "H/tekluva 3D-Planner/My models", Made, "My models"},
    {35, "D/data/userimages", Made, "userimages"},
    {36, "H/tekluva 3D-Planner/Meine Projekte", Made},
    {37, "H/Pictures/tekluva 3D-Planner", Made},
    {38, "C", Made, "tekluva"},
    {39, "", NotMade},
};

} // namespace

class ConfigurationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        QCoreApplication::setOrganizationName(text("tekluva"));
        QCoreApplication::setApplicationName(text("tekluva 3D-Planner"));
        qputenv("HOME", m_home);
        config()->removeSettingGroup(text("User_Pathes"));
    }

    void eachTypeLeadsToItsFolder_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("made");
        QTest::addColumn<QString>("dirName");
        for (const PathRow& row : PATHS) {
            QTest::addRow("%d", row.type)
                << row.type << spelt(text(row.path)) << (row.making == Made) << text(row.dirName);
        }
    }
    void eachTypeLeadsToItsFolder()
    {
        QFETCH(int, type);
        QFETCH(QString, path);
        QFETCH(bool, made);
        QFETCH(QString, dirName);
        if (type >= 1 && type <= 38)
            QCOMPARE(describePaths()[type - 1].path, path);
        QCOMPARE(config()->getPath(E_PathType(type)), path);
        QCOMPARE(!path.isEmpty() && QFileInfo(path).isDir(), made);
        QCOMPARE(config()->getDirName(E_PathType(type)), dirName);
    }

    void describingMakesNothing()
    {
        qputenv("HOME", m_home + "/untouched");
        const QList<PathDescription> paths = describePaths();
        QCOMPARE(paths.count(), 38);
        QVERIFY(!QFileInfo::exists(QDir::homePath()));
        QCOMPARE(paths[16].rule, text("type 18, then \"adds\""));
        QVERIFY(paths[0].exists && !paths[1].exists);
    }

    void aFolderThatCannotBeMadeIsReported_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("messages");
        QTest::newRow("projects") << 2
                                  << text(
                                         "Could not create storage path.|Could not create projects directory|"
                                         "Could not browse into projects directory");
        QTest::newRow("pictures") << 9
                                  << text("Could not create picture path.|"
                                          "Could not create \"tekluva 3D-Planner\" directory|"
                                          "Could not browse into \"tekluva 3D-Planner\" directory");
        QTest::newRow("environments")
            << 10
            << text("Could not create storage path.|Could not create data directory|"
                    "Could not browse into data directory|"
                    "Could not create model cache directory|"
                    "Could not browse into model cache directory");
        QTest::newRow("settings") << 24 << text("Could not create storage path.");
        QTest::newRow("user models") << 33
                                     << text("Could not create user path.|"
                                             "Could not create \"tekluva 3D-Planer\" directory|"
                                             "Could not browse into \"tekluva 3D-Planer\" directory|"
                                             "Could not create usermodel directory|"
                                             "Could not browse into usermodel directory|"
                                             "Could not create usermodel adds directory|"
                                             "Could not browse into usermodel  adds directory");
        QTest::newRow("web cache") << 38 << text("Could not create cache path.");
        QTest::newRow("program") << 11 << QString();
    }
    void aFolderThatCannotBeMadeIsReported()
    {
        QFETCH(int, type);
        QFETCH(QString, messages);
        TestLog::ActiveLog active;
        QFile obstacle(text("obstacle"));
        QVERIFY(obstacle.open(QIODevice::WriteOnly));
        qputenv("HOME", QFile::encodeName(QFileInfo(obstacle).absoluteFilePath()));
        config()->getPath(E_PathType(type));
        QStringList expected = messages.split(QLatin1Char('|'), Qt::SkipEmptyParts);
        expected.replaceInStrings(QRegularExpression(text("^")), text("8192 "));
        QCOMPARE(active.entries(), expected);
    }

    void usersOverrideFourFolders_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("key");
        QTest::addColumn<bool>("winsWhenMissing");
        QTest::newRow("data root") << 8 << text("E_PT_DATA") << true;
        QTest::newRow("download") << 9 << text("E_PT_DOWNLOAD") << false;
        QTest::newRow("upload") << 32 << text("E_PT_UPLOAD") << true;
        QTest::newRow("screenshots") << 37 << text("E_PT_USER_SCREENSHOT") << true;
    }
    void usersOverrideFourFolders()
    {
        QFETCH(int, type);
        QFETCH(QString, key);
        QFETCH(bool, winsWhenMissing);
        const auto pathType = E_PathType(type);
        const QString rule = config()->getPath(pathType);
        const QString chosen = QDir::currentPath() + QLatin1Char('/') + key + QLatin1Char('/');

        QVERIFY(config()->setPath(pathType, key));
        QCOMPARE(config()->getSetting(text("User_Pathes"), key).toString(), key);
        QCOMPARE(config()->getPath(pathType), winsWhenMissing ? chosen : rule);
        QCOMPARE(QFileInfo::exists(chosen), pathType == E_PT_DATA);
        QDir().mkpath(chosen);
        QCOMPARE(config()->getPath(pathType), chosen);
        QCOMPARE(describePaths()[type - 1].path, chosen);
        QVERIFY(describePaths()[type - 1].overridden);
        if (pathType == E_PT_DATA)
            QCOMPARE(config()->getPath(E_PT_MODEL_CACHE), chosen + text("model/"));

        QVERIFY(config()->setPath(pathType, QString()));
        QCOMPARE(config()->getPath(pathType), rule);
    }

    void otherFoldersAreFixed()
    {
        TestLog::ActiveLog active;
        QVERIFY(!config()->setPath(E_PT_LOGS, text("/x")));
        config()->resetPath(E_PT_LOGS);
        QCOMPARE(active.entries(),
                 (QStringList{text("8192 The given path type is unsupported to be changed yet."),
                              text("8192 The given path type is not be supported to be reseted yet.")}));
    }

    void foldersFollowTheApplicationsName_data()
    {
        QTest::addColumn<QString>("organization");
        QTest::addColumn<QString>("application");
        QTest::addColumn<QStringList>("paths"); // of types 24, 36 and 38
        QTest::newRow("no product word in the cache")
            << text("Org") << text("App")
            << QStringList{text("H/.local/share/data/Org/App"), text("H/App/Meine Projekte"),
                           text("H/.cache/Org/App/tekluva")};
        QTest::newRow("no name at all")
            << QString() << QString()
            << QStringList{text("H/.local/share/data"), text("H/Meine Projekte"), text("H/.cache/tekluva")};
        QTest::newRow("product word in capitals")
            << text("TEKLUVA") << text("x")
            << QStringList{text("H/.local/share/data/TEKLUVA/x"), text("H/x/Meine Projekte"),
                           text("H/.cache/TEKLUVA/x")};
    }
    void foldersFollowTheApplicationsName()
    {
        QFETCH(QString, organization);
        QFETCH(QString, application);
        QFETCH(QStringList, paths);
        QCoreApplication::setOrganizationName(organization);
        QCoreApplication::setApplicationName(application);
        QCOMPARE(config()->getPath(E_PT_SETTINGS), spelt(paths[0]));
        QCOMPARE(config()->getPath(E_PT_USER_PROJECTS), spelt(paths[1]));
        QCOMPARE(config()->getPath(E_PT_WEB_CACHE), spelt(paths[2]));
    }

    void anErrorDuringConstructionFindsTheOneManager()
    {
        TestLog::ActiveLog active;
        delete config();
        QFile obstacle(text("obstacle"));
        QVERIFY(obstacle.open(QIODevice::WriteOnly));
        qputenv("HOME", QFile::encodeName(QFileInfo(obstacle).absoluteFilePath()));
        config()->setAutosaveInterval(1);
        QCOMPARE(active.entries(), QStringList{text("8192 Could not create storage path.")});
        QCOMPARE(qApp->findChildren<ConfigManager*>().count(), 1);
        delete config();
        qputenv("HOME", m_home);
        QCOMPARE(config()->getAutosaveInterval(), 60000U);
    }

    void settingsLieInTheSettingsFolder()
    {
        config()->setSetting(text("Locale"), text("Language"), text("de"));
        QFile file(config()->getPath(E_PT_SETTINGS) + text("settings.ini"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("[Locale]\nLanguage=de\n"));
        config()->clearSettings();
    }

    void changesAreAnnounced()
    {
        QSignalSpy interval(config(), &ConfigManager::autosaveIntervalChanged);
        QSignalSpy force(config(), &ConfigManager::navigationForceChanged);
        config()->setAutosaveInterval(5000);
        config()->setForceNavigation(true);
        QCOMPARE(interval, (QList<QVariantList>{{5000U}}));
        QCOMPARE(force, (QList<QVariantList>{{true}}));
        QVERIFY(config()->getAutosaveInterval() == 5000 && config()->forceNavigation());
    }

    void theLifeTimeIsRecorded()
    {
        config()->updateLifeTime();
        const QDateTime time = config()->getSetting(text("Application"), text("last_life_time")).toDateTime();
        QVERIFY(qAbs(time.secsTo(QDateTime::currentDateTime())) < 60);
        QCOMPARE(config()->getSetting(text("Application"), text("time_sync")).toString(), text("false"));
    }

private:
    const QByteArray m_home = qgetenv("HOME");
};

GLOBALS_TEST_MAIN(ConfigurationTest)
#include "tst_configuration.moc"
