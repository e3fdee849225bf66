#pragma once

#include <QtCore/QPointF>
#include <QtCore/QVector>

namespace terrain {

struct Raster;

/// A cell of a raster, counted from 0.
struct CellPlace
{
    int column = 0;
    int row = 0;
};

inline bool operator==(const CellPlace& one, const CellPlace& other)
{
    return one.column == other.column && one.row == other.row;
}

/// What distances are told in.
enum class DistanceUnit
{
    Cells,
    Metres,
    Kilometres
};

/// The heights along a row or a column, as the map shows it: from left to right, or from the top down. A
/// plain value.
struct HeightProfile
{
    enum class Direction
    {
        Row,
        Column
    };

    /// @param through one of the raster's cells
    HeightProfile(const Raster& raster, const CellPlace& through, Direction along);

    Direction direction;
    DistanceUnit unit = DistanceUnit::Cells; ///< of the distances; of cells where the Earth is unknown
    /// For each cell the distance from the first one, and the height or no_data.
    QVector<QPointF> points;
    QPointF here; ///< the one of the cell that the profile leads through

    bool has_heights = false;
    double lowest = 0; ///< this and the next one are meaningless if there are no heights
    double highest = 0;
};

} // namespace terrain
