#pragma once

#include <tarqa/housekeeping/NamedFactory.h>
#include <tarqa/housekeeping/tq_hk_export.h>

namespace tarqa::housekeeping {

class AbstractController;
class AbstractControllerFactory;

} // namespace tarqa::housekeeping

namespace tarqa::housekeeping {

// One registry, in the library, whichever module asks.
extern template class TQ_HK_EXPORT NamedFactory<AbstractController, AbstractControllerFactory>;

} // namespace tarqa::housekeeping

namespace tarqa::housekeeping {

/// Makes the controllers, one of each when ControllerManager::init() runs. They belong to the
/// ControllerManager. See NamedFactory for how concrete factories register, from which threads products are
/// made, and what is thrown.
class TQ_HK_EXPORT AbstractControllerFactory
    : public NamedFactory<AbstractController, AbstractControllerFactory>
{
public:
    AbstractControllerFactory(const AbstractControllerFactory&);
    AbstractControllerFactory& operator=(const AbstractControllerFactory&);
    ~AbstractControllerFactory() override;

    /// The name that the messages quote.
    static const char* factory_name() { return "AbstractControllerFactory"; }

protected:
    /// Registers the concrete factory, while the program loads.
    /// @param name the product's name
    /// @param is_default whether it becomes the default product
    /// @throws std::runtime_error if the name is taken
    AbstractControllerFactory(const std::string& name, bool is_default);
};

} // namespace tarqa::housekeeping
