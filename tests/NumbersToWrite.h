#pragma once

#include "numeric/NumberLines.h"

#include <QByteArray>
#include <QList>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <vector>

/// Numbers that are hard to round to six digits, and such as result files hold. The same sequence on every machine.
class NumbersToWrite
{
public:
    explicit NumbersToWrite(std::uint64_t seed)
        : m_state(seed * 2 + 1)
    {
    }

    static constexpr int kinds = 8;
    static const char *name(int kind)
    {
        static const QList<QByteArray> names =
            QByteArray("any bits|1e-8 to 1e8|five to eight digits|ties|beside ties|powers of ten and neighbours|"
                       "fractions and sums|nine to 17 digits")
                .split('|');
        return names.at(kind);
    }

    double next(int kind)
    {
        switch (kind) {
        case 0:
            return fromBits(bits());
        case 1:
            return sign() * std::pow(10.0, 16.0 * uniform() - 8.0);
        case 2:
            return decimal(5 + below(4));
        case 3: // a six-digit number and a half in units that a double holds exactly or almost
            return sign() * (static_cast<double>(100000 + below(900000)) + 0.5) * unit();
        case 4:
            return beside(sign() * (static_cast<double>(100000 + below(900000)) + 0.5) * unit());
        case 5:
            return beside(sign() * std::pow(10.0, below(70) - 35));
        case 6: { // as a fit makes them: a fraction, an amount, a valence, an absorption
            const double a = 1.2 * uniform() - 0.1, t = uniform() * 2.5;
            const double parts[] = {a, t * a, 3.0 - a, std::log(900.0 / (1.0 + 800.0 * uniform())), t * 1e8, a / t};
            return parts[below(6)];
        }
        default:
            return decimal(9 + below(9));
        }
    }

private:
    std::uint64_t bits()
    {
        // xorshift64*, G. Marsaglia, J. Stat. Softw. 8 (14), 2003, and S. Vigna, ACM Trans. Math. Softw. 42 (4), 2016
        m_state ^= m_state >> 12;
        m_state ^= m_state << 25;
        m_state ^= m_state >> 27;
        return m_state * 2685821657736338717u;
    }
    static double fromBits(std::uint64_t bits)
    {
        double value;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }
    /// 0 ... limit - 1
    int below(int limit) { return static_cast<int>((bits() >> 32) * static_cast<std::uint64_t>(limit) >> 32); }
    double uniform() { return static_cast<double>(bits() >> 11) / 9007199254740992.0; }
    double sign() { return below(2) == 0 ? 1.0 : -1.0; }

    /// A number with so many digits, as a text file would have held it: often a digit 5 behind the sixth.
    double decimal(int digits)
    {
        QByteArray text;
        for (int i = 0; i < digits; ++i)
            text += static_cast<char>('0' + (i == 0 ? 1 + below(9) : i == 6 && below(2) == 0 ? 5 : below(10)));
        return sign() * (text + 'e' + QByteArray::number(below(21) - 10 - digits)).toDouble();
    }
    /// A power of ten or of two.
    double unit() { return below(2) == 0 ? std::pow(10.0, below(24) - 14) : std::ldexp(1.0, below(41) - 30); }
    /// The value or one up to three doubles away.
    double beside(double value)
    {
        for (int steps = below(4); steps > 0; --steps)
            value = std::nextafter(value, sign() * std::numeric_limits<double>::infinity());
        return value;
    }

    std::uint64_t m_state;
};

/// Writes the values as one column of lines, `plain` or with vector instructions where there are any.
inline QByteArray numberLines(const std::vector<double> &values, bool plain)
{
    std::vector<char> text(values.size() * numeric::longestNumberLine(1) + numeric::g6Room);
    const std::vector<numeric::NumberColumn> columns = {{values.data()}};
    const char *const end = plain ? numeric::writeG6LinesPlain(columns, 0, values.size(), text.data())
                                  : numeric::writeG6Lines(columns, 0, values.size(), text.data());
    return QByteArray(text.data(), static_cast<int>(end - text.data()));
}

/// How many of the values are written otherwise than QByteArray::number writes them, right-aligned in ten characters
/// as QString::arg does it. The first of them is described in `report`.
inline int countDifferences(const std::vector<double> &values, QByteArray *report)
{
    const QList<QByteArray> plain = numberLines(values, true).split('\n');
    const QList<QByteArray> fast = numberLines(values, false).split('\n');
    int differences = 0;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const QByteArray wanted = ' ' + QByteArray::number(values[i], 'g', 6).rightJustified(10);
        const int line = static_cast<int>(i);
        if (plain.value(line) == wanted && fast.value(line) == wanted)
            continue;
        if (++differences == 1)
            *report = QByteArray::number(values[i], 'g', 17) + " is <" + wanted + ">, not <" + plain.value(line) +
                      "> or <" + fast.value(line) + '>';
    }
    return differences;
}
