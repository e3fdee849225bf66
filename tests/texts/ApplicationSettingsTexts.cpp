#include "texts/Texts.h"

#include "support/StartedApplication.h"

#include <tarqa/housekeeping/ApplicationManager.h>

#include <QtCore/QSettings>

// Where the preferences are stored, and as what.

using namespace tarqa::housekeeping;

namespace {

typedef ApplicationManager Manager;

/// All that is stored, one line each.
std::string stored()
{
    QSettings settings;
    std::string lines;
    for (const QString& key : settings.allKeys()) {
        lines += (key + '=' + settings.value(key).toString()).toStdString() + '\n';
    }
    return lines;
}

/// A row for one preference: set to @p value in a program that has nothing stored.
template <class Argument, class Value>
texts::Row row(
    const std::string& name, const std::string& expected, void (Manager::*set)(Argument), const Value& value)
{
    return {name, expected + '\n', [set, value] {
                const support::StartedApplication started;
                (started.manager().*set)(value);
                return stored();
            }};
}

const std::vector<texts::Row> s_rows = {
    row("EyeVisibilityIndicator", "application/useEyeVisibilityIndicator=true",
        &Manager::setUseEyeVisibilityIndicator, true),
    row("IndustrySector", "application/industry_sector=7", &Manager::setIndustrySector, 7),
    row("MouseMode", "application/mouse_mode=2", &Manager::setMouseMode, static_cast<MouseMode>(2)),
    row("SystemProxySettings", "application/useSystemProxySettings=false",
        &Manager::setUseSystemProxySettings, false),
    row("ExternalHelpViewer", "application/useExternalHelpViewer=true", &Manager::setUseExternalHelpViewer,
        true),
    row("EntityIds", "application/showEntityIds2=false", &Manager::setShowEntityIds, false),
    row("HiddenAttributes", "application/showHiddenAttributes=true", &Manager::setShowHiddenAttributes, true),
    row("UniqueObjectNames", "application/create_unique_object_names=false",
        &Manager::setCreateUniqueObjectNames, false),
    row("ToolboxAutoSelect", "application/useToolboxAutoSelect=true", &Manager::setUseToolboxAutoSelect,
        true),
    row("OptimizedFlowpaths", "application/useOptimizedFlowpaths=true", &Manager::setUseOptimizedFlowpaths,
        true),
    row("MultiThreading", "performance_options/use_multithreading=false", &Manager::setUseMultiThreading,
        false),
    row("MultiThreadedRendering", "performance_options/use_multithreaded_rendering=false",
        &Manager::setUseMultiThreadedRendering, false),
    row("SeismicRenderQuality", "performance_options/seismicRenderQuality=1",
        &Manager::setSeismicRenderQuality, static_cast<SeismicRenderQuality>(1)),
    row("CameraJumps", "viewer_options/animate_jumps=false", &Manager::setAnimateCameraJumps, false),
    row("Downsampling", "viewer_options/hq_image_downsample=false", &Manager::setHQDownsample, false),
    row("BackgroundColour", "viewer_options/background_color=#12ab9f", &Manager::setViewBackgroundColour,
        QColor(0x12, 0xab, 0x9f)),
    row("HighlightColour", "viewer_options/highlight_color=#0000ff", &Manager::setViewHighlightColour,
        QColor("blue")),
    row("HighlightColourForSelection", "viewer_options/use_highlight_color_for_selection=false",
        &Manager::setUseHighlightColourForSelection, false),
    row("TransparencyOfHighlight", "viewer_options/apply_transparancy_to_highlight=false",
        &Manager::setTransparencyAffectsHighlight, false),
    row("MetricSymbolSize", "viewer_options/use_metric_symbol_size=true", &Manager::setUseMetricSymbolSize,
        true),
    row("MetricLabelSize", "viewer_options/use_label_metric_size=false", &Manager::setUseMetricLabelSize,
        false),
    row("ShaderRendering", "viewer_options/shader_rendering=false", &Manager::setUseShaderRendering, false),
    row("TriPanelViewFrame", "viewer_options/useTriPanelViewFrame=false", &Manager::setUseTriPanelViewFrame,
        false),
    row("ThreeDimensionalView", "viewer_options/use3DViewByDefault=false", &Manager::setUse3DViewByDefault,
        false),
    row("MetricSymbolSizeInThreeDimensions", "viewer_options/use_metric_symbol_size_3dview=false",
        &Manager::setUseMetricSymbolSize3d, false),
    row("FFmpeg", "animation_tool/pathToFFmpegExecutable=/usr/bin/ffmpeg", &Manager::setLinkToFFMPEG,
        QString("/usr/bin/ffmpeg")),
};

// What is read where nothing is stored

template <class Get>
std::string initially(Get get)
{
    const support::StartedApplication started;
    return get(started.manager()).toStdString();
}

const std::vector<texts::Row> s_defaults = {
    {"BackgroundColour", QColor("white").name().toStdString(),
        [] {
            return initially([](const Manager& manager) { return manager.viewBackgroundColour().name(); });
        }},
    {"HighlightColour", QColor("yellow").name().toStdString(),
        [] {
            return initially([](const Manager& manager) { return manager.viewHighlightColour().name(); });
        }},
    {"FFmpeg", "", [] { return initially([](const Manager& manager) { return manager.linkToFFMPEG(); }); }},
    {"NameOfTheModifier", "Alt",
        [] { return initially([](const Manager& manager) { return manager.modifierKeyName(); }); }},
};

INSTANTIATE_TEST_SUITE_P(StoredPreferences, Texts, testing::ValuesIn(s_rows), texts::name_of);
INSTANTIATE_TEST_SUITE_P(DefaultPreferences, Texts, testing::ValuesIn(s_defaults), texts::name_of);

} // namespace
