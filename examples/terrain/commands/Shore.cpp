#include "commands/Shore.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace terrain {

namespace {

const std::size_t s_cells_of_step = 256;
const std::size_t s_most_steps = 1 << 16;

/// For a heap with the lowest cell on top.
bool comes_later(const Shore::Cell& one, const Shore::Cell& other)
{
    return one.height != other.height ? one.height > other.height : other.place < one.place;
}

} // namespace

Shore::Shore(const std::pair<double, double>& range, std::size_t cells)
    : m_half_lowest(range.first / 2)
    , m_steps(std::clamp<std::size_t>(cells / s_cells_of_step, 1, s_most_steps))
{
    // The halves keep the range of huge heights a number; that of heights that hardly differ has no steps.
    const double steps_per_half = static_cast<double>(m_steps.size()) / (range.second / 2 - m_half_lowest);
    m_steps_per_half = std::isfinite(steps_per_half) ? steps_per_half : 0;
}

void Shore::add(const Cell& cell)
{
    const std::size_t step = step_of(cell.height);
    if (step <= m_step) {
        m_heap.push_back(cell);
        std::push_heap(m_heap.begin(), m_heap.end(), comes_later);
    } else {
        m_steps[step].push_back(cell);
    }
    ++m_size;
}

Shore::Cell Shore::take()
{
    if (m_heap.empty()) {
        climb();
    }
    std::pop_heap(m_heap.begin(), m_heap.end(), comes_later);
    const Cell cell = m_heap.back();
    m_heap.pop_back();
    --m_size;
    return cell;
}

/// A higher height is never on a lower step.
std::size_t Shore::step_of(double height) const
{
    const double step = (height / 2 - m_half_lowest) * m_steps_per_half;
    return std::min(static_cast<std::size_t>(step), m_steps.size() - 1);
}

/// To the next step that has cells.
void Shore::climb()
{
    while (m_steps[m_step].empty()) {
        ++m_step;
    }
    m_heap = std::exchange(m_steps[m_step], {}); // its memory is given back
    std::make_heap(m_heap.begin(), m_heap.end(), comes_later);
}

} // namespace terrain
