#pragma once

#include "io/FileProgress.h"

#include <string>

namespace terrain {

struct Mesh;
struct Raster;

/**
 * Writes a triangulation as a mesh file: PLY, OBJ, OFF or STL, as the name ends (".ply", ".obj", ".off",
 * ".stl"), in text with all digits of every number. The file appears, complete, or it does not; see NewFile.
 *
 * x and y are those of the raster's reference system, z is the height as it is stored; without a place on the
 * Earth x and y are columns and, downwards from 0, rows of cells. Seen from above the triangles turn against
 * the clock. A remark names the product, the reference system and the unit of the heights; STL has room for
 * the product alone.
 *
 * @param mesh of that raster
 * @throws housekeeping::InvalidPath if it cannot be written; FileCancelled
 */
void write_mesh(
    const Mesh& mesh, const Raster& raster, const std::string& path, const FileProgress& progress = nullptr);

} // namespace terrain
