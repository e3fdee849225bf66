#include "interface/Interface.h"

#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/ErrorHandler.h>
#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/housekeeping/ErrorProtocolOutput.h>
#include <tarqa/housekeeping/LastWords.h>
#include <tarqa/housekeeping/QTarqaApplication.h>
#include <tarqa/housekeeping/ThreadLocal.h>
#include <tarqa/housekeeping/Tripwire.h>
#include <tarqa/housekeeping/WindowsMessage.h>
#include <tarqa/utilities/Exception.h>

#include <QtCore/QMetaMethod>

#include <gtest/gtest.h>

#include <fstream>
#include <string>

// What the library offers for the application as a whole: start-up and main loop, preferences, error log.

using namespace tarqa::housekeeping;

namespace {

typedef std::string Text;
typedef const std::exception& Standard;
typedef const tarqa::Exception& Makers;
typedef QMessageBox::StandardButton Button;
typedef QMessageBox::StandardButtons Buttons;

// The application manager

static_assert(std::is_base_of_v<QObject, ApplicationManager>);
static_assert(!std::is_default_constructible_v<ApplicationManager>);
static_assert(!std::is_copy_constructible_v<ApplicationManager>);
static_assert(!std::is_copy_assignable_v<ApplicationManager>);
static_assert(!std::is_destructible_v<ApplicationManager>);
static_assert(std::is_same_v<decltype(ApplicationManager::QML_NAMESPACE), const char* const>);
INTERFACE_HAS(ApplicationManager::instance, ApplicationManager& (*)());
INTERFACE_HAS(ApplicationManager::const_instance, const ApplicationManager& (*)());
INTERFACE_HAS(ApplicationManager::tr, QString (*)(const char*, const char*, int));
INTERFACE_HAS(ApplicationManager::init, void (ApplicationManager::*)(int&, char**&, const char*, bool));
INTERFACE_HAS(ApplicationManager::qapplication, QApplication* (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::qtranslator, QTranslator* (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::top_level_widget, void (ApplicationManager::*)(QWidget*));
INTERFACE_HAS(ApplicationManager::top_level_widget, QWidget* (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::show, void (ApplicationManager::*)(QWidget*) const);
static_assert(std::is_same_v<void, decltype(std::declval<const ApplicationManager&>().show())>,
    "shows the main window");
INTERFACE_HAS(ApplicationManager::main_loop, void (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::exit_main_loop, void (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::quit, void (*)());
INTERFACE_HAS(ApplicationManager::relaunch, void (*)());
INTERFACE_HAS(ApplicationManager::command_line, QStringList (*)());
INTERFACE_HAS(ApplicationManager::setSuspended, void (ApplicationManager::*)(bool));
INTERFACE_HAS(ApplicationManager::isSuspended, bool (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::isGuiApp, bool (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::setupQtPaths, void (*)(int&, char**&));
INTERFACE_HAS(ApplicationManager::initialiseGDALPaths, void (ApplicationManager::*)());
INTERFACE_HAS(ApplicationManager::registerQmlTypes, void (*)());

INTERFACE_HAS(ApplicationManager::suspendApplication, void (ApplicationManager::*)());
INTERFACE_HAS(ApplicationManager::resumeApplication, void (ApplicationManager::*)());
INTERFACE_HAS(ApplicationManager::mouseButtonsPreferencesChanged, void (ApplicationManager::*)(MouseMode));
INTERFACE_HAS(ApplicationManager::lastWindowClosed, void (ApplicationManager::*)());
INTERFACE_HAS(ApplicationManager::progressThreadWait, void (ApplicationManager::*)());

// What the graphics can do

INTERFACE_HAS(ApplicationManager::glTest, bool (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::setGlTest, void (ApplicationManager::*)(bool));
INTERFACE_HAS(ApplicationManager::glVersion, float (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::setGLVersion, void (ApplicationManager::*)(float));
INTERFACE_HAS(ApplicationManager::glRenderer, const Text& (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::setGlRenderer, void (ApplicationManager::*)(const Text&));
INTERFACE_HAS(ApplicationManager::glslAvail, bool (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::setGlslAvail, void (ApplicationManager::*)(bool));
INTERFACE_HAS(ApplicationManager::glslVersion, float (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::setGlslVersion, void (ApplicationManager::*)(float));
INTERFACE_HAS(ApplicationManager::vertShaderAvail, bool (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::setVertShaderAvail, void (ApplicationManager::*)(bool));
INTERFACE_HAS(ApplicationManager::fragShaderAvail, bool (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::setFragShaderAvail, void (ApplicationManager::*)(bool));
INTERFACE_HAS(ApplicationManager::geomShaderAvail, bool (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::setGeomShaderAvail, void (ApplicationManager::*)(bool));
INTERFACE_HAS(ApplicationManager::fpTexturesAvail, bool (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::setFpTexturesAvail, void (ApplicationManager::*)(bool));
INTERFACE_HAS(ApplicationManager::shaderInstancingAvail, bool (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::setShaderInstancingAvail, void (ApplicationManager::*)(bool));
INTERFACE_HAS(ApplicationManager::totalGraphicsMemory, int (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::setTotalGraphicsMemory, void (ApplicationManager::*)(int));
INTERFACE_HAS(ApplicationManager::likelyUsingSoftwareMesa, bool (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::checkColourAgaistBackground, void (ApplicationManager::*)(QColor&) const);
INTERFACE_HAS(ApplicationManager::resetIdsOnOpen, bool (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::setResetIdsOnOpen, void (ApplicationManager::*)(bool));

// Preferences

INTERFACE_HAS(ApplicationManager::useEyeVisibilityIndicator, bool (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::setUseEyeVisibilityIndicator, void (ApplicationManager::*)(bool));
INTERFACE_HAS(ApplicationManager::useSystemProxySettings, bool (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::setUseSystemProxySettings, void (ApplicationManager::*)(bool));
INTERFACE_HAS(ApplicationManager::useExternalHelpViewer, bool (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::setUseExternalHelpViewer, void (ApplicationManager::*)(bool));
INTERFACE_HAS(ApplicationManager::showEntityIds, bool (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::setShowEntityIds, void (ApplicationManager::*)(bool));
INTERFACE_HAS(ApplicationManager::showHiddenAttributes, bool (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::setShowHiddenAttributes, void (ApplicationManager::*)(bool));
INTERFACE_HAS(ApplicationManager::createUniqueObjectNames, bool (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::setCreateUniqueObjectNames, void (ApplicationManager::*)(bool));
INTERFACE_HAS(ApplicationManager::useToolboxAutoSelect, bool (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::setUseToolboxAutoSelect, void (ApplicationManager::*)(bool));
INTERFACE_HAS(ApplicationManager::useOptimizedFlowpaths, bool (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::setUseOptimizedFlowpaths, void (ApplicationManager::*)(bool));
INTERFACE_HAS(ApplicationManager::useMultiThreading, bool (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::setUseMultiThreading, void (ApplicationManager::*)(bool));
INTERFACE_HAS(ApplicationManager::useMultiThreadedRendering, bool (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::setUseMultiThreadedRendering, void (ApplicationManager::*)(bool));
INTERFACE_HAS(ApplicationManager::animateCameraJumps, bool (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::setAnimateCameraJumps, void (ApplicationManager::*)(bool));
INTERFACE_HAS(ApplicationManager::hqDownsample, bool (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::setHQDownsample, void (ApplicationManager::*)(bool));
INTERFACE_HAS(ApplicationManager::useHighlightColourForSelection, bool (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::setUseHighlightColourForSelection, void (ApplicationManager::*)(bool));
INTERFACE_HAS(ApplicationManager::transparencyAffectsHighlight, bool (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::setTransparencyAffectsHighlight, void (ApplicationManager::*)(bool));
INTERFACE_HAS(ApplicationManager::useMetricSymbolSize, bool (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::setUseMetricSymbolSize, void (ApplicationManager::*)(bool));
INTERFACE_HAS(ApplicationManager::useMetricLabelSize, bool (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::setUseMetricLabelSize, void (ApplicationManager::*)(bool));
INTERFACE_HAS(ApplicationManager::useShaderRendering, bool (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::setUseShaderRendering, void (ApplicationManager::*)(bool));
INTERFACE_HAS(ApplicationManager::useTriPanelViewFrame, bool (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::setUseTriPanelViewFrame, void (ApplicationManager::*)(bool));
INTERFACE_HAS(ApplicationManager::use3DViewByDefault, bool (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::setUse3DViewByDefault, void (ApplicationManager::*)(bool));
INTERFACE_HAS(ApplicationManager::useMetricSymbolSize3d, bool (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::setUseMetricSymbolSize3d, void (ApplicationManager::*)(bool));
INTERFACE_HAS(ApplicationManager::industrySector, int (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::setIndustrySector, void (ApplicationManager::*)(int));
INTERFACE_HAS(ApplicationManager::mouseMode, MouseMode (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::setMouseMode, void (ApplicationManager::*)(MouseMode));
INTERFACE_HAS(ApplicationManager::seismicRenderQuality, SeismicRenderQuality (ApplicationManager::*)() const);
INTERFACE_HAS(
    ApplicationManager::setSeismicRenderQuality, void (ApplicationManager::*)(SeismicRenderQuality));
INTERFACE_HAS(ApplicationManager::viewBackgroundColour, QColor (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::setViewBackgroundColour, void (ApplicationManager::*)(const QColor&));
INTERFACE_HAS(ApplicationManager::viewHighlightColour, QColor (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::setViewHighlightColour, void (ApplicationManager::*)(const QColor&));
INTERFACE_HAS(ApplicationManager::linkToFFMPEG, QString (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::setLinkToFFMPEG, void (ApplicationManager::*)(QString));
INTERFACE_HAS(ApplicationManager::instancedDipRenderingAvail, bool (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::keyboardModifier, Qt::KeyboardModifier (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::modifierKeyName, QString (ApplicationManager::*)() const);
INTERFACE_HAS(ApplicationManager::updateProxySettings, void (ApplicationManager::*)());
INTERFACE_HAS(ApplicationManager::testProxySettings, void (*)());

static_assert(std::is_enum_v<MouseMode> && std::is_enum_v<SeismicRenderQuality>);
static_assert(THREE_BUTTON_MOUSE_MODE == 0, "the mode without a preference");
static_assert(LOW_SEISMIC_RENDER_QUALITY == 0 && MEDIUM_SEISMIC_RENDER_QUALITY == 1);
static_assert(HIGH_SEISMIC_RENDER_QUALITY == 2, "the highest");

// The application object

static_assert(std::is_base_of_v<QApplication, QTarqaApplication>);
static_assert(std::is_constructible_v<QTarqaApplication, int&, char**>);
static_assert(!std::is_copy_constructible_v<QTarqaApplication>);
INTERFACE_HAS(QTarqaApplication::notify, bool (QTarqaApplication::*)(QObject*, QEvent*));
INTERFACE_HAS(QTarqaApplication::winEventFilter, bool (QTarqaApplication::*)(MSG*, long*));

// Threads

static_assert(std::is_polymorphic_v<ThreadLocal>);
static_assert(std::has_virtual_destructor_v<ThreadLocal>);
static_assert(!std::is_default_constructible_v<ThreadLocal>);
static_assert(!std::is_copy_constructible_v<ThreadLocal>);
static_assert(!std::is_copy_assignable_v<ThreadLocal>);
static_assert(!std::is_destructible_v<ThreadLocal>);
INTERFACE_HAS(ThreadLocal::instance, ThreadLocal& (*)());
INTERFACE_HAS(ThreadLocal::thread_local_id, unsigned int (ThreadLocal::*)());
INTERFACE_HAS(ThreadLocal::main_thread_id, unsigned int (ThreadLocal::*)());
INTERFACE_HAS(ThreadLocal::is_main_thread, bool (ThreadLocal::*)());

// The error log

static_assert(std::is_polymorphic_v<ErrorProtocol>);
static_assert(std::has_virtual_destructor_v<ErrorProtocol>);
static_assert(!std::is_default_constructible_v<ErrorProtocol>);
static_assert(!std::is_copy_constructible_v<ErrorProtocol>);
static_assert(!std::is_copy_assignable_v<ErrorProtocol>);
static_assert(!std::is_destructible_v<ErrorProtocol>);
INTERFACE_HAS(ErrorProtocol::instance, ErrorProtocol& (*)());
INTERFACE_HAS(ErrorProtocol::const_instance, const ErrorProtocol& (*)());
INTERFACE_HAS(ErrorProtocol::log_filename, const Text& (ErrorProtocol::*)() const);
INTERFACE_HAS(ErrorProtocol::log_message, void (ErrorProtocol::*)(const Text&));
INTERFACE_HAS(ErrorProtocol::log_command, void (ErrorProtocol::*)(const Text&));
INTERFACE_HAS(
    ErrorProtocol::log_assert, void (ErrorProtocol::*)(const char*, const char*, const char*, unsigned int));
INTERFACE_HAS(ErrorProtocol::log_exception, void (ErrorProtocol::*)(Makers));
INTERFACE_HAS(ErrorProtocol::log_exception, void (ErrorProtocol::*)(Standard));
INTERFACE_HAS(ErrorProtocol::log_fatal_error, void (ErrorProtocol::*)(const Text&));
INTERFACE_HAS(ErrorProtocol::log_fatal_error, void (ErrorProtocol::*)(Makers));
INTERFACE_HAS(ErrorProtocol::log_fatal_error, void (ErrorProtocol::*)(Standard));

static_assert(std::is_base_of_v<std::ofstream, ErrorProtocolOutput>);
static_assert(std::is_convertible_v<ErrorProtocolOutput*, std::ios*>);
static_assert(std::is_default_constructible_v<ErrorProtocolOutput>);
static_assert(!std::is_copy_constructible_v<ErrorProtocolOutput>);
static_assert(!std::is_move_constructible_v<ErrorProtocolOutput>);
static_assert(!std::is_copy_assignable_v<ErrorProtocolOutput>);
INTERFACE_HAS(
    ErrorProtocolOutput::operator<<, ErrorProtocolOutput& (ErrorProtocolOutput::*)(unsigned long long));

// Its reports to the user

static_assert(std::is_base_of_v<QObject, ErrorHandler>);
static_assert(!std::is_default_constructible_v<ErrorHandler>);
static_assert(!std::is_copy_constructible_v<ErrorHandler>);
static_assert(!std::is_destructible_v<ErrorHandler>);
INTERFACE_HAS(ErrorHandler::instance, ErrorHandler& (*)());
INTERFACE_HAS(ErrorHandler::const_instance, const ErrorHandler& (*)());
INTERFACE_HAS(ErrorHandler::tr, QString (*)(const char*, const char*, int));
INTERFACE_HAS(ErrorHandler::fatal_error, void (ErrorHandler::*)(const Text&));
INTERFACE_HAS(ErrorHandler::fatal_error, void (ErrorHandler::*)(Makers));
INTERFACE_HAS(ErrorHandler::fatal_error, void (ErrorHandler::*)(Standard));
INTERFACE_HAS(ErrorHandler::exit_main_loop_with, void (*)(ErrorHandler::ExitMainLoop));
static_assert(std::is_same_v<ErrorHandler::ExitMainLoop, void (*)()>);
INTERFACE_HAS(ErrorHandler::show_dialogs, void (*)(bool));
INTERFACE_HAS(ErrorHandler::may_show_dialogs, bool (ErrorHandler::*)() const);
INTERFACE_HAS(ErrorHandler::message, Button (ErrorHandler::*)(const Text&, const Text&, Buttons));
INTERFACE_HAS(ErrorHandler::message, Button (ErrorHandler::*)(const Text&, Makers, Buttons));
INTERFACE_HAS(ErrorHandler::message, Button (ErrorHandler::*)(const Text&, Standard, Buttons));
INTERFACE_HAS(ErrorHandler::report_command, void (ErrorHandler::*)(const Text&));
INTERFACE_HAS(ErrorHandler::report_exception, void (ErrorHandler::*)(const Text&));
INTERFACE_HAS(ErrorHandler::report_exception, void (ErrorHandler::*)(Makers));
INTERFACE_HAS(ErrorHandler::report_exception, void (ErrorHandler::*)(Standard));
INTERFACE_HAS(ErrorHandler::request_save_log_file, bool (ErrorHandler::*)(const Text&) const);
INTERFACE_HAS(ErrorHandler::save_log_file, bool (ErrorHandler::*)() const);

// The last words

static_assert(!std::is_default_constructible_v<LastWords>);
INTERFACE_HAS(LastWords::enable, bool (*)());
INTERFACE_HAS(LastWords::is_enabled, bool (*)());
INTERFACE_HAS(LastWords::file, Text (*)());
INTERFACE_HAS(LastWords::left_behind, std::vector<Text> (*)());
INTERFACE_HAS(LastWords::offer, bool (*)());

// The tripwire

static_assert(!std::is_default_constructible_v<Tripwire>);
INTERFACE_HAS(Tripwire::enable, void (*)());
INTERFACE_HAS(Tripwire::disable, void (*)());
INTERFACE_HAS(Tripwire::enabled, bool (*)());

const std::size_t s_not_virtual = ~std::size_t(0);

} // namespace

TEST(ApplicationManagerInterface, OffersItsSignalsAndNoSlots)
{
    const QMetaObject& meta = ApplicationManager::staticMetaObject;
    EXPECT_STREQ("tarqa::housekeeping::ApplicationManager", meta.className());
    int signals_of_the_manager = 0;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        EXPECT_EQ(QMetaMethod::Signal, meta.method(i).methodType())
            << meta.method(i).methodSignature().data();
        ++signals_of_the_manager;
    }
    EXPECT_EQ(5, signals_of_the_manager);
    EXPECT_EQ(meta.methodOffset(), meta.indexOfSignal("suspendApplication()"));
    EXPECT_EQ(meta.methodOffset() + 1, meta.indexOfSignal("resumeApplication()"));
    EXPECT_EQ(meta.methodOffset() + 2,
        meta.indexOfSignal("mouseButtonsPreferencesChanged(housekeeping::MouseMode)"));
    EXPECT_EQ(meta.methodOffset() + 3, meta.indexOfSignal("lastWindowClosed()"));
    EXPECT_EQ(meta.methodOffset() + 4, meta.indexOfSignal("progressThreadWait()"));
}

TEST(QTarqaApplicationInterface, OverridesTheDeliveryOfEvents)
{
    bool (QApplication::*const p_of_the_base)(QObject*, QEvent*) = &QApplication::notify;
    bool (QTarqaApplication::*const p_own)(QObject*, QEvent*) = &QTarqaApplication::notify;
    ASSERT_NE(s_not_virtual, interface::slot_of(p_of_the_base));
    EXPECT_EQ(interface::slot_of(p_of_the_base), interface::slot_of(p_own));
    EXPECT_NE(s_not_virtual, interface::slot_of(&QTarqaApplication::winEventFilter));
}

TEST(QTarqaApplicationInterface, AddsNoSignalsAndNoSlots)
{
    const QMetaObject& meta = QTarqaApplication::staticMetaObject;
    EXPECT_STREQ("tarqa::housekeeping::QTarqaApplication", meta.className());
    EXPECT_EQ(meta.methodOffset(), meta.methodCount());
}

TEST(ThreadLocalInterface, DestructorIsTheOnlyVirtualOperation)
{
    EXPECT_EQ(s_not_virtual, interface::slot_of(&ThreadLocal::thread_local_id));
    EXPECT_EQ(s_not_virtual, interface::slot_of(&ThreadLocal::main_thread_id));
    EXPECT_EQ(s_not_virtual, interface::slot_of(&ThreadLocal::is_main_thread));
}

TEST(ErrorHandlerInterface, HasNoSignalsAndNoSlots)
{
    const QMetaObject& meta = ErrorHandler::staticMetaObject;
    EXPECT_STREQ("tarqa::housekeeping::ErrorHandler", meta.className());
    EXPECT_EQ(meta.methodOffset(), meta.methodCount());
}
