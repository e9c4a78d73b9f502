#pragma once

#include "samples/PortableMath.h"

#include <cmath>
#include <cstdint>

namespace sample
{

/// Random numbers that are the same on every machine: the generator xoshiro256** (Blackman and Vigna, 2018) with
/// conversions of its own, because those of the standard library differ between compilers.
class Random
{
public:
    /// Different streams of one seed are independent of each other.
    Random(std::uint64_t seed, std::uint64_t stream)
    {
        std::uint64_t mixer = seed;
        mixer = nextSplitMix(&mixer) ^ (stream * 0xD1342543DE82EF95u);
        for (std::uint64_t &word : m_state)
            word = nextSplitMix(&mixer);
    }

    std::uint64_t bits()
    {
        const std::uint64_t result = rotated(m_state[1] * 5, 7) * 9;
        const std::uint64_t shifted = m_state[1] << 17;
        m_state[2] ^= m_state[0];
        m_state[3] ^= m_state[1];
        m_state[1] ^= m_state[2];
        m_state[0] ^= m_state[3];
        m_state[2] ^= shifted;
        m_state[3] = rotated(m_state[3], 45);
        return result;
    }

    /// Evenly distributed, 0 <= value < 1.
    double uniform() { return static_cast<double>(bits() >> 11) * (1.0 / 9007199254740992.0); }
    /// Evenly distributed between the two bounds.
    double between(double low, double high) { return low + (high - low) * uniform(); }

    /// Normally distributed, mean 0 and standard deviation 1 (Marsaglia's polar method).
    double normal()
    {
        if (m_hasSpare) {
            m_hasSpare = false;
            return m_spare;
        }
        double u, v, square;
        do {
            u = 2.0 * uniform() - 1.0;
            v = 2.0 * uniform() - 1.0;
            square = u * u + v * v;
        } while (square >= 1.0 || square == 0.0);
        const double factor = std::sqrt(-2.0 * portable::log(square) / square);
        m_spare = v * factor;
        m_hasSpare = true;
        return u * factor;
    }

    /// A whole number of counts around `mean` >= 0: Poisson's distribution up to a mean of 30, above it the normal
    /// distribution of the same width, rounded and never below 0.
    double counts(double mean)
    {
        if (mean > 30.0) {
            const double value = std::floor(mean + std::sqrt(mean) * normal() + 0.5);
            return value > 0.0 ? value : 0.0;
        }
        const double limit = portable::exp(-mean);
        double count = 0.0;
        double product = uniform();
        while (product > limit) {
            product *= uniform();
            count += 1.0;
        }
        return count;
    }

private:
    static std::uint64_t rotated(std::uint64_t word, int places) { return (word << places) | (word >> (64 - places)); }

    static std::uint64_t nextSplitMix(std::uint64_t *state)
    {
        std::uint64_t z = (*state += 0x9E3779B97F4A7C15u);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
        return z ^ (z >> 31);
    }

    std::uint64_t m_state[4];
    double m_spare = 0.0;
    bool m_hasSpare = false;
};

} // namespace sample
