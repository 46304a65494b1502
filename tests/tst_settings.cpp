#include "TestSettings.h"

#include <QTimeZone>

using namespace TEKLUVA;
using namespace TestSettings;

class SettingsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_settings = open(); }
    void cleanup()
    {
        m_settings.reset();
        TestHome::sendDeletions();
        TestFiles::removeAll();
    }

    void aWriteIsInTheFileWhenItReturns_data() { TestData::addRows("setting-lines.txt"); }
    void aWriteIsInTheFileWhenItReturns()
    {
        QVariant value = TestData::field("value");
        QVERIFY(TestTypes::convert(value, TestTypes::numberOf(TestData::field("type").toLatin1())));
        m_settings->setSetting("Group"_q, "key"_q, value);
        QCOMPARE(content(), "[Group]\n" + TestData::field("line").toLatin1() + "\n");
        QCOMPARE(open()->getSetting("Group"_q, "key"_q).toString(), value.toString());
    }

    void withoutAStoreNothingHappens()
    {
        Settings neverOpened;
        Settings outlivesItsParent;
        outlivesItsParent.openSettingsFile(FILE_NAME, QSettings::IniFormat,
                                           std::make_unique<QObject>().get());
        for (Settings& none : {std::ref(neverOpened), std::ref(outlivesItsParent)}) {
            none.setSetting("g"_q, "k"_q, 1);
            none.removeSetting("g"_q, "k"_q);
            none.removeSettingGroup("g"_q);
            none.clearSettings();
            QVERIFY(!none.getSetting("g"_q, "k"_q).isValid());
            QVERIFY(!none.hasSetting("g"_q, "k"_q) && !none.hasSettingGroup("g"_q));
            QVERIFY(none.getAllGroups().isEmpty() && none.getAllGroupMembers("g"_q).isEmpty());
        }
        QVERIFY(!QFile::exists(FILE_NAME));
    }

    void groupsAndKeys()
    {
        replace("[X]\na=1\nb=2\nsub\\c=3\n\n[OnlySub]\nsub\\d=4\n\n[Y]\ne=@Size(1 2)5)\n");
        init();
        QVERIFY(m_settings->hasSettingGroup("X"_q) && !m_settings->hasSettingGroup("OnlySub"_q));
        QCOMPARE(m_settings->getAllGroups(), QStringList({"OnlySub"_q, "X"_q, "Y"_q}));
        QCOMPARE(m_settings->getSetting("Y"_q, "e"_q).toString(), "@Size(1 2)5)"_q); // as with QSettings
        m_settings->removeSetting("X"_q, QString());
        m_settings->removeSetting("X"_q, "/"_q);
        QCOMPARE(m_settings->getAllGroupMembers("X"_q), QStringList({"a"_q, "b"_q}));
        m_settings->removeSetting("X"_q, "b"_q);
        QCOMPARE(m_settings->getAllGroupMembers("X"_q), QStringList("a"_q));
        m_settings->removeSettingGroup("X"_q);
        QCOMPARE(content(), QByteArray("[OnlySub]\nsub\\d=4\n\n[Y]\ne=@Size(1 2)5)\n"));
        m_settings->clearSettings();
        QCOMPARE(content(), QByteArray());
        m_settings->setSetting("/"_q, "/"_q, 1); // to QSettings a key without a name
        QVERIFY(m_settings->hasSettingGroup(""_q));
    }

    void theFoldersOfTheFileAreMade()
    {
        Settings("a/b/settings.ini"_q, QSettings::IniFormat, nullptr).setSetting("G"_q, "k"_q, 1);
        QCOMPARE(content("a/b/settings.ini"_q), QByteArray("[G]\nk=1\n"));
    }

    void aByteOrderMarkMeansUtf8()
    {
        replace("\xef\xbb\xbf[G]\nk=\xc3\xa4\n");
        QCOMPARE(m_settings->getSetting("G"_q, "k"_q).toString(), "ä"_q);
        m_settings->setSetting("G"_q, "l"_q, 1);
        QCOMPARE(content(), QByteArray("[G]\nk=\\xe4\nl=1\n"));
    }

    void changesOfAnotherProcessAreSeenAndKept()
    {
        m_settings->setSetting("G"_q, "mine"_q, 1);
        replace("[G]\nmine=1\ntheirs=22\n");
        QVERIFY(!m_settings->hasSetting("G"_q, "theirs"_q));
        QCOMPARE(m_settings->getSetting("G"_q, "theirs"_q).toInt(), 22);
        replace("[G]\nmine=1\ntheirs=333\n");
        m_settings->setSetting("G"_q, "mine"_q, 2);
        QCOMPARE(content(), QByteArray("[G]\nmine=2\ntheirs=333\n"));
    }

    void aCopySharesTheStore()
    {
        auto copy = std::make_unique<Settings>(*m_settings);
        copy->setSetting("G"_q, "k"_q, 1);
        QVERIFY(m_settings->hasSetting("G"_q, "k"_q));
        copy.reset();
        TestHome::sendDeletions();
        m_settings->setSetting("G"_q, "k"_q, 2);
        QCOMPARE(content(), QByteArray("[G]\nk=1\n"));
    }

    void aFullDiskKeepsTheFileWholeAndTheChangePending()
    {
        SKIP_ON_WINDOWS("a full disk");
        TestLog::ActiveLog active;
        m_settings->setSetting("G"_q, "k"_q, 1);
        {
            const TestPlatform::FullDisk full(4096);
            m_settings->setSetting("G"_q, "k"_q, QString(5000, QLatin1Char('x')));
            QCOMPARE(m_settings->getSetting("G"_q, "k"_q).toString().size(), 5000);
            m_settings->setSetting("New/sub"_q, "n"_q, 1);
            QVERIFY(m_settings->hasSetting("New/sub"_q, "n"_q) && !m_settings->hasSettingGroup("New"_q));
            QCOMPARE(m_settings->getAllGroups(), QStringList({"G"_q, "New"_q}));
            m_settings->removeSettingGroup("New"_q);
            QCOMPARE(m_settings->getAllGroups(), QStringList("G"_q));
            QCoreApplication::processEvents(); // Qt's own unasked write
            QCOMPARE(content(), QByteArray("[G]\nk=1\n"));
        }
        QCOMPARE(active.entries().count(), 3);
        QVERIFY(active.entries()[0].startsWith("8192 Could not write the settings file "_q));
        m_settings->getSetting("G"_q, "k"_q);
        QCOMPARE(content(), "[G]\nk=" + QByteArray(5000, 'x') + "\n");
    }

    void aPendingChangeIsKeptOnceAndNotWrittenLater()
    {
        SKIP_ON_WINDOWS("a full disk");
        const auto failToWrite = [this](int times) {
            const TestPlatform::FullDisk full(400);
            for (int i = 0; i < times; ++i)
                m_settings->setSetting("G"_q, "k"_q, QString(500, QLatin1Char('x')));
            return content().isEmpty() && m_settings->hasPendingChanges();
        };
        QVERIFY(failToWrite(100));
        {
            QLockFile lock(LOCK_NAME);
            QVERIFY(lock.lock());
            QElapsedTimer timer;
            timer.start();
            m_settings->getSetting("G"_q, "k"_q); // does not wait for it, as a change does
            QVERIFY(m_settings->hasPendingChanges() && timer.elapsed() < 4000);
        }
        {
            const TestPlatform::FullDisk roomForOne(600);
            m_settings->getSetting("G"_q, "k"_q);
            QVERIFY(!m_settings->hasPendingChanges());
        }
        QVERIFY(QFile::remove(FILE_NAME) && failToWrite(1));
        m_settings->openSettingsFile(FILE_NAME, QSettings::IniFormat, nullptr);
        m_settings->setSetting("G"_q, "k"_q, 2);
        TestHome::sendDeletions();
        QCOMPARE(content(), QByteArray("[G]\nk=2\n"));
    }

    void aDamagedValueHarmsNobody_data() { TestData::addRows("settings-damaged.txt"); }
    void aDamagedValueHarmsNobody()
    {
        const auto text = [](const char* column) {
            return TestData::field(column).replace("~"_q, "\n"_q).toLatin1() + '\n';
        };
        replace(text("lines"));
        init();
        QVERIFY(!m_settings->getSetting("G"_q, "d"_q).isValid());
        QVERIFY(!m_settings->getSettings("G"_q).value("d"_q).isValid());
        m_settings->setSetting("N"_q, "n"_q, 1);
        QCOMPARE(m_settings->getSettings("N"_q).value("n"_q).toInt(), 1);
        QCOMPARE(content().replace("\n\n", "\n"), text("written"));
        m_settings->setSetting("N/sub"_q, "m"_q, 2);
        QCOMPARE(m_settings->getSettingsBelow("N"_q), (QVariantMap{{"N/n"_q, 1}, {"N/sub/m"_q, 2}}));
    }

    void aFileThatCannotBeReadForAMomentLosesNothing()
    {
        SKIP_ON_WINDOWS("a limit of open files");
        m_settings->setSetting("G"_q, "old"_q, 1);
        replace("[G]\nold=1\nnew=2\n");
        {
            const TestPlatform::NoDescriptors noFiles;
            QCOMPARE(m_settings->getSetting("G"_q, "old"_q).toInt(), 1);
            m_settings->setSetting("G"_q, "own"_q, 3);
            QVERIFY(m_settings->hasPendingChanges() && !m_settings->lastError().isEmpty());
        }
        QCOMPARE(m_settings->getSetting("G"_q, "new"_q).toInt(), 2);
        QCOMPARE(m_settings->lastError(), QString());
        QCOMPARE(content(), QByteArray("[G]\nnew=2\nold=1\nown=3\n"));
    }

    void aTimeInAnUnknownZoneIsNotStored()
    {
        const QDateTime time(QDate(2026, 1, 2), QTime(3, 4), QTimeZone("No/Where"));
        for (const QVariant& value :
             {QVariant(time), QVariant(QVariantList{time}), QVariant(QVariantMap{{"t"_q, time}}),
              QVariant(QVariantHash{{"t"_q, time}})}) {
            TestLog::ActiveLog active;
            m_settings->setSettings("G"_q, {{"time"_q, value}, {"other"_q, 1}});
            m_settings->setSetting("G"_q, "alone"_q, value);
            QCOMPARE(active.log().getEntryCount(), 2U);
            QCOMPARE(content(), QByteArray("[G]\nother=1\n"));
        }
    }

private:
    std::unique_ptr<Settings> m_settings;
};

GLOBALS_TEST_MAIN(SettingsTest)
#include "tst_settings.moc"
