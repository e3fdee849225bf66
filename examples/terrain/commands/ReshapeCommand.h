#pragma once

#include "commands/RasterCommand.h"
#include "documents/Raster.h"

#include <optional>

namespace terrain {

/**
 * A command that puts another raster in the place of a terrain document's, with other numbers of columns and
 * rows.
 *
 * It keeps the whole old raster until it is undone, not only what cannot be computed back: undo then is an
 * exchange that needs no memory, cannot fail and is exact, the place on the Earth included. After that it
 * keeps nothing; a redo computes the new raster again, from the same one as before.
 *
 * Derived commands give the new raster and a text of their parameters.
 */
class ReshapeCommand : public RasterCommand
{
    Q_DECLARE_TR_FUNCTIONS(terrain::ReshapeCommand)

public:
    std::size_t undo_bytes() const override;

protected:
    using RasterCommand::RasterCommand;

    /// The raster after the command, with one cell at least; nothing if it is the same as before. Calls
    /// report() every now and then, which is where the command may be cancelled.
    /// @throws FailedCommandException if there is no way to make it
    virtual std::optional<Raster> new_raster(const Raster& raster) const = 0;

    /// All of a raster but its size and its cells.
    static Raster description_of(const Raster& raster);

private:
    QString change(TerrainModel& model) override;
    void take_back(TerrainModel& model) override;

    std::optional<Raster> m_old; // while another one is in its place
};

} // namespace terrain
