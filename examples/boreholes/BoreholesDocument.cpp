#include "BoreholesDocument.h"

#include "BoreholesModel.h"

#include <tarqa/housekeeping/AbstractDocumentFactory.h>

#include <boost/make_shared.hpp>

namespace boreholes {

namespace {

/// How the document manager comes to a document: it asks the default factory, which is the one that says
/// true.
class BoreholesDocumentFactory : public housekeeping::AbstractDocumentFactory
{
public:
    BoreholesDocumentFactory()
        : AbstractDocumentFactory("Boreholes", true)
    { }
    boost::shared_ptr<housekeeping::AbstractDocument> create_product() override
    {
        return boost::make_shared<BoreholesDocument>();
    }
    housekeeping::AbstractDocument* create_unmanaged_product() override { return new BoreholesDocument; }
};

const BoreholesDocumentFactory s_factory; // registers itself, before main() begins

} // namespace

BoreholesDocument::BoreholesDocument()
{
    m_model = boost::make_shared<BoreholesModel>();
    m_model->set_parent_document(*this);
}

void BoreholesDocument::buildModel()
{
    AbstractDocument::buildModel();
}

bool BoreholesDocument::request_close(bool, bool)
{
    return !is_busy();
}

BoreholesModel& BoreholesDocument::boreholes() const
{
    return dynamic_cast<BoreholesModel&>(model());
}

} // namespace boreholes
