#include "preferences/ViewerPreferences.h"

#include <tarqa/housekeeping/gui/AbstractPreferencesFactory.h>

#include <boost/make_shared.hpp>

namespace terrain {

namespace gui = housekeeping::gui;
using housekeeping::ApplicationManager;

const char* const ViewerPreferences::product_name = "ViewerPreferences";

namespace {

const int s_weight = 10;

class ViewerPreferencesFactory : public gui::AbstractPreferencesFactory
{
public:
    ViewerPreferencesFactory()
        : AbstractPreferencesFactory(ViewerPreferences::product_name, false)
    { }
    boost::shared_ptr<gui::AbstractPreferences> create_product() override
    {
        return boost::make_shared<ViewerPreferences>();
    }
    gui::AbstractPreferences* create_unmanaged_product() override { return new ViewerPreferences; }
};

const ViewerPreferencesFactory s_factory; // registers itself

Setting<QColor> colour(const char* key, Qt::GlobalColor initial, QColor (ApplicationManager::*get)() const,
    void (ApplicationManager::*set)(const QColor&))
{
    return make_setting(key, QColor(initial), get, set);
}

} // namespace

ViewerPreferences::ViewerPreferences(QWidget* p_parent)
    : SettingsPage("viewer_options", p_parent)
{
    label(tr("Viewer"));
    weight(s_weight);
    add_map_settings();
    add_selection_settings();
    add_symbol_settings();
    add_three_dimensional_settings();
    finish();
}

void ViewerPreferences::add_map_settings()
{
    //! [settings]
    QFormLayout& group = add_group(tr("Maps and Other Views"));
    add_colour(group,
        colour("background_color", Qt::white, &ApplicationManager::viewBackgroundColour,
            &ApplicationManager::setViewBackgroundColour),
        tr("&Background:"),
        tr("The colour around the terrain, and where there is no data. Maps change at once."));
    add_switch(group,
        make_setting("hq_image_downsample", true, &ApplicationManager::hqDownsample,
            &ApplicationManager::setHQDownsample),
        tr("&Average cells when zoomed out"),
        tr("Where many cells share a point of the screen, it shows their mean. Otherwise it shows one of "
           "them, "
           "which is faster. Maps change at once."));
    add_switch(group,
        make_setting("animate_jumps", true, &ApplicationManager::animateCameraJumps,
            &ApplicationManager::setAnimateCameraJumps),
        tr("Animate &zooming and moving"),
        tr("Keys and menus let the view glide to its new place, so that you see where it goes. Otherwise it "
           "jumps. Maps follow at once."));
    //! [settings]
}

void ViewerPreferences::add_selection_settings()
{
    QFormLayout& group = add_group(tr("Selected Objects"),
        tr("For components with objects to select. The maps of this program have none and do not use "
           "these."));
    add_colour(group,
        colour("highlight_color", Qt::yellow, &ApplicationManager::viewHighlightColour,
            &ApplicationManager::setViewHighlightColour),
        tr("&Highlight colour:"), tr("The colour of selected objects."));
    add_switch(group,
        make_setting("use_highlight_color_for_selection", true,
            &ApplicationManager::useHighlightColourForSelection,
            &ApplicationManager::setUseHighlightColourForSelection),
        tr("Draw &selected objects in this colour"),
        tr("Otherwise a selected object keeps its own colour and is marked in another way."));
    add_switch(group,
        make_setting("apply_transparancy_to_highlight", true,
            &ApplicationManager::transparencyAffectsHighlight,
            &ApplicationManager::setTransparencyAffectsHighlight),
        tr("&Transparent objects stay transparent"),
        tr("The highlight of an object is as transparent as the object itself."));
}

void ViewerPreferences::add_symbol_settings()
{
    QFormLayout& group = add_group(tr("Symbols and Labels"),
        tr("For components that draw symbols. The maps of this program have none and do not use these."));
    add_switch(group,
        make_setting("use_metric_symbol_size", false, &ApplicationManager::useMetricSymbolSize,
            &ApplicationManager::setUseMetricSymbolSize),
        tr("Symbols in flat &views grow with the view"),
        tr("Symbols have a size in metres and grow when you zoom in. Otherwise they keep their size on the "
           "screen."));
    add_switch(group,
        make_setting("use_metric_symbol_size_3dview", true, &ApplicationManager::useMetricSymbolSize3d,
            &ApplicationManager::setUseMetricSymbolSize3d),
        tr("Symbols in &3D views grow with the view"),
        tr("Symbols have a size in metres and grow when you come nearer. Otherwise they keep their size on "
           "the "
           "screen."));
    add_switch(group,
        make_setting("use_label_metric_size", true, &ApplicationManager::useMetricLabelSize,
            &ApplicationManager::setUseMetricLabelSize),
        tr("&Labels grow with the view"),
        tr("Labels have a size in metres and grow when you zoom in. Otherwise they keep their size on the "
           "screen."));
}

void ViewerPreferences::add_three_dimensional_settings()
{
    QFormLayout& group = add_group(tr("3D Views"),
        tr("The panels and shaders are for other components with 3D views; this program does not use them."));
    add_switch(group,
        make_setting("use3DViewByDefault", true, &ApplicationManager::use3DViewByDefault,
            &ApplicationManager::setUse3DViewByDefault),
        tr("&Open new documents with a 3D view"),
        tr("A new document shows its map and its terrain in 3D, side by side. Otherwise it shows the map. A "
           "screen without OpenGL shows the map anyway."));
    add_switch(group,
        make_setting("useTriPanelViewFrame", true, &ApplicationManager::useTriPanelViewFrame,
            &ApplicationManager::setUseTriPanelViewFrame),
        tr("Divide views into three &panels"),
        tr("A view has three panels in one frame. Otherwise it is undivided."));
    add_switch(group,
        make_setting("shader_rendering", true, &ApplicationManager::useShaderRendering,
            &ApplicationManager::setUseShaderRendering),
        tr("Draw &with shaders"),
        tr("Switch this off if your graphics has trouble with shaders. Seismic sections are then drawn at "
           "the "
           "lowest quality."));
}

} // namespace terrain
