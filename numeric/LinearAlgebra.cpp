#include "numeric/LinearAlgebra.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <utility>

namespace numeric
{

void beginCalculation() {}
void endCalculation() {}

namespace
{

/// A negative size becomes one that no array can have: array new throws.
constexpr std::size_t arrayLength(int n)
{
    return static_cast<std::size_t>(n);
}

} // namespace

double **newMatrix(int n)
{
    double **rows = new double *[arrayLength(n)];
    for (int i = 0; i < n; ++i)
        rows[i] = nullptr;
    try {
        for (int i = 0; i < n; ++i)
            rows[i] = new double[arrayLength(n)];
    } catch (...) {
        deleteMatrix(n, rows);
        throw;
    }
    return rows;
}

double *newVector(int n)
{
    return new double[arrayLength(n)];
}

int *newIndex(int n)
{
    return new int[arrayLength(n)];
}

void deleteMatrix(int n, double **matrix)
{
    for (int i = 0; i < n; ++i)
        delete[] matrix[i];
    delete[] matrix;
}

void deleteVector(double *vector)
{
    delete[] vector;
}

void deleteVector(int *index)
{
    delete[] index;
}

void clearMatrix(int n, double **matrix)
{
    for (int i = 0; i < n; ++i)
        clearVector(n, matrix[i]);
}

void clearVector(int n, double *vector)
{
    for (int i = 0; i < n; ++i)
        vector[i] = 0.0;
}

void clearIndex(int n, int *index)
{
    for (int i = 0; i < n; ++i)
        index[i] = 0;
}

void identity(int n, double **matrix)
{
    clearMatrix(n, matrix);
    for (int i = 0; i < n; ++i)
        matrix[i][i] = 1.0;
}

void copyMatrix(int n, const double *const *source, double **target)
{
    for (int i = 0; i < n; ++i)
        copyVector(n, source[i], target[i]);
}

void copyVector(int n, const double *source, double *target)
{
    for (int i = 0; i < n; ++i)
        target[i] = source[i];
}

void matVec(int n, const double *const *a, const double *v, double *out)
{
    for (int i = 0; i < n; ++i) {
        out[i] = 0.0;
        for (int j = 0; j < n; ++j)
            out[i] += a[i][j] * v[j];
    }
}

void matMul(int n, const double *const *a, const double *const *b, double **out)
{
    for (int i = 0; i < n; ++i) {
        for (int j = 0; j < n; ++j) {
            out[i][j] = 0.0;
            for (int k = 0; k < n; ++k)
                out[i][j] += a[i][k] * b[k][j];
        }
    }
}

bool hasNaN(int n, const double *const *matrix)
{
    for (int i = 0; i < n; ++i) {
        if (hasNaN(n, matrix[i]))
            return true;
    }
    return false;
}

bool hasNaN(int n, const double *vector)
{
    for (int i = 0; i < n; ++i) {
        if (std::isnan(vector[i]))
            return true;
    }
    return false;
}

namespace
{

void dumpName(const char *name)
{
    std::printf("# %s = \n", name);
}

void endDumpRow()
{
    std::printf("\n# ");
}

void endDump()
{
    std::printf("\n");
}

void dumpRow(int n, const double *row)
{
    for (int j = 0; j < n; ++j)
        std::printf("%g ", row[j]);
    endDumpRow();
}

} // namespace

void dumpMatrix(const char *name, int n, const double *const *matrix)
{
    if (n < 1)
        return;
    dumpName(name);
    for (int i = 0; i < n; ++i)
        dumpRow(n, matrix[i]);
    endDump();
}

void dumpMatrix(const char *name, int n, const double *const *matrix, const int *p)
{
    if (n < 1)
        return;
    dumpName(name);
    for (int i = 0; i < n; ++i)
        dumpRow(n, matrix[p[i]]);
    endDump();
}

void dumpVector(const char *name, int n, const double *vector)
{
    if (n < 1)
        return;
    dumpName(name);
    dumpRow(n, vector);
    endDump();
}

void dumpVector(const char *name, int n, const double *vector, const int *p)
{
    if (n < 1)
        return;
    dumpName(name);
    for (int i = 0; i < n; ++i)
        std::printf("%g ", vector[p[i]]);
    endDumpRow();
    endDump();
}

void dumpIndex(const char *name, int n, const int *index)
{
    if (n < 1)
        return;
    dumpName(name);
    for (int i = 0; i < n; ++i)
        std::printf("%d ", index[i]);
    endDumpRow();
    endDump();
}

void luDecompose(int n, const double *const *a, double **l, double **u, int *p)
{
    for (int k = 0; k < n; ++k)
        p[k] = k;
    copyMatrix(n, a, l);

    for (int k = 0; k < n; ++k) {
        int best = k;
        for (int r = k; r < n; ++r) {
            if (std::fabs(l[p[r]][k]) > static_cast<double>(best)) // the index on purpose, see the header
                best = r;
        }
        std::swap(p[k], p[best]);

        double pivot = l[p[k]][k];
        if (pivot == 0.0)
            pivot = 1.0;
        for (int r = k + 1; r < n; ++r) {
            const double multiplier = l[p[r]][k] / pivot;
            l[p[r]][k] = multiplier;
            for (int j = k + 1; j < n; ++j)
                l[p[r]][j] -= l[p[k]][j] * multiplier;
        }
    }

    for (int i = 0; i < n; ++i) {
        for (int j = 0; j < n; ++j) {
            if (j < i) {
                u[p[i]][j] = 0.0;
            } else {
                u[p[i]][j] = l[p[i]][j];
                l[p[i]][j] = 0.0;
            }
        }
        l[p[i]][i] = 1.0;
    }
}

void forwardSubstitute(int n, const double *const *l, const double *b, double *y, const int *p)
{
    copyVector(n, b, y);
    for (int k = 0; k < n - 1; ++k) {
        y[p[k]] /= l[p[k]][k];
        for (int r = k + 1; r < n; ++r)
            y[p[r]] -= y[p[k]] * l[p[r]][k];
    }
}

void backSubstitute(int n, const double *const *u, const double *y, double *x, const int *p)
{
    copyVector(n, y, x);
    for (int k = n - 1; k >= 0; --k) {
        x[p[k]] /= u[p[k]][k];
        for (int r = k - 1; r >= 0; --r)
            x[p[r]] -= x[p[k]] * u[p[r]][k];
    }
}

} // namespace numeric
