#include "numeric/TextToNumber.h"

#include <QString>

#include <charconv>
#include <cmath>

namespace numeric
{

namespace
{

QString toQString(std::string_view token)
{
    constexpr std::size_t longest = 1 << 28; // what a QString holds; a longer token is no number
    if (token.size() > longest)
        return {};
    return QString::fromUtf8(token.data(), static_cast<int>(token.size()));
}

#if defined(__cpp_lib_to_chars)
const char *skipDigits(const char *p, const char *end)
{
    while (p != end && *p >= '0' && *p <= '9')
        ++p;
    return p;
}

/// Whether the token is digits with at most one point and an optional exponent: what every reader agrees on.
bool isDecimal(const char *p, const char *end)
{
    if (p != end && *p == '-')
        ++p;
    const char *const mantissa = p;
    p = skipDigits(p, end);
    auto digits = p - mantissa;
    if (p != end && *p == '.') {
        const char *const decimals = ++p;
        p = skipDigits(p, end);
        digits += p - decimals;
    }
    if (digits == 0)
        return false;
    if (p != end && (*p == 'e' || *p == 'E')) {
        ++p;
        if (p != end && (*p == '-' || *p == '+'))
            ++p;
        const char *const exponent = p;
        p = skipDigits(p, end);
        if (p == exponent)
            return false;
    }
    return p == end;
}

/// Correctly rounded; false for anything that is not a plain decimal of ordinary size.
bool readDecimal(const char *begin, const char *end, double *value)
{
    if (!isDecimal(begin, end))
        return false;
    const auto outcome = std::from_chars(begin, end, *value);
    return outcome.ec == std::errc() && outcome.ptr == end && std::isnormal(*value);
}
#else
bool readDecimal(const char *, const char *, double *)
{
    return false;
}
#endif

} // namespace

double textToDouble(std::string_view token, bool *isNumber)
{
    if (isNumber)
        *isNumber = true;
    const char *p = token.data();
    const char *const end = p + token.size();
    double value = 0.0;
    if (readPlainDecimal(p, end, &value) && p == end)
        return value;
    if (readDecimal(token.data(), end, &value))
        return value;
    return toQString(token).toDouble(isNumber);
}

int textToInt(std::string_view token)
{
    constexpr std::size_t alwaysFits = 9;
    if (token.empty() || token.size() > alwaysFits)
        return toQString(token).toInt();
    int value = 0;
    for (const char c : token) {
        if (c < '0' || c > '9')
            return toQString(token).toInt();
        value = value * 10 + (c - '0');
    }
    return value;
}

} // namespace numeric
