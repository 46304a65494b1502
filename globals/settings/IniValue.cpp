#include "globals/settings/IniValue_p.h"

#include "globals/Latin1.h"
#include "globals/settings/IniText_p.h"
#include "globals/settings/VariantStream_p.h"

#include <QDateTime>
#include <QLocale>
#include <QPoint>
#include <QRect>
#include <QSize>
#include <QTimeZone>
#include <QVector>

#include <algorithm>
#include <utility>

namespace TEKLUVA {

namespace {

constexpr QLatin1Char MARK('@');
constexpr QLatin1String INVALID = latin1("@Invalid()");
constexpr QLatin1String BYTES = latin1("@ByteArray(");
constexpr QLatin1String TEXT = latin1("@String(");
constexpr QLatin1String RECT = latin1("@Rect(");
constexpr QLatin1String SIZE = latin1("@Size(");
constexpr QLatin1String POINT = latin1("@Point(");
constexpr QLatin1String TIME = latin1("@DateTime(");
constexpr QLatin1String VARIANT = latin1("@Variant(");

QString inBrackets(QLatin1String head, const QString& content)
{
    return head + content + QLatin1Char(')');
}

/// A character for each byte. Without the size the text would end at the first zero.
QString fromBytes(const QByteArray& bytes)
{
    return QString::fromLatin1(bytes.constData(), bytes.size());
}

QString plainText(const QVariant& variant)
{
    if (variant.userType() == QMetaType::Double)
        return QString::number(variant.toDouble(), 'g', QLocale::FloatingPointShortest);
    const QString text = variant.toString();
    if (text.contains(QChar::Null))
        return inBrackets(TEXT, text);
    return text.startsWith(MARK) ? MARK + text : text;
}

QString textOf(const QVariant& variant)
{
    switch (variant.userType()) {
    case QMetaType::UnknownType:
        return INVALID;
    case QMetaType::QByteArray:
        return inBrackets(BYTES, fromBytes(variant.toByteArray()));
    case QMetaType::QString:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Bool:
    case QMetaType::Double:
    case QMetaType::QKeySequence:
        return plainText(variant);
    case QMetaType::QRect: {
        const QRect rect = variant.toRect();
        return QString::asprintf("@Rect(%d %d %d %d)", rect.x(), rect.y(), rect.width(), rect.height());
    }
    case QMetaType::QSize:
        return QString::asprintf("@Size(%d %d)", variant.toSize().width(), variant.toSize().height());
    case QMetaType::QPoint:
        return QString::asprintf("@Point(%d %d)", variant.toPoint().x(), variant.toPoint().y());
    case QMetaType::QDateTime:
        return inBrackets(TIME, fromBytes(VariantStream::writeTime(variant.toDateTime())));
    default:
        return inBrackets(VARIANT, fromBytes(VariantStream::write(variant)));
    }
}

QStringList textsOf(const QVariant& variant)
{
    // To QSettings a list of one element is no list.
    const bool isList = variant.userType() == QMetaType::QStringList
                        || (variant.userType() == QMetaType::QVariantList && variant.toList().size() != 1);
    if (!isList)
        return {textOf(variant)};
    QStringList texts;
    for (const QVariant& element : variant.toList())
        texts << textOf(element);
    return texts.isEmpty() ? QStringList(INVALID) : texts;
}

/// \name What stands in the brackets
/// No variant: it is not what the head says, and the whole is a text. An invalid one: it is damaged.
/// @{
using Content = std::optional<QVariant>;

/// What is no number counts as 0, as it does for QSettings. None where the bracket is closed before the end.
QVector<int> numbersIn(const QString& content)
{
    QVector<int> numbers;
    if (content.contains(QLatin1Char(')')))
        return numbers;
    for (const QString& text : content.split(QLatin1Char(' ')))
        numbers << text.toInt();
    return numbers;
}

template <typename Pair>
Content pairIn(const QString& content)
{
    const auto n = numbersIn(content);
    return n.size() == 2 ? Content(Pair(n[0], n[1])) : Content();
}

struct Form
{
    QLatin1String head;
    Content (*read)(const QString& content) = nullptr;
};

constexpr Form FORMS[] = {
    {BYTES, [](const QString& content) { return Content(content.toLatin1()); }},
    {TEXT, [](const QString& content) { return Content(content); }},
    {VARIANT, [](const QString& content) { return Content(VariantStream::read(content.toLatin1())); }},
    {TIME, [](const QString& content) { return Content(VariantStream::readTime(content.toLatin1())); }},
    {RECT,
     [](const QString& content) {
         const auto n = numbersIn(content);
         return n.size() == 4 ? Content(QRect(n[0], n[1], n[2], n[3])) : Content();
     }},
    {SIZE, &pairIn<QSize>},
    {POINT, &pairIn<QPoint>},
};
/// @}

QVariant storable(const QVariant& variant)
{
    return IniValue::isStorable(variant) ? variant : QVariant();
}

QVariant variantOf(const QString& text)
{
    if (!text.startsWith(MARK))
        return text;
    if (text == INVALID)
        return {};
    for (const Form& form : FORMS) {
        if (text.startsWith(form.head) && text.endsWith(QLatin1Char(')')))
            return storable(form.read(text.mid(form.head.size()).chopped(1)).value_or(text));
    }
    return text.startsWith(latin1("@@")) ? text.mid(1) : text;
}

/// Whether no text means anything but itself.
bool isPlain(const QStringList& texts)
{
    return std::all_of(texts.begin(), texts.end(), [](const QString& text) {
        return !text.startsWith(MARK) || text.startsWith(latin1("@@"));
    });
}

QVariant variantOf(const QStringList& texts)
{
    if (texts.size() == 1)
        return variantOf(texts[0]);
    QVariantList variants;
    for (const QString& text : texts) {
        variants << variantOf(text);
        if (!variants.last().isValid() && text != INVALID)
            return {};
    }
    return isPlain(texts) ? QVariant(QVariant(variants).toStringList()) : QVariant(variants);
}

bool hasKnownZone(const QDateTime& time)
{
    return time.timeSpec() != Qt::TimeZone || time.timeZone().isValid();
}

template <typename Variants>
bool areStorable(const Variants& variants)
{
    return std::all_of(variants.begin(), variants.end(), &IniValue::isStorable);
}

} // namespace

IniValue::IniValue(QByteArray bytes, bool isUtf8)
    : m_bytes(std::move(bytes))
    , m_isUtf8(isUtf8)
{
}

IniValue::IniValue(const QVariant& variant)
    : m_variant(variant)
{
}

QStringList IniValue::texts() const
{
    return m_variant ? textsOf(*m_variant) : IniText::unescapedTexts(m_bytes, m_isUtf8);
}

QVariant IniValue::toVariant() const
{
    return m_variant ? *m_variant : variantOf(texts());
}

bool IniValue::isPlain() const
{
    return !m_variant && !m_bytes.contains(MARK.toLatin1()) && !m_bytes.contains('\\');
}

bool IniValue::isReadable() const
{
    return toVariant().isValid() || texts() == QStringList(INVALID);
}

bool IniValue::operator==(const IniValue& other) const
{
    const bool isKnown = !m_variant && !other.m_variant && m_isUtf8 == other.m_isUtf8;
    return (isKnown && m_bytes == other.m_bytes) || texts() == other.texts();
}

bool IniValue::isStorable(const QVariant& variant)
{
    switch (variant.userType()) {
    case QMetaType::QDateTime:
        return hasKnownZone(variant.toDateTime());
    case QMetaType::QVariantList:
        return areStorable(variant.toList());
    case QMetaType::QVariantMap:
        return areStorable(variant.toMap());
    case QMetaType::QVariantHash:
        return areStorable(variant.toHash());
    default:
        return true;
    }
}

} // namespace TEKLUVA
