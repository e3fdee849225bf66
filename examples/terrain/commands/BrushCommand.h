#pragma once

#include "commands/AreaCommand.h"

#include <QtCore/QPointF>

#include <boost/smart_ptr/enable_shared_from_this.hpp>

#include <vector>

namespace terrain {

/// What a stroke is drawn with. A plain value.
struct Brush
{
    enum class Direction
    {
        Raise, ///< towards the sky
        Lower
    };
    static constexpr double least_radius = 0.5;
    static constexpr double largest_radius = 500;

    Direction direction = Direction::Raise;
    double radius = 10; ///< in cells
    double height = 1; ///< in the middle, in the document's units; above 0

    friend bool operator==(const Brush& one, const Brush& other)
    {
        return one.direction == other.direction && one.radius == other.radius && one.height == other.height;
    }
};

/**
 * Raises or lowers the cells along a stroke: by the height of the brush in the middle, and smoothly less with
 * the distance from the path, to nothing at the radius. Where a stroke comes by twice, it counts once. Cells
 * without data stay so. In a document whose numbers are depths, which grow downwards, raising makes the
 * numbers smaller.
 *
 * Strokes with the same brush, one right after the other, become one step of the history: the older command
 * takes over what the newer one did when that has been done, and is the one that is undone and redone. A
 * newer one that fails or is cancelled leaves no trace in it.
 *
 * A run fails if the brush makes no sense or the stroke has no finite position; a stroke beside the raster
 * changes nothing. To be made with boost::make_shared.
 */
class BrushCommand : public AreaCommand, public boost::enable_shared_from_this<BrushCommand>
{
    Q_DECLARE_TR_FUNCTIONS(terrain::BrushCommand)

public:
    /// In columns and rows as the raster stores them; the centre of the first cell is at 0.5 and 0.5.
    typedef std::vector<QPointF> Path;

    /// @param path positions that are not finite are left out
    BrushCommand(housekeeping::DocumentId document_id, const Brush& brush, const Path& path);
    BrushCommand(const BrushCommand&) = delete;
    BrushCommand& operator=(const BrushCommand&) = delete;

    bool stackWith(boost::shared_ptr<housekeeping::AbstractCommand> newer) override;

protected:
    QRect area(const Raster& raster) const override;
    std::vector<double> cells_after(const Raster& raster, const QRect& area) const override;
    QString change(TerrainModel& model) override;
    QString parameters() const override;
    void finished(bool succeeded) override;

private:
    void absorb(BrushCommand& newer, const TerrainModel& model);
    void check() const;
    void draw(const Raster& raster, const Path& path, const QRect& area, std::vector<double>& cells,
        std::size_t done, std::size_t total) const;

    Brush m_brush;
    bool m_makes_larger; // the numbers
    std::vector<Path> m_strokes; // its own, and those that it took over
    boost::shared_ptr<BrushCommand> m_sp_older; // that it is to become part of, until it has run
};

} // namespace terrain
