#include "preferences/AnimationPreferences.h"

#include <tarqa/housekeeping/gui/AbstractPreferencesFactory.h>

#include <boost/make_shared.hpp>

namespace terrain {

namespace gui = housekeeping::gui;
using housekeeping::ApplicationManager;

const char* const AnimationPreferences::product_name = "AnimationPreferences";

namespace {

const int s_weight = 30;

class AnimationPreferencesFactory : public gui::AbstractPreferencesFactory
{
public:
    AnimationPreferencesFactory()
        : AbstractPreferencesFactory(AnimationPreferences::product_name, false)
    { }
    boost::shared_ptr<gui::AbstractPreferences> create_product() override
    {
        return boost::make_shared<AnimationPreferences>();
    }
    gui::AbstractPreferences* create_unmanaged_product() override { return new AnimationPreferences; }
};

const AnimationPreferencesFactory s_factory; // registers itself

} // namespace

AnimationPreferences::AnimationPreferences(QWidget* p_parent)
    : SettingsPage("animation_tool", p_parent)
{
    label(tr("Animation"));
    weight(s_weight);
    QFormLayout& group = add_group(
        tr("Films"), tr("For components that make films. This program makes none and does not use this."));
    add_program(group,
        make_setting("pathToFFmpegExecutable", QString(), &ApplicationManager::linkToFFMPEG,
            &ApplicationManager::setLinkToFFMPEG),
        tr("&FFmpeg program:"),
        tr("Where the program FFmpeg is, which joins pictures to a film. Leave this empty if you have "
           "none."));
    finish();
}

} // namespace terrain
