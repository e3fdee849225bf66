#include "NumbersDocument.h"

#include "support/Kept.h"

#include <tarqa/housekeeping/AbstractDocumentFactory.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <boost/make_shared.hpp>

namespace load {

namespace {

class NumbersDocumentFactory : public housekeeping::AbstractDocumentFactory
{
public:
    NumbersDocumentFactory()
        : AbstractDocumentFactory("numbers", true)
    { }
    boost::shared_ptr<housekeeping::AbstractDocument> create_product() override
    {
        return boost::make_shared<NumbersDocument>();
    }
    housekeeping::AbstractDocument* create_unmanaged_product() override { return new NumbersDocument; }
};

} // namespace

NumbersDocument::NumbersDocument() = default;

NumbersDocument::~NumbersDocument() = default;

NumbersDocument& NumbersDocument::create()
{
    if (housekeeping::AbstractDocumentFactory::products().empty()) {
        support::kept(new NumbersDocumentFactory);
    }
    return dynamic_cast<NumbersDocument&>(housekeeping::DocumentManager::instance().create_document());
}

} // namespace load
