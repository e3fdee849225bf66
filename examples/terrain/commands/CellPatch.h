#pragma once

#include <QtCore/QRect>

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
    /// The same if only some columns and rows may have changed. @param before all cells of a raster with so
    /// many @p columns @param area not empty, inside of it @param after the cells of the area, row by row
    CellPatch(
        const std::vector<double>& before, int columns, const QRect& area, const std::vector<double>& after);

    /// How many cells changed; a cell counts if any of its bits did.
    std::size_t changed() const { return m_changed; }
    /// The columns and rows that hold all changed cells of a raster with so many columns; empty for none.
    QRect area(int columns) const;
    /// The memory held, in bytes.
    std::size_t bytes() const;

    /// Puts back what the cells held before the change.
    void restore(std::vector<double>& cells) const;

    /// Makes this patch one of two changes, its own and the one after it. If there is not enough memory for
    /// it, the patch stays as it is. @param now the cells after both
    void add(const CellPatch& later, const std::vector<double>& now);

private:
    struct Run
    {
        std::size_t first;
        std::size_t length;
    };

    class Reader;
    class RunFinder;

    template <class LookThrough>
    void find_runs(LookThrough look_through);
    void keep(const std::vector<double>& before);
    void add_run(const Run& run);

    std::size_t m_changed = 0;
    std::vector<Run> m_runs;
    // The old cells of all runs, one after the other; one of the two is empty.
    std::vector<float> m_floats;
    std::vector<double> m_doubles;
};

} // namespace terrain
