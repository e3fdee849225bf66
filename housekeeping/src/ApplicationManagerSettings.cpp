#include <tarqa/housekeeping/ApplicationManager.h>

#include <tarqa/housekeeping/ErrorProtocol.h>

#include "SettingsChange.h"
#include "SettingsGroup.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QThreadPool>
#include <QtCore/QUrl>
#include <QtNetwork/QNetworkProxyFactory>

namespace tarqa::housekeeping {

namespace {

/// Where one preference is stored.
struct Key
{
    const char* group;
    const char* name;
};

const char* const s_application = "application";
const char* const s_performance = "performance_options";
const char* const s_viewer = "viewer_options";
const char* const s_animation = "animation_tool";

// The mixed styles are deliberate, the spelling of "transparancy" too: users' settings have these names.
const Key s_eye_indicator{s_application, "useEyeVisibilityIndicator"};
const Key s_industry_sector{s_application, "industry_sector"};
const Key s_mouse_mode{s_application, "mouse_mode"};
const Key s_system_proxy{s_application, "useSystemProxySettings"};
const Key s_external_help{s_application, "useExternalHelpViewer"};
const Key s_entity_ids{s_application, "showEntityIds2"}; // the suffix shuts out what older versions stored
const Key s_hidden_attributes{s_application, "showHiddenAttributes"};
const Key s_unique_names{s_application, "create_unique_object_names"};
const Key s_toolbox_select{s_application, "useToolboxAutoSelect"};
const Key s_flowpaths{s_application, "useOptimizedFlowpaths"};
const Key s_multithreading{s_performance, "use_multithreading"};
const Key s_multithreaded_rendering{s_performance, "use_multithreaded_rendering"};
const Key s_seismic_quality{s_performance, "seismicRenderQuality"};
const Key s_animate_jumps{s_viewer, "animate_jumps"};
const Key s_downsample{s_viewer, "hq_image_downsample"};
const Key s_background{s_viewer, "background_color"};
const Key s_highlight{s_viewer, "highlight_color"};
const Key s_highlight_selection{s_viewer, "use_highlight_color_for_selection"};
const Key s_transparent_highlight{s_viewer, "apply_transparancy_to_highlight"};
const Key s_metric_symbols{s_viewer, "use_metric_symbol_size"};
const Key s_metric_labels{s_viewer, "use_label_metric_size"};
const Key s_shaders{s_viewer, "shader_rendering"};
const Key s_tri_panel{s_viewer, "useTriPanelViewFrame"};
const Key s_3d_view{s_viewer, "use3DViewByDefault"};
const Key s_metric_symbols_3d{s_viewer, "use_metric_symbol_size_3dview"};
const Key s_ffmpeg{s_animation, "pathToFFmpegExecutable"};

const char* const s_default_background = "white";
const char* const s_default_highlight = "yellow";

const char* const s_proxy_query_address = "http://www.tarqa.example/";

void log(const QString& text)
{
    ErrorProtocol::instance().log_message(text.toStdString());
}

void log_not_stored(const Key& key, const QString& file)
{
    log(QString("The setting \"%1/%2\" could not be stored in %3").arg(key.group, key.name, file));
}

void store(const Key& key, const QVariant& value)
{
    // Without an organisation Qt would write into a file that belongs to nobody.
    if (QCoreApplication::organizationName().isEmpty()) {
        log_not_stored(key, "a program without a name");
        return;
    }
    QSettings settings;
    SettingsChange change(settings);
    if (change.may_begin()) {
        const SettingsGroup group(settings, key.group);
        settings.setValue(key.name, value);
    }
    if (!change.store()) {
        log_not_stored(key, settings.fileName());
    }
}

/// Reads values of one group. What is stored and cannot be read gives the default; of a switch everything can
/// be read: nothing, "0" and "false" are off, all else is on.
class Reader
{
public:
    Reader(QSettings& settings, const char* group)
        : m_settings(settings)
        , m_group(settings, group)
    { }

    bool boolean(const Key& key, bool otherwise) const
    {
        return m_settings.value(key.name, otherwise).toBool();
    }
    int number(const Key& key, int otherwise) const
    {
        bool is_number = false;
        // By way of the text, since the variant's own conversion wraps what is too large.
        const int number = m_settings.value(key.name, otherwise).toString().toInt(&is_number);
        return is_number ? number : otherwise;
    }
    /// One of 0, 1 and 2.
    template <class Enumeration>
    Enumeration choice(const Key& key, Enumeration otherwise) const
    {
        const int stored = number(key, otherwise);
        return stored >= 0 && stored <= 2 ? static_cast<Enumeration>(stored) : otherwise;
    }
    QColor colour(const Key& key, const char* otherwise) const
    {
        const QColor colour(m_settings.value(key.name, otherwise).toString());
        return colour.isValid() ? colour : QColor(otherwise);
    }
    QString text(const Key& key) const { return m_settings.value(key.name).toString(); }

private:
    QSettings& m_settings; // not owned
    SettingsGroup m_group;
};

QString type_name(int proxy_type)
{
    switch (proxy_type) {
    case QNetworkProxy::DefaultProxy:
        return "default";
    case QNetworkProxy::Socks5Proxy:
        return "SOCKS5";
    case QNetworkProxy::HttpProxy:
        return "HTTP";
    case QNetworkProxy::HttpCachingProxy:
        return "HTTP caching";
    case QNetworkProxy::FtpCachingProxy:
        return "FTP caching";
    default:
        return "none";
    }
}

} // namespace

void ApplicationManager::loadSettings()
{
    QSettings settings;
    m_create_unique_object_names = true; // deliberately at every start
    {
        const Reader stored(settings, s_application);
        m_use_eye_visibility_indicator = stored.boolean(s_eye_indicator, false);
        m_industry_sector = stored.number(s_industry_sector, 0);
        m_mouse_mode = stored.choice(s_mouse_mode, THREE_BUTTON_MOUSE_MODE);
        m_use_system_proxy_settings = stored.boolean(s_system_proxy, true);
        m_use_external_help_viewer = stored.boolean(s_external_help, false);
        m_show_entity_ids = stored.boolean(s_entity_ids, true);
        m_show_hidden_attributes = stored.boolean(s_hidden_attributes, false);
    }
    {
        const Reader stored(settings, s_performance);
        m_use_multithreading = stored.boolean(s_multithreading, true);
        m_use_multithreaded_rendering = stored.boolean(s_multithreaded_rendering, true);
        m_seismic_render_quality = stored.choice(s_seismic_quality, HIGH_SEISMIC_RENDER_QUALITY);
    }
    {
        const Reader stored(settings, s_viewer);
        m_animate_camera_jumps = stored.boolean(s_animate_jumps, true);
        m_hq_downsample = stored.boolean(s_downsample, true);
        m_view_background_colour = stored.colour(s_background, s_default_background);
        m_view_highlight_colour = stored.colour(s_highlight, s_default_highlight);
        m_use_highlight_colour_for_selection = stored.boolean(s_highlight_selection, true);
        m_transparency_affects_highlight = stored.boolean(s_transparent_highlight, true);
        m_use_metric_symbol_size = stored.boolean(s_metric_symbols, false);
        m_use_metric_label_size = stored.boolean(s_metric_labels, true);
        m_use_shader_rendering = stored.boolean(s_shaders, true);
        m_use_tri_panel_view_frame = stored.boolean(s_tri_panel, true);
        m_use_3d_view_by_default = stored.boolean(s_3d_view, true);
        m_use_metric_symbol_size_3d = stored.boolean(s_metric_symbols_3d, true);
    }
    {
        const Reader stored(settings, s_animation);
        m_link_to_ffmpeg = stored.text(s_ffmpeg);
    }
    if (settings.status() == QSettings::FormatError) {
        log(QString("The settings file %1 is damaged; what cannot be read has its default")
                .arg(settings.fileName()));
    }
}

void ApplicationManager::setUseEyeVisibilityIndicator(bool use)
{
    m_use_eye_visibility_indicator = use;
    store(s_eye_indicator, use);
}

void ApplicationManager::setIndustrySector(int sector)
{
    m_industry_sector = sector;
    store(s_industry_sector, sector);
}

void ApplicationManager::setMouseMode(MouseMode mode)
{
    m_mouse_mode = mode;
    store(s_mouse_mode, static_cast<int>(mode));
    emit mouseButtonsPreferencesChanged(mode);
}

void ApplicationManager::setUseSystemProxySettings(bool use)
{
    m_use_system_proxy_settings = use;
    store(s_system_proxy, use);
}

void ApplicationManager::setUseExternalHelpViewer(bool use)
{
    m_use_external_help_viewer = use;
    store(s_external_help, use);
}

void ApplicationManager::setShowEntityIds(bool show)
{
    m_show_entity_ids = show;
    store(s_entity_ids, show);
}

void ApplicationManager::setShowHiddenAttributes(bool show)
{
    m_show_hidden_attributes = show;
    store(s_hidden_attributes, show);
}

void ApplicationManager::setCreateUniqueObjectNames(bool create)
{
    m_create_unique_object_names = create;
    store(s_unique_names, create);
}

void ApplicationManager::setUseToolboxAutoSelect(bool use)
{
    m_use_toolbox_auto_select = use;
    store(s_toolbox_select, use);
}

void ApplicationManager::setUseOptimizedFlowpaths(bool use)
{
    m_use_optimized_flowpaths = use;
    store(s_flowpaths, use);
}

bool ApplicationManager::useMultiThreading() const
{
    const QThreadPool& pool = *QThreadPool::globalInstance();
    return m_use_multithreading && pool.activeThreadCount() + 1 < pool.maxThreadCount();
}

void ApplicationManager::setUseMultiThreading(bool use)
{
    m_use_multithreading = use;
    store(s_multithreading, use);
}

void ApplicationManager::setUseMultiThreadedRendering(bool use)
{
    m_use_multithreaded_rendering = use;
    store(s_multithreaded_rendering, use);
}

SeismicRenderQuality ApplicationManager::seismicRenderQuality() const
{
    if (!m_use_shader_rendering) {
        return LOW_SEISMIC_RENDER_QUALITY;
    }
    if (m_seismic_render_quality == HIGH_SEISMIC_RENDER_QUALITY && likelyUsingSoftwareMesa()) {
        return MEDIUM_SEISMIC_RENDER_QUALITY;
    }
    return m_seismic_render_quality;
}

void ApplicationManager::setSeismicRenderQuality(SeismicRenderQuality quality)
{
    m_seismic_render_quality = quality;
    store(s_seismic_quality, static_cast<int>(quality));
}

void ApplicationManager::setAnimateCameraJumps(bool animate)
{
    m_animate_camera_jumps = animate;
    store(s_animate_jumps, animate);
}

void ApplicationManager::setHQDownsample(bool downsample)
{
    m_hq_downsample = downsample;
    store(s_downsample, downsample);
}

void ApplicationManager::setViewBackgroundColour(const QColor& colour)
{
    if (colour.isValid()) {
        m_view_background_colour = colour;
        store(s_background, colour.name());
    }
}

void ApplicationManager::setViewHighlightColour(const QColor& colour)
{
    if (colour.isValid()) {
        m_view_highlight_colour = colour;
        store(s_highlight, colour.name());
    }
}

void ApplicationManager::setUseHighlightColourForSelection(bool use)
{
    m_use_highlight_colour_for_selection = use;
    store(s_highlight_selection, use);
}

void ApplicationManager::setTransparencyAffectsHighlight(bool affects)
{
    m_transparency_affects_highlight = affects;
    store(s_transparent_highlight, affects);
}

void ApplicationManager::setUseMetricSymbolSize(bool use)
{
    m_use_metric_symbol_size = use;
    store(s_metric_symbols, use);
}

void ApplicationManager::setUseMetricLabelSize(bool use)
{
    m_use_metric_label_size = use;
    store(s_metric_labels, use);
}

void ApplicationManager::setUseShaderRendering(bool use)
{
    m_use_shader_rendering = use;
    store(s_shaders, use);
}

void ApplicationManager::setUseTriPanelViewFrame(bool use)
{
    m_use_tri_panel_view_frame = use;
    store(s_tri_panel, use);
}

void ApplicationManager::setUse3DViewByDefault(bool use)
{
    m_use_3d_view_by_default = use;
    store(s_3d_view, use);
}

void ApplicationManager::setUseMetricSymbolSize3d(bool use)
{
    m_use_metric_symbol_size_3d = use;
    store(s_metric_symbols_3d, use);
}

void ApplicationManager::setLinkToFFMPEG(QString path)
{
    m_link_to_ffmpeg = path;
    store(s_ffmpeg, path);
}

bool ApplicationManager::instancedDipRenderingAvail() const
{
    return m_glsl_avail && m_shader_instancing_avail && m_fp_textures_avail && m_use_shader_rendering;
}

QString ApplicationManager::modifierKeyName() const
{
    return "Alt";
}

void ApplicationManager::updateProxySettings()
{
    QNetworkProxyFactory::setUseSystemConfiguration(m_use_system_proxy_settings);
    if (m_use_system_proxy_settings) {
        QThreadPool::globalInstance()->start(&ApplicationManager::testProxySettings);
    }
}

void ApplicationManager::testProxySettings()
{
    const QList<QNetworkProxy> proxies
        = QNetworkProxyFactory::proxyForQuery(QNetworkProxyQuery(QUrl(s_proxy_query_address)));
    if (proxies.isEmpty() || proxies.first().type() == QNetworkProxy::NoProxy) {
        log("No system proxy configuration found.");
        return;
    }
    const QNetworkProxy& proxy = proxies.first();
    log(proxy_report(proxy.hostName(), proxy.port(), proxy.type()));
}

QString ApplicationManager::proxy_report(const QString& host, int port, int type)
{
    return QString("System proxy: %1:%2 (%3)").arg(host, QString::number(port), type_name(type));
}

} // namespace tarqa::housekeeping
