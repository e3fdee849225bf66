#include <tarqa/housekeeping/AbstractDocumentFactory.h>

namespace tarqa::housekeeping {

template class NamedFactory<AbstractDocument, AbstractDocumentFactory>;

AbstractDocumentFactory::AbstractDocumentFactory(const std::string& name, bool is_default)
    : NamedFactory<AbstractDocument, AbstractDocumentFactory>(name, is_default, this)
{ }

AbstractDocumentFactory::AbstractDocumentFactory(const AbstractDocumentFactory&) = default;
AbstractDocumentFactory& AbstractDocumentFactory::operator=(const AbstractDocumentFactory&) = default;
AbstractDocumentFactory::~AbstractDocumentFactory() = default;

} // namespace tarqa::housekeeping
