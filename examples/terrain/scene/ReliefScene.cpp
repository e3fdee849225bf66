#include "scene/ReliefScene.h"

#include "documents/CellChanges.h"
#include "documents/Mesh.h"
#include "scene/MeshSurface.h"
#include "scene/ReliefPatch.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace terrain {

namespace {

const double s_exaggeration_span = 20; ///< times and parts of the default one can be set
const int s_most_steps = 8192; ///< along a ray
const int s_halvings = 24; ///< of the step in which it meets the surface

/// The part of a ray inside of a box, as multiples of its direction; the first is above the second if there
/// is none.
std::pair<double, double> inside(
    const osg::BoundingBoxd& box, const osg::Vec3d& from, const osg::Vec3d& direction)
{
    double first = 0;
    double last = std::numeric_limits<double>::infinity();
    for (int axis = 0; axis < 3; ++axis) {
        if (direction[axis] == 0) {
            if (from[axis] < box._min[axis] || from[axis] > box._max[axis]) {
                return {1, 0};
            }
            continue;
        }
        const auto [low, high] = std::minmax({(box._min[axis] - from[axis]) / direction[axis],
            (box._max[axis] - from[axis]) / direction[axis]});
        first = std::max(first, low);
        last = std::min(last, high);
    }
    return {first, last};
}

} // namespace

ReliefScene::ReliefScene(const Raster& raster, const boost::shared_ptr<const Mesh>& sp_mesh,
    const HeightMeaning& meaning, Sampling sampling, const HillShade::Look& look)
    : m_meaning(meaning)
    , m_sampling(sampling)
    , m_look(look)
    , m_sp_mesh(sp_mesh)
    , m_shade(raster, Footprint(raster), sampling, look)
    , m_root(new osg::MatrixTransform)
    , m_ground(new osg::Group)
    , m_mesh_ground(new osg::Group)
{
    m_root->addChild(m_ground);
    m_root->addChild(m_mesh_ground);
    m_texture.apply(*m_root->getOrCreateStateSet());
    make_all(raster);
}

void ReliefScene::make_all(const Raster& raster)
{
    const SceneSpace space(raster, m_meaning, m_shade.lowest(), m_shade.highest());
    m_grid = ReliefGrid(m_shade, space, QSize(raster.columns, raster.rows));
    m_texture.refresh(m_shade);
    m_patch_count = QSize(m_grid.columns() / patch_side + 1, m_grid.rows() / patch_side + 1);
    m_patches.assign(
        static_cast<std::size_t>(m_patch_count.width()) * static_cast<std::size_t>(m_patch_count.height()),
        nullptr);
    m_ground->removeChildren(0, m_ground->getNumChildren());
    make_patches(QRect(0, 0, m_grid.columns() + 1, m_grid.rows() + 1));
    drop_mesh();
    exaggeration(m_exaggeration_was_set ? m_exaggeration : space.default_exaggeration());
}

void ReliefScene::refresh(
    const Raster& raster, const boost::shared_ptr<const Mesh>& sp_mesh, const CellChanges& changes)
{
    const bool other_mesh = m_sp_mesh != sp_mesh;
    m_sp_mesh = sp_mesh;
    if (changes.reshaped) {
        m_shade = HillShade(raster, Footprint(raster), m_sampling, m_look);
        m_exaggeration_was_set = false; // of another terrain
        make_all(raster);
        return;
    }
    if (!changes.cells.isEmpty()) {
        refresh_cells(raster, changes.cells);
    }
    if (other_mesh) {
        drop_mesh();
    }
}

void ReliefScene::sampling(const Raster& raster, Sampling sampling)
{
    m_sampling = sampling;
    if (m_shade.cells_per_pixel() > 1) {
        m_shade = HillShade(raster, Footprint(raster), m_sampling, m_look);
        make_all(raster);
    }
}

void ReliefScene::refresh_cells(const Raster& raster, const QRect& cells)
{
    const bool had_heights = m_shade.has_heights();
    const bool same_colours = m_shade.refresh(raster, cells);
    if (!had_heights || !m_grid.space().suits(m_shade.lowest(), m_shade.highest())) {
        make_all(raster);
        return;
    }
    const QRect on_map = m_shade.on_map(cells);
    const int step = m_shade.cells_per_pixel();
    const QRect pixels(QPoint(on_map.left() / step, on_map.top() / step),
        QPoint(on_map.right() / step, on_map.bottom() / step));
    const QRect changed = m_grid.refresh(m_shade, pixels);
    if (same_colours) {
        m_texture.refresh(m_shade, pixels.adjusted(-1, -1, 1, 1)); // the light beside has changed too
    } else {
        m_texture.refresh(m_shade);
    }
    make_patches(changed.adjusted(0, 0, 1, 1));
    apply_scale();
}

/// Makes those patches anew to which some corners of cells belong.
void ReliefScene::make_patches(const QRect& corners)
{
    for (int v = corners.top() / patch_side; v <= corners.bottom() / patch_side; ++v) {
        for (int u = corners.left() / patch_side; u <= corners.right() / patch_side; ++u) {
            osg::ref_ptr<osg::Group>& patch
                = m_patches[static_cast<std::size_t>(v) * static_cast<std::size_t>(m_patch_count.width())
                    + static_cast<std::size_t>(u)];
            m_ground->removeChild(patch);
            patch = make_patch(m_grid, m_texture, {u, v});
            if (patch) {
                m_ground->addChild(patch);
            }
            ++m_patches_made;
        }
    }
}

/// The surface of the mesh is another one now.
void ReliefScene::drop_mesh()
{
    m_mesh_ground->removeChildren(0, m_mesh_ground->getNumChildren());
    m_mesh_is_made = false;
    show_surface();
}

void ReliefScene::shows_mesh(bool shows)
{
    m_shows_mesh = shows;
    show_surface();
}

/// Shows the mesh or the patches. A mesh is made once, however often it is shown and hidden.
void ReliefScene::show_surface()
{
    if (m_sp_mesh && m_shows_mesh && !m_mesh_is_made) {
        if (const auto surface = make_mesh_surface(*m_sp_mesh, m_grid.space(), m_texture)) {
            m_mesh_ground->addChild(surface);
            ++m_meshes_made;
        }
        m_mesh_is_made = true;
    }
    const bool is_mesh = m_shows_mesh && m_mesh_ground->getNumChildren() > 0;
    m_mesh_ground->setNodeMask(is_mesh ? ~0U : 0U);
    m_ground->setNodeMask(is_mesh ? 0U : ~0U);
}

void ReliefScene::show(const HillShade::Look& look)
{
    if (look.colours != m_look.colours || look.relief != m_look.relief) {
        m_shade.show(look);
        m_look = look;
        m_texture.refresh(m_shade);
    }
}

double ReliefScene::least_exaggeration() const
{
    return m_grid.space().default_exaggeration() / s_exaggeration_span;
}

double ReliefScene::most_exaggeration() const
{
    return m_grid.space().default_exaggeration() * s_exaggeration_span;
}

void ReliefScene::exaggeration(double exaggeration)
{
    m_exaggeration = std::clamp(exaggeration, least_exaggeration(), most_exaggeration());
    m_exaggeration_was_set = m_exaggeration != m_grid.space().default_exaggeration();
    apply_scale();
}

void ReliefScene::apply_scale()
{
    const double scale = m_grid.space().scale(m_exaggeration);
    // A level terrain has none, but a matrix needs one.
    m_root->setMatrix(osg::Matrix::scale(1, 1, scale > 0 ? scale : 1));
}

osg::BoundingBoxd ReliefScene::bounds() const
{
    const QRectF& ground = m_grid.space().ground();
    const double scale = m_grid.space().scale(m_exaggeration);
    return {ground.left(), ground.top(), m_grid.lowest() * scale, ground.right(), ground.bottom(),
        m_grid.highest() * scale};
}

std::optional<double> ReliefScene::surface(const QPointF& place) const
{
    const auto level = m_grid.level_at(place);
    return level ? std::make_optional(*level * m_grid.space().scale(m_exaggeration)) : std::nullopt;
}

std::optional<osg::Vec3d> ReliefScene::hit(const osg::Vec3d& from, const osg::Vec3d& direction) const
{
    const auto [first, last] = inside(bounds(), from, direction);
    if (!has_heights() || !(first <= last)) {
        return {};
    }
    const auto is_below = [&](double part) {
        const osg::Vec3d at = from + direction * part;
        const auto height = surface({at.x(), at.y()});
        return height && at.z() <= *height;
    };
    const double cell = m_grid.space().ground().width() / m_grid.columns();
    const double length = direction.length() * (last - first);
    const int steps = std::clamp(static_cast<int>(length / cell * 2), 1, s_most_steps);
    double above = first;
    for (int step = 0; step <= steps; ++step) {
        double below = first + (last - first) * step / steps;
        if (step == steps) {
            below += 1e-9 * (last - first + 1); // the lowest places are on the bottom of the box
        }
        if (!is_below(below)) {
            above = below;
            continue;
        }
        for (int i = 0; i < s_halvings; ++i) {
            const double between = (above + below) / 2;
            (is_below(between) ? below : above) = between;
        }
        return from + direction * below;
    }
    return {};
}

} // namespace terrain
