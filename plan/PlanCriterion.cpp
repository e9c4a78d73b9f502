#include "plan/PlanCriterion.h"

#include "plan/FourPointsGradient.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numeric>

using Vector = std::vector<double>;

namespace
{

constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr std::size_t mostColumns = mostPlanReferences + 4;

double dot(const Vector &l, const Vector &r)
{
    return std::inner_product(l.begin(), l.end(), r.begin(), 0.0);
}

/// Makes the columns orthonormal; (*parts)[j][i]: how much of vector i column j had. Gram-Schmidt, twice (see
/// LeastSquaresBasis.h, which also makes the complement, far too large for all candidates).
void orthonormalise(std::vector<Vector> *columns, std::vector<Vector> *parts)
{
    for (std::size_t j = 0; j < columns->size(); ++j) {
        Vector &column = (*columns)[j];
        parts->emplace_back(j + 1, 0.0);
        for (int pass = 0; pass < 2; ++pass) {
            for (std::size_t i = 0; i < j; ++i) {
                const double part = dot((*columns)[i], column);
                parts->back()[i] += part;
                for (std::size_t k = 0; k < column.size(); ++k)
                    column[k] -= part * (*columns)[i][k];
            }
        }
        const double norm = std::sqrt(dot(column, column));
        parts->back()[j] = norm;
        for (double &value : column)
            value /= norm;
    }
}

Vector energiesOf(const std::vector<PlanPoint> &points)
{
    Vector energies;
    for (const PlanPoint &point : points)
        energies.push_back(point.energy);
    return energies;
}

Vector columnOf(const std::vector<PlanPoint> &points, std::size_t reference)
{
    Vector column;
    for (const PlanPoint &point : points)
        column.push_back(point.column[reference]);
    return column;
}

/// s^2 + (y' deltaE)^2 of one scenario at every point.
Vector weightsOf(const PlanRequest &request, const PlanMixture &mixture, const std::vector<PlanPoint> &points,
                 const std::vector<PlanPoint> &candidates)
{
    const PlanNoise noise(request, mixture, candidates);
    Vector weights;
    for (const PlanPoint &point : points) {
        const double drift = mixture.slope(point) * request.deltaE;
        weights.push_back(noise.variance(mixture.absorption(point)) + drift * drift);
    }
    return weights;
}

/// The fit of n values by the p columns X has the coefficients X^+ y, and A and B are u^T X^+ with u = D_j V_j and D_j
/// at the references. Over all points X = Q R; with the rows of Q that were chosen X^+ = R^-1 Q^+, hence
/// u^T X^+ = (R^-T u)^T (Q^T Q)^-1 Q^T, whose normal equations are well conditioned for every sensible choice.
class NonEquivalentCriterion : public PlanCriterion
{
public:
    NonEquivalentCriterion(const PlanRequest &request, const std::vector<PlanPoint> &points, bool hasExtraTerm,
                           const std::vector<PlanPoint> &candidates);

    double of(const std::vector<int> &chosen) const override;
    std::vector<double> along(const std::vector<int> &chosen, std::size_t slot) const override;
    int fewest() const override { return static_cast<int>(m_columns); }
    int most() const override { return mostPlanEnergies(PlanMethod::LinearNonEquivalent); }

private:
    using Row = std::array<double, mostColumns>;
    struct Factor {
        double l[mostColumns][mostColumns];
    };

    void add(int point, Factor *squares) const;
    bool factorise(Factor *factor) const;
    double value(const std::vector<int> &chosen, const Factor &factor) const;
    Row solve(const Factor &factor, Row right) const;
    Row transposedSolve(const std::vector<Vector> &parts, const Row &right) const;
    double product(const Row &l, const Row &r) const;

    std::size_t m_columns = 0;
    std::vector<Row> m_rows;           ///< of Q, one per point
    Row m_valence = {}, m_amount = {}; ///< R^-T u
    struct Scenario {
        double valence;
        double factor;  ///< 1 / (t^2 scenarios)
        Vector weights; ///< one per point
    };
    std::vector<Scenario> m_scenarios;
};

NonEquivalentCriterion::NonEquivalentCriterion(const PlanRequest &request, const std::vector<PlanPoint> &points,
                                               bool hasExtraTerm, const std::vector<PlanPoint> &candidates)
{
    std::vector<Vector> columns = planBackground(request.method, energiesOf(points), hasExtraTerm);
    const std::size_t first = columns.size();
    const Vector jumps = planJumps(request);
    Row valence = {}, amount = {};
    for (std::size_t j = 0; j < jumps.size(); ++j) {
        columns.push_back(columnOf(points, j));
        amount[first + j] = jumps[j];
        valence[first + j] = jumps[j] * request.references[j].valence;
    }
    m_columns = columns.size();
    std::vector<Vector> parts;
    orthonormalise(&columns, &parts);
    m_valence = transposedSolve(parts, valence);
    m_amount = transposedSolve(parts, amount);
    m_rows.resize(points.size());
    for (std::size_t k = 0; k < points.size(); ++k) {
        for (std::size_t j = 0; j < m_columns; ++j)
            m_rows[k][j] = columns[j][k];
    }
    const std::vector<PlanMixture> mixtures = planMixtures(request);
    for (const PlanMixture &mixture : mixtures) {
        const double t = mixture.thickness;
        m_scenarios.push_back({mixture.valence, 1.0 / (t * t * static_cast<double>(mixtures.size())),
                               weightsOf(request, mixture, points, candidates)});
    }
}

/// R^T x = right, where parts[j] is column j of R.
NonEquivalentCriterion::Row NonEquivalentCriterion::transposedSolve(const std::vector<Vector> &parts,
                                                                    const Row &right) const
{
    Row x = {};
    for (std::size_t j = 0; j < m_columns; ++j) {
        double rest = right[j];
        for (std::size_t i = 0; i < j; ++i)
            rest -= parts[j][i] * x[i];
        x[j] = rest / parts[j][j];
    }
    return x;
}

/// Adds a row's squares to the lower half of Q^T Q.
void NonEquivalentCriterion::add(int point, Factor *squares) const
{
    const Row &row = m_rows[static_cast<std::size_t>(point)];
    for (std::size_t i = 0; i < m_columns; ++i) {
        for (std::size_t j = 0; j <= i; ++j)
            squares->l[i][j] += row[i] * row[j];
    }
}

/// Cholesky's decomposition of Q^T Q in its place, with inverse diagonal; false where it is singular.
bool NonEquivalentCriterion::factorise(Factor *factor) const
{
    constexpr double singular = 1e-22; // of the squares of orthonormal columns
    const std::size_t p = m_columns;
    for (std::size_t j = 0; j < p; ++j) {
        double *const own = factor->l[j];
        const double before = own[j];
        for (std::size_t h = 0; h < j; ++h)
            own[j] -= own[h] * own[h];
        if (!(own[j] > std::max(singular, 1e-13 * before)))
            return false;
        own[j] = 1.0 / std::sqrt(own[j]);
        for (std::size_t i = j + 1; i < p; ++i) {
            double sum = factor->l[i][j];
            for (std::size_t h = 0; h < j; ++h)
                sum -= factor->l[i][h] * own[h];
            factor->l[i][j] = sum * own[j];
        }
    }
    return true;
}

NonEquivalentCriterion::Row NonEquivalentCriterion::solve(const Factor &factor, Row right) const
{
    for (std::size_t i = 0; i < m_columns; ++i) {
        for (std::size_t j = 0; j < i; ++j)
            right[i] -= factor.l[i][j] * right[j];
        right[i] *= factor.l[i][i];
    }
    for (std::size_t i = m_columns; i-- > 0;) {
        for (std::size_t j = i + 1; j < m_columns; ++j)
            right[i] -= factor.l[j][i] * right[j];
        right[i] *= factor.l[i][i];
    }
    return right;
}

double NonEquivalentCriterion::product(const Row &l, const Row &r) const
{
    double sum = 0.0;
    for (std::size_t i = 0; i < m_columns; ++i)
        sum += l[i] * r[i];
    return sum;
}

double NonEquivalentCriterion::of(const std::vector<int> &chosen) const
{
    Factor factor = {};
    for (const int k : chosen)
        add(k, &factor);
    return chosen.size() < m_columns || !factorise(&factor) ? infinite : value(chosen, factor);
}

std::vector<double> NonEquivalentCriterion::along(const std::vector<int> &chosen, std::size_t slot) const
{
    Factor others = {};
    for (std::size_t i = 0; i < chosen.size(); ++i) {
        if (i != slot)
            add(chosen[i], &others);
    }
    std::vector<int> set = chosen;
    std::vector<double> values(m_rows.size(), infinite);
    for (std::size_t k = 0; k < m_rows.size() && chosen.size() >= m_columns; ++k) {
        set[slot] = static_cast<int>(k);
        Factor factor = others;
        add(set[slot], &factor);
        if (factorise(&factor))
            values[k] = value(set, factor);
    }
    return values;
}

double NonEquivalentCriterion::value(const std::vector<int> &chosen, const Factor &factor) const
{
    const Row valence = solve(factor, m_valence);
    const Row amount = solve(factor, m_amount);
    double sum = 0.0;
    for (const int index : chosen) {
        const auto k = static_cast<std::size_t>(index);
        const double a = product(m_rows[k], valence);
        const double b = product(m_rows[k], amount);
        for (const Scenario &scenario : m_scenarios) {
            const double part = a - scenario.valence * b;
            sum += part * part * scenario.weights[k] * scenario.factor;
        }
    }
    return std::isfinite(sum) ? sum : infinite;
}

/// The four-points method, for two references; its variant follows from the number of points.
class FourPointsCriterion : public PlanCriterion
{
public:
    FourPointsCriterion(const PlanRequest &request, const std::vector<PlanPoint> &points,
                        const std::vector<PlanPoint> &candidates)
        : m_request(request)
        , m_points(points)
        , m_mixtures(planMixtures(request))
        , m_pure(pureMixtures(request))
    {
        for (const PlanMixture &mixture : m_mixtures)
            m_weights.push_back(weightsOf(request, mixture, points, candidates));
    }

    double of(const std::vector<int> &chosen) const override;
    std::vector<double> along(const std::vector<int> &chosen, std::size_t slot) const override;
    int fewest() const override { return 3; }
    int most() const override { return mostPlanEnergies(m_request.method); }

private:
    const PlanRequest &m_request;
    const std::vector<PlanPoint> &m_points;
    std::vector<PlanMixture> m_mixtures;
    std::vector<PlanMixture> m_pure;
    std::vector<Vector> m_weights; ///< per scenario one per point
};

double FourPointsCriterion::of(const std::vector<int> &chosen) const
{
    std::vector<PlanPoint> points;
    for (const int k : chosen)
        points.push_back(m_points[static_cast<std::size_t>(k)]);
    const FourPointsGradients method(m_request, points);
    double sum = 0.0;
    for (std::size_t s = 0; s < m_mixtures.size(); ++s) {
        const FourPointsGradients::Found found = method.of(m_mixtures[s]);
        sum += found.bias * found.bias;
        for (std::size_t k = 0; k < chosen.size(); ++k)
            sum += found.valence[k] * found.valence[k] * m_weights[s][static_cast<std::size_t>(chosen[k])];
    }
    double pure = 0.0;
    for (const PlanMixture &mixture : m_pure) {
        const double bias = method.of(mixture).bias;
        pure += bias * bias;
    }
    const double value = sum / static_cast<double>(m_mixtures.size()) + pure / static_cast<double>(m_pure.size());
    return std::isfinite(value) ? value : infinite;
}

std::vector<double> FourPointsCriterion::along(const std::vector<int> &chosen, std::size_t slot) const
{
    std::vector<int> set = chosen;
    std::vector<double> values;
    for (std::size_t k = 0; k < m_points.size(); ++k) {
        set[slot] = static_cast<int>(k);
        values.push_back(of(set));
    }
    return values;
}

} // namespace

std::unique_ptr<PlanCriterion> planCriterion(const PlanRequest &request, const std::vector<PlanPoint> &candidates,
                                             bool hasExtraTerm)
{
    return planCriterion(request, candidates, hasExtraTerm, candidates);
}

std::unique_ptr<PlanCriterion> planCriterion(const PlanRequest &request, const std::vector<PlanPoint> &points,
                                             bool hasExtraTerm, const std::vector<PlanPoint> &candidates)
{
    if (isFourPoints(request.method))
        return std::make_unique<FourPointsCriterion>(request, points, candidates);
    return std::make_unique<NonEquivalentCriterion>(request, points, hasExtraTerm, candidates);
}

std::vector<Vector> planBackground(PlanMethod method, const Vector &energies, bool hasExtraTerm)
{
    const std::size_t n = energies.size();
    const double centre = std::accumulate(energies.begin(), energies.end(), 0.0) / static_cast<double>(n);
    std::vector<Vector> columns(1, Vector(n, 1.0));
    const auto add = [&](auto function) {
        columns.emplace_back();
        for (const double energy : energies)
            columns.back().push_back(function(energy));
    };
    const auto distance = [centre](double energy) {
        return (energy - centre) / centre;
    };
    if (backgroundOf(method) == NonEquivalentBackground::Linear) {
        add(distance);
        if (hasExtraTerm)
            add([distance](double energy) { return distance(energy) * distance(energy); });
        return columns;
    }
    for (const int power : {3, 4, 2}) {
        if (power != 2 || hasExtraTerm)
            add([centre, power](double energy) { return std::pow(centre / energy, power) - 1.0; });
    }
    return columns;
}

double distinctness(PlanMethod method, const std::vector<PlanPoint> &candidates, std::size_t reference,
                    const std::vector<std::size_t> &others)
{
    std::vector<Vector> columns = planBackground(method, energiesOf(candidates), false);
    const std::size_t background = columns.size();
    for (const std::size_t other : others)
        columns.push_back(columnOf(candidates, other));
    columns.push_back(columnOf(candidates, reference));
    std::vector<Vector> parts;
    orthonormalise(&columns, &parts);
    const Vector &own = parts.back();
    const double norm = std::sqrt(std::inner_product(own.begin() + static_cast<std::ptrdiff_t>(background), own.end(),
                                                     own.begin() + static_cast<std::ptrdiff_t>(background), 0.0));
    return norm > 0.0 ? own.back() / norm : 0.0;
}
