#pragma once

#include <tarqa/housekeeping/NamedFactory.h>
#include <tarqa/housekeeping/tq_hk_export.h>

namespace tarqa::housekeeping {

class AbstractModel;
class AbstractModelFactory;

} // namespace tarqa::housekeeping

namespace tarqa::housekeeping {

// One registry, in the library, whichever module asks.
extern template class TQ_HK_EXPORT NamedFactory<AbstractModel, AbstractModelFactory>;

} // namespace tarqa::housekeeping

namespace tarqa::housekeeping {

/// Makes the models of documents, for the host's documents to ask. The models belong to the documents that
/// hold them. See NamedFactory for how concrete factories register, from which threads products are made, and
/// what is thrown.
class TQ_HK_EXPORT AbstractModelFactory : public NamedFactory<AbstractModel, AbstractModelFactory>
{
public:
    AbstractModelFactory(const AbstractModelFactory&);
    AbstractModelFactory& operator=(const AbstractModelFactory&);
    ~AbstractModelFactory() override;

    /// The name that the messages quote.
    static const char* factory_name() { return "AbstractModelFactory"; }

protected:
    /// Registers the concrete factory, while the program loads.
    /// @param name the product's name
    /// @param is_default whether it becomes the default product
    /// @throws std::runtime_error if the name is taken
    AbstractModelFactory(const std::string& name, bool is_default);
};

} // namespace tarqa::housekeeping
