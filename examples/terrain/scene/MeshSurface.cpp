#include "scene/MeshSurface.h"

#include "documents/Mesh.h"
#include "scene/ReliefTexture.h"
#include "scene/SceneSpace.h"

#include <osg/BlendFunc>
#include <osg/Geometry>
#include <osg/PolygonOffset>

#include <algorithm>
#include <utility>
#include <vector>

namespace terrain {

namespace {

const osg::Vec4 s_line_colour(0.1F, 0.1F, 0.12F, 0.6F);

osg::ref_ptr<osg::Geometry> new_geometry(const osg::ref_ptr<osg::Vec3Array>& vertices)
{
    osg::ref_ptr<osg::Geometry> geometry(new osg::Geometry);
    geometry->setUseDisplayList(false);
    geometry->setUseVertexBufferObjects(true);
    geometry->setVertexArray(vertices);
    return geometry;
}

/// Both ends of each edge, each edge once.
std::vector<GLuint> edges_of(const Mesh& mesh)
{
    std::vector<std::pair<GLuint, GLuint>> edges;
    edges.reserve(mesh.triangles.size() * 3);
    for (const auto& triangle : mesh.triangles) {
        for (std::size_t i = 0; i < 3; ++i) {
            edges.push_back(std::minmax({triangle[i], triangle[(i + 1) % 3]}));
        }
    }
    std::sort(edges.begin(), edges.end());
    edges.erase(std::unique(edges.begin(), edges.end()), edges.end());
    std::vector<GLuint> ends;
    for (const auto& [one, other] : edges) {
        ends.insert(ends.end(), {one, other});
    }
    return ends;
}

osg::ref_ptr<osg::Geometry> lines(const Mesh& mesh, const osg::ref_ptr<osg::Vec3Array>& vertices)
{
    osg::ref_ptr<osg::Geometry> geometry = new_geometry(vertices);
    const std::vector<GLuint> ends = edges_of(mesh);
    geometry->addPrimitiveSet(
        new osg::DrawElementsUInt(GL_LINES, static_cast<unsigned int>(ends.size()), ends.data()));
    geometry->setColorArray(new osg::Vec4Array(1, &s_line_colour), osg::Array::BIND_OVERALL);
    osg::StateSet& state = *geometry->getOrCreateStateSet();
    state.setTextureMode(0, GL_TEXTURE_2D, osg::StateAttribute::OFF);
    state.setAttributeAndModes(new osg::BlendFunc, osg::StateAttribute::ON);
    state.setRenderingHint(osg::StateSet::TRANSPARENT_BIN);
    return geometry;
}

} // namespace

osg::ref_ptr<osg::Group> make_mesh_surface(
    const Mesh& mesh, const SceneSpace& space, const ReliefTexture& texture)
{
    if (mesh.triangles.size() > most_surface_triangles) {
        return {};
    }
    osg::ref_ptr<osg::Vec3Array> vertices(new osg::Vec3Array);
    osg::ref_ptr<osg::Vec2Array> texture_places(new osg::Vec2Array);
    for (const Mesh::Vertex& vertex : mesh.vertices) {
        const QPointF place = space.place_of_cells({vertex.column, vertex.row});
        vertices->push_back(osg::Vec3(static_cast<float>(place.x()), static_cast<float>(place.y()),
            static_cast<float>(space.level(vertex.height))));
        texture_places->push_back(texture.place(space.map(place)));
    }
    osg::ref_ptr<osg::Geometry> surface = new_geometry(vertices);
    surface->setTexCoordArray(0, texture_places);
    osg::ref_ptr<osg::DrawElementsUInt> triangles(new osg::DrawElementsUInt(GL_TRIANGLES));
    for (const auto& triangle : mesh.triangles) {
        triangles->insert(triangles->end(), triangle.begin(), triangle.end());
    }
    surface->addPrimitiveSet(triangles);
    // Further away than they are, for the lines to be seen.
    surface->getOrCreateStateSet()->setAttributeAndModes(
        new osg::PolygonOffset(1, 1), osg::StateAttribute::ON);
    osg::ref_ptr<osg::Group> group(new osg::Group);
    group->addChild(surface);
    if (mesh.triangles.size() <= most_lined_triangles) {
        group->addChild(lines(mesh, vertices));
    }
    return group;
}

} // namespace terrain
