#pragma once

#include <tarqa/housekeeping/NamedFactory.h>
#include <tarqa/housekeeping/tq_hk_export.h>

namespace tarqa::housekeeping::gui {

class HelpLauncher;
class HelpLauncherFactory;

} // namespace tarqa::housekeeping::gui

namespace tarqa::housekeeping {

// One registry, in the library, whichever module asks.
extern template class TQ_HK_EXPORT NamedFactory<gui::HelpLauncher, gui::HelpLauncherFactory>;

} // namespace tarqa::housekeeping

namespace tarqa::housekeeping::gui {

/// Makes the launcher of the host's help. It belongs to whoever asked, the HelpManager. See NamedFactory for
/// how concrete factories register, from which threads products are made, and what is thrown.
class TQ_HK_EXPORT HelpLauncherFactory : public NamedFactory<HelpLauncher, HelpLauncherFactory>
{
public:
    HelpLauncherFactory(const HelpLauncherFactory&);
    HelpLauncherFactory& operator=(const HelpLauncherFactory&);
    ~HelpLauncherFactory() override;

    /// The name that the messages quote.
    static const char* factory_name() { return "HelpLauncherFactory"; }

protected:
    /// Registers the concrete factory, while the program loads.
    /// @param name the product's name
    /// @param is_default whether it becomes the default product
    /// @throws std::runtime_error if the name is taken
    HelpLauncherFactory(const std::string& name, bool is_default);
};

} // namespace tarqa::housekeeping::gui
