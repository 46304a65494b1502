#include "globals/settings/VariantStream_p.h"

#include <QMetaType>
#include <QStringList>
#include <QtEndian>

#include <algorithm>
#include <iterator>

namespace TEKLUVA::VariantStream {

namespace {

/// The numbers of types in the stream, which are those of Qt 4.
enum Type : quint32 {
    MAP = 8,
    LIST = 9,
    STRING_LIST = 11,
    TIME = 16,
    HASH = 28,
    USER = 127, ///< followed by the name of the type
};

struct Range
{
    quint32 first;
    quint32 last;
};

/// The types whose stream operators stand whatever bytes they get, but for containers.
constexpr Range HARMLESS[] = {
    {0, 7},   // none, numbers, QChar
    {10, 10}, // QString
    {12, 26}, // bytes, bits, dates, times, QUrl, QLocale, geometry; not QRegExp, which may compile for hours
    {64, 64}, // QFont
    {67, 67}, // QColor
    {76, 76}, // QKeySequence
    {81, 86}, // QTransform to QQuaternion
    {129, 135}, // long to float
    {137, 137}, // signed char
    {141, 145}, // QRegularExpression, which compiles when it is used, and JSON
};

/// Of QPolygons, pens and the like Qt reads as many elements as the bytes claim, or ends the process.
bool isHarmless(quint32 type)
{
    return std::any_of(std::begin(HARMLESS), std::end(HARMLESS),
                       [type](const Range& range) { return type >= range.first && type <= range.last; });
}

/// One whose reading the application has taken upon itself, by its name. Qt's own types have names, too.
bool isOfApplication(const QByteArray& name)
{
    const int type = QMetaType::type(name.constData());
    return type >= QMetaType::User || type == QMetaType::QUuid;
}

class Reader
{
public:
    Reader(const QByteArray& bytes, QDataStream::Version version)
        : m_stream(bytes)
    {
        m_stream.setVersion(version);
    }

    QVariant read()
    {
        const QVariant variant = readAny(0);
        return m_stream.status() == QDataStream::Ok ? variant : QVariant();
    }

private:
    static constexpr int MOST_LEVELS = 64;

    QVariant readAny(int level)
    {
        const quint32 type = nextType();
        if (level > MOST_LEVELS)
            return fail();
        switch (type) {
        case LIST:
            return readAll<QVariantList>([&](QVariantList& list) { list << readAny(level + 1); });
        case STRING_LIST:
            return readAll<QStringList>([&](QStringList& list) { list << readText(); });
        case MAP:
            return readEntries<QVariantMap>(level);
        case HASH:
            return readEntries<QVariantHash>(level);
        case USER:
            return isOfApplication(nextName()) ? readOne() : fail();
        default:
            return isHarmless(type) ? readOne() : fail();
        }
    }

    quint32 nextType()
    {
        const QByteArray bytes = m_stream.device()->peek(sizeof(quint32));
        return bytes.size() == sizeof(quint32) ? qFromBigEndian<quint32>(bytes.constData()) : USER;
    }

    QByteArray nextName()
    {
        quint32 type = 0;
        QByteArray name;
        m_stream.startTransaction();
        m_stream >> type >> name;
        m_stream.rollbackTransaction();
        m_stream.resetStatus();
        return name;
    }

    QVariant readOne()
    {
        QVariant variant;
        m_stream >> variant;
        return variant;
    }

    /// As many as the stream has: the number in it is a claim.
    template <typename Container, typename Read>
    QVariant readAll(Read&& readElement)
    {
        quint32 type = 0;
        quint32 count = 0;
        m_stream >> type >> count;
        Container container;
        for (quint32 i = 0; i < count && m_stream.status() == QDataStream::Ok; ++i)
            readElement(container);
        return container;
    }

    template <typename Map>
    QVariant readEntries(int level)
    {
        return readAll<Map>([&](Map& map) {
            const QString key = readText();
            map.insert(key, readAny(level + 1));
        });
    }

    QString readText()
    {
        QString text;
        m_stream >> text;
        return text;
    }

    QVariant fail()
    {
        m_stream.setStatus(QDataStream::ReadCorruptData);
        return {};
    }

    QDataStream m_stream;
};

} // namespace

QByteArray write(const QVariant& variant, QDataStream::Version version)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(version);
    stream << variant;
    return bytes;
}

QVariant read(const QByteArray& bytes)
{
    return Reader(bytes, VERSION).read();
}

QVariant readTime(const QByteArray& bytes)
{
    // Qt opens the file of the zone that is named, and the name might lead anywhere.
    constexpr int ZONE = 4 + 1 + 8 + 4 + 1; // behind type, null, day, millisecond and time spec
    const QByteArray folderAbove("\0.\0.", 4);
    const bool isTime = bytes.startsWith(QByteArray("\0\0\0\x10", 4)) && bytes.indexOf(folderAbove, ZONE) < 0;
    return isTime ? Reader(bytes, TIME_VERSION).read() : QVariant();
}

} // namespace TEKLUVA::VariantStream
