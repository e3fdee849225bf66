#pragma once

#include <QtCore/QRect>

namespace terrain {

/// What of a terrain document is not as it was when somebody looked last. A plain value.
struct CellChanges
{
    QRect cells; ///< columns and rows, as the raster stores them; empty for none
    bool reshaped = false; ///< another raster has taken the place of the old one
    bool mesh = false; ///< the triangulation came, went or became another one

    bool any() const { return reshaped || mesh || !cells.isEmpty(); }

    /// Together with what changed later.
    void add(const CellChanges& later)
    {
        cells |= later.cells;
        reshaped = reshaped || later.reshaped;
        mesh = mesh || later.mesh;
    }

    /// Of a raster that is new in all respects.
    static CellChanges everything() { return {QRect(), true, true}; }
};

} // namespace terrain
