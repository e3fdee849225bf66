#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace terrain {

/**
 * A surface of triangles that stands for a raster's heights. A plain value.
 *
 * Places are counted in columns and rows of cells as the raster stores them; the centre of the first cell is
 * at 0.5 and 0.5. Heights are in the document's units.
 */
struct Mesh
{
    struct Vertex
    {
        double column;
        double row;
        double height;
    };

    std::vector<Vertex> vertices;
    /// Each the numbers of three vertices; they turn from the axis of columns to that of rows.
    std::vector<std::array<std::uint32_t, 3>> triangles;
    /// How far no cell's height is from the surface, in the document's units.
    double tolerance = 0;
};

} // namespace terrain
