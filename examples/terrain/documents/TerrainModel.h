#pragma once

#include "documents/Raster.h"

#include <tarqa/housekeeping/AbstractModel.h>

#include <utility>

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

/// The heights of a terrain document. Registered as "Terrain". Only commands change cells, in the thread that
/// runs them; anybody else reads while the document is not busy.
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
    void raster(Raster raster) { m_raster = std::move(raster); }
    /// Puts @p raster in the model's place and gives what was there; nothing is copied.
    void swap(Raster& raster) noexcept { std::swap(m_raster, raster); }

    /// The cells, to change them in place; their number stays as it is.
    std::vector<double>& cells() { return m_raster.cells; }

private:
    Raster m_raster;
};

} // namespace terrain
