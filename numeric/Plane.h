#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>

namespace numeric
{

/// A run of doubles, one per pixel of a map, whose memory is not cleared when it is made: maps are filled by
/// several threads right after, and clearing would cost as much as the filling. Moves, never copies.
class Plane
{
public:
    Plane() = default;
    Plane(Plane &&other) noexcept { *this = std::move(other); }
    /// The other plane is empty afterwards.
    Plane &operator=(Plane &&other) noexcept
    {
        m_values = std::move(other.m_values);
        m_size = std::exchange(other.m_size, 0);
        m_capacity = std::exchange(other.m_capacity, 0);
        return *this;
    }

    /// Makes room for `count` values; their contents are undefined. Memory that is large enough is kept.
    void resize(std::size_t count)
    {
        if (count > m_capacity) {
            m_values.reset(); // the old memory goes before the new is asked for
            m_values.reset(new double[count]);
            m_capacity = count;
        }
        m_size = count;
    }

    /// Keeps the first `count` values (count <= size()) and gives memory back when less than 7/8 of it is used.
    void truncate(std::size_t count)
    {
        m_size = count;
        if (m_capacity / 8 * 7 <= count)
            return;
        std::unique_ptr<double[]> smaller(new double[count]);
        std::copy_n(m_values.get(), count, smaller.get());
        m_values = std::move(smaller);
        m_capacity = count;
    }

    /// Forgets the values and their memory.
    void clear()
    {
        m_values.reset();
        m_size = m_capacity = 0;
    }

    std::size_t size() const { return m_size; }
    /// How many values fit without asking for memory.
    std::size_t capacity() const { return m_capacity; }
    double *data() { return m_values.get(); }
    const double *data() const { return m_values.get(); }
    double &operator[](std::size_t i) { return m_values[i]; }
    double operator[](std::size_t i) const { return m_values[i]; }

private:
    std::unique_ptr<double[]> m_values;
    std::size_t m_size = 0;
    std::size_t m_capacity = 0;
};

} // namespace numeric
