#include "OtherPrograms.h"
#include "TestLog.h"

#include "globals/ConfigManager.h"
#include "globals/DataFileCreator.h"
#include "globals/MeasurementManager.h"
#include "globals/StateHandler.h"

#include <QDateTime>
#include <QRegularExpression>
#include <QTextStream>

using namespace TEKLUVA;

namespace {

/// The part of another process, in another locale: writes whatever the library writes to disk, and prints the
/// texts that applications store.
int writeEverything()
{
    ConfigManager* config = ConfigManager::getInstance();
    TestLog::ActiveLog active;
    config->setRuntimeState(E_RS_STARTED);
    config->setCurrentServerTime(QDateTime::currentDateTime().addDays(-1)); // gives the log a new name
    config->setPrefferedLang("de"_q);
    const QDateTime time = QDateTime(QDate(2026, 11, 22), QTime(13, 5, 9)).toUTC();
    Settings(config->getPath(E_PT_SETTINGS) + "settings.ini"_q, QSettings::IniFormat, nullptr)
        .setSettings("Values"_q, {{"double"_q, -1234567.25},
                                  {"float"_q, 0.1F},
                                  {"large"_q, Q_INT64_C(-9007199254740993)},
                                  {"text"_q, "Türen, ıİ ۱"_q},
                                  {"list"_q, QVariantList{2.5, time, time.date()}},
                                  {"time"_q, time},
                                  {"ITITLE"_q, "keys keep their case"_q}});
    active.log().logErrorMessage("Türen", "", 0);
    DataFileCreator().createArchivFromData({{"a"_q, "content"}}, config->getPath(E_PT_LOGS) + "a.zip"_q, {});

    StateHandler* states = StateHandler::getInstance();
    states->newProcess("P"_q, true, true);
    states->addProgressStep("s"_q, ProgressStep::E_PRT_TRANSFER, "s"_q, "s"_q, false,
                            ProgressStep::E_PS_RUNNING);
    states->getStepData("s"_q)->handleProgressState(1500, 1234567);
    QTextStream out(stdout);
    out << states->getStepData("s"_q)->getProgressStepDisplayText() << '\n';
    for (const E_MeasurementUnit unit : MeasurementManager::getMeasurementUnits())
        out << MeasurementManager::getInstance()->createMeasurementString(E_MD_LINEAR, unit, 1234567.891,
                                                                          true)
            << '\n';
    out << config->getCurrentVersion(4) << config->compareVersion("1,5"_q, "1.10"_q, 2) << '\n';
    return 0;
}

/// What \p tree holds, less what differs from run to run: times, in digits of the ASCII set, and processes.
QByteArray comparable(const TestFiles::Tree& tree)
{
    QByteArray text;
    for (auto file = tree.begin(); file != tree.end(); ++file)
        text += file.key() + *file + '\n';
    QString masked = QString::fromLatin1(text.constData(), text.size());
    for (const char* varying :
         {"(?<=3D_)[0-9]{14}", "[0-9]{2}\\.[0-9]{2}\\.20[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2}",
          "last_life_time=[^\n]*", "run_[a-z]+=[^\n]*"})
        masked.replace(QRegularExpression(QString::fromLatin1(varying)), "#"_q);
    return masked.toLatin1();
}

} // namespace

/// In whichever locale a process runs: what it writes to disk is read by those in any other.
class LocaleTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void changesNothingOnDisk_data() { TestData::addRows("locales.txt"); }
    void changesNothingOnDisk()
    {
        SKIP_ON_WINDOWS("locales of the C library");
        const QByteArray expected = writtenIn("C.UTF-8"_q);
        QVERIFY2(expected.contains("tekluva-3D_#.log") && expected.contains("ERROR    #  T\xC3\xBCren")
                     && expected.contains("a.zip") && expected.contains("\nlarge="),
                 expected.constData());
        QCOMPARE(writtenIn(QString::fromLatin1(QTest::currentDataTag())), expected);
    }

private:
    static QByteArray writtenIn(const QString& locale)
    {
        const QTemporaryDir home;
        qputenv("HOME", QFile::encodeName(home.path()));
        const auto result =
            OtherPrograms::run(QCoreApplication::applicationFilePath(), {"write"_q}, {}, locale);
        return result.output + QByteArray::number(result.exitCode) + '\n'
               + comparable(TestFiles::treeBelow(home.path()));
    }
};

int main(int argc, char** argv)
{
    if (argc != 2 || argv[1] != QByteArray("write"))
        return TestHome::run<LocaleTest>(argc, argv);
    const QCoreApplication application(argc, argv);
    TestHome::nameApplication();
    return writeEverything();
}
#include "tst_locale.moc"
