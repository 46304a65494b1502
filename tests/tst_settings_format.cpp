#include "TestData.h"
#include "TestHome.h"

#include "globals/Settings.h"

#include <QColor>
#include <QFont>
#include <QJsonObject>
#include <QKeySequence>
#include <QPoint>
#include <QRandomGenerator>
#include <QRect>
#include <QTimeZone>
#include <QUrl>
#include <QUuid>
#include <QVector3D>

#include <algorithm>
#include <cmath>
#include <functional>
#include <iterator>

using namespace TEKLUVA;

namespace {

/// More of them for a long run.
int times(int count)
{
    return count * qMax(1, qEnvironmentVariableIntValue("GLOBALS_TEST_ROUNDS"));
}

/// Another one each time: QSettings remembers what it has read under a name.
QString newFile(const QByteArray& content = {})
{
    static int number = 0;
    QString name = "%1.ini"_q.arg(++number);
    if (!content.isEmpty() && !TestFiles::write(name, content))
        qFatal("cannot write %s", qPrintable(name));
    return name;
}

/// The file after QSettings has set one more value in it.
QByteArray afterQtWrites(const QString& file, const QVariantMap& values)
{
    QSettings settings(file, QSettings::IniFormat);
    for (auto value = values.begin(); value != values.end(); ++value)
        settings.setValue(value.key(), *value);
    settings.sync();
    return TestFiles::contentOf(file);
}

QByteArray afterWeWrite(const QString& file, const QVariantMap& values)
{
    QList<SettingsChange> changes;
    for (auto value = values.begin(); value != values.end(); ++value)
        changes << SettingsChange{QString(), value.key(), *value};
    Settings(file, QSettings::IniFormat, nullptr).changeSettings(changes);
    return TestFiles::contentOf(file);
}

class Random
{
public:
    explicit Random(quint32 seed)
        : m_generator(seed)
    {
    }

    int below(int end) { return m_generator.bounded(end); }

    template <typename List>
    auto oneOf(const List& list) -> decltype(list[0])
    {
        return list[below(int(list.size()))];
    }

    /// Of up to \p most pieces that have a meaning in the file, or look as if.
    QString text(int most)
    {
        static const QStringList PIECES =
            QStringLiteral("a,B,7,f,@,@@,(,),[,],;,=,\",',\\,/, ,  ,\t,\n,\r,%,%41,%U0041,#,:,\x01,\x7f,"
                           "ä,€,\xf0\x9f\x8f\xa0,General,x41,\\x,@Invalid(),@Size(1 2),1e5,true")
                .split(QLatin1Char(','));
        QString text;
        for (int i = below(most + 1); i > 0; --i)
            text += below(12) == 0 ? QString(QChar(ushort(below(300)))) : oneOf(PIECES);
        return below(20) == 0 ? text + ","_q : text;
    }

    QString key()
    {
        const QStringList parts = text(3).split("/"_q, Qt::SkipEmptyParts);
        // The group of that name: QSettings would write it with a capital letter.
        return (below(3) == 0 ? "G/"_q : QString()) + "k"_q + parts.join("/"_q);
    }

    QByteArray bytes() { return text(8).toLatin1(); }
    QDate date() { return QDate(2000, 1, 1).addDays(below(20000)); }
    QTime time() { return QTime::fromMSecsSinceStartOfDay(below(86'400'000)); }

    QDateTime dateTime()
    {
        switch (below(4)) {
        case 0:
            return {date(), time(), Qt::UTC};
        case 1:
            return {date(), time(), Qt::OffsetFromUTC, below(20) * 900};
        case 2:
            return {date(), time(), QTimeZone("America/New_York")};
        default:
            return {date(), time()};
        }
    }

    QVariant variant(int depth = 0)
    {
        if (depth < 3 && below(4) == 0)
            return container(depth + 1);
        return simple();
    }

private:
    QVariant container(int depth)
    {
        QVariantList list;
        QVariantMap map;
        for (int i = below(4); i > 0; --i) {
            list << variant(depth);
            map.insert(text(2), list.last());
        }
        return below(2) == 0 ? QVariant(list) : QVariant(map);
    }

    QVariant simple()
    {
        using Make = std::function<QVariant()>;
        const Make makers[] = {
            [] { return QVariant(); },
            [&] { return text(8); },
            [&] { return text(3); },
            [&] { return bytes(); },
            [&] { return below(2) == 0; },
            [&] { return below(1000) - 500; },
            [&] { return quint32(m_generator.generate()); },
            [&] { return qint64(m_generator.generate64()); },
            [&] { return quint64(m_generator.generate64()); },
            [&] { return below(1000) / 7.0; },
            [&] { return std::ldexp(below(1000), below(200) - 100); },
            [&] { return QVariant::fromValue(float(below(1000)) / 3); },
            [&] { return QChar(ushort(below(300))); },
            [&] { return QPoint(below(9) - 4, below(9)); },
            [&] { return QSize(below(9) - 4, below(9)); },
            [&] { return QRect(below(9), below(9), below(9), below(9)); },
            [&] { return QRectF(below(9), below(9), below(9) / 3.0, below(9)); },
            [&] { return date(); },
            [&] { return time(); },
            [&] { return dateTime(); },
            [&] { return QUrl("http://a.b/%1"_q.arg(below(9))); },
            [&] { return QUuid(quint32(below(9)), 1, 2, 3, 4, 5, 6, 7, 8, 9, 10); },
            [&] { return QKeySequence("Ctrl+S"_q); },
            [&] { return QColor(below(256), below(256), below(256)); },
            [&] { return QFont("Sans"_q, 1 + below(20)); },
            [&] { return QVector3D(1, 2, float(below(9))); },
            [&] {
                return QJsonObject{{"a"_q, below(9)}};
            },
            [&] { return text(9).split("7"_q); },
        };
        return makers[below(int(std::size(makers)))]();
    }

    QRandomGenerator m_generator;
};

} // namespace

class SettingsFormatTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void writesWhatQtWritesAndReadsIt()
    {
        Random random(1);
        for (int map = 0; map < times(40); ++map) {
            QVariantMap values;
            for (int i = random.below(50) + 1; i > 0; --i)
                values.insert(random.key(), random.variant());
            const QString file = newFile();
            const QByteArray expected = afterQtWrites(newFile(), values);
            QCOMPARE(afterWeWrite(file, values), expected);
            const QSettings qt(newFile(expected), QSettings::IniFormat);
            const Settings ours(file, QSettings::IniFormat, nullptr);
            for (const QString& key : qt.allKeys())
                QCOMPARE(ours.getSetting(QString(), key), qt.value(key));
        }
    }

    /// What somebody has edited, or damaged, is read as QSettings reads it.
    void readsWhatQtReads()
    {
        Random random(2);
        const QStringList pieces =
            QStringLiteral("[|]|[G]|[H]|=|=|=|;|,|\"|\\|\\x|\\n|\\8|\\101|\n|\n|\n|\r\n|\n\r| | "
                           "|\t|a|b|4|%|%4|%41|%U|%U0041|General|[General]|[%General]|ä|#|'|/|:|k=v|\nl=1")
                .split(QLatin1Char('|'));
        for (int file = 0; file < times(300); ++file) {
            QByteArray content;
            for (int i = random.below(30) + 1; i > 0; --i)
                content += random.oneOf(pieces).toUtf8();
            // Of these QSettings loses a separator, or the whole line at its next write.
            const QStringList keys = QSettings(newFile(content), QSettings::IniFormat).allKeys();
            if (std::any_of(keys.begin(), keys.end(),
                            [](const QString& key) { return key.startsWith("/"_q) || key.endsWith("/"_q); }))
                continue;
            const QVariantMap more = {{"N/n"_q, 1}};
            const QByteArray expected = afterQtWrites(newFile(content), more);
            if (afterWeWrite(newFile(content), more) != expected)
                QCOMPARE(content + " -> " + afterWeWrite(newFile(content), more),
                         content + " -> " + expected);
        }
    }
};

GLOBALS_TEST_MAIN(SettingsFormatTest)
#include "tst_settings_format.moc"
