#include "documents/TerrainDocument.h"

#include "documents/TerrainModel.h"

#include <tarqa/housekeeping/AbstractDocumentFactory.h>
#include <tarqa/housekeeping/AbstractModelFactory.h>

#include <boost/make_shared.hpp>

namespace terrain {

const char* const TerrainDocument::product_name = "Terrain";

namespace {

class TerrainDocumentFactory : public housekeeping::AbstractDocumentFactory
{
public:
    TerrainDocumentFactory()
        : AbstractDocumentFactory(TerrainDocument::product_name, true)
    { }
    boost::shared_ptr<housekeeping::AbstractDocument> create_product() override
    {
        return boost::make_shared<TerrainDocument>();
    }
    housekeeping::AbstractDocument* create_unmanaged_product() override { return new TerrainDocument; }
};

const TerrainDocumentFactory s_factory; // registers itself

} // namespace

TerrainDocument::TerrainDocument()
{
    m_model = housekeeping::AbstractModelFactory::create(TerrainModel::product_name);
    model().set_parent_document(*this); // throws if the factory gave none
}

void TerrainDocument::buildModel()
{
    AbstractDocument::buildModel();
}

void TerrainDocument::set_busy(bool busy)
{
    m_busy = busy;
}

bool TerrainDocument::is_busy() const
{
    return m_busy;
}

bool TerrainDocument::request_close(bool, bool)
{
    return !is_busy();
}

void TerrainDocument::set_modified(bool modified)
{
    m_modified = modified;
}

void TerrainDocument::document_created() { }

void TerrainDocument::title_changed() { }

void TerrainDocument::own_file(const std::string& path, bool may_overwrite)
{
    m_own_file = path;
    m_may_overwrite = may_overwrite;
}

void TerrainDocument::source_file(const std::string& path, const FileStamp& stamp)
{
    m_source_file = path;
    m_source_stamp = stamp;
}

TerrainModel& TerrainDocument::terrain() const
{
    return dynamic_cast<TerrainModel&>(model());
}

} // namespace terrain
