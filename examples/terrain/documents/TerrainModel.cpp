#include "documents/TerrainModel.h"

#include <tarqa/housekeeping/AbstractDocument.h>
#include <tarqa/housekeeping/AbstractModelFactory.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <boost/make_shared.hpp>

#include <utility>

namespace terrain {

const char* const TerrainModel::product_name = "Terrain";

namespace {

class TerrainModelFactory : public housekeeping::AbstractModelFactory
{
public:
    TerrainModelFactory()
        : AbstractModelFactory(TerrainModel::product_name, true)
    { }
    boost::shared_ptr<housekeeping::AbstractModel> create_product() override
    {
        return boost::make_shared<TerrainModel>();
    }
    housekeeping::AbstractModel* create_unmanaged_product() override { return new TerrainModel; }
};

const TerrainModelFactory s_factory; // registers itself

} // namespace

TerrainModel& TerrainModel::of(const housekeeping::DocumentId& id)
{
    housekeeping::AbstractDocument& document = housekeeping::DocumentManager::instance().document_from_id(id);
    return dynamic_cast<TerrainModel&>(document.model());
}

bool TerrainModel::empty() const
{
    return m_raster.cells.empty();
}

unsigned long long TerrainModel::size() const
{
    return m_raster.cells.size();
}

void TerrainModel::clear()
{
    Raster none;
    swap(none);
}

const std::string& TerrainModel::document_type() const
{
    static const std::string s_type = product_name;
    return s_type;
}

void TerrainModel::setupDatabase(const QString&) { }

void TerrainModel::mergeDatabase(const QString&) { }

QString TerrainModel::getDatabasePath()
{
    return {};
}

// --- cells

void TerrainModel::raster(Raster raster)
{
    swap(raster);
    m_changes = CellChanges();
}

void TerrainModel::swap(Raster& raster) noexcept
{
    std::swap(m_raster, raster);
    m_changes.reshaped = true;
    mesh(nullptr);
}

void TerrainModel::cells_changed(const QRect& area) noexcept
{
    m_changes.cells |= area;
    mesh(nullptr);
}

void TerrainModel::mesh(const boost::shared_ptr<const Mesh>& sp_mesh) noexcept
{
    m_changes.mesh = m_changes.mesh || sp_mesh != m_sp_mesh;
    m_sp_mesh = sp_mesh;
}

CellChanges TerrainModel::take_changes() noexcept
{
    return std::exchange(m_changes, CellChanges());
}

} // namespace terrain
