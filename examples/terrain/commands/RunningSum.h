#pragma once

#include <cmath>

namespace terrain {

/**
 * Adds a term to a sum, and what rounding takes off it to what was @p lost before: Neumaier's summation.
 * A. Neumaier (1974), Rundungsfehleranalyse einiger Verfahren zur Summation endlicher Summen, Zeitschrift
 * für Angewandte Mathematik und Mechanik 54, 39-51.
 */
inline void add_term(double& sum, double& lost, double term)
{
    const double before = sum;
    const bool is_larger = std::abs(before) >= std::abs(term);
    const double larger = is_larger ? before : term;
    const double smaller = is_larger ? term : before;
    sum = before + term;
    lost += (larger - sum) + smaller;
}

/**
 * Sum and number of the heights in a window that moves along: heights enter at one end and leave at the
 * other.
 *
 * What rounding takes off the sum is kept beside it, so that a mountain that has left the window leaves
 * nothing behind.
 */
class RunningSum
{
public:
    double sum() const { return m_sum + m_lost; }
    double count() const { return m_count; } ///< a whole number

    void enter(double sum, double count)
    {
        add_term(m_sum, m_lost, sum);
        m_count += count;
    }
    void leave(double sum, double count)
    {
        add_term(m_sum, m_lost, -sum);
        m_count -= count;
        if (m_count == 0) {
            *this = RunningSum();
        }
    }

private:
    double m_sum = 0;
    double m_lost = 0;
    double m_count = 0; // as a number that can be reckoned with beside the others
};

} // namespace terrain
