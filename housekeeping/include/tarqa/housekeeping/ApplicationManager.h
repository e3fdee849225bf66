#pragma once

#include <pkBase/pkSingleton.h>
#include <tarqa/housekeeping/MouseMode.h>
#include <tarqa/housekeeping/SeismicRenderQuality.h>
#include <tarqa/housekeeping/tq_hk_export.h>

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtGui/QColor>

#include <atomic>
#include <memory>
#include <string>
#include <vector>

class QApplication;
class QTranslator;
class QWidget;

namespace tarqa::housekeeping {

class QtLockedFile;
class QTarqaApplication;

/**
 * The application as a whole: its start-up, its main loop, its end, and the user's preferences.
 *
 * A host calls, on the main thread and before any other thread starts, instance() and init(), makes its main
 * window, hands it to top_level_widget(), and calls show() and main_loop(). exit_main_loop() or quit() ends
 * the loop. The host then deletes its window and calls pkBase::pkDestructor::run(). Each of init(),
 * top_level_widget() and main_loop() is for one call.
 *
 * init() makes the application object, prepares the environment for GDAL and PROJ, and sends the messages of
 * Qt, GDAL, CGAL and OpenSceneGraph to the error log, whichever thread they come from.
 *
 * The preferences are read by init(); a setter stores its value at once, in QSettings, so nothing is left to
 * be written at the end. They are set on the main thread; getters read without a lock.
 *
 * A singleton, destroyed in phase 5 of the ordered destruction, and the application object with it. All of it
 * belongs to the main thread, except exit_main_loop(), testProxySettings() and the getters, which any thread
 * may call.
 */
class TQ_HK_EXPORT ApplicationManager : public QObject
{
    Q_OBJECT

public:
    /// The QML module of the types that the library registers.
    static const char* const QML_NAMESPACE;

    /// The one object; made at first use.
    static ApplicationManager& instance();
    /// The same, to look at only.
    static const ApplicationManager& const_instance();

    // --- start-up, main loop, end
    // -----------------------------------------------------------------------------

    /// Starts up. Asserts that it comes before the main window and the main loop; a second call is logged and
    /// changes nothing.
    /// @param argc how many arguments came to main(); Qt's own options are taken out
    /// @param argv these arguments, which must outlive the program; Qt's own options are taken out
    /// @param name not used
    /// @param gui false for a program without windows: it needs no display then, and problems are reported
    /// without boxes
    void init(int& argc, char**& argv, const char* name, bool gui);

    /// The application object, owned here; null and logged before init().
    QApplication* qapplication() const;
    /// Neither loaded nor installed; owned here. Null and logged before init().
    QTranslator* qtranslator() const;

    /// Makes @p p_widget the active window and the top-level widget. The host keeps the widget and deletes it
    /// after the main loop. Null changes nothing.
    void top_level_widget(QWidget* p_widget);
    /// Null, and logged, before the host has set it and after it was deleted.
    QWidget* top_level_widget() const;

    /// Shows @p p_widget, or the top-level widget if it is null, and activates the top-level widget.
    void show(QWidget* p_widget = nullptr) const;
    /// Runs the event loop until it is left, then lets go of what OpenSceneGraph has loaded and of GDAL's
    /// messages.
    void main_loop() const;
    /// Leaves the main loop, with success. Any thread.
    void exit_main_loop() const;
    /// Leaves the main loop, with success; nothing happens where none runs. Main thread.
    static void quit();
    /// The program and its arguments as they came to init(), with Qt's own options; empty before.
    static QStringList command_line();
    /// Quits, and starts the program anew with all its arguments. The first one, the program, is deliberately
    /// passed as an argument too.
    static void relaunch();

    /// Tells the program that the machine goes to sleep or has woken up; the same twice tells nothing.
    void setSuspended(bool suspended);
    /// Whether the machine is on its way to sleep; false until told.
    bool isSuspended() const { return m_suspended; }
    /// Whether init() was told that the program has windows.
    bool isGuiApp() const { return m_gui_application; }

    /// Adds the installation's folders of Qt plug-ins and QML modules to Qt's library paths, those that
    /// exist. The arguments are not used.
    static void setupQtPaths(int& argc, char**& argv);
    /// Points GDAL and PROJ at the installation's own data. On Linux where that does not exist they keep the
    /// system's.
    void initialiseGDALPaths();
    /// Makes the library's types known to QML, in the module QML_NAMESPACE.
    static void registerQmlTypes();

    // --- what the graphics can do: found out and stored by the rendering component
    // ----------------------------

    /// Whether OpenGL works at all; false until set, and so in what follows.
    bool glTest() const { return m_gl_test; }
    void setGlTest(bool passed) { m_gl_test = passed; }
    /// Version of OpenGL, for example 4.6; 0 until set.
    float glVersion() const { return m_gl_version; }
    void setGLVersion(float version) { m_gl_version = version; }
    /// Name of the renderer, as OpenGL gives it; "???" until set.
    const std::string& glRenderer() const { return m_gl_renderer; }
    void setGlRenderer(const std::string& renderer);
    /// Whether there is a shading language.
    bool glslAvail() const { return m_glsl_avail; }
    void setGlslAvail(bool available) { m_glsl_avail = available; }
    /// Version of the shading language, for example 4.6; 0 until set.
    float glslVersion() const { return m_glsl_version; }
    void setGlslVersion(float version) { m_glsl_version = version; }
    /// Whether there are vertex shaders.
    bool vertShaderAvail() const { return m_vert_shader_avail; }
    void setVertShaderAvail(bool available) { m_vert_shader_avail = available; }
    /// Whether there are fragment shaders.
    bool fragShaderAvail() const { return m_frag_shader_avail; }
    void setFragShaderAvail(bool available) { m_frag_shader_avail = available; }
    /// Whether there are geometry shaders.
    bool geomShaderAvail() const { return m_geom_shader_avail; }
    void setGeomShaderAvail(bool available) { m_geom_shader_avail = available; }
    /// Whether there are floating-point textures.
    bool fpTexturesAvail() const { return m_fp_textures_avail; }
    void setFpTexturesAvail(bool available) { m_fp_textures_avail = available; }
    /// Whether shaders can draw instances.
    bool shaderInstancingAvail() const { return m_shader_instancing_avail; }
    void setShaderInstancingAvail(bool available) { m_shader_instancing_avail = available; }
    /// The graphics card's memory, in the unit that the rendering component counts in; 0 until set.
    int totalGraphicsMemory() const { return m_total_graphics_memory; }
    void setTotalGraphicsMemory(int memory) { m_total_graphics_memory = memory; }

    /// Whether OpenGL seems to be done by the processor: the renderer's name says so, or OpenGL works but
    /// offers neither vertex nor fragment shaders.
    bool likelyUsingSoftwareMesa() const;

    /// Keeps @p colour visible on the views' background: changes it if the two are the same.
    // The name's spelling is the interface's own.
    void checkColourAgaistBackground(QColor& colour) const;

    // --- preferences
    // ------------------------------------------------------------------------------------------

    /// Whether lists mark what is visible with an eye; false by default. This and the next ones are the
    /// host's to act on.
    bool useEyeVisibilityIndicator() const { return m_use_eye_visibility_indicator; }
    void setUseEyeVisibilityIndicator(bool use);
    /// The user's trade, in numbers of the host's; 0 by default.
    int industrySector() const { return m_industry_sector; }
    void setIndustrySector(int sector);
    /// Which mouse button does what in the views; three buttons by default.
    MouseMode mouseMode() const { return m_mouse_mode; }
    /// Emits mouseButtonsPreferencesChanged(), whether or not the mode is a new one.
    void setMouseMode(MouseMode mode);
    /// Whether network traffic goes through the system's proxy; true by default. updateProxySettings()
    /// applies it.
    bool useSystemProxySettings() const { return m_use_system_proxy_settings; }
    void setUseSystemProxySettings(bool use);
    /// Whether help is shown by the system's web browser; false by default.
    bool useExternalHelpViewer() const { return m_use_external_help_viewer; }
    void setUseExternalHelpViewer(bool use);
    /// Whether objects are shown with their numbers; true by default.
    bool showEntityIds() const { return m_show_entity_ids; }
    void setShowEntityIds(bool show);
    /// Whether attributes that are normally hidden are shown; false by default.
    bool showHiddenAttributes() const { return m_show_hidden_attributes; }
    void setShowHiddenAttributes(bool show);
    /// Whether new objects get names of their own. Deliberately true at every start: what was stored is not
    /// read back. So with the next two, which begin false.
    bool createUniqueObjectNames() const { return m_create_unique_object_names; }
    void setCreateUniqueObjectNames(bool create);
    /// Whether the toolbox picks a tool by itself; false at every start.
    bool useToolboxAutoSelect() const { return m_use_toolbox_auto_select; }
    void setUseToolboxAutoSelect(bool use);
    /// Whether flow paths are computed the faster way; false at every start.
    bool useOptimizedFlowpaths() const { return m_use_optimized_flowpaths; }
    void setUseOptimizedFlowpaths(bool use);

    /// Whether a background task may be started now: the preference, and room in the global thread pool. It
    /// changes with load, so ask just before starting.
    bool useMultiThreading() const;
    /// Sets the preference; true by default.
    void setUseMultiThreading(bool use);
    /// Whether views may be drawn by several threads; true by default.
    bool useMultiThreadedRendering() const { return m_use_multithreaded_rendering; }
    void setUseMultiThreadedRendering(bool use);
    /// What the graphics can carry of the quality that was set: the lowest without shader rendering, not the
    /// highest with a software renderer.
    SeismicRenderQuality seismicRenderQuality() const;
    /// Sets the quality that is wished for; the highest by default.
    void setSeismicRenderQuality(SeismicRenderQuality quality);

    /// Whether the camera flies to a new place instead of jumping; true by default.
    bool animateCameraJumps() const { return m_animate_camera_jumps; }
    void setAnimateCameraJumps(bool animate);
    /// Whether images are made smaller with care rather than fast; true by default.
    bool hqDownsample() const { return m_hq_downsample; }
    void setHQDownsample(bool downsample);
    /// The colour behind everything in the views.
    QColor viewBackgroundColour() const { return m_view_background_colour; }
    /// An invalid colour changes nothing.
    void setViewBackgroundColour(const QColor& colour);
    /// The colour of what is highlighted in the views.
    QColor viewHighlightColour() const { return m_view_highlight_colour; }
    /// An invalid colour changes nothing.
    void setViewHighlightColour(const QColor& colour);
    /// Whether what is selected is drawn in the highlight colour; true by default.
    bool useHighlightColourForSelection() const { return m_use_highlight_colour_for_selection; }
    void setUseHighlightColourForSelection(bool use);
    /// Whether highlighted objects keep their transparency; true by default.
    bool transparencyAffectsHighlight() const { return m_transparency_affects_highlight; }
    void setTransparencyAffectsHighlight(bool affects);
    /// Whether symbols have a size in the model's units rather than on the screen; false by default.
    bool useMetricSymbolSize() const { return m_use_metric_symbol_size; }
    void setUseMetricSymbolSize(bool use);
    /// The same for labels; true by default.
    bool useMetricLabelSize() const { return m_use_metric_label_size; }
    void setUseMetricLabelSize(bool use);
    /// Whether shaders are used where there are some; true by default.
    bool useShaderRendering() const { return m_use_shader_rendering; }
    void setUseShaderRendering(bool use);
    /// Whether a view has three panels; true by default.
    bool useTriPanelViewFrame() const { return m_use_tri_panel_view_frame; }
    void setUseTriPanelViewFrame(bool use);
    /// Whether a new view is one in three dimensions; true by default.
    bool use3DViewByDefault() const { return m_use_3d_view_by_default; }
    void setUse3DViewByDefault(bool use);
    /// As useMetricSymbolSize(), for views in three dimensions; true by default.
    bool useMetricSymbolSize3d() const { return m_use_metric_symbol_size_3d; }
    void setUseMetricSymbolSize3d(bool use);

    /// Path of the FFmpeg program, for films; empty until set.
    QString linkToFFMPEG() const { return m_link_to_ffmpeg; }
    void setLinkToFFMPEG(QString path);

    /// Whether the objects of a document that is opened get new numbers. Not stored, false at every start.
    bool resetIdsOnOpen() const { return m_reset_ids_on_open; }
    void setResetIdsOnOpen(bool reset) { m_reset_ids_on_open = reset; }

    /// Whether instanced dip symbols can be drawn: GLSL, shader instancing, floating-point textures and the
    /// preference for shader rendering.
    bool instancedDipRenderingAvail() const;
    /// What the mouse modes pair with, the same on every platform.
    Qt::KeyboardModifier keyboardModifier() const { return Qt::AltModifier; }
    /// Its name, as keys are written.
    QString modifierKeyName() const;

    /// Applies useSystemProxySettings() to the program's network traffic. With the system's settings on, the
    /// proxy that they give is logged, by a thread of the global pool.
    void updateProxySettings();
    /// Logs which proxy the system gives for the maker's web address, without calling there. Any thread; it
    /// may take long where the system asks the network for its proxies.
    static void testProxySettings();

signals:
    /// The machine is about to sleep.
    void suspendApplication();
    /// The machine has woken up.
    void resumeApplication();
    /// The mouse mode was set; views take their buttons from it.
    void mouseButtonsPreferencesChanged(housekeeping::MouseMode mode);
    /// As QGuiApplication::lastWindowClosed().
    void lastWindowClosed();
    /// For a host that wants its views to hold still while background threads end; not emitted here.
    void progressThreadWait();

private:
    friend class pkBase::pkSingleton<ApplicationManager>;
    friend class TestAccess;
    ApplicationManager();
    ~ApplicationManager() override;
    static pkBase::pkSingleton<ApplicationManager>& get_instance();
    static void destroy_instance();

    // Parts of init().
    static void set_pixel_ratio();
    void create_application(int& argc, char**& argv);
    void take_out_qt_options(int& argc, char** argv) const;
    static void log_library_paths();
    static void size_thread_pool();
    static void log_background_rendering();
    void open_lock_file();
    void clean_up_if_alone();
    void loadSettings();

    /// The rules that stand alone. @p session the login session's part of the name, empty for none.
    static QString lock_file_name(
        const QString& application_id, const QString& application_file_path, const QString& session);
    static int thread_pool_size(int processors, int maximum);
    static QString proxy_report(const QString& host, int port, int type);

    /// What a fatal error calls.
    static void exit_main_loop_if_there_is_one();

    std::unique_ptr<QTarqaApplication> m_p_qapplication;
    bool m_gui_application = false;
    mutable std::atomic<bool> m_in_main_loop{false};
    QPointer<QWidget> m_p_top_widget; // the host's
    std::unique_ptr<QTranslator> m_p_qtranslator;
    std::unique_ptr<QtLockedFile> m_lock_file; // held until the end
    // The application object refers to them as long as it lives.
    std::vector<std::string> m_arguments; // all of them
    int m_argc = 0;
    std::vector<char*> m_argv; // into m_arguments, without Qt's options

    bool m_use_eye_visibility_indicator = false;
    int m_industry_sector = 0;
    MouseMode m_mouse_mode = THREE_BUTTON_MOUSE_MODE;
    bool m_use_system_proxy_settings = true;
    bool m_use_external_help_viewer = false;
    bool m_show_entity_ids = true;
    bool m_show_hidden_attributes = false;
    bool m_create_unique_object_names = true;
    bool m_use_toolbox_auto_select = false;
    bool m_use_optimized_flowpaths = false;
    bool m_use_multithreading = true;
    bool m_use_multithreaded_rendering = true;
    SeismicRenderQuality m_seismic_render_quality = HIGH_SEISMIC_RENDER_QUALITY;
    bool m_animate_camera_jumps = true;
    bool m_hq_downsample = true;
    QColor m_view_background_colour;
    QColor m_view_highlight_colour;
    bool m_use_highlight_colour_for_selection = true;
    bool m_transparency_affects_highlight = true;
    bool m_use_metric_symbol_size = false;
    bool m_use_metric_label_size = true;
    bool m_use_shader_rendering = true;
    bool m_use_tri_panel_view_frame = true;
    bool m_use_3d_view_by_default = true;
    bool m_use_metric_symbol_size_3d = true;
    QString m_link_to_ffmpeg;

    bool m_gl_test = false;
    float m_gl_version = 0;
    std::string m_gl_renderer = "???";
    bool m_software_renderer = false;
    bool m_glsl_avail = false;
    float m_glsl_version = 0;
    bool m_vert_shader_avail = false;
    bool m_frag_shader_avail = false;
    bool m_geom_shader_avail = false;
    bool m_fp_textures_avail = false;
    bool m_shader_instancing_avail = false;
    int m_total_graphics_memory = 0;
    bool m_reset_ids_on_open = false;
    bool m_suspended = false;
};

} // namespace tarqa::housekeeping
