#pragma once

#include <tarqa/housekeeping/NamedFactory.h>
#include <tarqa/housekeeping/tq_hk_export.h>

namespace tarqa::housekeeping::gui {

class AbstractPresentation;
class AbstractPresentationFactory;

} // namespace tarqa::housekeeping::gui

namespace tarqa::housekeeping {

// One registry, in the library, whichever module asks.
extern template class TQ_HK_EXPORT NamedFactory<gui::AbstractPresentation, gui::AbstractPresentationFactory>;

} // namespace tarqa::housekeeping

namespace tarqa::housekeeping::gui {

/// Makes the presentations, one of each at start-up. They belong to the PresentationManager. See NamedFactory
/// for how concrete factories register, from which threads products are made, and what is thrown.
class TQ_HK_EXPORT AbstractPresentationFactory
    : public NamedFactory<AbstractPresentation, AbstractPresentationFactory>
{
public:
    AbstractPresentationFactory(const AbstractPresentationFactory&);
    AbstractPresentationFactory& operator=(const AbstractPresentationFactory&);
    ~AbstractPresentationFactory() override;

    /// The name that the messages quote.
    static const char* factory_name() { return "AbstractPresentationFactory"; }

protected:
    /// Registers the concrete factory, while the program loads.
    /// @param name the product's name
    /// @param is_default whether it becomes the default product
    /// @throws std::runtime_error if the name is taken
    AbstractPresentationFactory(const std::string& name, bool is_default);
};

} // namespace tarqa::housekeeping::gui
