#include <tarqa/housekeeping/AbstractDataInformationFactory.h>

namespace tarqa::housekeeping {

template class NamedFactory<AbstractDataInformation, AbstractDataInformationFactory>;

AbstractDataInformationFactory::AbstractDataInformationFactory(const std::string& name, bool is_default)
    : NamedFactory<AbstractDataInformation, AbstractDataInformationFactory>(name, is_default, this)
{ }

AbstractDataInformationFactory::AbstractDataInformationFactory(const AbstractDataInformationFactory&)
    = default;
AbstractDataInformationFactory& AbstractDataInformationFactory::operator=(
    const AbstractDataInformationFactory&)
    = default;
AbstractDataInformationFactory::~AbstractDataInformationFactory() = default;

} // namespace tarqa::housekeeping
