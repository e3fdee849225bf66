#pragma once

#include "commands/ReshapeCommand.h"

namespace terrain {

/// Some columns and rows of a raster, counted from 0; the last ones belong to it.
struct CellRange
{
    int first_column = 0;
    int last_column = 0;
    int first_row = 0;
    int last_row = 0;

    int columns() const { return last_column - first_column + 1; }
    int rows() const { return last_row - first_row + 1; }
};

/// The smallest range that holds all cells with data; none if there are no such cells.
std::optional<CellRange> range_of_data(const Raster& raster);

/**
 * Keeps a range of columns and rows and cuts away the others. What is kept stays where it is on the Earth.
 * Fails if the range is reversed or reaches beyond the raster; the range of the whole raster changes nothing.
 */
class CropCommand : public ReshapeCommand
{
    Q_DECLARE_TR_FUNCTIONS(terrain::CropCommand)

public:
    CropCommand(housekeeping::DocumentId document_id, const CellRange& range);

    /// Why @p range cannot be kept of a raster of that size, for the user; empty if it can.
    static QString objection(const CellRange& range, int columns, int rows);

protected:
    std::optional<Raster> new_raster(const Raster& raster) const override;
    QString parameters() const override;

private:
    CellRange m_range;
};

} // namespace terrain
