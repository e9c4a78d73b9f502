#include "analysis/uncertainty/LeastSquaresBasis.h"

#include <cmath>
#include <cstddef>
#include <numeric>
#include <utility>

namespace
{

using Vector = std::vector<double>;

double dot(const Vector &l, const Vector &r)
{
    return std::inner_product(l.begin(), l.end(), r.begin(), 0.0);
}

/// Takes the parts along the orthonormal vectors `basis` out of `vector`, twice. Returns how much of each it was.
Vector orthogonalise(const std::vector<Vector> &basis, Vector *vector)
{
    Vector parts(basis.size(), 0.0);
    for (int pass = 0; pass < 2; ++pass) {
        for (std::size_t i = 0; i < basis.size(); ++i) {
            const double part = dot(basis[i], *vector);
            parts[i] += part;
            for (std::size_t k = 0; k < vector->size(); ++k)
                (*vector)[k] -= part * basis[i][k];
        }
    }
    return parts;
}

void divide(Vector *vector, double divisor)
{
    for (double &value : *vector)
        value /= divisor;
}

} // namespace

LeastSquaresBasis leastSquaresBasis(const std::vector<Vector> &columns)
{
    const std::size_t p = columns.size();
    const std::size_t n = columns.front().size();
    std::vector<Vector> q;
    std::vector<Vector> r; // column j: the parts along q_0 ... q_j
    for (Vector column : columns) {
        r.push_back(orthogonalise(q, &column));
        r.back().push_back(std::sqrt(dot(column, column)));
        divide(&column, r.back().back());
        q.push_back(std::move(column));
    }

    LeastSquaresBasis result;
    result.inverse.resize(p);
    for (std::size_t i = p; i-- > 0;) { // R c = Q^T y from the last coefficient on
        result.inverse[i] = q[i];
        for (std::size_t j = i + 1; j < p; ++j) {
            for (std::size_t k = 0; k < n; ++k)
                result.inverse[i][k] -= r[j][i] * result.inverse[j][k];
        }
        divide(&result.inverse[i], r[i][i]);
    }
    while (q.size() < n) { // the axis of which the vectors so far have least
        Vector best(n, 0.0);
        double bestSquare = -1.0;
        for (std::size_t k = 0; k < n; ++k) {
            Vector axis(n, 0.0);
            axis[k] = 1.0;
            orthogonalise(q, &axis);
            const double square = dot(axis, axis);
            if (!(square <= bestSquare)) {
                bestSquare = square;
                best = axis;
            }
        }
        divide(&best, std::sqrt(bestSquare));
        result.complement.push_back(best);
        q.push_back(std::move(best));
    }
    return result;
}
