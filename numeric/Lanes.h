#pragma once

#include <cmath>
#include <cstddef>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

/// Several pixels side by side. A function that works on vectors of doubles is a template on their type, marked
/// FLOKLUK_ALWAYS_INLINE, and is called by three thin ones: with Lanes2 for every processor, with Lanes4 by one marked
/// FLOKLUK_FOR_AVX2 and with Lanes8 by one marked FLOKLUK_FOR_AVX512. None of them fuses operations, so all give the
/// same bits as plain code.
#define FLOKLUK_ALWAYS_INLINE inline __attribute__((always_inline))
#if defined(__x86_64__)
#define FLOKLUK_FOR_AVX2 __attribute__((target("avx2")))
#define FLOKLUK_FOR_AVX512 __attribute__((target("avx512f")))
#else
#define FLOKLUK_FOR_AVX2
#define FLOKLUK_FOR_AVX512
#endif

namespace numeric
{

enum class InstructionSet { Baseline, Avx2, Avx512 };

/// The best one that this processor has; those beyond Baseline exist on x86-64 only.
inline InstructionSet bestInstructionSet()
{
#if defined(__x86_64__)
    if (__builtin_cpu_supports("avx512f"))
        return InstructionSet::Avx512;
    if (__builtin_cpu_supports("avx2"))
        return InstructionSet::Avx2;
#endif
    return InstructionSet::Baseline;
}

/// Two, four and eight doubles that every operator treats element by element. Keep them inside of functions that are
/// inlined: how they are passed to others depends on the instruction set.
typedef double Lanes2 __attribute__((vector_size(2 * sizeof(double))));
typedef double Lanes4 __attribute__((vector_size(4 * sizeof(double))));
typedef double Lanes8 __attribute__((vector_size(8 * sizeof(double))));
template <class Lanes>
constexpr std::size_t laneCount = sizeof(Lanes) / sizeof(double);

/// Reads or writes as many doubles as there are lanes; any alignment.
template <class Lanes>
FLOKLUK_ALWAYS_INLINE void loadLanes(const double *from, Lanes &to)
{
    std::memcpy(&to, from, sizeof to);
}
template <class Lanes>
FLOKLUK_ALWAYS_INLINE void storeLanes(const Lanes &from, double *to)
{
    std::memcpy(to, &from, sizeof from);
}

/// Makes NaN of the lanes in which `first` or `second` is not above 0; a NaN of these is left to the caller. By bits,
/// because compilers take comparisons of eight lanes apart into single ones: a number is 0 or negative when its bits,
/// or its bits less one, have the sign, which the shift spreads over all of them.
template <class Lanes>
FLOKLUK_ALWAYS_INLINE void nanUnlessPositive(const Lanes &first, const Lanes &second, Lanes &lanes)
{
    using Bits = decltype(first < second);
    typedef unsigned long long Counts __attribute__((vector_size(sizeof(Lanes)))); // may wrap round
    const Counts l = reinterpret_cast<const Counts &>(first);
    const Counts r = reinterpret_cast<const Counts &>(second);
    const Bits bad = reinterpret_cast<Bits>((l - 1) | l | (r - 1) | r) >> 63;
    lanes = reinterpret_cast<Lanes>(reinterpret_cast<Bits>(lanes) | bad);
}

/// Copies to memory that is not read again soon, past the cache where the processor can: a result of many planes
/// would otherwise be read from memory only to be overwritten. `to` lies on a multiple of 16 bytes for that. Call
/// finishStreaming() before another thread reads.
FLOKLUK_ALWAYS_INLINE void streamCopy(const double *from, std::size_t count, double *to)
{
#if defined(__SSE2__)
    if (reinterpret_cast<std::size_t>(to) % 16 == 0) {
        const std::size_t pairs = count / 2 * 2;
        for (std::size_t i = 0; i < pairs; i += 2)
            _mm_stream_pd(to + i, _mm_loadu_pd(from + i));
        if (count > pairs)
            to[pairs] = from[pairs];
        return;
    }
#endif
    std::memcpy(to, from, count * sizeof(double));
}

/// to[i] = sqrt(factor * from[i]), exactly rounded; `to` may be `from`.
inline void squareRoots(const double *from, std::size_t count, double factor, double *to)
{
    std::size_t i = 0;
#if defined(__SSE2__)
    const __m128d factors = _mm_set1_pd(factor);
    for (; i + 2 <= count; i += 2)
        _mm_storeu_pd(to + i, _mm_sqrt_pd(_mm_mul_pd(factors, _mm_loadu_pd(from + i))));
#endif
    for (; i < count; ++i)
        to[i] = std::sqrt(factor * from[i]);
}

inline void finishStreaming()
{
#if defined(__SSE2__)
    _mm_sfence();
#endif
}

} // namespace numeric
