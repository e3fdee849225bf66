#include <tarqa/housekeeping/gui/HelpLauncherFactory.h>

namespace tarqa::housekeeping {

template class NamedFactory<gui::HelpLauncher, gui::HelpLauncherFactory>;

} // namespace tarqa::housekeeping

namespace tarqa::housekeeping::gui {

HelpLauncherFactory::HelpLauncherFactory(const std::string& name, bool is_default)
    : NamedFactory<HelpLauncher, HelpLauncherFactory>(name, is_default, this)
{ }

HelpLauncherFactory::HelpLauncherFactory(const HelpLauncherFactory&) = default;
HelpLauncherFactory& HelpLauncherFactory::operator=(const HelpLauncherFactory&) = default;
HelpLauncherFactory::~HelpLauncherFactory() = default;

} // namespace tarqa::housekeeping::gui
