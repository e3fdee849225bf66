#include "documents/TerrainModel.h"

#include <tarqa/housekeeping/AbstractDocument.h>
#include <tarqa/housekeeping/AbstractModelFactory.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <boost/make_shared.hpp>

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
    m_raster = Raster();
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

} // namespace terrain
