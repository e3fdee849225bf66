#pragma once

#include "commands/Pair.h"

namespace terrain {

/**
 * Adds a term to a sum, and what rounding takes off it to what was @p lost before. What it takes off is found
 * exactly, without asking which of the two is larger: so pairs of numbers can be added at once.
 * D. E. Knuth, The Art of Computer Programming, volume 2, section 4.2.2, theorem B.
 */
template <class Number>
void add_term(Number& sum, Number& lost, const Number& term)
{
    const Number before = sum;
    sum = before + term;
    const Number added = sum - before;
    lost += (before - (sum - added)) + (term - added);
}

/// The number; 0 where the count is.
inline double unless_empty(double number, double count)
{
    return count == 0 ? 0 : number;
}
inline Pair unless_empty(const Pair& number, const Pair& count)
{
    return where(count != Pair{}, number);
}

/**
 * Sum and number of the heights in a window that moves along: heights enter at one end and leave at the
 * other. Of pairs, there are two windows, which have nothing to do with each other.
 *
 * What rounding takes off the sum is kept beside it, so that a mountain that has left the window leaves
 * nothing behind.
 */
template <class Number>
class RunningSumOf
{
public:
    Number sum() const { return m_sum + m_lost; }
    Number count() const { return m_count; } ///< whole numbers

    void enter(const Number& sum, const Number& count)
    {
        add_term(m_sum, m_lost, sum);
        m_count += count;
    }
    void leave(const Number& sum, const Number& count)
    {
        add_term(m_sum, m_lost, -sum);
        m_count -= count;
        m_sum = unless_empty(m_sum, m_count);
        m_lost = unless_empty(m_lost, m_count);
    }

private:
    Number m_sum{};
    Number m_lost{};
    Number m_count{}; // as numbers that can be reckoned with beside the others
};

typedef RunningSumOf<double> RunningSum;

/// The same where every cell has a height: how many there are is known without counting.
template <class Number>
class RunningTotalOf
{
public:
    Number sum() const { return m_sum + m_lost; }
    Number count() const { return Number{}; } ///< not counted

    void enter(const Number& sum, const Number&) { add_term(m_sum, m_lost, sum); }
    void leave(const Number& sum, const Number&) { add_term(m_sum, m_lost, -sum); }

private:
    Number m_sum{};
    Number m_lost{};
};

} // namespace terrain
