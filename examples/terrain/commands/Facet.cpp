#include "commands/Facet.h"

#include "documents/Raster.h"

#include <algorithm>
#include <cmath>

namespace terrain {

namespace {

/// Rounded down. @param by above 0
long long quotient(long long number, long long by)
{
    return number >= 0 ? number / by : -((-number + by - 1) / by);
}

} // namespace

Facet::Edge::Edge(const CellPlace& from, const CellPlace& to)
    : m_per_column(0LL + from.row - to.row)
    , m_per_row(0LL + to.column - from.column)
    , m_constant(-m_per_column * from.column - m_per_row * from.row)
{ }

void Facet::Edge::cut(long long row, long long& first, long long& last) const
{
    const long long at_row = at(0, row);
    if (m_per_column > 0) { // from the place where it gets 0 on, rounded up
        first = std::max(first, -quotient(at_row, m_per_column));
    } else if (m_per_column < 0) {
        last = std::min(last, quotient(at_row, -m_per_column));
    } else if (at_row < 0) {
        last = first - 1;
    }
}

Facet::Facet(const Raster& raster, const std::array<CellPlace, 3>& corners)
    : m_raster(raster)
    , m_corners(corners)
    , m_edges{{{corners[1], corners[2]}, {corners[2], corners[0]}, {corners[0], corners[1]}}}
    , m_area(static_cast<double>(m_edges[0].at(corners[0].column, corners[0].row)))
    , m_height(height(0))
    , m_to_second(height(1) - m_height)
    , m_to_third(height(2) - m_height)
{ }

int Facet::edge_at(const CellPlace& place) const
{
    int edge = 0;
    while (edge < 3 && m_edges[static_cast<std::size_t>(edge)].at(place.column, place.row) != 0) {
        ++edge;
    }
    return edge;
}

WorstCell Facet::worst_cell(double tolerance, std::size_t& work) const
{
    const auto [p_top, p_bottom] = std::minmax_element(m_corners.begin(), m_corners.end(),
        [](const CellPlace& one, const CellPlace& other) { return one.row < other.row; });
    WorstCell worst;
    worst.error = tolerance;
    for (int row = p_top->row; row <= p_bottom->row; ++row) {
        long long first = 0;
        long long last = m_raster.columns - 1;
        for (const Edge& edge : m_edges) {
            edge.cut(row, first, last);
        }
        if (first <= last) {
            look_at_row(row, first, last, worst);
            work += static_cast<std::size_t>(last - first);
        }
        ++work;
    }
    return worst;
}

double Facet::height(std::size_t corner) const
{
    return m_raster.cell(m_corners[corner].column, m_corners[corner].row);
}

bool Facet::is_corner(long long column, int row) const
{
    return std::any_of(m_corners.begin(), m_corners.end(),
        [column, row](const CellPlace& corner) { return corner.column == column && corner.row == row; });
}

void Facet::look_at_row(int row, long long first, long long last, WorstCell& worst) const
{
    // Counted in whole numbers, these are exact; a plane's slope is not, and is steep in thin triangles.
    double second = static_cast<double>(m_edges[1].at(first, row));
    double third = static_cast<double>(m_edges[2].at(first, row));
    const auto second_step = static_cast<double>(m_edges[1].per_column());
    const auto third_step = static_cast<double>(m_edges[2].per_column());
    const std::size_t row_begin = m_raster.index(0, row);
    for (long long column = first; column <= last; ++column) {
        const double surface = m_height + (second * m_to_second + third * m_to_third) / m_area;
        const std::size_t cell = row_begin + static_cast<std::size_t>(column);
        const double error = std::abs(m_raster.cells[cell] - surface);
        second += second_step;
        third += third_step;
        // The comparison is so that heights whose differences are no numbers are taken for the worst.
        if (!(error <= worst.error) && !is_corner(column, row)) {
            worst = {cell, std::isnan(error) ? std::numeric_limits<double>::infinity() : error};
        }
    }
}

} // namespace terrain
