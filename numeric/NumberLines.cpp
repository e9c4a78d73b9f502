#include "numeric/NumberLines.h"

#include "numeric/DecimalScale.h"
#include "numeric/Lanes.h"

#include <array>
#include <cstdint>
#include <cstring>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

namespace numeric
{

namespace
{

inline char *writeBlanks(int count, char *out)
{
    std::memcpy(out, "    ", 4);
    return out + count;
}

} // namespace

char *writeG6LinesPlain(const std::vector<NumberColumn> &columns, std::size_t begin, std::size_t end, char *out)
{
    for (std::size_t line = begin; line < end; ++line) {
        for (const NumberColumn &column : columns)
            out = writeG6Padded(column.values[line], writeBlanks(column.blanks, out));
        *out++ = '\n';
    }
    return out;
}

#if defined(__x86_64__)

// Four lines at a time. First every column turns four values into their digits with vector arithmetic; then each
// number becomes text by one shuffle of its digits and of a few other characters. Numbers whose digits are not certain
// are left to writeG6Padded.

namespace
{

using decimalscale::bias;
using decimalscale::highestPlain;
using decimalscale::lowestPlain;
using decimalscale::margin;
using decimalscale::reach;
using decimalscale::width;

constexpr std::size_t lanes = 4;
constexpr int largestExponent = 22; ///< of a value within reach, and its negative the smallest

constexpr int plainForms = highestPlain - lowestPlain + 1; ///< one for each exponent, then one with an exponent
constexpr int codesPerForm = 2 * 8;                        ///< sign, then the byte of the last digit
constexpr int codes = (plainForms + 1) * codesPerForm;     ///< the code behind the last is that of other numbers

// The bytes that a shuffle chooses from: three digits, an unused byte, three digits, an unused byte, then these.
constexpr std::uint8_t blankAt = 8;
constexpr std::uint8_t minusAt = 9;
constexpr std::uint8_t pointAt = 10;
constexpr std::uint8_t zeroAt = 11;
constexpr std::uint8_t exponentAt = 12; ///< four characters as in "e-07"

struct Characters {
    std::array<char, 8> bytes = {};
};

constexpr std::array<Characters, 2 * largestExponent + 1> makeCharacters()
{
    std::array<Characters, 2 * largestExponent + 1> table;
    for (int exponent = -largestExponent; exponent <= largestExponent; ++exponent) {
        const int size = exponent < 0 ? -exponent : exponent;
        table[static_cast<std::size_t>(exponent + largestExponent)] = {
            {' ', '-', '.', '0', 'e', exponent < 0 ? '-' : '+', static_cast<char>('0' + size / 10),
             static_cast<char>('0' + size % 10)}};
    }
    return table;
}

/// What stands beside the digits, by the decimal exponent.
constexpr std::array<Characters, 2 *largestExponent + 1> otherCharacters = makeCharacters();

struct Shuffle {
    std::array<std::uint8_t, 16> sources = {};
};

struct Layouts {
    alignas(16) std::array<Shuffle, codes> shuffles = {};
    std::array<std::uint8_t, codes> lengths = {}; ///< with one blank in front
};

constexpr Layouts makeLayouts()
{
    Layouts layouts;
    for (int code = 0; code < codes; ++code) {
        const int form = code / codesPerForm;
        const bool negative = code / 8 % 2 == 1;
        const int lastByte = code % 8;
        const int digits = lastByte < 3 ? lastByte + 1 : lastByte; // up to the last that is not zero
        const int exponent = form < plainForms ? form + lowestPlain : 0;
        const int before = exponent < 0 ? 0 : exponent + 1; // the point
        std::array<std::uint8_t, 24> text = {};
        std::size_t length = 0;
        if (negative)
            text[length++] = minusAt;
        if (exponent < 0) {
            text[length++] = zeroAt;
            text[length++] = pointAt;
            for (int i = exponent + 1; i < 0; ++i)
                text[length++] = zeroAt;
        }
        for (int i = 0; i < before || i < digits; ++i) {
            if (i == before && before > 0)
                text[length++] = pointAt;
            text[length++] = static_cast<std::uint8_t>(i < 3 ? i : i + 1);
        }
        for (int i = 0; form == plainForms && i < 4; ++i)
            text[length++] = static_cast<std::uint8_t>(exponentAt + i);
        const std::size_t blanks = 1 + (length < width ? width - length : 0);
        Shuffle &shuffle = layouts.shuffles[static_cast<std::size_t>(code)];
        for (std::size_t i = 0; i < shuffle.sources.size(); ++i)
            shuffle.sources[i] = i < blanks || i >= blanks + length ? blankAt : text[i - blanks];
        layouts.lengths[static_cast<std::size_t>(code)] = static_cast<std::uint8_t>(blanks + length);
    }
    return layouts;
}

constexpr Layouts layouts = makeLayouts();

/// 10^(5 - e) for the values from 2^binary to below 2^(binary + 1), of which the smallest has the decimal exponent e.
struct Scales {
    std::array<double, 2 *reach + 1> powers = {};
};

constexpr Scales makeScales()
{
    Scales scales;
    for (int binary = -reach; binary <= reach; ++binary)
        scales.powers[static_cast<std::size_t>(binary + reach)] =
            decimalscale::powerOfTen(5 - decimalscale::decimalExponentOf(binary));
    return scales;
}

constexpr Scales scales = makeScales();

/// Four numbers of one column.
struct Digits {
    alignas(32) std::uint64_t characters[lanes]; ///< three digits, an unused byte, three digits, an unused byte
    alignas(32) std::uint64_t exponents[lanes];  ///< place in otherCharacters
    alignas(32) std::uint64_t codes[lanes];      ///< place in the layouts without the last digit's byte
    std::uint8_t notZero[lanes];                 ///< a bit per byte of characters
};

FLOKLUK_FOR_AVX2 inline __m256i all(std::uint64_t value)
{
    return _mm256_set1_epi64x(static_cast<long long>(value));
}

/// The six digits of four numbers below 10^6, one per byte as in Digits::characters: first thousands and rest, then
/// three digits of each. 274877907 / 2^38, 41 / 2^12 and 103 / 2^10 divide by 1000, 100 and 10 exactly for numbers
/// below 2^20, 1000 and 100.
FLOKLUK_FOR_AVX2 inline __m256i splitDigits(__m256i whole)
{
    const __m256i thousands = _mm256_srli_epi64(_mm256_mul_epu32(whole, all(274877907)), 38);
    const __m256i rest = _mm256_sub_epi64(whole, _mm256_mul_epu32(thousands, all(1000)));
    const __m256i both = _mm256_or_si256(thousands, _mm256_slli_epi64(rest, 32));
    const __m256i hundreds = _mm256_srli_epi16(_mm256_mullo_epi16(both, _mm256_set1_epi16(41)), 12);
    const __m256i below100 = _mm256_sub_epi16(both, _mm256_mullo_epi16(hundreds, _mm256_set1_epi16(100)));
    const __m256i tens = _mm256_srli_epi16(_mm256_mullo_epi16(below100, _mm256_set1_epi16(103)), 10);
    const __m256i ones = _mm256_sub_epi16(below100, _mm256_mullo_epi16(tens, _mm256_set1_epi16(10)));
    return _mm256_or_si256(hundreds, _mm256_or_si256(_mm256_slli_epi32(tens, 8), _mm256_slli_epi32(ones, 16)));
}

/// The digits of four values, as writeG6Padded finds them: see there why they are right. Here the power 10^(5 - e) is
/// that of the smallest value with this binary exponent, and a product that reaches 10^6 is multiplied by 0.1. That
/// double is off by 2^-54 of itself and the second product by 2^-53, so the mantissa is off by less than three units,
/// and the same margin will do. What rounds up to 10^6 is left to writeG6Padded.
FLOKLUK_FOR_AVX2 inline void findDigits(const double *values, Digits *digits)
{
    const __m256d value = _mm256_loadu_pd(values);
    const __m256d signBit = _mm256_set1_pd(-0.0);
    const __m256d magnitude = _mm256_andnot_pd(signBit, value);
    const __m256i shiftedBinary =
        _mm256_sub_epi64(_mm256_srli_epi64(_mm256_castpd_si256(magnitude), 52), all(bias - reach));
    __m256i others = _mm256_or_si256(_mm256_cmpgt_epi64(_mm256_setzero_si256(), shiftedBinary),
                                     _mm256_cmpgt_epi64(shiftedBinary, all(2 * reach)));
    const __m256i place = _mm256_andnot_si256(others, shiftedBinary);
    const __m256i zero = _mm256_castpd_si256(_mm256_cmp_pd(value, _mm256_setzero_pd(), _CMP_EQ_OQ));
    others = _mm256_andnot_si256(zero, others); // six digits 0

    const __m256d power = _mm256_i64gather_pd(scales.powers.data(), place, 8);
    const __m256d product = _mm256_mul_pd(magnitude, power);
    const __m256d tooLarge = _mm256_cmp_pd(product, _mm256_set1_pd(1e6), _CMP_GE_OQ);
    const __m256d factor = _mm256_blendv_pd(_mm256_set1_pd(1.0), _mm256_set1_pd(0.1), tooLarge);
    const __m256d shifted = _mm256_add_pd(_mm256_mul_pd(product, factor), _mm256_set1_pd(1048576.0 + 0.5));
    const __m256i fixed = _mm256_and_si256(_mm256_castpd_si256(shifted), all((std::uint64_t(1) << 52) - 1));
    const __m256i distance = _mm256_and_si256(_mm256_add_epi64(fixed, all(margin)), all(0x100000000 - 2 * margin));
    others = _mm256_or_si256(others, _mm256_cmpeq_epi64(distance, _mm256_setzero_si256()));
    const __m256i whole = _mm256_srli_epi64(fixed, 32);
    others = _mm256_or_si256(others, _mm256_cmpgt_epi64(whole, all(999999)));

    // decimalExponentOf, one more for what was too large, counted from -largestExponent
    const __m256i scaled = _mm256_add_epi64(_mm256_mul_epu32(place, all(78913)), all((64 << 18) - reach * 78913));
    const __m256i found = _mm256_sub_epi64(_mm256_srli_epi64(scaled, 18), all(64 - largestExponent));
    const __m256i exponent =
        _mm256_blendv_epi8(_mm256_sub_epi64(found, _mm256_castpd_si256(tooLarge)), all(largestExponent), zero);
    const __m256i plainForm = _mm256_sub_epi64(exponent, all(largestExponent + lowestPlain));
    const __m256i withExponent = _mm256_or_si256(_mm256_cmpgt_epi64(_mm256_setzero_si256(), plainForm),
                                                 _mm256_cmpgt_epi64(plainForm, all(plainForms - 1)));
    const __m256i form = _mm256_blendv_epi8(plainForm, all(plainForms), withExponent);
    const __m256i negative = _mm256_srli_epi64(_mm256_andnot_si256(zero, _mm256_castpd_si256(value)), 63);
    const __m256i code = _mm256_slli_epi64(_mm256_add_epi64(_mm256_add_epi64(form, form), negative), 3);

    const __m256i figures = splitDigits(whole);
    const __m256i first = all(1); // the first digit counts even in a zero
    const int notZero =
        _mm256_movemask_epi8(_mm256_cmpgt_epi8(_mm256_or_si256(figures, first), _mm256_setzero_si256()));
    std::memcpy(digits->notZero, &notZero, sizeof notZero);
    _mm256_store_si256(reinterpret_cast<__m256i *>(digits->characters),
                       _mm256_or_si256(figures, _mm256_set1_epi8('0')));
    _mm256_store_si256(reinterpret_cast<__m256i *>(digits->exponents), exponent);
    _mm256_store_si256(reinterpret_cast<__m256i *>(digits->codes), _mm256_blendv_epi8(code, all(codes), others));
}

/// Writes a blank and one of the four numbers.
FLOKLUK_FOR_AVX2 inline char *writeNumber(const Digits &digits, std::size_t lane, double value, char *out)
{
    if (digits.codes[lane] == codes) {
        *out = ' ';
        return writeG6Padded(value, out + 1);
    }
    const auto lastByte = static_cast<unsigned>(31 - __builtin_clz(digits.notZero[lane]));
    const std::uint64_t code = digits.codes[lane] + lastByte;
    const __m128i figures = _mm_loadl_epi64(reinterpret_cast<const __m128i *>(&digits.characters[lane]));
    const __m128i rest = _mm_loadl_epi64(reinterpret_cast<const __m128i *>(&otherCharacters[digits.exponents[lane]]));
    const __m128i characters = _mm_unpacklo_epi64(figures, rest);
    const __m128i sources = _mm_load_si128(reinterpret_cast<const __m128i *>(&layouts.shuffles[code]));
    _mm_storeu_si128(reinterpret_cast<__m128i *>(out), _mm_shuffle_epi8(characters, sources));
    return out + layouts.lengths[code];
}

FLOKLUK_FOR_AVX2 char *writeLinesAvx2(const std::vector<NumberColumn> &columns, std::size_t begin, std::size_t end,
                                      char *out)
{
    std::vector<Digits> digits(columns.size());
    std::size_t line = begin;
    for (; end - line >= lanes; line += lanes) {
        for (std::size_t k = 0; k < columns.size(); ++k)
            findDigits(columns[k].values + line, &digits[k]);
        for (std::size_t lane = 0; lane < lanes; ++lane) {
            for (std::size_t k = 0; k < columns.size(); ++k) {
                out = writeBlanks(columns[k].blanks - 1, out);
                out = writeNumber(digits[k], lane, columns[k].values[line + lane], out);
            }
            *out++ = '\n';
        }
    }
    return writeG6LinesPlain(columns, line, end, out);
}

} // namespace

char *writeG6Lines(const std::vector<NumberColumn> &columns, std::size_t begin, std::size_t end, char *out)
{
    static const bool hasAvx2 = bestInstructionSet() != InstructionSet::Baseline;
    return hasAvx2 ? writeLinesAvx2(columns, begin, end, out) : writeG6LinesPlain(columns, begin, end, out);
}

#else

char *writeG6Lines(const std::vector<NumberColumn> &columns, std::size_t begin, std::size_t end, char *out)
{
    return writeG6LinesPlain(columns, begin, end, out);
}

#endif

} // namespace numeric
