#pragma once

#include "views/Footprint.h"

#include <QtCore/QPointF>
#include <QtCore/QRectF>
#include <QtCore/QSize>

namespace terrain {

struct Raster;

/// What the heights of a document mean.
struct HeightMeaning
{
    bool depth = false; ///< greater numbers lie deeper
    double metres = 1; ///< of a height of 1; 0 if heights are no lengths, but times
};

/**
 * Where the cells and heights of a raster lie in a scene. A plain value.
 *
 * The ground has its middle at the origin, x runs east, y north, z up; the longer side of the raster is 1000
 * long, whatever it measures. Heights are counted from the lowest one in multiples of the range that the
 * raster had when this was made, so that huge and tiny numbers are as good as others; scale() makes lengths
 * of them. Depths run downwards.
 */
class SceneSpace
{
public:
    static constexpr double side = 1000; ///< of a scene

    /// An empty ground, level.
    SceneSpace() = default;
    /// @param lowest of all heights @param highest of all heights, not below
    SceneSpace(const Raster& raster, const HeightMeaning& meaning, double lowest, double highest);

    /// The ground: x, y, and the two lengths.
    const QRectF& ground() const { return m_ground; }
    /// Of a map's columns and rows, counted from its upper left corner.
    QPointF place(const QPointF& map) const;
    /// The inverse of place().
    QPointF map(const QPointF& place) const;
    /// Of the raster's columns and rows as it stores them.
    QPointF place_of_cells(const QPointF& cells) const;

    /// A height as a multiple of the range, upwards.
    double level(double height) const;
    /// How long such a multiple is in the scene.
    double scale(double exaggeration) const { return m_natural * exaggeration; }
    /// Whether an exaggeration of 1 is true to scale; else it is one with which the relief shows.
    bool is_to_scale() const { return m_to_scale; }
    /// With which the relief shows, a round number.
    double default_exaggeration() const { return m_default_exaggeration; }

    /// Whether heights of another range can still be told apart, and do not tower.
    bool suits(double lowest, double highest) const;

private:
    void choose_scale(double range_in_sides);

    QSizeF m_cells{1, 1}; // columns and rows of the map
    QTransform m_map_of_cells;
    QRectF m_ground{-side / 2, -side / 2, side, side};
    bool m_depth = false;
    double m_lowest = 0;
    double m_half_range = 0; // the whole one of huge numbers would overflow
    double m_natural = 0; // the length of the range, without exaggeration
    double m_default_exaggeration = 1;
    bool m_to_scale = false;
};

} // namespace terrain
