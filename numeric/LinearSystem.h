#pragma once

namespace numeric
{

/// Owns the storage of one n x n system A x = b and of its decomposition: made once, used for as many right-hand
/// sides or matrices as there are, freed with the object. For least squares, accumulate the normal equations with
/// add(), then solve(); they cost half of the digits, which leaves enough for a few unknowns (Golub and Van Loan, 5.3).
class LinearSystem
{
public:
    /// `size` >= 1 unknowns; A and b start as zero.
    explicit LinearSystem(int size);
    ~LinearSystem();
    LinearSystem(const LinearSystem &) = delete;
    LinearSystem &operator=(const LinearSystem &) = delete;

    int size() const { return m_size; }

    /// Sets A and b to zero.
    void clear();

    /// Adds one unweighted sample to the normal equations: A += basis basis^T, b += y basis. `basis` holds n values.
    void add(const double *basis, double y);

    double **matrix() { return m_a; }
    double *rightHandSide() { return m_b; }

    /// decompose() followed by substitute().
    void solve();
    /// Decomposes A; needed once for any number of right-hand sides.
    void decompose();
    /// Solves for the present right-hand side with the decomposition at hand.
    void substitute();

    /// The decomposition as luDecompose() leaves it, for those who substitute for many right-hand sides at once.
    const double *const *lower() const { return m_l; }
    const double *const *upper() const { return m_u; }
    const int *permutation() const { return m_p; }

    /// Unknown k of the last substitution; infinite or NaN when A is singular.
    double unknown(int k) const { return m_x[m_p[k]]; }

private:
    void release();

    int m_size;
    double **m_a = nullptr;
    double **m_l = nullptr;
    double **m_u = nullptr;
    double *m_b = nullptr;
    double *m_y = nullptr;
    double *m_x = nullptr;
    int *m_p = nullptr;
};

} // namespace numeric
