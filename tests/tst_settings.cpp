#include "FullDisk.h"
#include "TestHome.h"
#include "TestLog.h"

#include "globals/Settings.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QLockFile>

#include <memory>
#include <thread>

using namespace TEKLUVA;

namespace {

const QString FILE_NAME = QStringLiteral("settings.ini");

QByteArray content()
{
    QFile file(FILE_NAME);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString& name, const QByteArray& bytes)
{
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

QString text(const char* literal)
{
    return QString::fromUtf8(literal);
}

} // namespace

class SettingsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_settings = std::make_unique<Settings>(FILE_NAME, QSettings::IniFormat, nullptr); }
    void cleanup()
    {
        m_settings.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QFile::remove(FILE_NAME);
        QFile::remove(FILE_NAME + text(".lock"));
    }

    void aWriteIsInTheFileWhenItReturns_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<QByteArray>("line");
        QTest::newRow("text") << QVariant(text("de")) << QByteArray("key=de\n");
        QTest::newRow("umlaut") << QVariant(text("ä")) << QByteArray("key=\\xe4\n");
        QTest::newRow("number") << QVariant(400U) << QByteArray("key=400\n");
        QTest::newRow("truth") << QVariant(true) << QByteArray("key=true\n");
        QTest::newRow("list") << QVariant(QStringList{text("a"), text("b")}) << QByteArray("key=a, b\n");
    }
    void aWriteIsInTheFileWhenItReturns()
    {
        QFETCH(QVariant, value);
        QFETCH(QByteArray, line);
        m_settings->setSetting(text("Group"), text("key"), value);
        QCOMPARE(content(), "[Group]\n" + line);
        const Settings again(FILE_NAME, QSettings::IniFormat, nullptr);
        QCOMPARE(again.getSetting(text("Group"), text("key")).toStringList(), value.toStringList());
    }

    void withoutAStoreNothingHappens_data()
    {
        QTest::addColumn<bool>("parentGone");
        QTest::newRow("never opened") << false;
        QTest::newRow("parent destroyed") << true;
    }
    void withoutAStoreNothingHappens()
    {
        QFETCH(bool, parentGone);
        Settings settings;
        if (parentGone) {
            QObject parent;
            settings.openSettingsFile(FILE_NAME, QSettings::IniFormat, &parent);
        }
        settings.setSetting(text("g"), text("k"), 1);
        settings.removeSetting(text("g"), text("k"));
        settings.removeSettingGroup(text("g"));
        settings.clearSettings();
        QVERIFY(!settings.getSetting(text("g"), text("k")).isValid());
        QVERIFY(!settings.hasSetting(text("g"), text("k")) && !settings.hasSettingGroup(text("g")));
        QVERIFY(settings.getAllGroups().isEmpty() && settings.getAllGroupMembers(text("g")).isEmpty());
        QVERIFY(!QFile::exists(FILE_NAME));
    }

    void groupsAndKeys()
    {
        write(FILE_NAME, "[X]\na=1\nb=2\nsub\\c=3\n\n[OnlySub]\nsub\\d=4\n\n[Y]\ne=5\n");
        init();
        QVERIFY(m_settings->hasSettingGroup(text("X")) && !m_settings->hasSettingGroup(text("OnlySub")));
        QCOMPARE(m_settings->getAllGroups(), (QStringList{text("OnlySub"), text("X"), text("Y")}));
        QCOMPARE(m_settings->getAllGroupMembers(text("X")), (QStringList{text("a"), text("b")}));

        m_settings->removeSetting(text("X"), QString());
        m_settings->removeSetting(text("X"), text("b"));
        QCOMPARE(m_settings->getAllGroupMembers(text("X")), QStringList{text("a")});
        m_settings->removeSettingGroup(text("X"));
        QCOMPARE(m_settings->getAllGroups(), (QStringList{text("OnlySub"), text("Y")}));
        QCOMPARE(content(), QByteArray("[OnlySub]\nsub\\d=4\n\n[Y]\ne=5\n"));
        m_settings->clearSettings();
        QCOMPARE(content(), QByteArray());
    }

    void changesOfAnotherProcessAreSeenAndKept()
    {
        m_settings->setSetting(text("G"), text("mine"), 1);
        write(FILE_NAME, "[G]\nmine=1\ntheirs=22\n");
        QVERIFY(!m_settings->hasSetting(text("G"), text("theirs")));
        QCOMPARE(m_settings->getSetting(text("G"), text("theirs")).toInt(), 22);
        write(FILE_NAME, "[G]\nmine=1\ntheirs=333\n");
        m_settings->setSetting(text("G"), text("mine"), 2);
        QCOMPARE(content(), QByteArray("[G]\nmine=2\ntheirs=333\n"));
    }

    void aCopySharesTheStore()
    {
        auto copy = std::make_unique<Settings>(*m_settings);
        copy->setSetting(text("G"), text("k"), 1);
        QVERIFY(m_settings->hasSetting(text("G"), text("k")));
        copy.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        m_settings->setSetting(text("G"), text("k"), 2);
        QCOMPARE(content(), QByteArray("[G]\nk=1\n"));
    }

    void aFullDiskKeepsTheFileWholeAndTheChangePending()
    {
        TestLog::ActiveLog active;
        m_settings->setSetting(text("G"), text("k"), 1);
        const QByteArray before = content();
        {
            const FullDisk full(4096);
            m_settings->setSetting(text("G"), text("k"), 2);
            m_settings->setSetting(text("G"), text("l"), QString(5000, QLatin1Char('x')));
            QCOMPARE(content(), before);
            QCOMPARE(m_settings->getSetting(text("G"), text("k")).toInt(), 2);
            QCoreApplication::processEvents(); // Qt's own unasked write
            QCOMPARE(content(), before);
        }
        QCOMPARE(active.entries().count(), 2);
        QVERIFY(active.entries()[0].startsWith(text("8192 Could not write the settings file ")));
        QCOMPARE(m_settings->getSetting(text("G"), text("k")).toInt(), 2);
        QCOMPARE(content(), "[G]\nk=2\nl=" + QByteArray(5000, 'x') + "\n");
    }

    void aStoreThatEndsOnAFullDiskKeepsTheFileWhole_data()
    {
        QTest::addColumn<bool>("byParent");
        QTest::newRow("by itself") << false;
        QTest::newRow("by its parent") << true;
    }
    void aStoreThatEndsOnAFullDiskKeepsTheFileWhole()
    {
        QFETCH(bool, byParent);
        write(FILE_NAME, "[G]\nk=1\n");
        const FullDisk full(4096);
        auto parent = std::make_unique<QObject>();
        m_settings->openSettingsFile(FILE_NAME, QSettings::IniFormat, parent.get());
        m_settings->setSetting(text("G"), text("k"), QString(5000, QLatin1Char('x')));
        if (byParent)
            parent.reset();
        m_settings.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(content(), QByteArray("[G]\nk=1\n"));
    }

    void aFileThatCannotBeWrittenIsReported()
    {
        TestLog::ActiveLog active;
        QVERIFY(QDir().mkdir(text("blocked.ini")));
        Settings settings(text("blocked.ini"), QSettings::IniFormat, nullptr);
        settings.setSetting(text("G"), text("k"), 1);
        settings.setSetting(text("G"), text("k"), 2);
        QCOMPARE(active.entries().count(), 2);
        QVERIFY(QDir().rmdir(text("blocked.ini")));
        settings.setSetting(text("G"), text("k"), 3);
        QCOMPARE(active.entries().count(), 2);
        QVERIFY(QFile::exists(text("blocked.ini")));
    }

    void anAbandonedLockFileHoldsNobodyUp_data()
    {
        QTest::addColumn<QByteArray>("lock");
        const QByteArray host = QSysInfo::machineHostName().toLocal8Bit();
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("cut") << QByteArray("123");
        QTest::newRow("dead process") << QByteArray("999999999\nplanner\n") + host + '\n';
    }
    void anAbandonedLockFileHoldsNobodyUp()
    {
        QFETCH(QByteArray, lock);
        write(FILE_NAME + text(".lock"), lock);
        QElapsedTimer timer;
        timer.start();
        m_settings->setSetting(text("G"), text("k"), 1);
        QVERIFY2(timer.elapsed() < 1000, QByteArray::number(timer.elapsed()));
        QCOMPARE(content(), QByteArray("[G]\nk=1\n"));
        QVERIFY(!QFile::exists(FILE_NAME + text(".lock")));
    }

    void aLockThatIsHeldIsRespected()
    {
        QLockFile lock(FILE_NAME + text(".lock"));
        QVERIFY(lock.lock());
        std::thread writer([this] { m_settings->setSetting(text("G"), text("k"), 1); });
        QTest::qWait(300);
        QVERIFY(content().isEmpty());
        lock.unlock();
        writer.join();
        QCOMPARE(content(), QByteArray("[G]\nk=1\n"));
    }

    void threadsDoNotMixTheirGroups()
    {
        std::vector<std::thread> threads;
        for (int t = 0; t < 4; ++t) {
            threads.emplace_back([this, t] {
                for (int i = 0; i < 10; ++i) {
                    m_settings->setSetting(QString::number(t), QString::number(i), t);
                    m_settings->hasSettingGroup(text("other"));
                }
            });
        }
        for (std::thread& thread : threads)
            thread.join();
        for (int t = 0; t < 4; ++t)
            QCOMPARE(m_settings->getAllGroupMembers(QString::number(t)).count(), 10);
        QCOMPARE(m_settings->getAllGroups().count(), 4);
    }

private:
    std::unique_ptr<Settings> m_settings;
};

GLOBALS_TEST_MAIN(SettingsTest)
#include "tst_settings.moc"
