#pragma once

#include "documents/Mesh.h"
#include "documents/Raster.h"

#include <cstddef>

namespace host_test {

/// What a triangulation is like beside its raster, found out the slow way.
struct MeshCheck
{
    MeshCheck(const terrain::Raster& raster, const terrain::Mesh& mesh);

    bool corners_are_cells = true; ///< at the centres of cells, with their heights, each cell once
    bool all_turn_right = true; ///< from columns to rows, and none is flat
    bool covers_gaps = false; ///< a cell without data lies in or on a triangle
    bool is_delaunay = true; ///< at each edge between two triangles
    double area = 0; ///< of all triangles, in cells
    std::size_t cells = 0; ///< with data that lie in or on a triangle
    double worst = 0; ///< how far the height of one of them is from the surface, at most
};

/// The area that cells with data span: squares between four of them, and halves of squares between three.
double data_area(const terrain::Raster& raster);
/// How many cells with data such an area reaches.
std::size_t cells_in_data_area(const terrain::Raster& raster);

/// Expects of a triangulation all that there is to expect, within its tolerance.
void expect_good_mesh(const terrain::Raster& raster, const terrain::Mesh& mesh);

} // namespace host_test
