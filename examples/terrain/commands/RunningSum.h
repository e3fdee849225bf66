#pragma once

#include <cmath>
#include <cstddef>

namespace terrain {

/**
 * Sum and number of the heights in a window that moves along: heights enter at one end and leave at the
 * other.
 *
 * What rounding takes off the sum is kept beside it (Neumaier's summation), so that a mountain that has left
 * the window leaves nothing behind.
 */
class RunningSum
{
public:
    double sum() const { return m_sum + m_lost; }
    std::size_t count() const { return m_count; }

    void enter(double sum, std::size_t count)
    {
        add(sum);
        m_count += count;
    }
    void leave(double sum, std::size_t count)
    {
        add(-sum);
        m_count -= count;
        if (m_count == 0) {
            *this = RunningSum();
        }
    }

private:
    void add(double term)
    {
        const double sum = m_sum + term;
        m_lost += std::abs(m_sum) >= std::abs(term) ? (m_sum - sum) + term : (term - sum) + m_sum;
        m_sum = sum;
    }

    double m_sum = 0;
    double m_lost = 0;
    std::size_t m_count = 0;
};

} // namespace terrain
