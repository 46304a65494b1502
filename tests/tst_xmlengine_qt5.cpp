#include "TestLog.h"

#include "globals/MessageHandler.h"

#include <QXmlQuery>
#include <QXmlSchema>
#include <QXmlSchemaValidator>

using namespace TEKLUVA;

/// Qt's own engine, which reports to a MessageHandler by itself.
class XmlEngineTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aRealQueryReachesTheLog()
    {
        TestLog::ActiveLog active;
        MessageHandler handler(nullptr);
        QXmlQuery query;
        query.setMessageHandler(&handler);
        query.setQuery("1 +"_q);
        QVERIFY(!query.isValid());
        QCOMPARE(active.entries().count(), 1);
        QVERIFY(active.entries()[0].startsWith("8192 syntax error"_q));
        QVERIFY(!active.entries()[0].contains("<"_q));
    }

    void aRealValidationReachesTheLog()
    {
        TestLog::ActiveLog active;
        MessageHandler handler(nullptr);
        QXmlSchema schema;
        schema.setMessageHandler(&handler);
        QVERIFY(schema.load("<xs:schema xmlns:xs='http://www.w3.org/2001/XMLSchema'>"
                            "<xs:element name='room' type='xs:int'/></xs:schema>"));
        QXmlSchemaValidator validator(schema);
        validator.setMessageHandler(&handler);
        QVERIFY(validator.validate(QByteArray("<room>3</room>")));
        QCOMPARE(active.entries(), QStringList());
        QVERIFY(!validator.validate(QByteArray("<room>wide</room>")));
        QVERIFY(active.entries()[0].startsWith("8192 Content of element room does not match"_q));
    }
};

GLOBALS_TEST_MAIN(XmlEngineTest)
#include "tst_xmlengine_qt5.moc"
