#include <tarqa/housekeeping/gui/AbstractPresentationFactory.h>

namespace tarqa::housekeeping {

template class NamedFactory<gui::AbstractPresentation, gui::AbstractPresentationFactory>;

} // namespace tarqa::housekeeping

namespace tarqa::housekeeping::gui {

AbstractPresentationFactory::AbstractPresentationFactory(const std::string& name, bool is_default)
    : NamedFactory<AbstractPresentation, AbstractPresentationFactory>(name, is_default, this)
{ }

AbstractPresentationFactory::AbstractPresentationFactory(const AbstractPresentationFactory&) = default;
AbstractPresentationFactory& AbstractPresentationFactory::operator=(const AbstractPresentationFactory&)
    = default;
AbstractPresentationFactory::~AbstractPresentationFactory() = default;

} // namespace tarqa::housekeeping::gui
