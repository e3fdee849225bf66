#pragma once

#include <cstddef>
#include <vector>

namespace terrain {

/**
 * What changed cells held before: all that is needed to undo a change, in as little memory as is simple.
 *
 * The old cells are kept in runs, as 32-bit numbers if that loses nothing (heights in files mostly are), so a
 * change of everything costs at most a copy of the cells, and mostly half of one. A plain value.
 */
class CellPatch
{
public:
    /// Nothing changed.
    CellPatch() = default;
    /// The difference between the same cells before and after a change.
    CellPatch(const std::vector<double>& before, const std::vector<double>& after);

    /// How many cells changed; a cell counts if any of its bits did.
    std::size_t changed() const { return m_changed; }
    /// The memory held, in bytes.
    std::size_t bytes() const;

    /// Puts back what the cells held before the change.
    void restore(std::vector<double>& cells) const;

private:
    struct Run
    {
        std::size_t first;
        std::size_t length;
    };

    void find_runs(const std::vector<double>& before, const std::vector<double>& after);

    std::size_t m_changed = 0;
    std::vector<Run> m_runs;
    // The old cells of all runs, one after the other; one of the two is empty.
    std::vector<float> m_floats;
    std::vector<double> m_doubles;
};

} // namespace terrain
