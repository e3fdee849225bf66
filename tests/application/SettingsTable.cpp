#include "SettingsTable.h"

#include <QtCore/QThreadPool>

using tarqa::housekeeping::ApplicationManager;
using tarqa::housekeeping::MouseMode;
using tarqa::housekeeping::SeismicRenderQuality;

namespace {

typedef ApplicationManager Manager;

std::string text(bool value)
{
    return value ? "true" : "false";
}

Setting boolean(const char* group, const char* key, bool initial, bool (Manager::*get)() const,
    void (Manager::*set)(bool))
{
    Setting setting;
    setting.group = group;
    setting.key = key;
    setting.initial = text(initial);
    setting.others = {text(!initial)};
    setting.get = [get](const Manager& manager) { return text((manager.*get)()); };
    setting.set = [set](Manager& manager, const std::string& value) { (manager.*set)(value == "true"); };
    return setting;
}

Setting written_only(const char* key, bool initial, bool (Manager::*get)() const, void (Manager::*set)(bool))
{
    Setting setting = boolean("application", key, initial, get, set);
    setting.read_back = false;
    return setting;
}

template <class Number>
Setting number(const char* group, const char* key, int initial, const std::vector<std::string>& others,
    Number (Manager::*get)() const, void (Manager::*set)(Number))
{
    Setting setting;
    setting.group = group;
    setting.key = key;
    setting.initial = std::to_string(initial);
    setting.others = others;
    setting.get
        = [get](const Manager& manager) { return std::to_string(static_cast<int>((manager.*get)())); };
    setting.set = [set](Manager& manager, const std::string& value) {
        (manager.*set)(static_cast<Number>(std::stoi(value)));
    };
    return setting;
}

Setting colour(
    const char* key, const char* initial, QColor (Manager::*get)() const, void (Manager::*set)(const QColor&))
{
    Setting setting;
    setting.group = "viewer_options";
    setting.key = key;
    setting.initial = initial;
    setting.others = {"#12ab9f", "#000000"};
    setting.get = [get](const Manager& manager) { return (manager.*get)().name().toStdString(); };
    setting.set = [set](Manager& manager, const std::string& value) {
        (manager.*set)(QColor(QString::fromStdString(value)));
    };
    return setting;
}

/// The preference alone: the thread pool always has room.
Setting multi_threading()
{
    Setting setting = boolean("performance_options", "use_multithreading", true, &Manager::useMultiThreading,
        &Manager::setUseMultiThreading);
    setting.get = [](const Manager& manager) {
        QThreadPool::globalInstance()->waitForDone();
        QThreadPool::globalInstance()->setMaxThreadCount(8);
        return text(manager.useMultiThreading());
    };
    return setting;
}

Setting ffmpeg_path()
{
    Setting setting;
    setting.group = "animation_tool";
    setting.key = "pathToFFmpegExecutable";
    setting.others = {"/usr/bin/ffmpeg"};
    setting.get = [](const Manager& manager) { return manager.linkToFFMPEG().toStdString(); };
    setting.set = [](Manager& manager, const std::string& value) {
        manager.setLinkToFFMPEG(QString::fromStdString(value));
    };
    return setting;
}

std::vector<Setting> make_table()
{
    typedef Manager M;
    const char* const application = "application";
    const char* const performance = "performance_options";
    const char* const viewer = "viewer_options";
    return {
        boolean(application, "useEyeVisibilityIndicator", false, &M::useEyeVisibilityIndicator,
            &M::setUseEyeVisibilityIndicator),
        number<int>(application, "industry_sector", 0, {"7", "-3", "2147483647"}, &M::industrySector,
            &M::setIndustrySector),
        number<MouseMode>(application, "mouse_mode", 0, {"1", "2"}, &M::mouseMode, &M::setMouseMode),
        boolean(application, "useSystemProxySettings", true, &M::useSystemProxySettings,
            &M::setUseSystemProxySettings),
        boolean(application, "useExternalHelpViewer", false, &M::useExternalHelpViewer,
            &M::setUseExternalHelpViewer),
        boolean(application, "showEntityIds2", true, &M::showEntityIds, &M::setShowEntityIds),
        boolean(application, "showHiddenAttributes", false, &M::showHiddenAttributes,
            &M::setShowHiddenAttributes),
        written_only(
            "create_unique_object_names", true, &M::createUniqueObjectNames, &M::setCreateUniqueObjectNames),
        written_only("useToolboxAutoSelect", false, &M::useToolboxAutoSelect, &M::setUseToolboxAutoSelect),
        written_only("useOptimizedFlowpaths", false, &M::useOptimizedFlowpaths, &M::setUseOptimizedFlowpaths),
        multi_threading(),
        boolean(performance, "use_multithreaded_rendering", true, &M::useMultiThreadedRendering,
            &M::setUseMultiThreadedRendering),
        number<SeismicRenderQuality>(performance, "seismicRenderQuality", 2, {"1", "0"},
            &M::seismicRenderQuality, &M::setSeismicRenderQuality),
        boolean(viewer, "animate_jumps", true, &M::animateCameraJumps, &M::setAnimateCameraJumps),
        boolean(viewer, "hq_image_downsample", true, &M::hqDownsample, &M::setHQDownsample),
        colour("background_color", "#ffffff", &M::viewBackgroundColour, &M::setViewBackgroundColour),
        colour("highlight_color", "#ffff00", &M::viewHighlightColour, &M::setViewHighlightColour),
        boolean(viewer, "use_highlight_color_for_selection", true, &M::useHighlightColourForSelection,
            &M::setUseHighlightColourForSelection),
        boolean(viewer, "apply_transparancy_to_highlight", true, &M::transparencyAffectsHighlight,
            &M::setTransparencyAffectsHighlight),
        boolean(viewer, "use_metric_symbol_size", false, &M::useMetricSymbolSize, &M::setUseMetricSymbolSize),
        boolean(viewer, "use_label_metric_size", true, &M::useMetricLabelSize, &M::setUseMetricLabelSize),
        boolean(viewer, "shader_rendering", true, &M::useShaderRendering, &M::setUseShaderRendering),
        boolean(viewer, "useTriPanelViewFrame", true, &M::useTriPanelViewFrame, &M::setUseTriPanelViewFrame),
        boolean(viewer, "use3DViewByDefault", true, &M::use3DViewByDefault, &M::setUse3DViewByDefault),
        boolean(viewer, "use_metric_symbol_size_3dview", true, &M::useMetricSymbolSize3d,
            &M::setUseMetricSymbolSize3d),
        ffmpeg_path(),
    };
}

} // namespace

const std::vector<Setting>& settings_table()
{
    static const std::vector<Setting> s_table = make_table();
    return s_table;
}
