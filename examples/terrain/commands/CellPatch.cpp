#include "commands/CellPatch.h"

#include <algorithm>
#include <cstring>

namespace terrain {

namespace {

bool same_bits(double one, double other)
{
    return std::memcmp(&one, &other, sizeof one) == 0;
}

bool survives_as_float(double cell)
{
    return same_bits(static_cast<double>(static_cast<float>(cell)), cell);
}

} // namespace

CellPatch::CellPatch(const std::vector<double>& before, const std::vector<double>& after)
{
    find_runs(before, after);
    std::size_t length = 0;
    bool as_floats = true;
    for (const Run& run : m_runs) {
        const auto first = before.begin() + static_cast<std::ptrdiff_t>(run.first);
        as_floats = as_floats
            && std::all_of(first, first + static_cast<std::ptrdiff_t>(run.length), survives_as_float);
        length += run.length;
    }
    as_floats ? m_floats.reserve(length) : m_doubles.reserve(length);
    for (const Run& run : m_runs) {
        for (std::size_t i = run.first; i < run.first + run.length; ++i) {
            as_floats ? m_floats.push_back(static_cast<float>(before[i])) : m_doubles.push_back(before[i]);
        }
    }
}

std::size_t CellPatch::bytes() const
{
    return sizeof *this + m_runs.capacity() * sizeof(Run) + m_floats.capacity() * sizeof(float)
        + m_doubles.capacity() * sizeof(double);
}

void CellPatch::restore(std::vector<double>& cells) const
{
    std::size_t next = 0;
    for (const Run& run : m_runs) {
        for (std::size_t i = run.first; i < run.first + run.length; ++i, ++next) {
            cells[i] = m_floats.empty() ? m_doubles[next] : static_cast<double>(m_floats[next]);
        }
    }
}

void CellPatch::find_runs(const std::vector<double>& before, const std::vector<double>& after)
{
    // A gap that takes less room than the head of another run is kept along with the cells that changed.
    const std::size_t max_gap = sizeof(Run) / sizeof(double);
    for (std::size_t i = 0; i < before.size(); ++i) {
        if (same_bits(before[i], after[i])) {
            continue;
        }
        ++m_changed;
        if (!m_runs.empty() && i - (m_runs.back().first + m_runs.back().length) <= max_gap) {
            m_runs.back().length = i - m_runs.back().first + 1;
        } else {
            m_runs.push_back({i, 1});
        }
    }
    m_runs.shrink_to_fit();
}

} // namespace terrain
