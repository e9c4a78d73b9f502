#pragma once

/// Dense square systems of a few unknowns. A matrix of size n is an array of n row pointers, each row an array of n
/// doubles: element (i, j) is m[i][j]. The solution of A x = b goes through
///   luDecompose(n, A, L, U, p);  forwardSubstitute(n, L, b, y, p);  backSubstitute(n, U, y, x, p);
/// after which unknown k is x[p[k]]. Rows are never moved: logical row k of the decomposition lives in stored row
/// p[k], and so do the results of the substitutions.
///
/// Every function takes the size first and does nothing for a size below 1 unless it says otherwise. None of them
/// allocates but the new... functions, so a hot loop can call them on storage made once. LinearSystem owns a whole
/// set of such storage.
namespace numeric
{

/// Called around each use of the functions below; both do nothing.
void beginCalculation();
void endCalculation();

/// n rows of n doubles, contents undefined. A size that cannot be an array length (a negative one) throws
/// std::bad_array_new_length. Size 0 gives an empty row array.
double **newMatrix(int n);
double *newVector(int n);
int *newIndex(int n);

/// Frees the rows, then the row array; for n < 1 the row array only.
void deleteMatrix(int n, double **matrix);
/// Frees the vector; a null pointer is ignored.
void deleteVector(double *vector);
void deleteVector(int *index);

void clearMatrix(int n, double **matrix);
void clearVector(int n, double *vector);
void clearIndex(int n, int *index);

/// 0 everywhere, 1 on the diagonal.
void identity(int n, double **matrix);

void copyMatrix(int n, const double *const *source, double **target);
void copyVector(int n, const double *source, double *target);

/// out[i] = sum over j of a[i][j] * v[j]; `out` must not be `v`.
void matVec(int n, const double *const *a, const double *v, double *out);
/// out[i][j] = sum over k of a[i][k] * b[k][j]; `out` must be neither `a` nor `b`.
void matMul(int n, const double *const *a, const double *const *b, double **out);

bool hasNaN(int n, const double *const *matrix);
bool hasNaN(int n, const double *vector);

/// Print to standard output for debugging: the name, then the values row by row. With a permutation, row i printed
/// is the stored row p[i].
void dumpMatrix(const char *name, int n, const double *const *matrix);
void dumpMatrix(const char *name, int n, const double *const *matrix, const int *p);
void dumpVector(const char *name, int n, const double *vector);
void dumpVector(const char *name, int n, const double *vector, const int *p);
void dumpIndex(const char *name, int n, const int *index);

/// Splits A into L (unit diagonal) and U by Gaussian elimination (Golub and Van Loan, Matrix Computations, 3.2), both
/// stored through the row permutation p; A is left as it is.
/// The pivot of column k is found by comparing magnitudes with the *row index* chosen so far, not with the largest
/// magnitude: results depend on this order to the last digit, so it must stay. A zero pivot is replaced by 1 during
/// elimination only: it stays on U's diagonal, and a singular system solves to infinities or NaN.
void luDecompose(int n, const double *const *a, double **l, double **u, int *p);
/// Solves L y = b in permuted storage.
void forwardSubstitute(int n, const double *const *l, const double *b, double *y, const int *p);
/// Solves U x = y in permuted storage: unknown k is x[p[k]].
void backSubstitute(int n, const double *const *u, const double *y, double *x, const int *p);

} // namespace numeric
