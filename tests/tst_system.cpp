#include "TestData.h"
#include "TestLog.h"

#include "globals/ConfigManager.h"
#include "globals/MessageHandler.h"
#include "globals/SystemInfo.h"
#include "globals/Translations.h"

#include <QBuffer>
#include <QSignalSpy>
#include <QUrl>

using namespace TEKLUVA;

namespace {

/// Shows another language once, while one is removed or shown.
class ShowsEnglish : public QObject
{
    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        const bool isFirst = event->type() == QEvent::LanguageChange && !std::exchange(m_hasShown, true);
        return isFirst && !showLanguage("en"_q);
    }
    bool m_hasShown = false;
};

} // namespace

class SystemTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void messagesBecomeEntries_data() { TestData::addRows("xml-messages.txt"); }
    void messagesBecomeEntries()
    {
        TestLog::ActiveLog active;
        MessageHandler handler(nullptr);
        const auto type = QtMsgType(TestData::field<int>("type"));
        handler.message(type, TestData::field("description"), QUrl(), SourceLocation());
        QCOMPARE(active.entries().join("; "_q), TestData::field("entry"));
        LogManager::getInstance()->setActiveLog(nullptr);
        handler.message(type, TestData::field("description"), QUrl(), SourceLocation(QUrl("a:b"_q), 3));
        LogManager::getInstance()->restorePreviousLog();
        QVERIFY(active.entries().count() <= 1);
    }

    void memoryFiguresAreNone()
    {
        SystemInfo info;
        QSignalSpy limit(&info, &SystemInfo::memoryLimitReached);
        QVERIFY(QMetaObject::invokeMethod(&info, "timerShot")); // as each second
        QCOMPARE(info.getMaximumRam(), 0U);
        QCOMPARE(info.getFreeRam(), 0U);
        QCOMPARE(info.getUsedRam(), 0U);
        QCOMPARE(limit.count(), 0);
    }

    void theLanguageIsSwitched()
    {
        const QString source = ConfigManager::getInstance()->getStdProjectName();
        QCOMPARE(source, "neues Projekt"_q);
        for (int i = 0; i < 2; ++i) {
            const TestHome::Turn turn(i);
            QVERIFY(showLanguage("en"_q) && !showLanguage("fr"_q) && !showLanguage("de_AT"_q));
            ShowsEnglish meanwhile;
            QCoreApplication::instance()->installEventFilter(&meanwhile);
            QVERIFY(showLanguage("de"_q));
            QCOMPARE(ConfigManager::getInstance()->getStdProjectName(), "new project"_q);
            QVERIFY(showLanguage("de"_q));
            QCOMPARE(ConfigManager::getInstance()->getStdProjectName(), source);
        }
    }
};

GLOBALS_TEST_MAIN(SystemTest)
#include "tst_system.moc"
