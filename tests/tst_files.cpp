#include "TestCalls.h"
#include "TestLog.h"
#include "TestTree.h"

#include "globals/ConfigManager.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QRegularExpression>
#include <QThread>

#include <future>

using namespace TEKLUVA;
using namespace TestCalls;

// After a call's arguments come options: a copy is "recursive", a "move" or of files with a suffix ".png";
// the user says "yes" or "no" to a question, the disk is "full" beyond 8 bytes a file, the call comes from
// another "thread".

namespace {

const QStringList OPTIONS = {"recursive"_q, "move"_q, ".png"_q,   ".gz"_q,  "yes"_q,
                             "no"_q,        "full"_q, "thread"_q, "stay"_q, "report"_q};

const auto config = &ConfigManager::getInstance;

/// Makes a manager that starts under the names and with the settings file of this moment.
const auto freshConfig = [] { return delete config(), config(); };

QStringList textsIn(const QString& text)
{
    QStringList texts;
    for (const QByteArray& word : TestTree::wordsIn(text))
        texts << QString::fromUtf8(word);
    return texts;
}

QVariant copy(QStringList& words)
{
    const auto withOptions = [&words](const QString& source, const QString& target) {
        const QStringList suffixes = words.filter("."_q).replaceInStrings("."_q, QString());
        return config()->copyDirectory(source, target, words.contains("recursive"_q),
                                       words.contains("move"_q), suffixes);
    };
    return call(withOptions)(words);
}

QString read(const QString& path)
{
    bool ok = true;
    const QByteArray data = config()->readDataFromFile(path, ok);
    return QString::fromUtf8((ok ? "read " : "failed ") + data);
}

QString storeImage(E_OffscreenImage image, unsigned int size, unsigned int quality, const QString& format)
{
    freshConfig()->setCubeMapRenderSize(image, size);
    config()->setCubeMapImageQuality(image, quality);
    config()->setCubeMapFormat(image, format);
    const QString stored = config()->getCubeMapFormat(image) + config()->getCubeMapFormatSuffix(image);
    return "%1 %2 "_q.arg(config()->getCubeMapRenderSize(image)).arg(config()->getCubeMapImageQuality(image))
           + stored;
}

void start(const QString& organization, const QString& application)
{
    QCoreApplication::setOrganizationName(organization);
    QCoreApplication::setApplicationName(application);
    // Away from the main thread no manager can be made, but its first step be taken.
    if (QThread::currentThread() == QCoreApplication::instance()->thread())
        freshConfig();
    else
        config()->checkAndClean();
}

QString version(const QString& ofApplication, unsigned int parts)
{
    config()->setCurrentVersion(ofApplication);
    const QString shown = config()->getCurrentDisplayVersion() + QLatin1Char(' ');
    return shown + config()->getCurrentVersion(parts);
}

QString report()
{
    const MigrationReport report = config()->migrationReport();
    const auto list = [](const QStringList& paths) {
        return paths.isEmpty() ? "nothing"_q : paths.join(QLatin1Char(','));
    };
    return "moved %1 kept %2 deleted %3"_q.arg(list(report.moved), list(report.kept), list(report.deleted));
}

/// What a row calls by the first word of its "call".
const Calls CALLS = {
    {"copy"_q, copy},
    {"delete"_q, call(config, &ConfigManager::deleteDirectory)},
    {"size"_q, call(config, &ConfigManager::getDirectoryContentSize)},
    {"create"_q, call(config, &ConfigManager::createDirectory)},
    {"read"_q, call(read)},
    {"write"_q, call([](const QString& path, const QByteArray& data) {
         return config()->writeDataToFile(path, data, false);
     })},
    {"append"_q, call([](const QString& path, const QByteArray& data) {
         return config()->writeDataToFile(path, data, true);
     })},
    {"project"_q, call(config, &ConfigManager::getProjectFilename)},
    {"autosave"_q, call([](const QString& user) { return config()->getAutosaveFilepath(user, false); })},
    {"saved"_q, call([](const QString& user) { return config()->getAutosaveFilepath(user, true); })},
    {"is-saved"_q, call(config, &ConfigManager::existAutoSave)},
    {"adds"_q, call(config, &ConfigManager::getListOfObjectAddFiles)},
    {"forget-environment"_q, call(config, &ConfigManager::removeEnvironmentVersions)},
    {"forget-model"_q, call(config, &ConfigManager::removeModelVersions)},
    {"forget-material"_q, call(config, &ConfigManager::removeMaterialVersions)},
    {"qt-changed"_q, call([] { freshConfig()->handleQtVersionChanged(); })},
    {"version"_q, call(config, &ConfigManager::getCurrentVersion)},
    {"version-of"_q, call(version)},
    {"compare"_q, call(config, &ConfigManager::compareVersion)},
    {"suffix"_q, call(config, &ConfigManager::getFileSuffix)},
    {"start"_q, call(start)},
    {"image"_q, call(storeImage)},
};

} // namespace

class FilesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { startTimer(0); }
    void init()
    {
        QCoreApplication::setOrganizationName("org"_q);
        QCoreApplication::setApplicationName("app"_q);
        qputenv("HOME", m_home);
        freshConfig();
    }
    void cleanup() { TestFiles::removeAll(); }

    void foldersAreCopied_data() { TestData::addRows("files-copy.txt"); }
    void foldersAreCopied() { check(); }
    void filesAndFoldersAreKept_data() { TestData::addRows("files.txt"); }
    void filesAndFoldersAreKept() { check(); }
    void olderInstallationsMoveIn_data() { TestData::addRows("migration.txt"); }
    void olderInstallationsMoveIn() { check(); }
    void versionsAreCompared_data() { TestData::addRows("versions.txt"); }
    void versionsAreCompared() { check(); }

private:
    /// Makes the row's call and compares what it returns, what then lies on the disk, and what was said: in
    /// the log, where the user notes each question, too.
    void check()
    {
        const QString row = TestData::field("call") + TestData::field("before") + TestData::field("after");
        if (row.contains(QRegularExpression("[@~]| full|%0A|%FF|adds/chair|/Logs="_q)))
            SKIP_ON_WINDOWS("links, pipes, a disk that tests can fill, bytes for names, and names that "
                            "differ in their case only");
        TestLog::ActiveLog active;
        enterNewHome();
        TestTree::make(TestData::field("before"));
        m_words = textsIn(TestData::field("call"));
        const auto act = [&] {
            const TestPlatform::FullDisk disk(m_words.contains("full"_q) ? 8
                                                                         : TestPlatform::FullDisk::WITH_ROOM);
            const QString result = make(CALLS, m_words).toString();
            return m_words.contains("report"_q) ? report() : result;
        };
        ConfigManager::setMovesOlderData(!m_words.contains("stay"_q));
        const auto where = m_words.contains("thread"_q) ? std::launch::async : std::launch::deferred;
        QString result = std::async(where, act).get();
        for (const QString& word : std::as_const(m_words)) {
            if (!OPTIONS.contains(word))
                TestData::refuse(word, "option");
        }

        const QString here = QDir::currentPath() + QLatin1Char('/');
        const char* after = TestData::field("after") == "same"_q ? "before" : "after";
        QCOMPARE(TestTree::tree(), TestTree::sorted(TestTree::wordsIn(TestData::field(after))));
        QCOMPARE(result.remove(here), textsIn(TestData::field("result")).join(QLatin1Char(' ')));
        QCOMPARE(active.entries().join("; "_q).remove(here), TestData::field("said"));
    }

    /// Leaves what the manager and its log have made behind in the old home.
    void enterNewHome()
    {
        qputenv("HOME", m_home + '/' + QByteArray::number(++m_count));
        const QString data = TestPlatform::dataFolder();
        QVERIFY(QDir().mkpath(data) && QDir::setCurrent(data));
        TestFiles::removeAll();
    }

    /// The user, who answers what is asked.
    void timerEvent(QTimerEvent*) override
    {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            const QStringList asked{box->windowTitle(), box->text(), box->defaultButton()->text()};
            Log* log = LogManager::getInstance()->getActiveLog();
            log->logMessage(E_LogLevel(box->icon()), asked.join(": "_q).toStdString(), "", 0);
            const bool agrees = m_words.contains("yes"_q);
            box->button(agrees ? QMessageBox::Yes : QMessageBox::No)->click();
        }
    }

    const QByteArray m_home = qgetenv("HOME");
    int m_count = 0;
    QStringList m_words; ///< of the current row
};

GLOBALS_TEST_MAIN(FilesTest, QApplication)
#include "tst_files.moc"
