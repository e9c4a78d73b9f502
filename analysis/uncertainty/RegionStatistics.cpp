#include "analysis/uncertainty/RegionStatistics.h"

#include "analysis/results/Statistics.h"
#include "analysis/uncertainty/Median.h"
#include "analysis/uncertainty/PixelErrors.h"
#include "analysis/uncertainty/UncertaintyConstants.h"
#include "numeric/ParallelRanges.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace
{

/// Sums over some pixels of a region.
struct Sums {
    PointRow values = {};
    PointRow variances = {}; ///< s^2 at a scale of 1
    double amount = 0.0;
    double weighted = 0.0;        ///< t V
    double valenceVariance = 0.0; ///< sigma_V^2 at a scale of 1
    std::vector<double> valences;

    void add(const Sums &other)
    {
        for (std::size_t k = 0; k < values.size(); ++k) {
            values[k] += other.values[k];
            variances[k] += other.variances[k];
        }
        amount += other.amount;
        weighted += other.weighted;
        valenceVariance += other.valenceVariance;
        valences.insert(valences.end(), other.valences.begin(), other.valences.end());
    }
};

class RegionSums
{
public:
    RegionSums(const RunInfo &run, const std::vector<const A2DData *> &maps, const ResultRecords &results,
               const NoiseModel &noise)
        : m_constants(uncertaintyConstants(run))
        , m_maps(maps)
        , m_results(results)
        , m_noise(noise)
    {
        if (run.references.size() >= 2)
            m_valences = {true, run.references[0].valence, run.references[1].valence};
    }

    const UncertaintyConstants &constants() const { return m_constants; }

    void add(std::size_t pixel, Sums *sums) const
    {
        PointRow y, s;
        if (pixel >= m_results.count() || !read(pixel, &y, &s))
            return;
        const PixelValues found = valuesOf(pixel);
        if (!std::isfinite(found.amount) || !std::isfinite(found.valence))
            return;
        for (std::size_t k = 0; k < m_maps.size(); ++k) {
            sums->values[k] += y[k];
            sums->variances[k] += s[k];
        }
        sums->amount += found.amount;
        sums->weighted += found.amount * found.valence;
        const double error = pixelErrors(m_constants, y.data(), s.data(), found).valence;
        sums->valenceVariance += error * error;
        sums->valences.push_back(found.valence);
    }

private:
    /// False when a map has no good record for the pixel.
    bool read(std::size_t pixel, PointRow *y, PointRow *s) const
    {
        for (std::size_t k = 0; k < m_maps.size(); ++k) {
            const A2DData &map = *m_maps[k];
            if (pixel >= map.absorptions().size())
                return false;
            (*y)[k] = map.absorptions()[pixel];
            (*s)[k] = m_noise.relativeVariance(k, map.I()[pixel], map.I0()[pixel]);
            if (!std::isfinite((*y)[k]) || !std::isfinite((*s)[k]))
                return false;
        }
        return true;
    }

    PixelValues valuesOf(std::size_t pixel) const
    {
        PixelValues found;
        found.amount = m_results.t()[pixel];
        found.fractions[0] = m_results.a()[pixel];
        found.valence = m_constants.isFourPoints ? m_valences.mixed(found.fractions[0])
                                                 : m_results.quantity(ResultPosition::valence)[pixel];
        return found;
    }

    UncertaintyConstants m_constants;
    const std::vector<const A2DData *> &m_maps;
    const ResultRecords &m_results;
    const NoiseModel &m_noise;
    ValencePair m_valences;
};

/// The pixels in portions of a fixed size, which are added up in their order: the same sums for any number of threads.
Sums sumUp(const RegionSums &region, const std::vector<std::size_t> &pixels, int threads)
{
    constexpr std::size_t portion = 16384;
    std::vector<Sums> parts((pixels.size() + portion - 1) / portion);
    const auto addPortions = [&](std::size_t begin, std::size_t end) {
        for (std::size_t p = begin; p < end; ++p) {
            const std::size_t last = std::min(pixels.size(), (p + 1) * portion);
            for (std::size_t i = p * portion; i < last; ++i)
                region.add(pixels[i], &parts[p]);
        }
    };
    numeric::parallelRanges(parts.size(), threads, addPortions, 1);
    Sums all;
    for (const Sums &part : parts)
        all.add(part);
    return all;
}

} // namespace

std::vector<std::size_t> regionPixels(const ResultRecords &results, const std::optional<PixelRectangle> &rectangle,
                                      const std::optional<double> &above)
{
    const PixelRectangle all = {0, 0, results.width() - 1, results.height() - 1};
    const PixelRectangle wanted = rectangle.value_or(all);
    const int left = std::max(0, std::min(wanted.x0, wanted.x1));
    const int right = std::min(all.x1, std::max(wanted.x0, wanted.x1));
    const int top = std::max(0, std::min(wanted.y0, wanted.y1));
    const int bottom = std::min(all.y1, std::max(wanted.y0, wanted.y1));
    std::vector<std::size_t> pixels;
    for (int y = top; y <= bottom; ++y) {
        for (int x = left; x <= right; ++x) {
            const auto pixel =
                static_cast<std::size_t>(y) * static_cast<std::size_t>(results.width()) + static_cast<std::size_t>(x);
            if (pixel < results.count() && (!above || results.t()[pixel] >= *above))
                pixels.push_back(pixel);
        }
    }
    return pixels;
}

RegionStatistics regionStatistics(const RunInfo &run, const std::vector<const A2DData *> &maps,
                                  const ResultRecords &results, const NoiseModel &noise,
                                  const std::vector<std::size_t> &pixels, int threads)
{
    const RegionSums region(run, maps, results, noise);
    const std::size_t n = region.constants().count();
    RegionStatistics statistics;
    statistics.leftOut = pixels.size();
    if (n == 0 || maps.size() != n || noise.maps.size() != n)
        return statistics;
    Sums sums = sumUp(region, pixels, threads);
    const auto count = static_cast<double>(sums.valences.size());
    std::vector<double> means, variances;
    for (std::size_t k = 0; k < n; ++k) {
        means.push_back(sums.values[k] / count);
        variances.push_back(noise.scale * sums.variances[k] / (count * count));
    }
    statistics.pixels = sums.valences.size();
    statistics.leftOut -= statistics.pixels;
    statistics.amount = sums.amount;
    statistics.mean = sums.weighted / sums.amount;
    FiniteSummaryBuilder spread;
    for (const double valence : sums.valences)
        spread.add(valence);
    statistics.scatter = spread.summary().deviation;
    statistics.expectedScatter = std::sqrt(noise.scale * sums.valenceVariance / count);
    statistics.median = *median(&sums.valences);
    statistics.fit = fitSpectrum(run, means, variances);
    const auto &energies = run.method.isNonEquivalent ? run.nonEquivalent.energies : run.fourPoints.energies;
    for (std::size_t k = 0; k < n; ++k)
        statistics.points.push_back({energies[k], means[k], std::sqrt(variances[k]), statistics.fit.fitted[k]});
    return statistics;
}
