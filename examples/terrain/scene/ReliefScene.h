#pragma once

#include "scene/ReliefGrid.h"
#include "scene/ReliefTexture.h"
#include "views/HillShade.h"

#include <osg/BoundingBox>
#include <osg/MatrixTransform>
#include <osg/Vec3d>
#include <osg/ref_ptr>

#include <QtCore/QSize>

#include <boost/shared_ptr.hpp>

#include <optional>
#include <vector>

namespace terrain {

struct CellChanges;
struct Mesh;

/**
 * A raster's terrain in three dimensions, as OpenSceneGraph draws it: patches of a surface with the picture
 * of the map on them, or the triangles of a mesh. See SceneSpace for where it lies.
 *
 * It was made from the cells and does not look at them any more; refresh() is told what has changed, and
 * makes no patch anew that is as before. There is neither window nor OpenGL in it. Main thread.
 */
class ReliefScene
{
public:
    /// @param sp_mesh null if there is none
    /// @throws housekeeping::HousekeepingException if GDAL cannot shade
    ReliefScene(const Raster& raster, const boost::shared_ptr<const Mesh>& sp_mesh,
        const HeightMeaning& meaning, Sampling sampling, const HillShade::Look& look);

    /// Shows what has changed. The scale of the heights stays, unless their range is another one altogether.
    /// @throws as the constructor
    void refresh(
        const Raster& raster, const boost::shared_ptr<const Mesh>& sp_mesh, const CellChanges& changes);
    /// Makes the surface of a raster that was reduced anew, from other cells of it.
    /// @param raster as it is now @throws as the constructor
    void sampling(const Raster& raster, Sampling sampling);
    Sampling sampling() const { return m_sampling; }
    /// Colours and shades the surface in another way. @throws as the constructor
    void show(const HillShade::Look& look);

    /// Of heights compared with lengths on the ground; if not is_to_scale(), only compared with 1.
    double exaggeration() const { return m_exaggeration; }
    /// @param exaggeration made to fit between least_exaggeration() and most_exaggeration()
    void exaggeration(double exaggeration);
    double least_exaggeration() const;
    double most_exaggeration() const;
    bool is_to_scale() const { return m_grid.space().is_to_scale(); }

    /// Whether the mesh, if there is one that is not too large, is shown instead of the patches.
    bool shows_mesh() const { return m_shows_mesh; }
    void shows_mesh(bool shows);
    bool has_mesh() const { return m_sp_mesh != nullptr; }

    osg::Node& node() { return *m_root; }
    const osg::Node& node() const { return *m_root; }

    /// What the surface fills, as it is drawn.
    osg::BoundingBoxd bounds() const;
    /// The surface at a place; nothing where there is none.
    std::optional<double> surface(const QPointF& place) const;
    /// Where a ray meets the surface first; nothing if it does not. @param direction of any length but 0
    std::optional<osg::Vec3d> hit(const osg::Vec3d& from, const osg::Vec3d& direction) const;

    bool has_heights() const { return m_shade.has_heights(); }
    const HillShade& shade() const { return m_shade; }
    const ReliefGrid& grid() const { return m_grid; }
    const ReliefTexture& texture() const { return m_texture; }
    /// How many patches, and surfaces of meshes, have been made so far.
    int patches_made() const { return m_patches_made; }
    int meshes_made() const { return m_meshes_made; }

private:
    void make_all(const Raster& raster);
    void refresh_cells(const Raster& raster, const QRect& cells);
    void make_patches(const QRect& corners);
    void drop_mesh();
    void apply_scale();
    void show_surface();

    HeightMeaning m_meaning;
    Sampling m_sampling;
    HillShade::Look m_look;
    boost::shared_ptr<const Mesh> m_sp_mesh;
    HillShade m_shade;
    ReliefGrid m_grid;
    ReliefTexture m_texture;
    osg::ref_ptr<osg::MatrixTransform> m_root; // makes lengths of levels
    osg::ref_ptr<osg::Group> m_ground;
    osg::ref_ptr<osg::Group> m_mesh_ground;
    QSize m_patch_count;
    std::vector<osg::ref_ptr<osg::Group>> m_patches; // row by row, null where there is nothing to see
    bool m_shows_mesh = true;
    bool m_mesh_is_made = false; // or too large
    bool m_exaggeration_was_set = false;
    double m_exaggeration = 1;
    int m_patches_made = 0;
    int m_meshes_made = 0;
};

} // namespace terrain
