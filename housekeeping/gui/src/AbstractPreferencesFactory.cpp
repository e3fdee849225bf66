#include <tarqa/housekeeping/gui/AbstractPreferencesFactory.h>

namespace tarqa::housekeeping {

template class NamedFactory<gui::AbstractPreferences, gui::AbstractPreferencesFactory>;

} // namespace tarqa::housekeeping

namespace tarqa::housekeeping::gui {

AbstractPreferencesFactory::AbstractPreferencesFactory(const std::string& name, bool is_default)
    : NamedFactory<AbstractPreferences, AbstractPreferencesFactory>(name, is_default, this)
{ }

AbstractPreferencesFactory::AbstractPreferencesFactory(const AbstractPreferencesFactory&) = default;
AbstractPreferencesFactory& AbstractPreferencesFactory::operator=(const AbstractPreferencesFactory&)
    = default;
AbstractPreferencesFactory::~AbstractPreferencesFactory() = default;

} // namespace tarqa::housekeeping::gui
