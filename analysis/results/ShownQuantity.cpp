#include "analysis/results/ShownQuantity.h"

#include "analysis/results/ResultQuantities.h"
#include "analysis/results/ResultRecords.h"
#include "numeric/FieldText.h"
#include "numeric/ParallelRanges.h"
#include "numeric/RealToInt.h"

#include <cstddef>
#include <new>

namespace
{

/// of(i) for every pixel.
template <class Of>
const double *derived(std::size_t count, numeric::Plane *work, Of of)
{
    try {
        work->resize(count);
    } catch (const std::bad_alloc &) {
        return nullptr;
    }
    double *const values = work->data();
    numeric::parallelRanges(count, 0, [values, of](std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end; ++i)
            values[i] = of(i);
    });
    return values;
}

} // namespace

const double *shownPlane(const ResultRecords &results, int position, const ValencePair &valences, numeric::Plane *work)
{
    const ResultQuantity *const quantity = quantityAt(position);
    if (!quantity || results.count() == 0)
        return nullptr;
    if (results.method() == ResultRecords::Method::NonEquivalent)
        return results.quantity(position);
    const double *const a = results.a();
    switch (quantity->fourPoints) {
    case FourPointsRule::Fraction:
        return a;
    case FourPointsRule::OtherPart:
        return derived(results.count(), work, [a](std::size_t i) { return 1 - a[i]; });
    case FourPointsRule::MixedValence:
        return derived(results.count(), work, [a, valences](std::size_t i) { return valences.mixed(a[i]); });
    case FourPointsRule::Thickness:
        return results.t();
    case FourPointsRule::None:
        break;
    }
    return nullptr;
}

void maskBelow(const ResultRecords &results, double limit, std::vector<quint8> *mask)
{
    mask->resize(results.count());
    const double *const t = results.t();
    quint8 *const hidden = mask->data();
    numeric::parallelRanges(results.count(), 0, [t, limit, hidden](std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end; ++i)
            hidden[i] = t[i] < limit ? 1 : 0;
    });
}

void maskAbove(const double *values, std::size_t count, double limit, std::vector<quint8> *mask)
{
    mask->resize(count);
    quint8 *const hidden = mask->data();
    numeric::parallelRanges(count, 0, [values, limit, hidden](std::size_t begin, std::size_t end) {
        for (std::size_t i = begin; i < end; ++i)
            hidden[i] = values[i] > limit ? 1 : hidden[i];
    });
}

std::optional<std::size_t> cellAt(const ShownMap &map, double x, double y)
{
    if (!map.values || !(x >= 0 && x < map.grid.nx && y >= 0 && y < map.grid.ny))
        return std::nullopt;
    const auto index = static_cast<std::size_t>(numeric::truncToInt(y)) * static_cast<std::size_t>(map.grid.nx) +
                       static_cast<std::size_t>(numeric::truncToInt(x));
    return index < map.count ? std::optional<std::size_t>(index) : std::nullopt;
}

QString cellText(const ShownMap &map, double x, double y)
{
    const std::optional<std::size_t> cell = cellAt(map, x, y);
    return cell ? fieldText(map.values[*cell]) : QString();
}
