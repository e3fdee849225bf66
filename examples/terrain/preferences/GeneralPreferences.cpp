#include "preferences/GeneralPreferences.h"

#include <tarqa/housekeeping/gui/AbstractPreferencesFactory.h>

#include <boost/make_shared.hpp>

namespace terrain {

namespace gui = housekeeping::gui;
using housekeeping::ApplicationManager;

const char* const GeneralPreferences::product_name = "GeneralPreferences";

namespace {

const int s_weight = 0;

class GeneralPreferencesFactory : public gui::AbstractPreferencesFactory
{
public:
    GeneralPreferencesFactory()
        : AbstractPreferencesFactory(GeneralPreferences::product_name, false)
    { }
    boost::shared_ptr<gui::AbstractPreferences> create_product() override
    {
        return boost::make_shared<GeneralPreferences>();
    }
    gui::AbstractPreferences* create_unmanaged_product() override { return new GeneralPreferences; }
};

const GeneralPreferencesFactory s_factory; // registers itself

std::vector<Choice> mouse_modes()
{
    return {
        {housekeeping::THREE_BUTTON_MOUSE_MODE, GeneralPreferences::tr("Three buttons"),
            GeneralPreferences::tr(
                "Left selects, middle moves, right turns the view. On maps, where there is nothing to "
                "select, left moves too.")},
        {housekeeping::TWO_BUTTON_MOUSE_MODE, GeneralPreferences::tr("Two buttons"),
            GeneralPreferences::tr(
                "Left selects, right turns the view, left with %1 moves it. On maps, where there is "
                "nothing to select, left moves without %1 too.")
                .arg(ApplicationManager::const_instance().modifierKeyName())},
        {housekeeping::LEFT_BUTTON_NAVIGATION_MOUSE_MODE, GeneralPreferences::tr("Left button navigates"),
            GeneralPreferences::tr(
                "Left turns the view, right moves it, left with %1 selects. On maps, which do not turn, "
                "left moves too.")
                .arg(ApplicationManager::const_instance().modifierKeyName())},
    };
}

std::vector<Choice> industry_sectors()
{
    return {
        {0, GeneralPreferences::tr("Not specified"), {}},
        {1, GeneralPreferences::tr("Mining"), {}},
        {2, GeneralPreferences::tr("Oil and gas"), {}},
        {3, GeneralPreferences::tr("Geothermal energy"), {}},
        {4, GeneralPreferences::tr("Groundwater"), {}},
        {5, GeneralPreferences::tr("Civil engineering"), {}},
        {6, GeneralPreferences::tr("Environment"), {}},
        {7, GeneralPreferences::tr("Research and teaching"), {}},
    };
}

/// Takes effect at once.
Setting<bool> system_proxy()
{
    auto setting = make_setting("useSystemProxySettings", true, &ApplicationManager::useSystemProxySettings,
        &ApplicationManager::setUseSystemProxySettings);
    setting.change = [](bool use) {
        ApplicationManager::instance().setUseSystemProxySettings(use);
        ApplicationManager::instance().updateProxySettings();
    };
    return setting;
}

} // namespace

GeneralPreferences::GeneralPreferences(QWidget* p_parent)
    : SettingsPage("application", p_parent)
{
    label(tr("General"));
    weight(s_weight);
    add_program_settings();
    add_object_settings();
    add_settings_of_the_session();
    finish();
}

void GeneralPreferences::add_program_settings()
{
    QFormLayout& group = add_group(tr("Mouse, Help and Network"));
    add_choice(group,
        make_setting("mouse_mode", static_cast<int>(housekeeping::THREE_BUTTON_MOUSE_MODE),
            &ApplicationManager::mouseMode, &ApplicationManager::setMouseMode),
        tr("&Mouse:"), tr("Which mouse button does what in maps and other views."), mouse_modes());
    add_switch(group,
        make_setting("useExternalHelpViewer", false, &ApplicationManager::useExternalHelpViewer,
            &ApplicationManager::setUseExternalHelpViewer),
        tr("Show help in the &web browser"),
        tr("Pages of the help are shown by your web browser; otherwise in a window of this program."));
    add_switch(group, system_proxy(), tr("Use the system's &proxy settings"),
        tr("What this program loads from the network goes through the proxy that is set for the whole "
           "computer; otherwise it goes directly."));
}

void GeneralPreferences::add_object_settings()
{
    QFormLayout& group = add_group(tr("Objects"),
        tr("For components that list objects. This program, which has none, does not use these."));
    add_switch(group,
        make_setting("useEyeVisibilityIndicator", false, &ApplicationManager::useEyeVisibilityIndicator,
            &ApplicationManager::setUseEyeVisibilityIndicator),
        tr("Show &eyes beside visible objects"),
        tr("In lists of objects, an eye tells whether an object is visible."));
    add_switch(group,
        make_setting("showEntityIds2", true, &ApplicationManager::showEntityIds,
            &ApplicationManager::setShowEntityIds),
        tr("Show the &numbers of objects"), tr("The name of an object is followed by its number."));
    add_switch(group,
        make_setting("showHiddenAttributes", false, &ApplicationManager::showHiddenAttributes,
            &ApplicationManager::setShowHiddenAttributes),
        tr("Show &hidden attributes"),
        tr("Attributes that are meant for the program itself are listed with the others."));
    add_choice(group,
        make_setting("industry_sector", 0, &ApplicationManager::industrySector,
            &ApplicationManager::setIndustrySector),
        tr("&Industry sector:"), tr("What you work on. Components may choose what they offer first by it."),
        industry_sectors());
}

void GeneralPreferences::add_settings_of_the_session()
{
    QFormLayout& group = add_group(tr("This Session Only"),
        tr("For the same components. Each start of the program switches the first on and the others off."));
    add_switch(group,
        make_setting("create_unique_object_names", true, &ApplicationManager::createUniqueObjectNames,
            &ApplicationManager::setCreateUniqueObjectNames),
        tr("Give new objects &unique names"),
        tr("A new object whose name is taken gets a number behind it. On again at the next start."));
    add_switch(group,
        make_setting("useToolboxAutoSelect", false, &ApplicationManager::useToolboxAutoSelect,
            &ApplicationManager::setUseToolboxAutoSelect),
        tr("Choose the &toolbox automatically"),
        tr("The toolbox that fits what you do comes to the front by itself. Off again at the next start."));
    add_switch(group,
        make_setting("useOptimizedFlowpaths", false, &ApplicationManager::useOptimizedFlowpaths,
            &ApplicationManager::setUseOptimizedFlowpaths),
        tr("Use optimized &flow paths"),
        tr("Paths of flowing water are optimized. Off again at the next start."));
    add_switch(group,
        make_setting("resetIdsOnOpen", false, &ApplicationManager::resetIdsOnOpen,
            &ApplicationManager::setResetIdsOnOpen),
        tr("Num&ber objects anew when a file is opened"),
        tr("The objects of a file get new numbers instead of those it was written with. Off again at the "
           "next "
           "start."));
}

} // namespace terrain
