#pragma once

#include <tarqa/housekeeping/NamedFactory.h>
#include <tarqa/housekeeping/tq_hk_export.h>

namespace tarqa::housekeeping::gui {

class AbstractPreferences;
class AbstractPreferencesFactory;

} // namespace tarqa::housekeeping::gui

namespace tarqa::housekeeping {

// One registry, in the library, whichever module asks.
extern template class TQ_HK_EXPORT NamedFactory<gui::AbstractPreferences, gui::AbstractPreferencesFactory>;

} // namespace tarqa::housekeeping

namespace tarqa::housekeeping::gui {

/// Makes the pages of the preferences dialog. The pages belong to the dialog. See NamedFactory for how
/// concrete factories register, from which threads products are made, and what is thrown.
class TQ_HK_EXPORT AbstractPreferencesFactory
    : public NamedFactory<AbstractPreferences, AbstractPreferencesFactory>
{
public:
    AbstractPreferencesFactory(const AbstractPreferencesFactory&);
    AbstractPreferencesFactory& operator=(const AbstractPreferencesFactory&);
    ~AbstractPreferencesFactory() override;

    /// The name that the messages quote.
    static const char* factory_name() { return "AbstractPreferencesFactory"; }

protected:
    /// Registers the concrete factory, while the program loads.
    /// @param name the product's name
    /// @param is_default whether it becomes the default product
    /// @throws std::runtime_error if the name is taken
    AbstractPreferencesFactory(const std::string& name, bool is_default);
};

} // namespace tarqa::housekeeping::gui
