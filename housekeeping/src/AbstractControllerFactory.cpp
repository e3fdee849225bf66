#include <tarqa/housekeeping/AbstractControllerFactory.h>

namespace tarqa::housekeeping {

template class NamedFactory<AbstractController, AbstractControllerFactory>;

AbstractControllerFactory::AbstractControllerFactory(const std::string& name, bool is_default)
    : NamedFactory<AbstractController, AbstractControllerFactory>(name, is_default, this)
{ }

AbstractControllerFactory::AbstractControllerFactory(const AbstractControllerFactory&) = default;
AbstractControllerFactory& AbstractControllerFactory::operator=(const AbstractControllerFactory&) = default;
AbstractControllerFactory::~AbstractControllerFactory() = default;

} // namespace tarqa::housekeeping
