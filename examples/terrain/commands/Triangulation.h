#pragma once

#include "documents/Mesh.h"

#include <cstddef>
#include <functional>
#include <stdexcept>

namespace terrain {

struct Raster;

/// What a triangulation has come to.
struct Triangulated
{
    Mesh mesh;
    std::size_t left_out = 0; ///< cells with data that no triangle reaches: they span no area, see DataArea
};

/// A triangulation that cannot be made; what() tells people why.
class TriangulationFailure : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/**
 * Makes a surface of few triangles of which no cell is further away, up or down, than a tolerance.
 *
 * It begins with the outline of the area that the cells with data span, and takes the worst cell in, again
 * and again, until none is too far away. In between the triangles are those of Delaunay within the outline;
 * only the cells of triangles that are new are looked at again, so it takes about as long as sorting the
 * cells. M. Garland, P. Heckbert (1995), Fast Polygonal Approximation of Terrains and Height Fields, CMU-CS-
 * 95-181. Nothing depends on chance: the same raster gives the same mesh.
 *
 * Any thread, while nobody changes the raster.
 * @param tolerance in the units of the heights, finite and above 0
 * @param most_vertices that there is room for
 * @param each_moment told every few milliseconds which part of the work is done, from 0 to 1 and never less
 * than before; what it throws ends the work
 * @throws TriangulationFailure if there is no area, or too many vertices are needed
 */
Triangulated triangulate(const Raster& raster, double tolerance, std::size_t most_vertices,
    const std::function<void(double share)>& each_moment);

/// How much memory each vertex takes while a triangulation is made, in bytes.
extern const double bytes_per_vertex;

} // namespace terrain
