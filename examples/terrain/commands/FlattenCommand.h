#pragma once

#include "commands/AreaCommand.h"

#include <QtCore/QPointF>

#include <optional>
#include <vector>

namespace terrain {

/**
 * Gives all cells in a polygon one height: those with data whose centres lie inside. A polygon that crosses
 * itself has holes where it goes round twice (the even-odd rule). Cells without data stay so.
 *
 * A run fails if the polygon has not three different corners that are not on a line, and if no cell with data
 * lies inside.
 */
class FlattenCommand : public AreaCommand
{
    Q_DECLARE_TR_FUNCTIONS(terrain::FlattenCommand)

public:
    /// Corners in columns and rows as the raster stores them; the centre of the first cell is at 0.5 and 0.5.
    typedef std::vector<QPointF> Polygon;

    /// @param height in the document's units; none for the mean of the cells inside
    FlattenCommand(
        housekeeping::DocumentId document_id, const Polygon& polygon, const std::optional<double>& height);

    /// Why a polygon cannot be filled, for the user; empty if it can.
    static QString objection(const Polygon& polygon);
    /// The mean height of the cells inside; nothing if there are none with data.
    static std::optional<double> mean_inside(const Raster& raster, const Polygon& polygon);

protected:
    QRect area(const Raster& raster) const override;
    std::vector<double> cells_after(const Raster& raster, const QRect& area) const override;
    QString parameters() const override;

private:
    Polygon m_polygon;
    std::optional<double> m_height;
};

} // namespace terrain
