#include <tarqa/housekeeping/ApplicationManager.h>

#include <tarqa/housekeeping/ErrorHandler.h>
#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/housekeeping/MessageHandler.h>
#include <tarqa/housekeeping/QTarqaApplication.h>
#include <tarqa/housekeeping/ThreadLocal.h>

#include "Assertion.h"
#include "LogHooks.h"
#include "LoginSession.h"
#include "Platform.h"
#include "QtLockedFile.h"
#include "QuickHelpInputModel.h"
#include "TarqStyle.h"

#include <pkBaseQt/Environment.h>
#include <pkBaseQt/GDALErrorHandler.h>
#include <pkBaseQt/QLogFileViewer.h>
#include <pkBaseQt/pkProductInfo.h>
#include <tarqa/utilities/SystemPaths.h>
#include <tarqa/utilities/TemporaryDirectory.h>
#include <tarqa/utilities/Url.h>

#include <QtCore/QDir>
#include <QtCore/QProcess>
#include <QtCore/QRegularExpression>
#include <QtCore/QThread>
#include <QtCore/QThreadPool>
#include <QtCore/QTranslator>
#include <QtGui/QOpenGLContext>
#include <QtQml/qqml.h>

#include <cpl_conv.h>
#include <osgDB/Registry>

#include <algorithm>

namespace tarqa::housekeeping {

namespace {

const char* const s_source = "housekeeping/src/ApplicationManager";

const char* const s_pixel_ratio_variable = "QT_DEVICE_PIXEL_RATIO";
const char* const s_no_background_rendering_variable = "TARQ_NO_BACKGROUND_RENDERING";
const char* const s_application_id = "Tarq";
const int s_longest_prefix = 6; // of the lock file's name
const char* const s_temporary_kind = "vista";
const int s_event_time = 10; // milliseconds

// Relative to the installation, in the order in which they are added: Qt searches the last one first.
const char* const s_library_folders[] = {"bin/plugins", "Release/plugins", "RelWithDebInfo/plugins",
    "Debug/plugins", "bin/qml", "Release/qml", "RelWithDebInfo/qml", "Debug/qml"};
const char* const s_gdal_folder = "data/GDAL_data/";
const char* const s_proj_folder = "data/PROJ_data/";
const char* const s_proj_database = "proj.db";

static_assert(Qt::AA_UseDesktopOpenGL == 15 && Qt::AA_ShareOpenGLContexts == 18, "the attributes' numbers");

/// Ends with a separator.
QString installation_root()
{
    QString root = QString::fromStdString(
        utilities::url_to_filesystem(utilities::SystemPaths::installation_root_path()));
    return root.endsWith('/') ? root : root + '/';
}

/// Whether the environment says on which platform Qt runs.
bool platform_is_chosen()
{
    return !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

/// Keeps Qt's advice against the pixel ratio's variable from standing in the user's terminal at every start.
/// It is meant for developers, so it is kept back whoever set the variable. Other messages pass.
class PixelRatioAdviceFilter
{
public:
    PixelRatioAdviceFilter() { s_others = qInstallMessageHandler(&PixelRatioAdviceFilter::filter); }
    ~PixelRatioAdviceFilter() { qInstallMessageHandler(s_others); }
    PixelRatioAdviceFilter(const PixelRatioAdviceFilter&) = delete;
    PixelRatioAdviceFilter& operator=(const PixelRatioAdviceFilter&) = delete;

private:
    static void filter(QtMsgType type, const QMessageLogContext& context, const QString& message)
    {
        if (!message.contains(s_pixel_ratio_variable)) {
            s_others(type, context, message);
        }
    }

    static inline QtMessageHandler s_others = nullptr;
};

/// Tasks may ask for what the later phases destroy.
void wait_for_thread_pool()
{
    if (QCoreApplication::instance()) { // otherwise the pool has gone with it
        QThreadPool::globalInstance()->waitForDone();
    }
}

/// The time inside the main loop, and what comes after it however it ended.
class MainLoopScope
{
public:
    explicit MainLoopScope(std::atomic<bool>& in_main_loop)
        : m_in_main_loop(in_main_loop)
    {
        m_in_main_loop = true;
    }
    ~MainLoopScope()
    {
        m_in_main_loop = false;
        // While the libraries whose code they need are still loaded.
        osgDB::Registry& registry = *osgDB::Registry::instance();
        registry.clearObjectCache();
        registry.closeAllLibraries();

        pkBase::GDALErrorHandler::restore_if_installed();
    }
    MainLoopScope(const MainLoopScope&) = delete;
    MainLoopScope& operator=(const MainLoopScope&) = delete;

private:
    std::atomic<bool>& m_in_main_loop; // the manager's
};

/// Sets an option of GDAL and the environment variable of the same name.
void set_data_path(const char* name, const QByteArray& path)
{
    CPLSetConfigOption(name, path.constData());
    pkBase::Environment::putQEnv(QByteArray(name) + '=' + path);
}

} // namespace

const char* const ApplicationManager::QML_NAMESPACE = "example.tarqa.tarq";

ApplicationManager::ApplicationManager()
    : m_view_background_colour("white")
    , m_view_highlight_colour("yellow")
{
    ErrorHandler::instance(); // before anything else can fail
    ThreadLocal::instance(); // here, where the main thread is sure to be the first to ask
    ErrorHandler::exit_main_loop_with(&ApplicationManager::exit_main_loop_if_there_is_one);
    // Signals name the type without the maker's namespace.
    qRegisterMetaType<MouseMode>("housekeeping::MouseMode");
    m_lock_file = std::make_unique<QtLockedFile>();
}

ApplicationManager::~ApplicationManager()
{
    ErrorHandler::exit_main_loop_with(nullptr);
    if (m_p_qapplication) {
        remove_qt_log_hook();
    }
    if (m_p_top_widget) {
        m_p_top_widget->hide(); // for a host that deletes it too late: Qt would close a shown one then
    }
    m_p_qapplication.reset();
    m_lock_file.reset();
}

pkBase::pkSingleton<ApplicationManager>& ApplicationManager::get_instance()
{
    static pkBase::pkSingleton<ApplicationManager> s_holder(
        pkBase::pkDestructionPhase(5), &ApplicationManager::destroy_instance);
    return s_holder;
}

ApplicationManager& ApplicationManager::instance()
{
    return get_instance().get();
}

const ApplicationManager& ApplicationManager::const_instance()
{
    return instance();
}

void ApplicationManager::destroy_instance()
{
    get_instance().destroy();
}

// --- start-up

void ApplicationManager::init(int& argc, char**& argv, const char*, bool gui)
{
    HK_ASSERT(!m_p_top_widget, "0 == m_p_top_widget");
    HK_ASSERT(!m_in_main_loop, "false == m_in_main_loop");
    // A second application object would pull the first one's ground away.
    if (!HK_ASSERT(!QCoreApplication::instance(), "!QCoreApplication::instance()")) {
        return;
    }
    set_pixel_ratio();
    open_lock_file();
    setupQtPaths(argc, argv);
    registerQmlTypes();
    QCoreApplication::setAttribute(Qt::AA_UseDesktopOpenGL);
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);

    m_gui_application = gui;
    ErrorHandler::show_dialogs(gui);
    create_application(argc, argv);
    connect(m_p_qapplication.get(), &QGuiApplication::lastWindowClosed, this,
        &ApplicationManager::lastWindowClosed);
    m_p_qtranslator = std::make_unique<QTranslator>();

    log_library_paths();
    install_qt_log_hook();
    pkBase::QLogFileViewer::instance().setPath(
        QString::fromStdString(ErrorProtocol::const_instance().log_filename()));
    QApplication::setStyle(new TarqStyle);
    MessageHandler::instance().restart(); // here, so that it belongs to the main thread
    size_thread_pool();
    log_background_rendering();
    loadSettings();
    clean_up_if_alone();
    initialiseGDALPaths();
    install_cgal_log_hooks();
    install_gdal_log_hook();
    CPLSetConfigOption("GDAL_FIX_ESRI_WKT", "TOWGS84");
    install_osg_log_hook();
}

void ApplicationManager::set_pixel_ratio()
{
    if (!qEnvironmentVariableIsSet(s_pixel_ratio_variable)) {
        pkBase::Environment::putQEnv(QByteArray(s_pixel_ratio_variable) + "=auto");
    }
}

QString ApplicationManager::lock_file_name(
    const QString& application_id, const QString& application_file_path, const QString& session)
{
    QString id = application_id;
    QString prefix = application_id;
    if (id.isEmpty()) {
        id = application_file_path.toLower();
        prefix = id.section('/', -1);
    }
    prefix.remove(QRegularExpression("[^a-zA-Z]"));
    prefix.truncate(s_longest_prefix);

    const QByteArray bytes = id.toUtf8();
    const quint16 checksum = qChecksum(bytes.constData(), static_cast<uint>(bytes.size()));
    QString name = prefix + '-' + QString::number(checksum, 16);
    if (!session.isEmpty()) {
        name += '-' + session;
    }
    return name + "-lockfile";
}

/// The file decides only who may clean up, so a failure is no more than a missing convenience.
void ApplicationManager::open_lock_file()
{
    const QString folder = QDir::tempPath();
    if (folder.isEmpty()) {
        return; // it does not exist
    }
    // With an id the program's path is not asked for.
    const QString name = lock_file_name(s_application_id, QString(), login_session());
    m_lock_file->setFileName(QDir(folder).absolutePath() + '/' + name);
    m_lock_file->open(QIODevice::ReadWrite);
}

void ApplicationManager::setupQtPaths(int&, char**&)
{
    const QString root = installation_root();
    for (const char* const folder : s_library_folders) {
        QCoreApplication::addLibraryPath(QDir::toNativeSeparators(root + folder));
    }
}

void ApplicationManager::registerQmlTypes()
{
    qmlRegisterUncreatableType<QuickHelpInputModel>(QML_NAMESPACE, 1, 0, "QuickHelpInputModel",
        "QuickHelpModels should be obtained from the QuickHelpManager");
    qRegisterMetaType<QAbstractListModel*>();
}

void ApplicationManager::create_application(int& argc, char**& argv)
{
    // Qt keeps and changes the array, so it gets one that lives as long as the application, texts included.
    if (argv && argc > 0) {
        m_arguments.assign(argv, argv + argc);
    } else {
        m_arguments.assign(1, s_application_id);
    }
    for (std::string& argument : m_arguments) {
        m_argv.push_back(argument.data());
    }
    static char s_option[] = "-platform";
    static char s_platform[] = "offscreen";
    if (!m_gui_application && !platform_is_chosen()) {
        m_argv.insert(m_argv.begin() + 1, {s_option, s_platform}); // a later choice among the arguments wins
    }
    m_argc = static_cast<int>(m_argv.size());
    m_argv.push_back(nullptr);
    {
        const PixelRatioAdviceFilter filter;
        m_p_qapplication = std::make_unique<QTarqaApplication>(m_argc, m_argv.data());
    }

    if (argv && argc > 0) {
        take_out_qt_options(argc, argv);
    }
    // Not before the application object exists, and what it needs at its end: Qt makes this storage at the
    // first use, and what is made later is gone earlier.
    QOpenGLContext::currentContext();
    pkBase::pkDestructor::run_at_exit();
    pkBase::pkDestructor(pkBase::pkDestructionPhase(1), &wait_for_thread_pool);
}

/// Takes out of the host's array what Qt has taken out of ours.
void ApplicationManager::take_out_qt_options(int& argc, char** argv) const
{
    const int before = argc;
    argc = 0;
    for (int i = 0; i < before; ++i) {
        const char* const ours = m_arguments[static_cast<std::size_t>(i)].data();
        if (std::find(m_argv.begin(), m_argv.begin() + m_argc, ours) != m_argv.begin() + m_argc) {
            argv[argc++] = argv[i];
        }
    }
    if (argc < before) {
        argv[argc] = nullptr;
    }
}

void ApplicationManager::log_library_paths()
{
    for (const QString& path : QCoreApplication::libraryPaths()) {
        ErrorProtocol::instance().log_message(QString("post-Qt init Path: %1").arg(path).toStdString());
    }
}

// The asymmetric rule is deliberate.
int ApplicationManager::thread_pool_size(int processors, int maximum)
{
    if (processors < 4) {
        return maximum;
    }
    // Qt's pool keeps one thread whatever it is told.
    return maximum == 3 || maximum == 4 ? maximum - 1 : maximum - 2;
}

void ApplicationManager::size_thread_pool()
{
    QThreadPool& pool = *QThreadPool::globalInstance();
    pool.setMaxThreadCount(thread_pool_size(QThread::idealThreadCount(), pool.maxThreadCount()));
}

void ApplicationManager::log_background_rendering()
{
    ErrorProtocol::instance().log_message(qEnvironmentVariableIsSet(s_no_background_rendering_variable)
            ? "Background rendering is OFF"
            : "Background rendering is ON");
}

void ApplicationManager::clean_up_if_alone()
{
    if (m_lock_file->isLocked() || !m_lock_file->lock(QtLockedFile::WriteLock, false)) {
        return;
    }
    if (utilities::temporary_directories_exist(s_temporary_kind)) {
        utilities::clear_existing_temp_directories(s_temporary_kind);
    }
}

void ApplicationManager::initialiseGDALPaths()
{
    const QString root = installation_root();
    const QString gdal_path = QDir::toNativeSeparators(root + s_gdal_folder);
    const QString proj_path = QDir::toNativeSeparators(root + s_proj_folder);
    if (use_data_folder(gdal_path, QString())) {
        set_data_path("GDAL_DATA", as_data_path(gdal_path));
        set_data_path("GEOTIFF_CSV", as_data_path(gdal_path));
    }
    if (use_data_folder(proj_path, s_proj_database)) {
        set_data_path("PROJ_LIB", as_data_path(proj_path));
    }
}

// --- main loop and end

QApplication* ApplicationManager::qapplication() const
{
    HK_ASSERT(m_p_qapplication, "m_p_qapplication");
    return m_p_qapplication.get();
}

QTranslator* ApplicationManager::qtranslator() const
{
    HK_ASSERT(m_p_qtranslator, "m_p_qtranslator");
    return m_p_qtranslator.get();
}

void ApplicationManager::top_level_widget(QWidget* p_widget)
{
    const bool has_widget = HK_ASSERT(p_widget, "p_widget");
    HK_ASSERT(!m_p_top_widget, "0 == m_p_top_widget");
    HK_ASSERT(!m_in_main_loop, "false == m_in_main_loop");
    HK_ASSERT(m_p_qapplication, "m_p_qapplication");
    if (has_widget) {
        QApplication::setActiveWindow(p_widget);
        m_p_top_widget = QApplication::activeWindow();
    }
}

QWidget* ApplicationManager::top_level_widget() const
{
    HK_ASSERT(m_p_top_widget, "m_p_top_widget");
    return m_p_top_widget;
}

void ApplicationManager::show(QWidget* p_widget) const
{
    HK_ASSERT(m_p_top_widget, "m_p_top_widget");
    HK_ASSERT(m_gui_application, "m_gui_application");
    HK_ASSERT(m_p_qapplication, "m_p_qapplication");
    QWidget* const p_shown = p_widget ? p_widget : m_p_top_widget.data();
    if (p_shown) {
        p_shown->show();
    }
    QCoreApplication::processEvents(QEventLoop::AllEvents, s_event_time);
    if (m_p_top_widget) {
        m_p_top_widget->activateWindow();
    }
}

void ApplicationManager::main_loop() const
{
    HK_ASSERT(m_p_top_widget, "m_p_top_widget");
    HK_ASSERT(m_gui_application, "m_gui_application");
    if (!HK_ASSERT(!m_in_main_loop, "false == m_in_main_loop")) {
        return; // the outer call is still at work
    }
    const MainLoopScope scope(m_in_main_loop);
    QApplication::exec();
}

void ApplicationManager::exit_main_loop() const
{
    HK_ASSERT(m_p_top_widget, "m_p_top_widget");
    HK_ASSERT(m_gui_application, "m_gui_application");
    if (!m_in_main_loop.exchange(false)) {
        return;
    }
    if (QThread::currentThread() == thread()) {
        QCoreApplication::exit(0);
    } else {
        // Qt's loops belong to their thread.
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [] { QCoreApplication::exit(0); }, Qt::QueuedConnection);
    }
}

void ApplicationManager::exit_main_loop_if_there_is_one()
{
    if (const ApplicationManager* const p_manager = get_instance().peek()) {
        p_manager->exit_main_loop();
    }
}

void ApplicationManager::quit()
{
    QCoreApplication::quit();
}

QStringList ApplicationManager::command_line()
{
    QStringList arguments;
    if (const ApplicationManager* const p_manager = get_instance().peek()) {
        for (const std::string& argument : p_manager->m_arguments) {
            arguments.append(QString::fromLocal8Bit(argument.c_str()));
        }
    }
    return arguments;
}

void ApplicationManager::relaunch()
{
    const QStringList arguments = command_line();
    quit();
    if (!arguments.isEmpty()) {
        QProcess::startDetached(arguments.first(), arguments); // the program's name twice, deliberately
    }
}

void ApplicationManager::setSuspended(bool suspended)
{
    if (suspended == m_suspended) {
        return;
    }
    m_suspended = suspended;
    if (suspended) {
        emit suspendApplication();
    } else {
        emit resumeApplication();
    }
}

// --- graphics

void ApplicationManager::setGlRenderer(const std::string& renderer)
{
    m_gl_renderer = renderer;
    m_software_renderer = renderer.find("Gallium") != std::string::npos;
}

bool ApplicationManager::likelyUsingSoftwareMesa() const
{
    return m_software_renderer || (m_gl_test && !m_vert_shader_avail && !m_frag_shader_avail);
}

void ApplicationManager::checkColourAgaistBackground(QColor& colour) const
{
    const QColor background = m_view_background_colour;
    const QRgb white = QColor(Qt::white).rgba();
    const QRgb black = QColor(Qt::black).rgba();
    // By their values: the same colour may be written in different models.
    const QRgb value = colour.rgba();
    const QRgb behind = background.rgba();
    if (value != behind) {
        return;
    }
    if (value == white) {
        colour = Qt::black;
    } else if (value == black) {
        colour = Qt::white;
    } else {
        colour = background.value() < 128 ? background.lighter(150) : background.darker(200);
    }
}

} // namespace tarqa::housekeeping
