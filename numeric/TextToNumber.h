#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace numeric
{

/// The number written in one token of a text file, exactly as QString::toDouble reads it: correctly rounded, with a
/// decimal point whatever the locale, 0 when the token is no number. Usual tokens take a fast path, everything else
/// goes to QString::toDouble itself. `isNumber` (may be null) is set as by that: also false for what is too large.
double textToDouble(std::string_view token, bool *isNumber = nullptr);

/// The integer (base 10) in one token, exactly as QString::toInt reads it: 0 when it is none or does not fit.
int textToInt(std::string_view token);

/// Reads the plain decimal number (an optional minus, digits, an optional point, digits) that starts at `p`.
/// On success moves `p` behind its last digit and returns true; the caller looks at what follows. Returns false, `p`
/// unmoved, for anything else and for numbers whose value is not one exact division away. isEnd(s) says whether `s` is
/// behind the text.
template <class IsEnd>
inline bool readPlainDecimalUntil(const char *&p, IsEnd isEnd, double *value)
{
    // Both factors of mantissa / 10^decimals are exact doubles, so the one division rounds correctly (W. D. Clinger,
    // PLDI 1990).
    static constexpr double powersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9, 1e10,
                                             1e11, 1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20};
    constexpr std::uint64_t exactLimit = std::uint64_t(1) << 53;

    const char *s = p;
    const bool negative = !isEnd(s) && *s == '-';
    if (negative)
        ++s;
    std::uint64_t mantissa = 0;
    const auto readDigits = [&] {
        const char *const digits = s;
        for (unsigned digit; !isEnd(s) && (digit = static_cast<unsigned>(*s) - '0') <= 9; ++s)
            mantissa = mantissa * 10 + digit;
        return s - digits;
    };
    auto count = readDigits();
    std::ptrdiff_t decimals = 0;
    if (!isEnd(s) && *s == '.') {
        ++s;
        decimals = readDigits();
        count += decimals;
    }
    if (count == 0 || count > 19 || mantissa > exactLimit) // 19 digits always fit 64 bits
        return false;
    const double magnitude = static_cast<double>(static_cast<std::int64_t>(mantissa)); // signed ones convert faster
    const double result = decimals == 0 ? magnitude : magnitude / powersOfTen[decimals];
    *value = negative ? -result : result;
    p = s;
    return true;
}

/// The same for a text that ends at `end`.
inline bool readPlainDecimal(const char *&p, const char *end, double *value)
{
    return readPlainDecimalUntil(
        p, [end](const char *s) { return s == end; }, value);
}

/// The same for a text that goes on behind the number: with a line feed at the latest.
inline bool readPlainDecimal(const char *&p, double *value)
{
    return readPlainDecimalUntil(
        p, [](const char *) { return false; }, value);
}

} // namespace numeric
