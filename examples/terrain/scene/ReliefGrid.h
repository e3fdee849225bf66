#pragma once

#include "documents/Raster.h"
#include "scene/SceneSpace.h"

#include <osg/Vec3d>

#include <QtCore/QPoint>
#include <QtCore/QRect>

#include <optional>

namespace terrain {

class HillShade;

/**
 * The heights from which the surface of a scene is made, and where they lie: those of a map's picture, north
 * at the top, west at the left, or means of them if there are too many. Main thread.
 */
class ReliefGrid
{
public:
    static constexpr int max_side = 700; ///< heights

    /// No heights.
    ReliefGrid() = default;
    /// @param shade the picture of the map
    ReliefGrid(const HillShade& shade, const SceneSpace& space, const QSize& cells);

    /// Takes over heights that have changed. @param pixels of the picture, none of them outside
    /// @return the heights of the grid that are new
    QRect refresh(const HillShade& shade, const QRect& pixels);

    int columns() const { return m_heights.columns; }
    int rows() const { return m_heights.rows; }
    /// Whether there is such a cell, with a height.
    bool has(int column, int row) const;
    /// The height of a cell that has() one, as a level of the space.
    double level(int column, int row) const { return m_space.level(m_heights.cell(column, row)); }

    /// Between 0 and the number of columns: where a column begins, in columns of the map.
    double left(int column) const;
    double top(int row) const;
    /// Where a height stands, in columns and rows of the map.
    QPointF middle(int column, int row) const;

    /// The level of the surface at a place of the scene; nothing where there is none.
    std::optional<double> level_at(const QPointF& place) const;
    /// The range of all levels; 0 and 0 if there are none.
    double lowest() const { return m_lowest; }
    double highest() const { return m_highest; }

    const SceneSpace& space() const { return m_space; }

private:
    void find_range();

    SceneSpace m_space;
    QSize m_cells; // of the raster
    Raster m_heights;
    int m_step = 1; // cells of the raster for one of the grid
    int m_reduction = 1; // pixels of the picture for one of the grid
    double m_lowest = 0;
    double m_highest = 0;
};

} // namespace terrain
