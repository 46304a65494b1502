#include "globals/measurement/DecimalText_p.h"

#include <array>
#include <cmath>
#include <cstdint>

namespace TEKLUVA {

namespace {

constexpr std::array<double, 7> POWERS_OF_TEN = {1, 10, 100, 1e3, 1e4, 1e5, 1e6};

/// \p value in units of its last decimal, rounded exactly; nothing for what does not fit into the mantissa of
/// a double. QString::number() comes to the same with arithmetic of any length, and takes ten times as long.
std::optional<std::uint64_t> inLastDecimals(double value, unsigned int decimals)
{
    constexpr double LARGEST = 4503599627370496.0; // 2^52: from there on a double has no half
    if (decimals >= POWERS_OF_TEN.size())
        return std::nullopt;
    const double factor = POWERS_OF_TEN[decimals];
    const double product = value * factor;
    if (!(product < LARGEST))
        return std::nullopt;
    const double whole = std::floor(product);
    const double rest = product - whole;
    // What the product lost when it was rounded; it tells halves from what lies just below them.
    const double lost = std::fma(value, factor, -product);
    const bool isUp = rest > 0.5 || (rest == 0.5 && lost >= 0);
    return static_cast<std::uint64_t>(whole) + (isUp ? 1 : 0);
}

/// Writes a text from its end.
class BackwardText
{
public:
    void put(QChar character) { *--m_begin = character; }

    void put(QStringView text)
    {
        for (auto character = text.rbegin(); character != text.rend(); ++character)
            put(*character);
    }

    QString text() const
    {
        return QString(m_begin, static_cast<int>(m_text.data() + m_text.size() - m_begin));
    }

private:
    static constexpr std::size_t LONGEST = 32; ///< sign, 16 digits, comma and unit
    std::array<QChar, LONGEST> m_text;
    QChar* m_begin = m_text.data() + m_text.size();
};

QString withoutTrailingZeros(QString text)
{
    text.replace(QLatin1Char('.'), QLatin1Char(','));
    if (!text.contains(QLatin1Char(',')))
        return text;
    while (text.endsWith(QLatin1Char('0')))
        text.chop(1);
    if (text.endsWith(QLatin1Char(',')))
        text.chop(1);
    return text;
}

} // namespace

QString decimalText(double value, unsigned int decimals, std::optional<QStringView> unit)
{
    auto digits = inLastDecimals(std::fabs(value), decimals);
    if (!digits) {
        const QString text = withoutTrailingZeros(QString::number(value, 'f', static_cast<int>(decimals)));
        return unit ? text + QLatin1Char(' ') + unit->toString() : text;
    }
    constexpr unsigned int TEN = 10;
    BackwardText text;
    if (unit) {
        text.put(*unit);
        text.put(u' ');
    }
    bool hasDecimals = false;
    for (unsigned int i = 0; i < decimals; ++i, *digits /= TEN) {
        hasDecimals |= *digits % TEN != 0;
        if (hasDecimals)
            text.put(QChar(u'0' + static_cast<ushort>(*digits % TEN)));
    }
    if (hasDecimals)
        text.put(u',');
    do {
        text.put(QChar(u'0' + static_cast<ushort>(*digits % TEN)));
        *digits /= TEN;
    } while (*digits != 0);
    if (value < 0)
        text.put(u'-');
    return text.text();
}

} // namespace TEKLUVA
