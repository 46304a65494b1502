#include "FullDisk.h"
#include "TestData.h"
#include "TestHome.h"
#include "TestLog.h"

#include "globals/ConfigManager.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <future>
#include <sys/stat.h>

using namespace TEKLUVA;
namespace fs = std::filesystem;

// The tables write what lies on the disk in one notation, with blanks between the entries:
// "folder/file=content", "empty-folder/", "link@text-of-the-link", "pipe~", "file-of-zeros*size". In names,
// contents and arguments "+" is a blank, %E4 a byte and HERE the folder that all is in; "-" alone is an empty
// argument.

namespace {

constexpr std::initializer_list<const char*> COLUMNS = {"call", "result", "before", "after", "said"};

const auto config = &ConfigManager::getInstance;

/// Makes a manager that starts under the names and with the settings file of this moment.
const auto freshConfig = [] { return delete config(), config(); };

QByteArrayList wordsIn(const QString& text)
{
    QByteArrayList words;
    const QString there = QString(text).replace("HERE"_q, QDir::currentPath());
    for (const QString& word : there.split(QLatin1Char(' '), Qt::SkipEmptyParts))
        words << QByteArray::fromPercentEncoding(word == "-"_q ? "" : word.toUtf8().replace('+', ' '));
    return words;
}

QByteArray sorted(QByteArrayList words)
{
    std::sort(words.begin(), words.end());
    return words.join(' ');
}

void makeTree(const QString& tree)
{
    for (const QByteArray& word : wordsIn(tree)) {
        const std::string entry = word.toStdString();
        const std::size_t end = entry.find_first_of("=@~*");
        const char kind = end == std::string::npos ? '/' : entry[end];
        const fs::path path = fs::absolute(entry.substr(0, end));
        fs::create_directories(path.parent_path());
        if (kind == '=')
            std::ofstream(path) << entry.substr(end + 1);
        else if (kind == '@')
            fs::create_symlink(entry.substr(end + 1), path);
        else if (kind == '*')
            std::ofstream(path).seekp(std::stoll(entry.substr(end + 1)) - 1).put(0);
        else if (kind == '~')
            mkfifo(path.c_str(), 0600);
    }
}

/// What lies in the working directory.
QByteArray tree()
{
    QByteArrayList words;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(".")) {
        const QByteArray name = entry.path().c_str() + 2;
        if (entry.is_symlink())
            words << name + '@' + fs::read_symlink(entry).c_str();
        else if (entry.is_fifo())
            words << name + '~';
        else if (entry.is_regular_file())
            words << name + '=' + TestData::contentOf(QFile::decodeName(name));
        else if (fs::is_empty(entry))
            words << name + '/';
    }
    return sorted(words);
}

using Words = const QStringList&;

/// What a row calls by the first word of its "call"; all words are the arguments.
const QMap<QString, QVariant (*)(Words)> CALLS = {
    {"copy"_q,
     [](Words a) {
         return QVariant(config()->copyDirectory(a[1], a[2], a.contains("recursive"_q), a.contains("move"_q),
                                                 a.filter("."_q).replaceInStrings("."_q, QString())));
     }},
    {"delete"_q, [](Words a) { return QVariant(config()->deleteDirectory(a[1])); }},
    {"size"_q, [](Words a) { return QVariant(config()->getDirectoryContentSize(a[1])); }},
    {"create"_q, [](Words a) { return QVariant(config()->createDirectory(a[1])); }},
    {"read"_q,
     [](Words a) {
         bool ok = true;
         const QByteArray data = config()->readDataFromFile(a[1], ok);
         return QVariant((ok ? "read " : "failed ") + data);
     }},
    {"write"_q, [](Words a) { return QVariant(config()->writeDataToFile(a[1], a[2].toUtf8(), false)); }},
    {"append"_q, [](Words a) { return QVariant(config()->writeDataToFile(a[1], a[2].toUtf8(), true)); }},
    {"project"_q, [](Words a) { return QVariant(config()->getProjectFilename(a[1])); }},
    {"autosave"_q, [](Words a) { return QVariant(config()->getAutosaveFilepath(a[1], false)); }},
    {"saved"_q, [](Words a) { return QVariant(config()->getAutosaveFilepath(a[1], true)); }},
    {"is-saved"_q, [](Words a) { return QVariant(config()->existAutoSave(a[1])); }},
    {"adds"_q, [](Words a) { return QVariant(config()->getListOfObjectAddFiles(a[1])); }},
    {"forget-environment"_q, [](Words a) { return config()->removeEnvironmentVersions(a[1]), QVariant(); }},
    {"forget-model"_q, [](Words a) { return config()->removeModelVersions(a[1]), QVariant(); }},
    {"forget-material"_q, [](Words a) { return config()->removeMaterialVersions(a[1]), QVariant(); }},
    {"qt-changed"_q, [](Words) { return freshConfig()->handleQtVersionChanged(), QVariant(); }},
    {"version"_q, [](Words a) { return QVariant(config()->getCurrentVersion(a[1].toUInt())); }},
    {"compare"_q, [](Words a) { return QVariant(config()->compareVersion(a[1], a[2], a[3].toUShort())); }},
    {"suffix"_q, [](Words a) { return QVariant(config()->getFileSuffix(E_FileSuffixType(a[1].toInt()))); }},
    {"start"_q,
     [](Words a) {
         QCoreApplication::setOrganizationName(a[1]);
         QCoreApplication::setApplicationName(a[2]);
         // Away from the main thread no manager can be made, but its first step be taken.
         return a.contains("thread"_q) ? config()->checkAndClean() : void(freshConfig()), QVariant();
     }},
    {"image"_q,
     [](Words a) {
         const auto image = E_OffscreenImage(a[1].toInt());
         freshConfig()->setCubeMapRenderSize(image, a[2].toUInt());
         config()->setCubeMapImageQuality(image, a[3].toUInt());
         config()->setCubeMapFormat(image, a[4]);
         const QString format = config()->getCubeMapFormat(image) + config()->getCubeMapFormatSuffix(image);
         const unsigned int size = config()->getCubeMapRenderSize(image);
         return QVariant("%1 %2 "_q.arg(size).arg(config()->getCubeMapImageQuality(image)) + format);
     }},
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
    void cleanup() { fs::remove_all(fs::current_path()); }

    void foldersAreCopied_data() { TestData::addRows("files-copy.txt", COLUMNS); }
    void foldersAreCopied() { check(); }
    void filesAndFoldersAreKept_data() { TestData::addRows("files.txt", COLUMNS); }
    void filesAndFoldersAreKept() { check(); }
    void olderInstallationsMoveIn_data() { TestData::addRows("migration.txt", COLUMNS); }
    void olderInstallationsMoveIn() { check(); }
    void versionsAreCompared_data() { TestData::addRows("versions.txt", COLUMNS); }
    void versionsAreCompared() { check(); }

private:
    /// Does what the row says and compares what comes back, what then lies on the disk, and what was said: in
    /// the log, where the user writes down each question, too. Words behind the arguments: the user says
    /// "yes" and not no, the disk is "full" beyond 8 bytes a file, the call comes from another "thread".
    void check()
    {
        TestLog::ActiveLog active;
        // A new home: what the manager and its log have made is left behind in the old one.
        qputenv("HOME", m_home + '/' + QByteArray::number(++m_count));
        const QString data = QDir::homePath() + "/.local/share/data"_q;
        QVERIFY(QDir().mkpath(data) && QDir::setCurrent(data));

        makeTree(TestData::field("before"));
        const QString call = QString::fromUtf8(wordsIn(TestData::field("call")).join('\n'));
        const QStringList words = call.split(QLatin1Char('\n'));
        m_answer = words.contains("yes"_q) ? QMessageBox::Yes : QMessageBox::No;
        const auto act = [&words] {
            const FullDisk disk(words.contains("full"_q) ? 8 : RLIM_INFINITY);
            return CALLS[words[0]](words).toString();
        };
        const auto where = words.contains("thread"_q) ? std::launch::async : std::launch::deferred;
        QString result = std::async(where, act).get();

        const QString here = QDir::currentPath() + QLatin1Char('/');
        const char* after = TestData::field("after") == "same"_q ? "before" : "after";
        QCOMPARE(tree(), sorted(wordsIn(TestData::field(after))));
        QCOMPARE(result.remove(here), QString::fromUtf8(wordsIn(TestData::field("result")).join(' ')));
        QCOMPARE(active.entries().join("; "_q).remove(here), TestData::field("said"));
    }

    /// The user, who answers what is asked.
    void timerEvent(QTimerEvent*) override
    {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            const QStringList asked{box->windowTitle(), box->text(), box->defaultButton()->text()};
            Log* log = LogManager::getInstance()->getActiveLog();
            log->logMessage(E_LogLevel(box->icon()), asked.join(": "_q).toStdString(), "", 0);
            box->button(m_answer)->click();
        }
    }

    const QByteArray m_home = qgetenv("HOME");
    int m_count = 0;
    QMessageBox::StandardButton m_answer = QMessageBox::No;
};

GLOBALS_TEST_MAIN(FilesTest, QApplication)
#include "tst_files.moc"
