#include "analysis/uncertainty/UncertaintyMap.h"

#include "analysis/uncertainty/Distributions.h"
#include "analysis/uncertainty/Median.h"
#include "analysis/uncertainty/UncertaintyBlocks.h"
#include "numeric/ParallelRanges.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>
#include <mutex>
#include <new>

namespace
{

/// chi^2 of pixels with material: those near the expected median one by one, the others counted.
struct MaterialSquares {
    double low = 0.0;
    double high = std::numeric_limits<double>::infinity();
    std::vector<double> near;
    std::size_t below = 0;
    std::size_t above = 0;

    /// Counts without a branch: below or above the expected median is as good as random.
    void add(double chiSquare, bool isMaterial)
    {
        below += static_cast<std::size_t>(isMaterial & (chiSquare < low));
        above += static_cast<std::size_t>(isMaterial & (chiSquare > high));
        if (isMaterial & !((chiSquare < low) | (chiSquare > high)))
            near.push_back(chiSquare);
    }
    void add(const MaterialSquares &other)
    {
        near.insert(near.end(), other.near.begin(), other.near.end());
        below += other.below;
        above += other.above;
    }
    std::size_t count() const { return below + near.size() + above; }
};

class MapRun
{
public:
    MapRun(const UncertaintyTask &task, int threads, UncertaintyMap *out)
        : m_task(task)
        , m_threads(threads)
        , m_out(*out)
        , m_pixels(task.results->count())
        , m_isScaleKnown(task.constants->degrees == 0)
    {
    }

    void run()
    {
        if (!m_isScaleKnown)
            estimateScale();
        else if (m_out.noise.isUniform)
            m_out.noise.scale = std::numeric_limits<double>::quiet_NaN();
        m_out.noise.isScaleAssumed = !m_out.noise.isUniform; // until residuals say more
        calculate();
        if (!m_isScaleKnown) {
            findScale();
            applyScale();
        }
    }

private:
    static bool isCounted(double chiSquare)
    {
        return (chiSquare >= 0.0) & (chiSquare <= std::numeric_limits<double>::max());
    }
    /// Adds those of some pixels that are material: t above the limit, or t^2 above 9 sigma_t^2.
    void addMaterial(const double *chiSquares, const double *amounts, const double *variances, std::size_t count,
                     MaterialSquares *material) const
    {
        const double least = m_out.thinnest.value_or(0.0);
        const double factor = m_out.thinnest ? -1.0 : 9.0 * m_expectedScale;
        for (std::size_t i = 0; i < count; ++i) {
            const double t = amounts[i];
            material->add(chiSquares[i], isCounted(chiSquares[i]) & (t >= least) & (t * t > factor * variances[i]));
        }
    }
    std::size_t quantityPlanes() const { return 1 + m_out.fractions.size(); }
    double *quantityPlane(std::size_t q) { return (q == 0 ? m_out.valence : m_out.fractions[q - 1]).data(); }

    /// The scale by all pixels of blocks that are evenly spread over the map, to tell material by and to know where
    /// to look for the median.
    void estimateScale()
    {
        constexpr std::size_t mostBlocks = 1024;
        const std::size_t blocks = (m_pixels + blockPixels - 1) / blockPixels;
        const std::size_t step = (blocks + mostBlocks - 1) / mostBlocks;
        UncertaintyBlocks calculator(m_task);
        std::vector<double> squares;
        for (std::size_t block = 0; block < blocks; block += step) {
            const UncertaintyBlock &found = calculator.calculate(block * blockPixels);
            const std::size_t count = std::min(blockPixels, m_pixels - block * blockPixels);
            std::copy_if(found.chiSquare.begin(), found.chiSquare.begin() + count, std::back_inserter(squares),
                         isCounted);
        }
        const double middle = *median(&squares);
        m_expectedScale = middle / chiSquareMedian(m_task.constants->degrees);
        constexpr double margin = 0.1; // ten times what 65 536 pixels leave unknown
        m_material.low = middle * (1.0 - margin);
        m_material.high = middle * (1.0 + margin);
    }

    /// Everything at a scale of 1; as standard errors where that is the scale, as variances and chi^2 otherwise.
    void calculate()
    {
        std::mutex mutex;
        parallelBlocks(m_pixels, m_threads, [this, &mutex](std::size_t begin, std::size_t end) {
            UncertaintyBlocks calculator(m_task);
            MaterialSquares material;
            material.low = m_material.low;
            material.high = m_material.high;
            for (std::size_t pixel = begin; pixel < end; pixel += blockPixels) {
                const std::size_t count = std::min(blockPixels, end - pixel);
                const UncertaintyBlock &found = calculator.calculate(pixel);
                if (!m_isScaleKnown)
                    addMaterial(found.chiSquare.data(), calculator.amounts(), found.amount.data(), count, &material);
                store(found, pixel, count);
            }
            const std::lock_guard<std::mutex> lock(mutex);
            m_material.add(material);
        });
    }

    void store(const UncertaintyBlock &found, std::size_t pixel, std::size_t count)
    {
        const auto put = [this, pixel, count](const BlockRun &run, double *plane) {
            if (!m_isScaleKnown) {
                numeric::streamCopy(run.data(), count, plane + pixel);
                return;
            }
            BlockRun roots;
            numeric::squareRoots(run.data(), blockPixels, m_out.noise.scale, roots.data());
            numeric::streamCopy(roots.data(), count, plane + pixel);
        };
        put(found.amount, m_out.amount.data());
        for (std::size_t q = 0; q < quantityPlanes(); ++q)
            put(found.quantities[q], quantityPlane(q));
        if (!m_isScaleKnown)
            put(found.chiSquare, m_out.misfit.data());
    }

    void findScale()
    {
        std::optional<double> middle = median(&m_material.near, m_material.below, m_material.above);
        if (!middle) { // the evenly spread blocks were not like the others
            m_material = MaterialSquares();
            addMaterial(m_out.misfit.data(), m_task.results->t(), m_out.amount.data(), m_pixels, &m_material);
            middle = median(&m_material.near);
        }
        m_out.scalePixels = m_material.count();
        if (m_out.scalePixels > 0 || m_out.noise.isUniform)
            m_out.noise.scale = *middle / chiSquareMedian(m_task.constants->degrees);
        if (m_out.scalePixels == 0)
            return;
        m_out.noise.isScaleAssumed = false;
        m_out.significance = 3.0 * std::sqrt(m_expectedScale / m_out.noise.scale);
    }

    void applyScale()
    {
        const double scale = m_out.noise.scale;
        const double perDegree = 1.0 / (scale * m_task.constants->degrees);
        numeric::parallelRanges(m_pixels, m_threads, [this, scale, perDegree](std::size_t begin, std::size_t end) {
            const std::size_t count = end - begin;
            double *const amounts = m_out.amount.data() + begin;
            numeric::squareRoots(amounts, count, scale, amounts);
            for (std::size_t q = 0; q < quantityPlanes(); ++q)
                numeric::squareRoots(quantityPlane(q) + begin, count, scale, quantityPlane(q) + begin);
            double *const misfit = m_out.misfit.data();
            for (std::size_t i = begin; i < end; ++i)
                misfit[i] *= perDegree;
        });
    }

    const UncertaintyTask &m_task;
    int m_threads;
    UncertaintyMap &m_out;
    std::size_t m_pixels;
    bool m_isScaleKnown;
    double m_expectedScale = 1.0;
    MaterialSquares m_material;
};

/// Room for what is asked for; throws std::bad_alloc.
void makeRoom(const UncertaintyTask &task, UncertaintyMap *out)
{
    const std::size_t count = task.results->count();
    out->valence.resize(count);
    out->amount.resize(count);
    if (task.constants->degrees > 0)
        out->misfit.resize(count);
    else
        out->misfit.clear();
    const std::size_t found = task.constants->isFourPoints ? 1 : task.constants->fractions.size();
    out->fractions.resize(task.hasFractions ? found : 0);
    for (numeric::Plane &plane : out->fractions)
        plane.resize(count);
}

} // namespace

bool computeUncertainty(const UncertaintyConstants &constants, const std::vector<const A2DData *> &maps,
                        const ResultRecords &results, const UncertaintyRequest &request, UncertaintyMap *out,
                        int threads, numeric::InstructionSet set)
{
    const bool isFourPoints = results.method() == ResultRecords::Method::FourPoints;
    if (constants.points == 0 || maps.size() != constants.count() || constants.isFourPoints != isFourPoints) {
        *out = UncertaintyMap();
        return false;
    }
    out->degrees = constants.degrees;
    out->noise = noiseModelOf(maps);
    out->scalePixels = 0;
    out->significance = 3.0;
    out->thinnest = request.thinnest;
    const UncertaintyTask task = {&constants, &out->noise, &results, maps, request.hasFractions, set};
    try {
        makeRoom(task, out);
        MapRun(task, threads, out).run();
    } catch (const std::bad_alloc &) {
        *out = UncertaintyMap();
        return false;
    }
    if (isFourPoints && request.hasFractions)
        out->fractions.push_back(out->fractions.front().share());
    return true;
}

UncertaintySummary summarize(const UncertaintyMap &map, const ResultRecords &results)
{
    std::vector<std::size_t> material;
    for (std::size_t i = 0; i < map.amount.size(); ++i) {
        if (map.isMaterial(results.t()[i], map.amount[i]))
            material.push_back(i);
    }
    std::vector<double> values;
    const auto medianOf = [&material, &values](auto valueAt) {
        values.clear();
        for (const std::size_t i : material) {
            if (std::isfinite(valueAt(i)))
                values.push_back(valueAt(i));
        }
        return *median(&values);
    };
    UncertaintySummary summary;
    summary.pixels = material.size();
    summary.valence = medianOf([&map](std::size_t i) { return map.valence[i]; });
    summary.amount = medianOf([&map](std::size_t i) { return map.amount[i]; });
    summary.thinnestForTenth =
        medianOf([&map, &results](std::size_t i) { return map.valence[i] * results.t()[i]; }) / 0.1;
    for (const numeric::Plane &plane : map.fractions)
        summary.detectionLimits.push_back(3.29 * medianOf([&plane](std::size_t i) { return plane[i]; }));
    return summary;
}
