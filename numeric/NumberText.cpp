#include "numeric/NumberText.h"

#include "numeric/DecimalScale.h"

#include <QByteArray>
#include <QtAlgorithms>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>

namespace numeric
{

namespace
{

using decimalscale::bias;
using decimalscale::decimalExponentOf;
using decimalscale::highestPlain;
using decimalscale::lowestPlain;
using decimalscale::margin;
using decimalscale::powerOfTen;
using decimalscale::reach;
using decimalscale::width;

static_assert(std::numeric_limits<double>::is_iec559 && std::numeric_limits<double>::digits == 53,
              "the digits are read from the bits of a double");

/// Whether 10^e <= 2^binary and 2^(binary + 1) < 10^(e + 2) everywhere: then e or e + 1 is the exponent of a value
/// between these powers of two.
constexpr bool exponentsAreRight()
{
    double up = 1.0;
    double down = 1.0;
    for (int binary = 0; binary <= reach; ++binary, up *= 2.0, down /= 2.0) {
        const int e = decimalExponentOf(binary);
        const int below = decimalExponentOf(-binary);
        if (powerOfTen(e) > up || 2.0 * up >= 100.0 * powerOfTen(e) || powerOfTen(below) > down ||
            2.0 * down >= 100.0 * powerOfTen(below))
            return false;
    }
    return true;
}
static_assert(exponentsAreRight(), "an exponent is guessed wrong");

/// The digits of 0 ... 999 as three characters each, the first in the lowest byte.
constexpr std::array<std::uint32_t, 1000> threeDigits = [] {
    std::array<std::uint32_t, 1000> table = {};
    for (std::uint32_t i = 0; i < 1000; ++i)
        table[i] = (i / 100 + '0') | (i / 10 % 10 + '0') << 8 | (i % 10 + '0') << 16;
    return table;
}();

/// digits[0].digits[1]...digits[5] * 10^exponent
struct Decimal {
    std::uint64_t digits = 0; ///< six characters, the first in the lowest byte
    int significant = 0;      ///< digits up to the last one that is not zero, 1 ... 6
    int exponent = 0;
};

std::uint64_t bitsOf(double value)
{
    std::uint64_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

/// Finds the six digits of a value without a sign; none are significant when they are not certain: for zero, what is
/// not finite or out of reach, and next to a tie.
///
/// Let s = value * 10^(5 - e) with e such that 10^5 <= s < 10^6; the digits are s rounded to an integer. s is formed in
/// double from a power of ten that is off by at most 2^-53 of itself, with a product that is off by another 2^-53, so
/// the error is below 10^6 * 2.01 * 2^-53 < 2^-32. Adding 2^20 + 1/2 gives a number in [2^20, 2^21), whose lowest bit
/// is worth 2^-32: the addition rounds by at most 2^-33, and the mantissa is s + 1/2 in units of 2^-32, off by less
/// than two of them. Where its fraction is more than two units away from the integers on both sides, its whole part is
/// that of the true s + 1/2, which is s correctly rounded. What is nearer is a tie or almost one.
///
/// The comparison that finds e may take the wrong side only of a value within 2^-53 of a power of ten. Then s lies
/// below 10^5 or above 10^6 by no more than the error above, both ways give the digits 100000, and the exponent is
/// that of the power in question.
inline Decimal findDigits(double value)
{
    const std::uint64_t valueBits = bitsOf(value);
    const int binary = static_cast<int>(valueBits >> 52) - bias; // 2^binary <= value < 2^(binary + 1)
    if (binary < -reach || binary > reach)
        return {};

    int e = decimalExponentOf(binary);
    e += value >= powerOfTen(e + 1) ? 1 : 0;
    const double shifted = value * powerOfTen(5 - e) + (1048576.0 + 0.5); // 2^20 + 1/2
    const std::uint64_t fixed = bitsOf(shifted) & ((std::uint64_t(1) << 52) - 1);
    if (static_cast<std::uint32_t>(fixed) + margin < 2 * margin) // wraps around: below margin or from -margin on
        return {};

    Decimal decimal;
    auto whole = static_cast<std::uint32_t>(fixed >> 32);
    const bool carried = whole == 1000000;
    whole = carried ? 100000 : whole;
    decimal.exponent = e + (carried ? 1 : 0);
    decimal.digits = threeDigits[whole / 1000] | std::uint64_t(threeDigits[whole % 1000]) << 24;
    const quint64 notZero = (decimal.digits & 0x0f0f0f0f0f0f) | 1; // '0' has no bits there; not 0 in any case
    decimal.significant = 8 - static_cast<int>(qCountLeadingZeroBits(notZero)) / 8;
    return decimal;
}

void storeWord(std::uint64_t characters, char *out)
{
    characters = qToLittleEndian(characters);
    std::memcpy(out, &characters, sizeof characters);
}

/// Where the parts of a number without an exponent stand, for one decimal exponent. All digits are stored at `digits`;
/// those behind the point once more at `decimals`.
struct Layout {
    std::uint8_t digits = 0;
    std::uint8_t point = 0;
    std::uint8_t decimals = 0;
    std::uint8_t shift = 0;                  ///< bits of the digits in front of the point
    std::array<std::uint8_t, 7> length = {}; ///< characters, by the number of significant digits
};

constexpr std::array<Layout, highestPlain - lowestPlain + 1> layouts = [] {
    std::array<Layout, highestPlain - lowestPlain + 1> table = {};
    for (int e = lowestPlain; e <= highestPlain; ++e) {
        Layout &layout = table[static_cast<std::size_t>(e - lowestPlain)];
        const int before = e < 0 ? 0 : e + 1; // digits in front of the point
        layout.digits = static_cast<std::uint8_t>(e < 0 ? 1 - e : 0);
        layout.point = static_cast<std::uint8_t>(e < 0 ? 1 : before);
        layout.decimals = static_cast<std::uint8_t>(e < 0 ? 1 - e : before + 1);
        layout.shift = static_cast<std::uint8_t>(8 * before);
        for (int n = 1; n <= 6; ++n) {
            const int length = e < 0 ? 1 - e + n : n > before ? n + 1 : before;
            layout.length[static_cast<std::size_t>(n)] = static_cast<std::uint8_t>(length);
        }
    }
    return table;
}();

/// Writes the blanks in front of a text of `length` characters and returns where the text starts.
inline char *alignRight(int length, char *out)
{
    std::memset(out, ' ', g6MaxLength);
    return out + std::max(0, width - length);
}

/// As in "1.23457e+07".
Q_NEVER_INLINE char *writeWithExponent(const Decimal &decimal, bool negative, char *out)
{
    const int mantissa = decimal.significant == 1 ? 1 : decimal.significant + 1;
    const int length = (negative ? 1 : 0) + mantissa + 4;
    char *const start = alignRight(length, out);
    *start = '-';
    char *const number = start + (negative ? 1 : 0);
    storeWord(decimal.digits, number);
    number[1] = '.';
    storeWord(decimal.digits >> 8, number + 2);
    const int size = decimal.exponent < 0 ? -decimal.exponent : decimal.exponent;
    char *const exponent = number + mantissa;
    exponent[0] = 'e';
    exponent[1] = decimal.exponent < 0 ? '-' : '+';
    exponent[2] = static_cast<char>('0' + size / 10);
    exponent[3] = static_cast<char>('0' + size % 10);
    return out + std::max(length, width);
}

/// As in "0.00123457" or "123457".
inline char *writePlain(const Decimal &decimal, bool negative, char *out)
{
    const Layout &layout = layouts[static_cast<std::size_t>(decimal.exponent - lowestPlain)];
    const int length = (negative ? 1 : 0) + layout.length[static_cast<std::size_t>(decimal.significant)];
    char *const start = alignRight(length, out);
    *start = '-';
    char *const number = start + (negative ? 1 : 0);
    std::memcpy(number, "0.000000", 8); // stays in front of the digits of a number below 1
    storeWord(decimal.digits, number + layout.digits);
    number[layout.point] = '.';
    storeWord(decimal.digits >> layout.shift, number + layout.decimals);
    return out + std::max(length, width);
}

/// Whatever findDigits() does not do.
Q_NEVER_INLINE char *writeOther(double value, char *out)
{
    QByteArray text;
    if (value == 0.0)
        text = QByteArrayLiteral("0");
    else if (value != value)
        text = QByteArrayLiteral("nan");
    else
        text = QByteArray::number(value, 'g', 6);
    out = alignRight(text.size(), out);
    std::memcpy(out, text.constData(), static_cast<std::size_t>(text.size()));
    return out + text.size();
}

} // namespace

char *writeG6Padded(double value, char *out)
{
    const Decimal decimal = findDigits(std::abs(value));
    if (decimal.significant == 0)
        return writeOther(value, out);
    const bool negative = value < 0.0;
    if (decimal.exponent < lowestPlain || decimal.exponent > highestPlain)
        return writeWithExponent(decimal, negative, out);
    return writePlain(decimal, negative, out);
}

char *writeG6(double value, char *out)
{
    char text[g6Room];
    const char *const end = writeG6Padded(value, text);
    const char *begin = text;
    while (*begin == ' ')
        ++begin;
    return std::copy(begin, end, out);
}

} // namespace numeric
