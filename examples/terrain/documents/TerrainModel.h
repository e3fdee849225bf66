#pragma once

#include "documents/CellChanges.h"
#include "documents/Raster.h"

#include <tarqa/housekeeping/AbstractModel.h>

#include <boost/shared_ptr.hpp>

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

struct Mesh;

/**
 * The heights of a terrain document, and the triangulation that was made of them. Registered as "Terrain".
 * Only commands change it, in the thread that runs them; anybody else reads while the document is not busy.
 *
 * It notes what changes, for those who draw it. A triangulation is of certain heights: when they change, it
 * goes.
 */
class TerrainModel : public housekeeping::AbstractModel
{
public:
    static const char* const product_name;

    /// The model of a document.
    /// @throws HousekeepingException (1014) if there is no such document
    static TerrainModel& of(const housekeeping::DocumentId& id);

    bool empty() const override;
    /// The number of cells.
    unsigned long long size() const override;
    void clear() override;
    const std::string& document_type() const override;
    // A raster has no database behind it.
    void setupDatabase(const QString& path) override;
    void mergeDatabase(const QString& path) override;
    QString getDatabasePath() override;

    const Raster& raster() const { return m_raster; }
    /// Gives the model its first raster, which nobody has drawn yet: not a change.
    void raster(Raster raster);
    /// Puts @p raster in the model's place and gives what was there; nothing is copied.
    void swap(Raster& raster) noexcept;

    /// The cells, to change them in place; their number stays as it is. To be followed by cells_changed().
    std::vector<double>& cells() { return m_raster.cells; }
    /// The cells of some columns and rows have other heights.
    void cells_changed(const QRect& area) noexcept;

    /// Null if there is none.
    const boost::shared_ptr<const Mesh>& mesh() const { return m_sp_mesh; }
    void mesh(const boost::shared_ptr<const Mesh>& sp_mesh) noexcept;

    /// What has changed since this was called last. Main thread, while the document is not busy.
    CellChanges take_changes() noexcept;

private:
    Raster m_raster;
    boost::shared_ptr<const Mesh> m_sp_mesh;
    CellChanges m_changes;
};

} // namespace terrain
