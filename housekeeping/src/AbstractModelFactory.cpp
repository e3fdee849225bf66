#include <tarqa/housekeeping/AbstractModelFactory.h>

namespace tarqa::housekeeping {

template class NamedFactory<AbstractModel, AbstractModelFactory>;

AbstractModelFactory::AbstractModelFactory(const std::string& name, bool is_default)
    : NamedFactory<AbstractModel, AbstractModelFactory>(name, is_default, this)
{ }

AbstractModelFactory::AbstractModelFactory(const AbstractModelFactory&) = default;
AbstractModelFactory& AbstractModelFactory::operator=(const AbstractModelFactory&) = default;
AbstractModelFactory::~AbstractModelFactory() = default;

} // namespace tarqa::housekeeping
