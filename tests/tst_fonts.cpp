#include "TestFontDatabase.h"
#include "TestLog.h"

#include "globals/ConfigManager.h"

#include <QGuiApplication>

using namespace TEKLUVA;

static const auto config = &ConfigManager::getInstance;

class FontsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void listsFonts()
    {
        const QStringList families = TestFontDatabase::families();
        QCOMPARE(config()->getFonts().size(), QSet<QString>(families.begin(), families.end()).size());
        for (const QString& family : families)
            QCOMPARE(config()->getFonts()[family], TestFontDatabase::styles(family));
    }

    void degradesToTheDefaultFont()
    {
        TestLog::ActiveLog active;
        const QFont font = config()->getFont("Nowhere"_q, "Bold"_q, 17);
        QCOMPARE(font.family(), QFont().family());
        QCOMPARE(font.pointSize(), 17);
        QCOMPARE(active.entries(), QStringList("4096 The Font: Nowhereis not available in the system."_q));
    }

    void degradesToTheFirstStyle()
    {
        const auto fonts = config()->getFonts();
        if (fonts.isEmpty())
            QSKIP("This machine has no fonts.");
        const QString& family = fonts.firstKey();
        TestLog::ActiveLog active;
        const QFont expected = config()->getFont(family, fonts.first().value(0), 17);
        QCOMPARE(active.entries(), QStringList());
        QCOMPARE(expected.family(), family);
        QCOMPARE(config()->getFont(family, "nö"_q, 17), expected);
        QCOMPARE(active.entries(), QStringList("4096 The Font with Family: "_q + family
                                               + " and Style:nö is not available in the system."_q));
    }

    void knowsFontsByType()
    {
        const auto points = [](int type) { return config()->getFont(E_FontType(type), 17).pointSize(); };
        QCOMPARE(points(E_FT_MEASUREMENT), 17);
        QCOMPARE(points(0), 8); // none
        QCOMPARE(points(2), 8); // unknown
    }

    void registersFamilies()
    {
        QVERIFY(config()->addFontFamily("A"_q, 7) && config()->addFontFamily("B"_q, 7));
        QVERIFY(!config()->addFontFamily("A"_q, 8) && !config()->removeFont(8));
        // No font 7 can be unloaded, but the families are gone all the same.
        QVERIFY(!config()->removeFont(7));
        QVERIFY(config()->addFontFamily("A"_q, 8) && config()->addFontFamily("B"_q, 8));
        ConfigManagerData data;
        QVERIFY(data.addFontFamily("A"_q, 1) && data.hasFont("A"_q) && !data.hasFont("a"_q));
    }
};

GLOBALS_TEST_MAIN(FontsTest, QGuiApplication)
#include "tst_fonts.moc"
