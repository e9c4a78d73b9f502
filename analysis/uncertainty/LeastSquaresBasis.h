#pragma once

#include <vector>

/// A least-squares fit of n values by p columns, seen from the values: what each of them adds to each coefficient, and
/// what of them the columns cannot describe. Modified Gram-Schmidt, every vector orthogonalised twice
/// (A. Bjorck, Numerical Methods for Least Squares Problems, SIAM 1996, 2.4.5): the columns may be nearly dependent.
struct LeastSquaresBasis {
    /// (X^T X)^-1 X^T: p rows of n; coefficient i is the sum of inverse[i][k] y_k.
    std::vector<std::vector<double>> inverse;
    /// n - p rows of n, orthonormal and orthogonal to every column.
    std::vector<std::vector<double>> complement;
};

/// `columns`: p columns of n values each, n >= p >= 1. Dependent columns give huge numbers, infinite ones or NaN.
LeastSquaresBasis leastSquaresBasis(const std::vector<std::vector<double>> &columns);
