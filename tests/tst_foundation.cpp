#include "TestData.h"

#include "globals/Exception.h"
#include "globals/FilterEvent.h"
#include "globals/ObjectEventFilter.h"
#include "globals/SmartObject.h"
#include "globals/globals.h"

#include <algorithm>
#include <climits>
#include <memory>
#include <sstream>

using namespace TEKLUVA;

// Enumerators are an application's to define.
enum TEKLUVA::E_FilterType : int { E_FT_COLOUR = 4 };

namespace {

const QSet<QEvent::Type> THREE_TYPES = {QEvent::Show, QEvent::Hide, QEvent::Close};

/// How many of THREE_TYPES, sent to an object that \p filter watches, arrive there.
int arriving(ObjectEventFilter& filter)
{
    QObject receiver;
    receiver.installEventFilter(&filter);
    return int(std::count_if(THREE_TYPES.begin(), THREE_TYPES.end(), [&receiver](QEvent::Type type) {
        QEvent event(type);
        return !QCoreApplication::sendEvent(&receiver, &event); // an object itself wants none of these types
    }));
}

/// All that an exception says.
QString told(const Exception& e)
{
    std::ostringstream told;
    told << e.getExceptionType() << ' ' << e.what() << '|' << e.getDescription()
         << (e.exitApp() ? "|exit|" : "|stay|") << e.getFilename() << e.getFunction() << e.getLine();
    return QString::fromStdString(told.str());
}

} // namespace

class FoundationTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void exceptionKeepsWhatItIsTold_data() { TestData::addRows("exceptions.txt"); }
    void exceptionKeepsWhatItIsTold()
    {
        const auto given = E_ExceptionType(TestData::field<int>("type"));
        const QString told = TestData::field("told");
        std::unique_ptr<const QException> clone(Exception(given, "Größe: 3", true).clone());
        try {
            clone->raise();
        } catch (const Exception& raised) {
            clone.reset();
            QCOMPARE(::told(raised), told + "|Größe: 3|exit|0"_q);
        }
        QVERIFY(!clone);
        QVERIFY_EXCEPTION_THROWN(Exception(given, std::string(), false).raise(), std::exception);
        QCOMPARE(::told(Exception(given, std::string(), false)), told + "||stay|0"_q);
    }

    void aDescriptionIsAlwaysText_data() { TestData::addRows("descriptions.txt"); }
    void aDescriptionIsAlwaysText()
    {
        const auto given = QByteArray::fromPercentEncoding(TestData::field("given").toUtf8()).toStdString();
        QCOMPARE(QByteArray(Exception(E_ET_FATAL, given, true).getDescription()).toPercentEncoding(),
                 TestData::field("text").toLatin1());
    }

    void comparesTexts()
    {
        QVERIFY(cmp("Log", "lOG", false) && !cmp("Log", "lOG", true));
        QVERIFY(cmp("log", "log", true) && !cmp("log", "logs", false));
        QVERIFY(!cmp("\u00c4", "\u00e4", false));
        QVERIFY(cmp(std::string("a\0b", 3), std::string("A\0c", 3), false));
    }

    void wrapsOnceIntoTheRange_data() { TestData::addRows("ranges.txt"); }
    void wrapsOnceIntoTheRange()
    {
        const int value = TestData::field<int>("value");
        const int min = TestData::field<int>("min");
        const int max = TestData::field<int>("max");
        const int wrapped = TestData::field<int>("wrapped");
        QCOMPARE(wrapToRange(value, min, max), wrapped);
        QCOMPARE(wrapToRange(value + 0.5, min + 0.5, max + 0.5), wrapped + 0.5);
        QCOMPARE(wrapToRange(float(value), float(min), float(max)), float(wrapped));
    }

    void wrapsIntegersAtTheEndsOfTheirType()
    {
        QCOMPARE(wrapToRange(INT_MAX, INT_MAX - 10, INT_MAX), INT_MAX - 10);
        QCOMPARE(wrapToRange(INT_MIN, INT_MAX - 5, INT_MAX), INT_MIN + 5);
    }

    void countsObjectsAndReferences()
    {
        SmartObject first;
        first.__incRef();
        const int before = first.getObjCount();
        {
            SmartObject copy(first);
            copy.__decRef();
            QCOMPARE(first.getObjCount(), before + 1);
            first = copy;
            QCOMPARE(copy.getRefCount(), -1);
        }
        QCOMPARE(first.getObjCount(), before);
        QCOMPARE(first.getRefCount(), 1);
    }

    void filterEventIsValidWithValueAndIndex()
    {
        FilterEvent event;
        event.setType(E_FT_COLOUR);
        event.setOption(E_FilterOption(7));
        event.setValue(5);
        FilterEvent copy = event;
        copy.setValue(6);
        QCOMPARE(event.getType(), E_FT_COLOUR);
        QCOMPARE(int(copy.getOption()), 7);
        QCOMPARE(event.getValue().toInt(), 5);
        QVERIFY(!event.isValid());
        event.setFilterIndex(0);
        QVERIFY(event.isValid());
        // Qt 6 itself calls a null text in a QVariant no null.
        for (const QVariant& null :
             {QVariant(), QVariant(QString()), QVariant(QDate()), QVariant(QPoint())}) {
            const TestHome::Turn turn(null);
            event.setValue(null);
            QVERIFY(!event.isValid());
        }
    }

    void eventFilterTakesOneTypeOfASetPerCall()
    {
        ObjectEventFilter filter(nullptr, THREE_TYPES);
        for (int left = 2; left >= 0; --left) {
            const TestHome::Turn turn(left);
            QCOMPARE(arriving(filter), left);
            QCOMPARE(filter.addEvents(THREE_TYPES), left > 0);
        }
        for (int left = 0; left <= 3; ++left) {
            const TestHome::Turn turn(left);
            QCOMPARE(arriving(filter), left);
            QCOMPARE(filter.removeEvent(THREE_TYPES), left < 3);
        }
    }

    void eventFilterSwallowsWhatItHolds()
    {
        ObjectEventFilter filter(this, QEvent::Show);
        QVERIFY(!filter.addEvent(QEvent::Show) && filter.addEvent(QEvent::Close));
        QCOMPARE(arriving(filter), 1);
        QVERIFY(filter.removeEvent(QEvent::Show) && !filter.removeEvent(QEvent::Show));
        QCOMPARE(arriving(filter), 2);
        QEvent event(QEvent::Show);
        QVERIFY(!filter.eventFilter(this, &event) && filter.eventFilter(nullptr, &event)
                && filter.eventFilter(this, nullptr));
    }
};

GLOBALS_TEST_MAIN(FoundationTest)
#include "tst_foundation.moc"
