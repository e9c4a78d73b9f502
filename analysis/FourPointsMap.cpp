#include "analysis/FourPointsMap.h"

#include "numeric/ParallelRanges.h"

namespace
{

void calcPixels(const FourPointsMapInput &input, std::size_t begin, std::size_t end, ResultRecords *results)
{
    const A2DData &vPoint = *input.maps.back();
    numeric::LinearSystem work(3);
    std::vector<double> x(input.maps.size());
    for (std::size_t i = begin; i < end; ++i) {
        for (std::size_t k = 0; k < x.size(); ++k)
            x[k] = input.maps[k]->absorption(qint64(i));
        const FourPointsResult pixel = solveFourPoints(input.variant, input.references, x.data(), &work);
        const bool known = qint64(i) < vPoint.count();
        results->x()[i] = known ? vPoint.x()[i] : 0.0;
        results->y()[i] = known ? vPoint.y()[i] : 0.0;
        results->a()[i] = pixel.a;
        results->t()[i] = pixel.t;
    }
}

} // namespace

bool calcFourPointsMap(const FourPointsMapInput &input, ResultRecords *results, int threads)
{
    const A2DData &vPoint = *input.maps.back();
    if (!results->reset(ResultRecords::Method::FourPoints, vPoint.nx(), vPoint.ny()))
        return false;
    numeric::parallelRanges(results->count(), threads, [&input, results](std::size_t begin, std::size_t end) {
        calcPixels(input, begin, end, results);
    });
    return true;
}
