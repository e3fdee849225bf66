#include "MeshCheck.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <utility>

namespace host_test {

namespace {

using terrain::Mesh;
using terrain::Raster;

struct Place
{
    long long column;
    long long row;
};

Place place_of(const Mesh::Vertex& vertex)
{
    return {static_cast<long long>(vertex.column - 0.5), static_cast<long long>(vertex.row - 0.5)};
}

/// Twice the area of a triangle, above 0 if it turns from columns to rows.
long long turn(const Place& a, const Place& b, const Place& c)
{
    return (b.column - a.column) * (c.row - a.row) - (b.row - a.row) * (c.column - a.column);
}

/// Above 0 if @p d is in the circle through the corners of a triangle.
long long in_circle(const Place& a, const Place& b, const Place& c, const Place& d)
{
    const auto from_d = [&d](const Place& place) {
        return Place{place.column - d.column, place.row - d.row};
    };
    const auto square
        = [](const Place& place) { return place.column * place.column + place.row * place.row; };
    const Place p = from_d(a);
    const Place q = from_d(b);
    const Place r = from_d(c);
    return p.column * (q.row * square(r) - r.row * square(q))
        - p.row * (q.column * square(r) - r.column * square(q))
        + square(p) * (q.column * r.row - r.column * q.row);
}

/// How many corners of a square of four neighbours have data.
int corners(const Raster& raster, int column, int row)
{
    int count = 0;
    for (const int y : {row, row + 1}) {
        for (const int x : {column, column + 1}) {
            count += x >= 0 && y >= 0 && x < raster.columns && y < raster.rows
                && !terrain::is_no_data(raster.cell(x, y));
        }
    }
    return count;
}

} // namespace

MeshCheck::MeshCheck(const Raster& raster, const Mesh& mesh)
{
    std::set<std::pair<double, double>> places;
    for (const Mesh::Vertex& vertex : mesh.vertices) {
        const Place place = place_of(vertex);
        const bool is_cell = place.column >= 0 && place.row >= 0 && place.column < raster.columns
            && place.row < raster.rows && vertex.column == static_cast<double>(place.column) + 0.5
            && vertex.row == static_cast<double>(place.row) + 0.5;
        corners_are_cells = corners_are_cells && is_cell
            && vertex.height == raster.cell(static_cast<int>(place.column), static_cast<int>(place.row))
            && places.emplace(vertex.column, vertex.row).second;
    }
    std::map<std::pair<std::uint32_t, std::uint32_t>, std::uint32_t> opposite; // of an edge's triangle
    std::set<std::pair<long long, long long>> reached;
    for (const auto& triangle : mesh.triangles) {
        const Mesh::Vertex* p_corners[3];
        Place at[3];
        for (std::size_t i = 0; i < 3; ++i) {
            p_corners[i] = &mesh.vertices.at(triangle[i]);
            at[i] = place_of(*p_corners[i]);
            opposite[{triangle[i], triangle[(i + 1) % 3]}] = triangle[(i + 2) % 3];
        }
        const long long twice = turn(at[0], at[1], at[2]);
        all_turn_right = all_turn_right && twice > 0;
        area += static_cast<double>(twice) / 2;
        const auto [left, right] = std::minmax({at[0].column, at[1].column, at[2].column});
        const auto [top, bottom] = std::minmax({at[0].row, at[1].row, at[2].row});
        for (long long row = top; row <= bottom; ++row) {
            for (long long column = left; column <= right; ++column) {
                const Place cell = {column, row};
                const long long parts[]
                    = {turn(cell, at[1], at[2]), turn(at[0], cell, at[2]), turn(at[0], at[1], cell)};
                if (*std::min_element(std::begin(parts), std::end(parts)) < 0) {
                    continue;
                }
                double surface = 0;
                for (std::size_t i = 0; i < 3; ++i) {
                    surface
                        += p_corners[i]->height * static_cast<double>(parts[i]) / static_cast<double>(twice);
                }
                const double height = raster.cell(static_cast<int>(column), static_cast<int>(row));
                covers_gaps = covers_gaps || terrain::is_no_data(height);
                worst = std::max(worst, std::abs(height - surface));
                reached.emplace(column, row);
            }
        }
    }
    cells = reached.size();
    for (const auto& [edge, third] : opposite) {
        const auto other = opposite.find({edge.second, edge.first});
        is_delaunay = is_delaunay
            && (other == opposite.end()
                || in_circle(place_of(mesh.vertices[edge.first]), place_of(mesh.vertices[edge.second]),
                       place_of(mesh.vertices[third]), place_of(mesh.vertices[other->second]))
                    <= 0);
    }
}

double data_area(const Raster& raster)
{
    double area = 0;
    for (int row = 0; row + 1 < raster.rows; ++row) {
        for (int column = 0; column + 1 < raster.columns; ++column) {
            area += std::max(corners(raster, column, row) - 2, 0) / 2.0;
        }
    }
    return area;
}

std::size_t cells_in_data_area(const Raster& raster)
{
    std::size_t count = 0;
    for (int row = 0; row < raster.rows; ++row) {
        for (int column = 0; column < raster.columns; ++column) {
            const bool spans = corners(raster, column, row) > 2 || corners(raster, column - 1, row) > 2
                || corners(raster, column, row - 1) > 2 || corners(raster, column - 1, row - 1) > 2;
            count += spans && !terrain::is_no_data(raster.cell(column, row));
        }
    }
    return count;
}

void expect_good_mesh(const Raster& raster, const Mesh& mesh)
{
    const MeshCheck check(raster, mesh);
    EXPECT_TRUE(check.corners_are_cells);
    EXPECT_TRUE(check.all_turn_right);
    EXPECT_FALSE(check.covers_gaps);
    EXPECT_TRUE(check.is_delaunay);
    EXPECT_EQ(check.area, data_area(raster));
    EXPECT_EQ(check.cells, cells_in_data_area(raster));
    EXPECT_LE(check.worst, mesh.tolerance * (1 + 1e-9) + 1e-9);
}

} // namespace host_test
