#include "analysis/uncertainty/UncertaintyConstants.h"

#include "analysis/uncertainty/LeastSquaresBasis.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <numeric>
#include <utility>

using Vector = std::vector<double>;

namespace
{

bool isSupported(std::size_t points, std::size_t unknowns)
{
    return points >= unknowns && points <= mostUncertaintyPoints;
}

void add(PointRow *row, double factor, const Vector &values)
{
    for (std::size_t k = 0; k < values.size(); ++k)
        (*row)[k] += factor * values[k];
}

double dot(const Vector &l, const Vector &r)
{
    double sum = 0.0;
    for (std::size_t k = 0; k < l.size(); ++k)
        sum += l[k] * r[k];
    return sum;
}

/// Columns that span the same backgrounds as 1, E or 1, L^3, L^4 and stay far from dependent.
std::vector<Vector> backgroundColumns(NonEquivalentBackground background, const Vector &energies)
{
    const std::size_t n = energies.size();
    const double centre = std::accumulate(energies.begin(), energies.end(), 0.0) / static_cast<double>(n);
    const bool isLinear = background == NonEquivalentBackground::Linear;
    std::vector<Vector> columns(isLinear ? 2 : 3, Vector(n, 1.0));
    if (isLinear) {
        for (std::size_t k = 0; k < n; ++k)
            columns[1][k] = (energies[k] - centre) / centre;
        return columns;
    }
    for (std::size_t k = 0; k < n; ++k) {
        const double ratio = centre / energies[k]; // L over that of the centre
        const double cube = ratio * ratio * ratio;
        columns[1][k] = cube - 1.0;
        columns[2][k] = cube * ratio - 1.0 - 4.0 / 3.0 * (cube - 1.0);
    }
    return columns;
}

/// Where the largest value of the rows from `first` on stands: row and point.
std::pair<std::size_t, std::size_t> pivotOf(const std::vector<Vector> &rows, std::size_t first)
{
    std::pair<std::size_t, std::size_t> best(first, 0);
    for (std::size_t i = first; i < rows.size(); ++i) {
        for (std::size_t k = 0; k < rows[i].size(); ++k) {
            if (std::abs(rows[i][k]) > std::abs(rows[best.first][best.second]))
                best = {i, k};
        }
    }
    return best;
}

/// N T by elimination with full pivoting, from the orthonormal rows N^T.
ResidualBasis residualBasis(const std::vector<Vector> &complement)
{
    ResidualBasis basis;
    if (complement.empty())
        return basis;
    std::vector<Vector> rows = complement;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const auto [row, point] = pivotOf(rows, i); // points of earlier rows are 0 from here on
        std::swap(rows[i], rows[row]);
        basis.own[i] = point;
        const double pivot = rows[i][point];
        for (double &value : rows[i])
            value /= pivot;
        for (std::size_t j = 0; j < rows.size(); ++j) {
            const double factor = j == i ? 0.0 : rows[j][point];
            for (std::size_t k = 0; k < rows[j].size(); ++k)
                rows[j][k] -= factor * rows[i][k];
        }
    }
    const auto end = basis.own.begin() + static_cast<std::ptrdiff_t>(rows.size());
    for (std::size_t k = 0; k < rows[0].size(); ++k) {
        const bool isShared = std::find(basis.own.begin(), end, k) == end;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            if (isShared)
                basis.weights[basis.sharedCount][i] = rows[i][k];
            for (const Vector &vector : complement)
                basis.back[k][i] += vector[k] * vector[basis.own[i]];
        }
        if (isShared)
            basis.shared[basis.sharedCount++] = k;
    }
    return basis;
}

void setResiduals(const LeastSquaresBasis &basis, UncertaintyConstants *constants)
{
    constants->residuals = residualBasis(basis.complement);
    constants->degrees = static_cast<int>(basis.complement.size());
}

/// What fraction a and valence have in common.
void setFourPoints(const UncertaintyConstants::Quantity &fraction, const ValencePair &valences,
                   UncertaintyConstants *constants)
{
    constants->isFourPoints = true;
    constants->fractions = {fraction, fraction};
    constants->valence = fraction;
    constants->valence.factor =
        valences.known ? valences.first - valences.second : std::numeric_limits<double>::quiet_NaN();
}

UncertaintyConstants threePointConstants(const FourPointsReferences &references, const ValencePair &valences)
{
    const Vector &a = references.a;
    const Vector &b = references.b;
    const double stepA = a[1] - a[0];
    const double stepB = b[1] - b[0];
    const double heightB = (b[2] - b[0]) / stepB;
    const double perStep = 2.0 / (stepA + stepB);
    const double scale = perStep / ((a[2] - a[0]) / stepA - heightB);

    UncertaintyConstants constants;
    constants.points = 3;
    constants.amount = {-perStep, perStep};
    setFourPoints({{scale * (heightB - 1.0), -scale * heightB, scale}}, valences, &constants);
    return constants;
}

} // namespace

UncertaintyConstants uncertaintyConstants(NonEquivalentBackground background, const NonEquivalentReferences &references,
                                          const std::vector<double> &valences)
{
    UncertaintyConstants constants;
    const std::size_t m = references.columns.size();
    const std::size_t n = references.energies.size();
    if (m == 0 || valences.size() < m ||
        !isSupported(n, static_cast<std::size_t>(nonEquivalentUnknowns(references.count(), background))))
        return constants;
    std::vector<Vector> columns = backgroundColumns(background, references.energies);
    const std::size_t first = columns.size();
    columns.insert(columns.end(), references.columns.begin(), references.columns.end());
    const LeastSquaresBasis basis = leastSquaresBasis(columns);

    constants.points = static_cast<int>(n);
    for (std::size_t j = 0; j < m; ++j) {
        const double jump = references.weights[j] * references.jumpSum;
        const Vector &inverse = basis.inverse[first + j];
        add(&constants.amount, jump, inverse);
        add(&constants.valence.row, jump * valences[j], inverse);
        constants.fractions.emplace_back();
        add(&constants.fractions.back().row, jump, inverse);
    }
    setResiduals(basis, &constants);
    return constants;
}

UncertaintyConstants uncertaintyConstants(FourPointsVariant variant, const FourPointsReferences &references,
                                          const ValencePair &valences)
{
    UncertaintyConstants constants;
    const std::size_t n = references.energies.size();
    if (variant == FourPointsVariant::None || !isSupported(n, pointsNeeded(variant)))
        return constants;
    if (variant == FourPointsVariant::ThreePoint)
        return threePointConstants(references, valences);

    const std::size_t anchors = variant == FourPointsVariant::Exact ? 3 : n - 1;
    Vector distance, sum; // of the anchor points from the V point in eV; A + B
    for (std::size_t k = 0; k < anchors; ++k) {
        distance.push_back(references.energies[k] - references.energies[anchors]);
        sum.push_back(references.a[k] + references.b[k]);
    }
    const Vector ones(anchors, 1.0);
    const LeastSquaresBasis line = leastSquaresBasis({ones, distance});
    const LeastSquaresBasis all = leastSquaresBasis({ones, distance, sum});
    const Vector &h = line.inverse[0]; // the line's value where the distance is 0
    double w = 0.0;
    for (const Vector &row : line.complement)
        w += dot(row, sum) * dot(row, sum);

    const double a4 = references.a[anchors];
    const double b4 = references.b[anchors];
    const double k = references.r / (references.r * b4 - a4);
    const double g = 2.0 / (1.0 + references.r);
    UncertaintyConstants::Quantity fraction;
    fraction.offset = k * (b4 - 0.5 * g * dot(h, sum));
    add(&fraction.row, k * g, h);
    fraction.row[anchors] = -k * g;

    constants.points = static_cast<int>(anchors + 1);
    add(&constants.amount, 2.0, all.inverse[2]);
    setResiduals(all, &constants);
    setFourPoints(fraction, valences, &constants);
    constants.isInverse = constants.degrees > 0;
    constants.inverseNorm = 8.0 / w;
    return constants;
}

UncertaintyConstants uncertaintyConstants(const RunInfo &run)
{
    if (run.method.isNonEquivalent) {
        std::vector<double> valences;
        for (const RunReference &reference : run.references)
            valences.push_back(reference.valence);
        return uncertaintyConstants(run.method.background, run.nonEquivalent, valences);
    }
    ValencePair valences;
    if (run.references.size() >= 2)
        valences = {true, run.references[0].valence, run.references[1].valence};
    return uncertaintyConstants(run.method.variant, run.fourPoints, valences);
}
