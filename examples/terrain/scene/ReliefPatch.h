#pragma once

#include <osg/Group>
#include <osg/ref_ptr>

#include <QtCore/QPoint>

namespace terrain {

class ReliefGrid;
class ReliefTexture;

/// Which of the surfaces of a scene are drawn, as bits of the node masks: the coarse one is for movements on
/// machines that are too slow for the fine one.
constexpr unsigned int fine_surface = 1;
constexpr unsigned int coarse_surface = 2;

/// How many cells of a grid a patch is wide and high.
constexpr int patch_side = 64;

/**
 * Makes a patch of the surface: the triangles around the corners of cells from @p number times the side on.
 * Four cells with heights around a corner are joined from middle to middle; at the edges of what there is,
 * each cell reaches to its own edge, so that holes and outline are those of the map.
 *
 * Its two surfaces share their vertices. Null if no cell has a height there.
 */
osg::ref_ptr<osg::Group> make_patch(
    const ReliefGrid& grid, const ReliefTexture& texture, const QPoint& number);

} // namespace terrain
