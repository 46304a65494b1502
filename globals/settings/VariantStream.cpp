#include "globals/settings/VariantStream_p.h"

#include "globals/settings/VariantTypes_p.h"

#include <QDateTime>
#include <QIODevice>
#include <QMetaType>
#include <QStringList>
#include <QtEndian>

#include <algorithm>
#include <iterator>

namespace TEKLUVA::VariantStream {

namespace {

constexpr int MOST_LEVELS = 64;

/// The numbers of types in the stream, which are those of Qt 4.
enum Type : quint32 {
    MAP = 8,
    LIST = 9,
    STRING_LIST = 11,
    HASH = 28,
    USER = 127, ///< followed by the name of the type
};

struct Range
{
    quint32 first;
    quint32 last;
};

/// The types whose stream operators stand whatever bytes they get. Of polygons, pens and the like Qt reads as
/// many elements as the bytes claim, or ends the process.
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

/// A type whose reading the application has taken upon itself, by its name. Qt's own have names, too.
bool isOfApplication(QDataStream& stream)
{
    quint32 type = 0;
    QByteArray name;
    stream.startTransaction();
    stream >> type >> name;
    stream.rollbackTransaction();
    stream.resetStatus();
    const int known = VariantTypes::numberOf(name);
    return known >= QMetaType::User || known == QMetaType::QUuid;
}

bool isHarmless(QDataStream& stream, quint32 type)
{
    return std::any_of(std::begin(HARMLESS), std::end(HARMLESS),
                       [type](const Range& range) { return type >= range.first && type <= range.last; })
           || (type == USER && isOfApplication(stream));
}

quint32 nextType(QDataStream& stream)
{
    const QByteArray bytes = stream.device()->peek(sizeof(quint32));
    return bytes.size() == sizeof(quint32) ? qFromBigEndian<quint32>(bytes.constData()) : USER;
}

template <typename Value>
Value next(QDataStream& stream)
{
    Value value{};
    stream >> value;
    return value;
}

/// As many elements as the stream has: the number in it is a claim.
template <typename Container, typename Add>
QVariant readAll(QDataStream& stream, Add&& addNext)
{
    next<quint32>(stream); // the type
    const auto count = next<quint32>(stream);
    Container container;
    for (quint32 i = 0; i < count && stream.status() == QDataStream::Ok; ++i)
        addNext(container);
    return container;
}

QVariant readAny(QDataStream& stream, int level)
{
    const auto addEntry = [&](auto& map) {
        const auto key = next<QString>(stream);
        map.insert(key, readAny(stream, level + 1));
    };
    const quint32 type = nextType(stream);
    if (level < MOST_LEVELS) {
        if (type == LIST)
            return readAll<QVariantList>(stream, [&](auto& list) { list << readAny(stream, level + 1); });
        if (type == STRING_LIST)
            return readAll<QStringList>(stream, [&](auto& list) { list << next<QString>(stream); });
        if (type == MAP)
            return readAll<QVariantMap>(stream, addEntry);
        if (type == HASH)
            return readAll<QVariantHash>(stream, addEntry);
    }
    if (isHarmless(stream, type))
        return next<QVariant>(stream);
    stream.setStatus(QDataStream::ReadCorruptData);
    return {};
}

void writeAny(QDataStream& stream, const QVariant& variant);

/// From the last key to the first, as Qt 5 does. Qt 6 goes the other way.
void writeMap(QDataStream& stream, Type type, const QVariantMap& map)
{
    stream << type << static_cast<quint32>(map.size());
    for (auto entry = map.end(); entry != map.begin();) {
        --entry;
        stream << entry.key();
        writeAny(stream, entry.value());
    }
}

/// The order of a hash changes from process to process.
QVariantMap sorted(const QVariantHash& hash)
{
    QVariantMap map;
    for (auto entry = hash.begin(); entry != hash.end(); ++entry)
        map.insert(entry.key(), entry.value());
    return map;
}

/// In the form of VERSION, whatever version of Qt this is.
void writeAny(QDataStream& stream, const QVariant& variant)
{
    switch (variant.userType()) {
    case QMetaType::QVariantMap:
        return writeMap(stream, MAP, variant.toMap());
    case QMetaType::QVariantHash:
        return writeMap(stream, HASH, sorted(variant.toHash()));
    case QMetaType::QVariantList: {
        const QVariantList list = variant.toList();
        stream << LIST << static_cast<quint32>(list.size());
        for (const QVariant& element : list)
            writeAny(stream, element);
        return;
    }
    default:
        stream << variant;
    }
}

} // namespace

QByteArray write(const QVariant& variant)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(VERSION);
    writeAny(stream, variant);
    return bytes;
}

QByteArray writeTime(const QDateTime& time)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(TIME_VERSION);
    stream << QVariant(time);
    return bytes;
}

QVariant read(const QByteArray& bytes, QDataStream::Version version)
{
    QDataStream stream(bytes);
    stream.setVersion(version);
    const QVariant variant = readAny(stream, 0);
    return stream.status() == QDataStream::Ok ? variant : QVariant();
}

QVariant readTime(const QByteArray& bytes)
{
    constexpr int SPEC = 4 + 1 + 8 + 4; // behind type, null, day and millisecond
    constexpr int ZONE = SPEC + 1;
    // Of an unknown spec some versions of Qt make a time in no zone, others a local one.
    const bool hasSpec = bytes.size() > SPEC && static_cast<signed char>(bytes[SPEC]) >= 0;
    // Qt opens the file of the zone that is named, and the name might lead anywhere.
    const QByteArray folderAbove("\0.\0.", 4);
    const bool isTime =
        bytes.startsWith(QByteArray("\0\0\0\x10", 4)) && hasSpec && bytes.indexOf(folderAbove, ZONE) < 0;
    return isTime ? read(bytes, TIME_VERSION) : QVariant();
}

} // namespace TEKLUVA::VariantStream
