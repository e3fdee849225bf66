#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace terrain {

/// Where a cell is; those of upper rows come first, and in a row those at the left.
struct CellPlace
{
    std::uint32_t row;
    std::uint32_t column;

    bool operator<(const CellPlace& other) const
    {
        return row != other.row ? row < other.row : column < other.column;
    }
};

/**
 * The cells that a rising flood has reached and not yet passed, lowest first; of those of equal height the
 * one whose place comes first. Cells come in any order, but once the lowest has been taken none that is lower
 * than it.
 *
 * A heap of a hundred thousands of cells spends its time waiting for memory. So the range of the heights is
 * cut into many steps, and only the cells of the lowest step are a heap; a cell of a higher step is put to
 * the others of it, unsorted. R. Brown (1988), Calendar queues: a fast O(1) priority queue implementation
 * for the simulation event set problem, Communications of the ACM 31, 1220-1227.
 */
class Shore
{
public:
    struct Cell
    {
        double height;
        CellPlace place;
    };

    /// @param range the lowest and the highest height that comes @param cells how many there are, about
    Shore(const std::pair<double, double>& range, std::size_t cells);

    bool empty() const { return m_size == 0; }
    void add(const Cell& cell);
    /// The lowest one. Not if there is none.
    Cell take();

private:
    std::size_t step_of(double height) const;
    void climb();

    double m_half_lowest;
    double m_steps_per_half; // of the height
    std::vector<std::vector<Cell>> m_steps;
    std::vector<Cell> m_heap; // the cells of the current step
    std::size_t m_step = 0; // the current one
    std::size_t m_size = 0;
};

} // namespace terrain
