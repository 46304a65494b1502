#include "globals/measurement/DecimalText_p.h"

#include <array>
#include <cmath>
#include <cstdint>

namespace TEKLUVA {

namespace {

constexpr std::array<double, 7> POWERS_OF_TEN = {1, 10, 100, 1e3, 1e4, 1e5, 1e6};

/// \p value in units of its last decimal, rounded exactly. Nothing when that does not fit into the mantissa
/// of a double. QString::number() would give the same digits, but its arithmetic of any length takes longer.
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
    // The rounding error of the product: it tells a half from a number just below it.
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

    void putDigit(std::uint64_t digit) { put(QChar(u'0' + static_cast<ushort>(digit))); }

    QString text() const
    {
        return QString(m_begin, static_cast<int>(m_text.data() + m_text.size() - m_begin));
    }

private:
    static constexpr std::size_t LONGEST_NUMBER = 18; ///< sign, 16 digits and comma
    std::array<QChar, LONGEST_NUMBER + 1 + LONGEST_UNIT> m_text;
    QChar* m_begin = m_text.data() + m_text.size();
};

constexpr unsigned int TEN = 10;

/// Writes comma and decimals without trailing zeros. Returns what is left of the comma.
std::uint64_t putDecimals(BackwardText& text, std::uint64_t digits, unsigned int decimals)
{
    bool isWritten = false;
    for (unsigned int i = 0; i < decimals; ++i) {
        const std::uint64_t digit = digits % TEN;
        isWritten = isWritten || digit != 0;
        if (isWritten)
            text.putDigit(digit);
        digits /= TEN;
    }
    if (isWritten)
        text.put(u',');
    return digits;
}

void putWhole(BackwardText& text, std::uint64_t digits)
{
    do {
        text.putDigit(digits % TEN);
        digits /= TEN;
    } while (digits != 0);
}

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
    const auto digits = inLastDecimals(std::fabs(value), decimals);
    if (!digits) {
        const QString text = withoutTrailingZeros(QString::number(value, 'f', static_cast<int>(decimals)));
        return unit ? text + QLatin1Char(' ') + unit->toString() : text;
    }
    BackwardText text;
    if (unit) {
        text.put(*unit);
        text.put(u' ');
    }
    const std::uint64_t whole = putDecimals(text, *digits, decimals);
    putWhole(text, whole);
    if (value < 0)
        text.put(u'-');
    return text.text();
}

} // namespace TEKLUVA
