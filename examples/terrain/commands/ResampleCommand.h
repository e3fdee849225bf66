#pragma once

#include "commands/ReshapeCommand.h"

namespace terrain {

/// How the height of a new cell comes about.
enum class Resampling
{
    Nearest, ///< that of the old cell at the new one's centre
    Bilinear, ///< between the centres of the old cells around the new one's centre
    Average ///< the mean of the old cells that the new one covers; for larger cells only
};

/**
 * Gives the raster larger or smaller cells.
 *
 * The upper left corner of the raster stays, and the cells are as many as it takes to cover all of it: unless
 * the factor divides the columns and rows, the last ones reach beyond it, by less than one cell. Heights
 * beyond the outermost centres are those of the outermost cells.
 *
 * Each new cell is a weighted mean of old ones: of those that the new cell covers, weighted by the part that
 * it covers of them (Average); of those that a window of one old cell around its centre covers, which is the
 * same as drawing straight lines between the four centres around it (Bilinear). Cells without data are left
 * out of the means. A new cell has no data if all old cells that count have none: all that are covered
 * (Average); the one that holds the centre, or those that touch at it (the others). So gaps keep their
 * outlines, but for averages, which fill what lies at their borders.
 *
 * A factor of 1 changes nothing.
 */
class ResampleCommand : public ReshapeCommand
{
    Q_DECLARE_TR_FUNCTIONS(terrain::ResampleCommand)

public:
    static constexpr double smallest_factor = 0.1;
    static constexpr double largest_factor = 10;
    /// That smaller cells may come to, if the memory has room for them.
    static constexpr long long most_cells = 250'000'000;

    /// @param factor of the width and the height of a cell: 2 makes a quarter as many cells
    ResampleCommand(housekeeping::DocumentId document_id, double factor, Resampling method);

    /// How many columns or rows come out of @p size.
    static long long resampled(int size, double factor);
    /// Why a raster of that size cannot be resampled so, for the user; empty if it can.
    static QString objection(int columns, int rows, double factor, Resampling method);
    /// As the protocol and scripts call it: "nearest", "bilinear" or "average".
    static const char* name_of(Resampling method);

protected:
    std::optional<Raster> new_raster(const Raster& raster) const override;
    QString parameters() const override;

private:
    static QString objection_to_size(long long columns, long long rows);

    double m_factor;
    Resampling m_method;
};

} // namespace terrain
