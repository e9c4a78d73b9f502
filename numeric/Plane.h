#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>

namespace numeric
{

/// A run of doubles, one per pixel of a map, whose memory is not cleared when it is made: maps are filled by
/// several threads right after, and clearing would cost as much as the filling. Moves and shares, never copies.
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

    /// Another plane on the same values. Whichever of the two is resized takes memory of its own; until then neither
    /// may be written to.
    Plane share() const
    {
        Plane other;
        other.m_values = m_values;
        other.m_size = m_size;
        other.m_capacity = m_capacity;
        return other;
    }

    /// Makes room for `count` values; their contents are undefined. Memory that is large enough and not shared is kept.
    void resize(std::size_t count)
    {
        if (count > m_capacity || m_values.use_count() > 1) {
            clear(); // the old memory goes before the new is asked for
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
        std::shared_ptr<double[]> smaller(new double[count]);
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
    std::shared_ptr<double[]> m_values;
    std::size_t m_size = 0;
    std::size_t m_capacity = 0;
};

} // namespace numeric
