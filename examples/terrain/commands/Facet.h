#pragma once

#include "commands/DataArea.h"

#include <array>
#include <cstddef>
#include <limits>

namespace terrain {

struct Raster;

/// The cell of a triangle that is furthest above or below it, if it is too far.
struct WorstCell
{
    static constexpr std::size_t none = std::numeric_limits<std::size_t>::max();

    std::size_t cell = none; ///< its place in the raster's cells
    double error = 0;
};

/**
 * A triangle between three cells of a raster, which looks at the cells below and above it. Which cells these
 * are is exact. Raster and corners must outlive the object. Any thread, while nobody changes the raster.
 */
class Facet
{
public:
    /// @param corners not in a line; they turn from the axis of columns to that of rows
    Facet(const Raster& raster, const std::array<CellPlace, 3>& corners);

    /// The edge that a place of the triangle lies on, by the number of the corner opposite; 3 for none.
    int edge_at(const CellPlace& place) const;

    /// The first of the cells in and on the triangle, but for its corners, that are furthest away. They all
    /// have data. @param tolerance what is not too far @param work is increased by the number of cells
    WorstCell worst_cell(double tolerance, std::size_t& work) const;

private:
    /// An edge, as twice the area between it and a place: 0 or above for the places of the triangle.
    class Edge
    {
    public:
        Edge(const CellPlace& from, const CellPlace& to);

        long long at(long long column, long long row) const
        {
            return m_per_column * column + m_per_row * row + m_constant;
        }
        long long per_column() const { return m_per_column; }

        /// Leaves of some columns of a row only those that are not on the wrong side.
        void cut(long long row, long long& first, long long& last) const;

    private:
        long long m_per_column;
        long long m_per_row;
        long long m_constant;
    };

    double height(std::size_t corner) const;
    bool is_corner(long long column, int row) const;
    void look_at_row(int row, long long first, long long last, WorstCell& worst) const;

    const Raster& m_raster;
    const std::array<CellPlace, 3>& m_corners;
    std::array<Edge, 3> m_edges; // each opposite to its corner
    double m_area; // twice
    double m_height; // of the first corner
    double m_to_second; // from there
    double m_to_third;
};

} // namespace terrain
