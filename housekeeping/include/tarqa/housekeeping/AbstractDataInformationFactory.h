#pragma once

#include <tarqa/housekeeping/NamedFactory.h>
#include <tarqa/housekeeping/tq_hk_export.h>

namespace tarqa::housekeeping {

class AbstractDataInformation;
class AbstractDataInformationFactory;

} // namespace tarqa::housekeeping

namespace tarqa::housekeeping {

// One registry, in the library, whichever module asks.
extern template class TQ_HK_EXPORT NamedFactory<AbstractDataInformation, AbstractDataInformationFactory>;

} // namespace tarqa::housekeeping

namespace tarqa::housekeeping {

/// Makes the data informations of data sources, by the kind of file. They belong to the data sources that
/// hold them. See NamedFactory for how concrete factories register, from which threads products are made, and
/// what is thrown.
class TQ_HK_EXPORT AbstractDataInformationFactory
    : public NamedFactory<AbstractDataInformation, AbstractDataInformationFactory>
{
public:
    AbstractDataInformationFactory(const AbstractDataInformationFactory&);
    AbstractDataInformationFactory& operator=(const AbstractDataInformationFactory&);
    ~AbstractDataInformationFactory() override;

    /// The name that the messages quote.
    static const char* factory_name() { return "AbstractDataInformationFactory"; }

protected:
    /// Registers the concrete factory, while the program loads.
    /// @param name the product's name
    /// @param is_default whether it becomes the default product
    /// @throws std::runtime_error if the name is taken
    AbstractDataInformationFactory(const std::string& name, bool is_default);
};

} // namespace tarqa::housekeeping
