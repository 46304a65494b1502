#pragma once

#include "TestFiles.h"
#include "TestHome.h"

#include "globals/Settings.h"

#include <QBitArray>
#include <QColor>
#include <QDateTime>
#include <QFont>
#include <QJsonObject>
#include <QKeySequence>
#include <QLineF>
#include <QLocale>
#include <QPolygon>
#include <QRandomGenerator>
#include <QRectF>
#include <QTimeZone>
#include <QTransform>
#include <QUrl>
#include <QUuid>
#include <QVariant>
#include <QVector3D>

#include <cmath>
#include <functional>
#include <iterator>

/// What the tests store in settings files.
namespace SettingsValues {

/// More of them for a long run.
inline int times(int count)
{
    return count * qMax(1, qEnvironmentVariableIntValue("GLOBALS_TEST_ROUNDS"));
}

/// Made in the one way that no version of Qt calls deprecated.
inline QDateTime withOffset(QDate day, QTime time, int seconds)
{
    QDateTime result = QDateTime(day, time).toOffsetFromUtc(seconds);
    result.setDate(day);
    result.setTime(time);
    return result;
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
            return withOffset(date(), time(), 0);
        case 1:
            return withOffset(date(), time(), below(20) * 900);
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

inline QFont sampleFont()
{
    QFont font("Käse"_q, 11, QFont::Bold, true);
    font.setUnderline(true);
    return font;
}

inline const QDate DAY(2026, 11, 22);
inline const QTime TIME(13, 37, 1, 5);

inline QVariantMap plainSamples()
{
    return {
        {"text/home"_q, "/home/jürgen"_q},
        {"text/wide"_q, "€ \xf0\x9f\x8f\xa0"_q},
        {"text/zero"_q, QString("a%z"_q).replace(1, 1, QChar(0))},
        {"text/head"_q, "@Size(1 2)"_q},
        {"text/größe"_q, "a, b; c=\"d\""_q},
        {"number/int"_q, -5},
        {"number/uint"_q, 4000000000U},
        {"number/long"_q, qint64(-9000000000)},
        {"number/double"_q, 0.1},
        {"number/small"_q, 1e-300},
        {"number/float"_q, QVariant::fromValue(1 / 3.0F)},
        {"number/short"_q, QVariant::fromValue(short(-3))},
        {"number/bool"_q, true},
        {"number/character"_q, QChar(0xe4)},
        {"date/date"_q, DAY},
        {"date/time"_q, TIME},
        {"date/utc"_q, withOffset(DAY, TIME, 0)},
        {"date/local"_q, QDateTime(DAY, TIME)},
        {"date/offset"_q, withOffset(DAY, TIME, 5400)},
        {"date/zone"_q, QDateTime(DAY, TIME, QTimeZone("America/New_York"))},
        {"date/none"_q, QDateTime()},
    };
}

/// Values of each type, as settings-samples.ini has them.
inline QVariantMap samples()
{
    QVariantMap all = {
        {"list/texts"_q, QStringList{"a"_q, "ü, b"_q}},
        {"list/none"_q, QStringList()},
        {"list/one"_q, QVariantList{7}},
        {"list/mixed"_q,
         QVariantList{1, "b"_q, QVariant::fromValue(0.1F), QSize(1, 2), withOffset(DAY, TIME, 0)}},
        {"list/nested"_q, QVariantList{QVariantList{1, 2}, QVariantMap{{"x"_q, DAY}, {"y"_q, 0.5}}, TIME}},
        {"map/map"_q,
         QVariantMap{{"a"_q, 1}, {"b"_q, QVariantMap{{"c"_q, 2}, {"d"_q, 3}}}, {"f"_q, sampleFont()}}},
        {"map/hash"_q, QVariantHash{{"a"_q, "ö"_q}}},
        {"look/font"_q, sampleFont()},
        {"look/light"_q, QFont("Serif"_q, 9, QFont::Light)},
        {"look/colour"_q, QColor(1, 2, 3, 4)},
        {"look/keys"_q, QKeySequence("Ctrl+S"_q)},
        {"look/turn"_q, QTransform(1, 2, 3, 4, 5, 6, 7, 8, 9)},
        {"place/point"_q, QPoint(-1, 2)},
        {"place/size"_q, QSizeF(3, 4.5)},
        {"place/rect"_q, QRect(1, 2, 3, 4)},
        {"place/line"_q, QLineF(1, 2, 3, 4.5)},
        {"place/vector"_q, QVector3D(1, 2, 3.5F)},
        {"bytes/any"_q, QByteArray("a\0\xff"
                                   "b",
                                   4)},
        {"bytes/bits"_q, QBitArray(11, true)},
        {"other/url"_q, QUrl("http://a.b/ä"_q)},
        {"other/id"_q, QUuid(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11)},
        {"other/locale"_q, QLocale("de_AT"_q)},
        {"other/object"_q, QJsonObject{{"a"_q, 1}}},
        {"other/none"_q, QVariant()},
    };
    all.insert(plainSamples());
    return all;
}

/// The file after all \p values were set in it with one change.
inline QByteArray writtenTo(const QString& file, const QVariantMap& values)
{
    QList<TEKLUVA::SettingsChange> changes;
    for (auto value = values.begin(); value != values.end(); ++value)
        changes << TEKLUVA::SettingsChange{QString(), value.key(), *value};
    TEKLUVA::Settings(file, QSettings::IniFormat, nullptr).changeSettings(changes);
    return TestFiles::textOf(file);
}

} // namespace SettingsValues
