#pragma once

#include "samples/EdgeModel.h"

#include <cstdint>
#include <vector>

namespace sample
{

/// What one pixel of the sample truly is. Fractions and thickness are whole millionths, so that a file with six
/// decimals states exactly what was measured.
struct Pixel {
    double fractions[referenceCount]; ///< of the edge jump; their sum is 1, or all are 0 where there is no element
    double thickness;                 ///< the edge jump of the pixel: the sum of all references' contributions
    double valence;                   ///< mean valence, 0 where there is no element
    double background;                ///< constant part mu0 of the linear background mu0 + k E
    double backgroundSlope;           ///< k, 1/eV
    double beam;                      ///< incident intensity relative to its mean
};

/// Particles strewn over an empty support, seen through a beam that is not quite even. Most particles turn from
/// valence 2 in the core to 3 at the rim, a few from 3 to 4, a few have valence 2 throughout; where they overlap
/// their amounts add up. The picture scales with its size: the same seed shows the same particles.
class ParticleField
{
public:
    ParticleField(int width, int height, std::uint64_t seed);

    /// Fills `row` with the width() pixels of row `y`.
    void fillRow(int y, Pixel *row) const;

    int width() const { return m_width; }
    int height() const { return m_height; }

private:
    enum class Kind { Unreacted, TwoToThree, ThreeToFour };

    struct Particle {
        double x, y;              // centre, in units of the shorter side of the picture
        double radius;            // mean radius, same units
        double harmonics[3][2];   // cosine and sine amplitudes of the outline for 2, 3 and 4 lobes
        double thickness;         // edge jump at the centre
        double coreEnd, rimStart; // relative depths between which the valence changes
        Kind kind;
    };

    static Particle makeParticle(std::uint64_t seed, int index);
    void place(std::uint64_t seed);
    bool overlapsTooMuch(const Particle &particle) const;
    void addParticle(const Particle &particle, double x, double y, double amounts[]) const;
    /// Smooth noise between 0 and 1 with features of the size `grain`.
    double noise(double x, double y, double grain, std::uint64_t salt) const;

    int m_width;
    int m_height;
    double m_pixel; ///< size of a pixel in units of the shorter side
    std::uint64_t m_seed;
    std::vector<Particle> m_particles;
};

} // namespace sample
