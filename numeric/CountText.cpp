#include "numeric/CountText.h"

#include <QByteArray>

#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace numeric
{

namespace
{

constexpr int significant = 9;
constexpr int mostPlaces = 12;
constexpr std::uint64_t powersOfTen[mostPlaces + 1] = {1,           10,           100,          1000,      10000,
                                                       100000,      1000000,      10000000,     100000000, 1000000000,
                                                       10000000000, 100000000000, 1000000000000};

constexpr std::array<char, 200> makePairs()
{
    std::array<char, 200> pairs{};
    for (unsigned i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}
constexpr std::array<char, 200> digitPairs = makePairs();

/// The digits of a number that ends at `end`; returns where they begin.
char *digitsBefore(char *end, std::uint64_t number)
{
    while (number >= 100) {
        end -= 2;
        std::memcpy(end, &digitPairs[2 * (number % 100)], 2);
        number /= 100;
    }
    if (number >= 10) {
        end -= 2;
        std::memcpy(end, &digitPairs[2 * number], 2);
        return end;
    }
    *--end = static_cast<char>('0' + number);
    return end;
}

char *writeDigits(std::uint64_t number, char *out)
{
    constexpr std::size_t most = 20; // digits of 64 bits
    char text[2 * most] = {};
    char *const end = text + most;
    const char *const begin = digitsBefore(end, number);
    std::memcpy(out, begin, most); // a known number of bytes is a few instructions, any other a call
    return out + (end - begin);
}

char *writeGeneral(double value, char *out)
{
    const QByteArray text = QByteArray::number(value, 'g', significant);
    std::memcpy(out, text.constData(), static_cast<std::size_t>(text.size()));
    return out + text.size();
}

/// Decimal places that leave nine significant digits of a magnitude from 1e-4 on.
int placesOf(double magnitude, std::uint64_t whole)
{
    int places = significant;
    if (whole == 0) {
        for (double first = 0.1; magnitude < first && places < mostPlaces; first *= 0.1)
            ++places;
        return places;
    }
    while (places > 0 && whole >= powersOfTen[significant - places])
        --places;
    return places;
}

} // namespace

char *writeCount(double value, char *out)
{
    const double magnitude = std::fabs(value);
    if (!(magnitude < 1e15) || (magnitude < 1e-4 && magnitude > 0.0))
        return writeGeneral(value, out);
    if (value < 0.0)
        *out++ = '-';
    const auto whole = static_cast<std::uint64_t>(magnitude);
    if (static_cast<double>(whole) == magnitude)
        return writeDigits(whole, out);

    const int places = placesOf(magnitude, whole);
    const std::uint64_t scale = powersOfTen[places];
    const auto scaled = static_cast<std::uint64_t>(magnitude * static_cast<double>(scale) + 0.5);
    out = writeDigits(scaled / scale, out);
    std::uint64_t rest = scaled % scale;
    if (rest == 0)
        return out;
    *out++ = '.';
    char *end = out + places;
    std::memset(out, '0', static_cast<std::size_t>(places));
    digitsBefore(end, rest);
    while (end[-1] == '0')
        --end;
    return end;
}

} // namespace numeric
