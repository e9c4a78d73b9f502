#include "samples/ParticleField.h"

#include "samples/Random.h"

#include <algorithm>
#include <cmath>

namespace sample
{

namespace
{

constexpr int largeParticles = 11;
constexpr int fineParticles = 16;
constexpr std::uint64_t particleStream = 1000; // apart from the streams of the counting noise

/// Rises smoothly from 0 at x <= 0 to 1 at x >= 1.
double smoothStep(double x)
{
    x = std::min(1.0, std::max(0.0, x));
    return x * x * (3.0 - 2.0 * x);
}

/// A number between 0 and 1 that belongs to a point of the noise's lattice.
double latticeValue(std::int64_t ix, std::int64_t iy, std::uint64_t salt)
{
    std::uint64_t z = salt + static_cast<std::uint64_t>(ix) * 0x9E3779B97F4A7C15u +
                      static_cast<std::uint64_t>(iy) * 0xC2B2AE3D27D4EB4Fu;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
    z ^= z >> 31;
    return static_cast<double>(z >> 11) * (1.0 / 9007199254740992.0);
}

double inMillionths(double value)
{
    return std::floor(value * 1e6 + 0.5);
}

} // namespace

ParticleField::ParticleField(int width, int height, std::uint64_t seed)
    : m_width(width)
    , m_height(height)
    , m_pixel(1.0 / std::min(width, height))
    , m_seed(seed)
{
    place(seed);
}

ParticleField::Particle ParticleField::makeParticle(std::uint64_t seed, int index)
{
    Random random(seed, particleStream + static_cast<std::uint64_t>(index));
    constexpr double largest = 0.21;
    Particle particle = {};
    if (index < largeParticles)
        particle.radius = largest * (1.0 - 0.055 * index) * random.between(0.9, 1.0);
    else
        particle.radius = random.between(0.014, 0.034);
    for (int lobes = 0; lobes < 3; ++lobes) {
        for (double &amplitude : particle.harmonics[lobes])
            amplitude = random.between(-0.09, 0.09) / (1 + lobes);
    }
    particle.thickness = 1.05 * std::sqrt(particle.radius / largest) * random.between(0.8, 1.0);
    particle.coreEnd = random.between(0.05, 0.35);
    particle.rimStart = particle.coreEnd + random.between(0.50, 0.65);
    particle.kind = index % 5 == 2 ? Kind::ThreeToFour : index % 5 == 4 ? Kind::Unreacted : Kind::TwoToThree;
    return particle;
}

/// Strews the particles, largest first, with little overlap; a strip at the right stays empty.
void ParticleField::place(std::uint64_t seed)
{
    const double right = m_width * m_pixel - 0.12;
    const double bottom = m_height * m_pixel;
    for (int index = 0; index < largeParticles + fineParticles; ++index) {
        Particle particle = makeParticle(seed, index);
        Random random(seed, particleStream + 100 + static_cast<std::uint64_t>(index));
        bool placed = false;
        for (int attempt = 0; attempt < 200 && !placed; ++attempt) {
            particle.x = random.between(0.0, right - particle.radius);
            particle.y = random.between(0.0, bottom);
            placed = !overlapsTooMuch(particle);
        }
        if (placed)
            m_particles.push_back(particle);
    }
}

bool ParticleField::overlapsTooMuch(const Particle &particle) const
{
    return std::any_of(m_particles.begin(), m_particles.end(), [&particle](const Particle &other) {
        const double dx = particle.x - other.x;
        const double dy = particle.y - other.y;
        const double allowed = 0.9 * (particle.radius + other.radius);
        return dx * dx + dy * dy < allowed * allowed;
    });
}

double ParticleField::noise(double x, double y, double grain, std::uint64_t salt) const
{
    const double gx = x / grain;
    const double gy = y / grain;
    const double fx = std::floor(gx);
    const double fy = std::floor(gy);
    const auto ix = static_cast<std::int64_t>(fx);
    const auto iy = static_cast<std::int64_t>(fy);
    const double wx = smoothStep(gx - fx);
    const double wy = smoothStep(gy - fy);
    const std::uint64_t key = m_seed * 0xD6E8FEB86659FD93u + salt;
    const double top = latticeValue(ix, iy, key) * (1.0 - wx) + latticeValue(ix + 1, iy, key) * wx;
    const double low = latticeValue(ix, iy + 1, key) * (1.0 - wx) + latticeValue(ix + 1, iy + 1, key) * wx;
    return top * (1.0 - wy) + low * wy;
}

/// Adds what the particle holds of each reference at the point (x, y) to `amounts` (edge jumps).
void ParticleField::addParticle(const Particle &particle, double x, double y, double amounts[]) const
{
    const double dx = x - particle.x;
    const double dy = y - particle.y;
    const double square = dx * dx + dy * dy;
    const double reach = 1.4 * particle.radius;
    if (square >= reach * reach)
        return;
    const double distance = std::sqrt(square);
    double outline = 1.0;
    if (distance > 0.0) {
        const double c1 = dx / distance; // cosine and sine of the polar angle, then of its multiples
        const double s1 = dy / distance;
        double c = c1;
        double s = s1;
        for (const auto &harmonic : particle.harmonics) {
            const double nextC = c * c1 - s * s1;
            s = s * c1 + c * s1;
            c = nextC;
            outline += harmonic[0] * c + harmonic[1] * s;
        }
    }
    const double depth = distance / (particle.radius * outline); // 0 in the centre, 1 at the rim
    if (depth >= 1.0)
        return;

    const double coarse = noise(x, y, 0.055, 1) - 0.5;
    const double grains = noise(x, y, 0.016, 2) - 0.5;
    const double fine = noise(x, y, 0.007, 3) - 0.5;
    const double porosity = 1.0 + 0.22 * coarse + 0.16 * grains + 0.10 * fine;
    const double amount = particle.thickness * std::sqrt(1.0 - depth * depth) * porosity;
    const double front = depth + 0.22 * coarse + 0.12 * (noise(x, y, 0.025, 4) - 0.5) + 0.08 * fine;
    const double reacted = smoothStep((front - particle.coreEnd) / (particle.rimStart - particle.coreEnd));
    if (particle.kind == Kind::Unreacted) {
        amounts[0] += amount;
        return;
    }
    const int core = particle.kind == Kind::TwoToThree ? 0 : 1;
    amounts[core] += amount * (1.0 - reacted);
    amounts[core + 1] += amount * reacted;
}

void ParticleField::fillRow(int y, Pixel *row) const
{
    constexpr double slopePerBackground = -3.0 / edgeEnergy; // absorption falls with the third power of the energy
    const double py = (y + 0.5) * m_pixel;
    const double stripe = 1.0 + 0.05 * (noise(0.0, py, 0.05, 5) - 0.5) + 0.03 * (noise(0.0, py, 0.015, 6) - 0.5);
    const double beamY = (y + 0.5) / m_height - 0.46;
    for (int x = 0; x < m_width; ++x) {
        const double px = (x + 0.5) * m_pixel;
        double amounts[referenceCount] = {};
        for (const Particle &particle : m_particles)
            addParticle(particle, px, py, amounts);
        const double total = amounts[0] + amounts[1] + amounts[2];

        Pixel &pixel = row[x];
        pixel = {};
        const double thickness = inMillionths(total);
        if (thickness > 0.0) {
            const double first = inMillionths(amounts[0] / total);
            const double last = std::min(inMillionths(amounts[2] / total), 1e6 - first);
            pixel.thickness = thickness / 1e6;
            pixel.fractions[0] = first / 1e6;
            pixel.fractions[1] = (1e6 - first - last) / 1e6;
            pixel.fractions[2] = last / 1e6;
            for (int j = 0; j < referenceCount; ++j)
                pixel.valence += pixel.fractions[j] * valences[j];
        }
        const double atEdge = 0.15 + 0.03 * noise(px, py, 0.4, 7) + 0.12 * total;
        pixel.backgroundSlope = slopePerBackground * atEdge;
        pixel.background = atEdge - pixel.backgroundSlope * edgeEnergy;
        const double beamX = (x + 0.5) / m_width - 0.55;
        pixel.beam = stripe * (1.08 - 0.5 * beamX * beamX - 0.8 * beamY * beamY);
    }
}

} // namespace sample
