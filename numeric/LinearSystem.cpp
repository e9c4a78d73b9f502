#include "numeric/LinearSystem.h"

#include "numeric/LinearAlgebra.h"

#include <initializer_list>

namespace numeric
{

LinearSystem::LinearSystem(int size)
    : m_size(size)
{
    beginCalculation();
    try {
        m_a = newMatrix(size);
        m_l = newMatrix(size);
        m_u = newMatrix(size);
        m_b = newVector(size);
        m_y = newVector(size);
        m_x = newVector(size);
        m_p = newIndex(size);
    } catch (...) {
        release();
        throw;
    }
    clear();
    clearVector(m_size, m_x);
    clearIndex(m_size, m_p);
}

LinearSystem::~LinearSystem()
{
    release();
    endCalculation();
}

void LinearSystem::release()
{
    for (double **matrix : {m_a, m_l, m_u}) {
        if (matrix)
            deleteMatrix(m_size, matrix);
    }
    for (double *vector : {m_b, m_y, m_x})
        deleteVector(vector);
    deleteVector(m_p);
}

void LinearSystem::clear()
{
    clearMatrix(m_size, m_a);
    clearVector(m_size, m_b);
}

void LinearSystem::add(const double *basis, double y)
{
    for (int i = 0; i < m_size; ++i) {
        for (int j = 0; j < m_size; ++j)
            m_a[i][j] += basis[i] * basis[j];
        m_b[i] += y * basis[i];
    }
}

void LinearSystem::solve()
{
    decompose();
    substitute();
}

void LinearSystem::decompose()
{
    luDecompose(m_size, m_a, m_l, m_u, m_p);
}

void LinearSystem::substitute()
{
    forwardSubstitute(m_size, m_l, m_b, m_y, m_p);
    backSubstitute(m_size, m_u, m_y, m_x, m_p);
}

} // namespace numeric
