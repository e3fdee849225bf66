#pragma once

#include <osg/Group>
#include <osg/ref_ptr>

#include <cstddef>

namespace terrain {

struct Mesh;

class ReliefTexture;
class SceneSpace;

// So that a mesh can be drawn, and made ready for that, while the user waits.
constexpr std::size_t most_surface_triangles = 500000;
constexpr std::size_t most_lined_triangles = 200000; ///< more would be a mere blur of lines

/// Makes the triangles of a mesh, with the picture of the map on them, and, unless these are too many, their
/// edges as thin lines. Null if there are more triangles than most_surface_triangles.
osg::ref_ptr<osg::Group> make_mesh_surface(
    const Mesh& mesh, const SceneSpace& space, const ReliefTexture& texture);

} // namespace terrain
