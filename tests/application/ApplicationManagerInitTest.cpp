#include "support/App.h"
#include "support/LogCapture.h"
#include "support/MessageSpy.h"
#include "support/StartedApplication.h"
#include "support/TestAccess.h"

#include <pkBase/pkDestructor.h>
#include <pkBaseQt/QLogFileViewer.h>
#include <pkBaseQt/QPKProxyStyle.h>
#include <pkBaseQt/pkProductInfo.h>
#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/housekeeping/MessageHandler.h>
#include <tarqa/housekeeping/QTarqaApplication.h>

#include <QtCore/QMetaMethod>
#include <QtCore/QSettings>
#include <QtCore/QThread>
#include <QtCore/QTimer>
#include <QtCore/QTranslator>
#include <QtGui/QIcon>
#include <QtTest/QSignalSpy>
#include <QtWidgets/QProxyStyle>
#include <QtWidgets/QWidget>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <typeinfo>
#include <vector>

namespace fs = std::filesystem;

namespace {

using namespace tarqa::housekeeping;
using pkBase::pkProductInfo;
using support::LogCapture;
using support::StartedApplication;
using testing::ElementsAre;

const char* const s_source = "housekeeping/src/ApplicationManager";
const char* const s_ratio = "QT_DEVICE_PIXEL_RATIO";

/// What a start-up without anything special logs.
std::string start_up_lines(const std::string& background_rendering)
{
    std::string lines;
    for (const QString& path : QCoreApplication::libraryPaths()) {
        lines += "post-Qt init Path: " + path.toStdString() + "\n";
    }
    return lines + "Background rendering is " + background_rendering + "\n";
}

/// What held in the moment in which the application object was made.
struct Moment
{
    bool desktop_open_gl = false;
    bool shared_contexts = false;
    std::string pixel_ratio;
    bool qml_types = false;
    std::string log;
};
Moment s_moment;
const LogCapture* s_p_log = nullptr; // for note_moment()

void note_moment()
{
    s_moment.desktop_open_gl = QCoreApplication::testAttribute(Qt::AA_UseDesktopOpenGL);
    s_moment.shared_contexts = QCoreApplication::testAttribute(Qt::AA_ShareOpenGLContexts);
    s_moment.pixel_ratio = qgetenv(s_ratio).toStdString();
    s_moment.qml_types = QMetaType::type("QAbstractListModel*") != QMetaType::UnknownType;
    s_moment.log = s_p_log->text();
}

void expect_window_icon(const QString& file)
{
    const QPixmap picture(file);
    ASSERT_FALSE(picture.isNull());
    const QIcon icon = QApplication::windowIcon();
    EXPECT_EQ(icon.availableSizes(), QList<QSize>{picture.size()});
    EXPECT_EQ(icon.pixmap(picture.size()).toImage(), picture.toImage());
}

/// A host's own start-up, with a command line that the test can spoil.
void init(int& count, char**& p_arguments, bool gui = true)
{
    ApplicationManager::instance().init(count, p_arguments, "test", gui);
}

} // namespace

// --- preconditions

TEST(ApplicationManagerInit, AssertsThatTheMainWindowIsNotYetSet)
{
    const StartedApplication started;
    QWidget window;
    started.manager().top_level_widget(&window);
    LogCapture log;
    int count = 0;
    char** p_arguments = nullptr;
    init(count, p_arguments);
    EXPECT_TRUE(log.took_assert("0 == m_p_top_widget", "ApplicationManager::init", s_source));
    EXPECT_EQ(log.count("false == m_in_main_loop"), 0);
    log.take_all();
}

TEST(ApplicationManagerInit, AssertsThatTheMainLoopDoesNotRun)
{
    const StartedApplication started;
    QWidget window;
    started.manager().top_level_widget(&window);
    LogCapture log;
    QTimer::singleShot(0, [] {
        int count = 0;
        char** p_arguments = nullptr;
        init(count, p_arguments);
        ApplicationManager::instance().exit_main_loop();
    });
    started.manager().main_loop();
    EXPECT_TRUE(log.took_assert("0 == m_p_top_widget", "ApplicationManager::init", s_source));
    EXPECT_TRUE(log.took_assert("false == m_in_main_loop", "ApplicationManager::init", s_source));
    log.take_all();
}

TEST(ApplicationManagerInit, SecondCallIsLoggedAndChangesNothing)
{
    const StartedApplication started;
    const QApplication* const p_application = started.manager().qapplication();
    const QTranslator* const p_translator = started.manager().qtranslator();
    const QStyle* const p_style = QApplication::style();
    LogCapture log;
    std::string name = "second";
    char* arguments[] = {name.data(), nullptr};
    char** p_arguments = arguments;
    int count = 1;
    init(count, p_arguments, false);
    EXPECT_FALSE(log.lines().empty());
    log.take_all();
    EXPECT_EQ(started.manager().qapplication(), p_application);
    EXPECT_EQ(started.manager().qtranslator(), p_translator);
    EXPECT_EQ(QApplication::style(), p_style);
    EXPECT_TRUE(started.manager().isGuiApp());
    EXPECT_EQ(count, 1);
}

TEST(ApplicationManagerInit, HostsOwnApplicationObjectIsLoggedAndKept)
{
    support::App app;
    LogCapture log;
    int count = 0;
    char** p_arguments = nullptr;
    init(count, p_arguments);
    EXPECT_FALSE(log.lines().empty());
    log.take_all();
    EXPECT_EQ(QCoreApplication::instance(), &app.application());
    pkBase::pkDestructor::run();
    log.take_all();
}

TEST(ApplicationManagerInit, BeforeItThereIsNoApplicationAndNoTranslator)
{
    LogCapture log;
    EXPECT_EQ(ApplicationManager::instance().qapplication(), nullptr);
    EXPECT_TRUE(log.took_assert("m_p_qapplication", "qapplication", s_source));
    EXPECT_EQ(ApplicationManager::instance().qtranslator(), nullptr);
    EXPECT_TRUE(log.took_assert("m_p_qtranslator", "qtranslator", s_source));
    EXPECT_FALSE(ApplicationManager::instance().isGuiApp());
}

TEST(ApplicationManagerSignals, AreFiveInTheirOrder)
{
    const QMetaObject& meta = ApplicationManager::staticMetaObject;
    std::vector<std::string> signals_of_the_manager;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        if (meta.method(i).methodType() == QMetaMethod::Signal) {
            signals_of_the_manager.push_back(meta.method(i).methodSignature().toStdString());
        }
    }
    EXPECT_THAT(signals_of_the_manager,
        ElementsAre("suspendApplication()", "resumeApplication()",
            "mouseButtonsPreferencesChanged(housekeeping::MouseMode)", "lastWindowClosed()",
            "progressThreadWait()"));
}

// --- environment

TEST(ApplicationManagerInit, SetsTheDevicePixelRatioToAuto)
{
    unsetenv(s_ratio);
    const StartedApplication started;
    EXPECT_STREQ(std::getenv(s_ratio), "auto");
}

TEST(ApplicationManagerInit, KeepsADevicePixelRatioThatIsSet)
{
    setenv(s_ratio, "1", 1);
    const StartedApplication started;
    EXPECT_STREQ(std::getenv(s_ratio), "1");
}

TEST(ApplicationManagerInit, EmptyDevicePixelRatioCountsAsSet)
{
    setenv(s_ratio, "", 1);
    const StartedApplication started;
    EXPECT_STREQ(std::getenv(s_ratio), "");
}

TEST(ApplicationManagerInit, WhatMustComeBeforeTheApplicationObjectDoes)
{
    unsetenv(s_ratio);
    LogCapture log;
    s_p_log = &log;
    qAddPreRoutine(&note_moment);
    const StartedApplication started(log);
    EXPECT_TRUE(s_moment.desktop_open_gl);
    EXPECT_TRUE(s_moment.shared_contexts);
    EXPECT_EQ(s_moment.pixel_ratio, "auto");
    EXPECT_TRUE(s_moment.qml_types);
    EXPECT_EQ(s_moment.log, "");
    support::take_start_up_lines(log);
}

TEST(ApplicationManagerInit, SetsTheAttributesOfOpenGL)
{
    ASSERT_EQ(static_cast<int>(Qt::AA_UseDesktopOpenGL), 15);
    ASSERT_EQ(static_cast<int>(Qt::AA_ShareOpenGLContexts), 18);
    EXPECT_FALSE(QCoreApplication::testAttribute(Qt::AA_UseDesktopOpenGL));
    EXPECT_FALSE(QCoreApplication::testAttribute(Qt::AA_ShareOpenGLContexts));
    const StartedApplication started;
    EXPECT_TRUE(QCoreApplication::testAttribute(Qt::AA_UseDesktopOpenGL));
    EXPECT_TRUE(QCoreApplication::testAttribute(Qt::AA_ShareOpenGLContexts));
}

// --- application object

TEST(ApplicationManagerInit, MakesTheApplicationObject)
{
    const StartedApplication started;
    EXPECT_NE(dynamic_cast<QTarqaApplication*>(started.manager().qapplication()), nullptr);
    EXPECT_EQ(started.manager().qapplication(), QCoreApplication::instance());
    EXPECT_TRUE(started.manager().isGuiApp());
}

TEST(ApplicationManagerInit, ProgramWithoutWindowsHasTheSameApplicationObject)
{
    const StartedApplication started(false);
    EXPECT_NE(dynamic_cast<QTarqaApplication*>(started.manager().qapplication()), nullptr);
    EXPECT_FALSE(started.manager().isGuiApp());
}

TEST(ApplicationManagerInit, LeavesTheHostsArguments)
{
    const StartedApplication started(true, {"--batch", "a file.tif", "", "%1"});
    EXPECT_THAT(started.arguments(), ElementsAre("test", "--batch", "a file.tif", "", "%1"));
    EXPECT_EQ(QCoreApplication::arguments(), QStringList({"test", "--batch", "a file.tif", "", "%1"}));
}

TEST(ApplicationManagerInit, TakesQtsOwnOptionsOut)
{
    const StartedApplication started(true, {"-style", "fusion", "first", "-platform", "offscreen", "second"});
    EXPECT_THAT(started.arguments(), ElementsAre("test", "first", "second"));
}

TEST(ApplicationManagerInit, TakesTheOnlyOptionsOut)
{
    std::string name = "test";
    std::string option = "-platform";
    std::string platform = "offscreen";
    char* arguments[] = {name.data(), option.data(), platform.data(), nullptr};
    char** p_arguments = arguments;
    int count = 3;
    LogCapture log;
    init(count, p_arguments);
    EXPECT_EQ(count, 1);
    EXPECT_EQ(p_arguments[0], name.data());
    EXPECT_EQ(p_arguments[1], nullptr);
    support::take_start_up_lines(log);
}

TEST(ApplicationManagerInit, DoesNotReferToTheHostsArgumentsLater)
{
    std::string name = "test";
    std::string first = "first";
    char* arguments[] = {name.data(), first.data(), nullptr};
    char** p_arguments = arguments;
    int count = 2;
    LogCapture log;
    init(count, p_arguments);
    support::take_start_up_lines(log);
    name = "over";
    first = "later";
    count = -1000;
    arguments[0] = arguments[1] = nullptr;
    EXPECT_EQ(QCoreApplication::arguments(), QStringList({"test", "first"}));
    EXPECT_EQ(
        QCoreApplication::applicationFilePath(), QString::fromStdString(fs::read_symlink("/proc/self/exe")));
}

TEST(ApplicationManagerInit, TakesOptionsOutOfTheMiddleAndKeepsTheHostsOwnTexts)
{
    std::string texts[] = {"test", "first", "-platform", "offscreen", "first", "-style", "fusion", "last"};
    char* arguments[] = {texts[0].data(), texts[1].data(), texts[2].data(), texts[3].data(), texts[4].data(),
        texts[5].data(), texts[6].data(), texts[7].data(), nullptr};
    char** p_arguments = arguments;
    int count = 8;
    LogCapture log;
    init(count, p_arguments);
    support::take_start_up_lines(log);
    EXPECT_EQ(p_arguments, arguments);
    ASSERT_EQ(count, 4);
    EXPECT_THAT(std::vector<char*>(arguments, arguments + 5),
        ElementsAre(texts[0].data(), texts[1].data(), texts[4].data(), texts[7].data(), nullptr));
    EXPECT_EQ(texts[1] + texts[4] + texts[7], "firstfirstlast");
}

TEST(ApplicationManagerInit, CommandLineWithoutATerminatorIsNotWrittenBehind)
{
    std::string name = "test";
    std::string first = "first";
    std::string behind = "behind";
    char* arguments[] = {name.data(), first.data(), behind.data()};
    char** p_arguments = arguments;
    int count = 2;
    LogCapture log;
    init(count, p_arguments);
    support::take_start_up_lines(log);
    EXPECT_EQ(count, 2);
    EXPECT_THAT(arguments, ElementsAre(name.data(), first.data(), behind.data()));
    EXPECT_EQ(QCoreApplication::arguments(), QStringList({"test", "first"}));
}

TEST(ApplicationManagerInit, EmptyCommandLineWillDo)
{
    char* arguments[] = {nullptr};
    char** p_arguments = arguments;
    int count = 0;
    LogCapture log;
    init(count, p_arguments);
    support::take_start_up_lines(log);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(p_arguments, arguments);
    EXPECT_NE(ApplicationManager::instance().qapplication(), nullptr);
}

TEST(ApplicationManagerInit, NoCommandLineWillDo)
{
    char** p_arguments = nullptr;
    int count = 0;
    LogCapture log;
    init(count, p_arguments, false);
    support::take_start_up_lines(log);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(p_arguments, nullptr);
    EXPECT_NE(ApplicationManager::instance().qapplication(), nullptr);
}

TEST(ApplicationManagerInit, CountWithoutACommandLineIsNotBelieved)
{
    char** p_arguments = nullptr;
    int count = 1000000;
    LogCapture log;
    init(count, p_arguments);
    support::take_start_up_lines(log);
    EXPECT_NE(ApplicationManager::instance().qapplication(), nullptr);
}

TEST(ApplicationManagerInit, WindowsHaveTheProductsIcon)
{
    const StartedApplication started;
    expect_window_icon(":/tarq/Resources/tarq64x64.png");
    EXPECT_EQ(QApplication::windowIcon().availableSizes(), QList<QSize>{QSize(64, 64)});
}

TEST(ApplicationManagerInit, IconIsNamedAfterTheProductInLowerCase)
{
    pkProductInfo::instance().product_name("HostOfTests");
    const StartedApplication started;
    expect_window_icon(":/tarq/Resources/hostoftests64x64.png");
}

TEST(ApplicationManagerInit, ProductWithoutAnIconStartsAllTheSame)
{
    pkProductInfo::instance().product_name("no such %1");
    const StartedApplication started;
    EXPECT_TRUE(QApplication::windowIcon().availableSizes().isEmpty());
}

TEST(ApplicationManagerInit, NamesComeFromTheProductWhereTheHostLeftThemEmpty)
{
    const StartedApplication started;
    EXPECT_EQ(QCoreApplication::organizationName(), "Tarqa");
    EXPECT_EQ(QCoreApplication::applicationName(), "Tarq");
}

TEST(ApplicationManagerInit, NamesComeFromTheHostsProduct)
{
    pkProductInfo::instance().organization_name("Mak\xc3\xa9r");
    pkProductInfo::instance().product_name("TarqT\xc3\xa9rrain");
    const StartedApplication started;
    EXPECT_EQ(QCoreApplication::organizationName(), QString::fromUtf8("Mak\xc3\xa9r"));
    EXPECT_EQ(QCoreApplication::applicationName(), QString::fromUtf8("TarqT\xc3\xa9rrain"));
}

TEST(ApplicationManagerInit, NamesThatTheHostSetAreKept)
{
    QCoreApplication::setOrganizationName("Organisation");
    QCoreApplication::setApplicationName("Application");
    const StartedApplication started;
    EXPECT_EQ(QCoreApplication::organizationName(), "Organisation");
    EXPECT_EQ(QCoreApplication::applicationName(), "Application");
}

TEST(ApplicationManagerInit, EachNameIsLookedAtAlone)
{
    QCoreApplication::setApplicationName("Application");
    const StartedApplication started;
    EXPECT_EQ(QCoreApplication::organizationName(), "Tarqa");
    EXPECT_EQ(QCoreApplication::applicationName(), "Application");
}

// --- what follows

TEST(ApplicationManagerInit, RelaysThatTheLastWindowWasClosed)
{
    const StartedApplication started;
    QSignalSpy spy(&started.manager(), SIGNAL(lastWindowClosed()));
    ASSERT_TRUE(spy.isValid());
    QWidget first;
    QWidget second;
    int before_the_second = -1;
    first.show();
    second.show();
    QTimer::singleShot(0, [&] {
        first.close();
        before_the_second = spy.count();
        second.close(); // ends the loop
    });
    QApplication::exec();
    EXPECT_EQ(before_the_second, 0);
    EXPECT_EQ(spy.count(), 1);
}

TEST(ApplicationManagerInit, MakesAnEmptyTranslatorThatIsNotInstalled)
{
    const StartedApplication started;
    QTranslator* const p_translator = started.manager().qtranslator();
    ASSERT_NE(p_translator, nullptr);
    EXPECT_TRUE(p_translator->isEmpty());
    EXPECT_EQ(p_translator->parent(), nullptr);
    EXPECT_FALSE(QCoreApplication::removeTranslator(p_translator));
}

TEST(ApplicationManagerInit, LogsTheLibraryPathsAndThenTheBackgroundRendering)
{
    unsetenv("TARQ_NO_BACKGROUND_RENDERING");
    LogCapture log;
    const StartedApplication started(log);
    ASSERT_FALSE(QCoreApplication::libraryPaths().isEmpty());
    EXPECT_EQ(log.text(), start_up_lines("ON"));
    support::take_start_up_lines(log);
}

TEST(ApplicationManagerInit, LogsThatBackgroundRenderingIsOffWhateverTheVariableHolds)
{
    setenv("TARQ_NO_BACKGROUND_RENDERING", "0", 1);
    LogCapture log;
    const StartedApplication started(log);
    EXPECT_EQ(log.text(), start_up_lines("OFF"));
    support::take_start_up_lines(log);
}

TEST(ApplicationManagerInit, EmptyVariableTurnsBackgroundRenderingOffToo)
{
    setenv("TARQ_NO_BACKGROUND_RENDERING", "", 1);
    LogCapture log;
    const StartedApplication started(log);
    EXPECT_EQ(log.text(), start_up_lines("OFF"));
    support::take_start_up_lines(log);
}

TEST(ApplicationManagerInit, PointsTheLogViewerAtTheLog)
{
    const StartedApplication started;
    const std::string file = ErrorProtocol::instance().log_filename();
    ASSERT_FALSE(file.empty());
    EXPECT_EQ(pkBase::QLogFileViewer::instance().path().toStdString(), file);
}

TEST(ApplicationManagerInit, StyleIsDerivedFromTheMakers)
{
    const StartedApplication started;
    const auto* const p_style = qobject_cast<const pkBase::QPKProxyStyle*>(QApplication::style());
    ASSERT_NE(p_style, nullptr);
    EXPECT_FALSE(typeid(*p_style) == typeid(pkBase::QPKProxyStyle));
}

TEST(ApplicationManagerInit, StyleHasTheProgramsHabitAndTheMakers)
{
    const StartedApplication started;
    const QStyle& style = *QApplication::style();
    EXPECT_EQ(style.styleHint(QStyle::SH_Slider_AbsoluteSetButtons), Qt::LeftButton);
    EXPECT_EQ(style.styleHint(QStyle::SH_Menu_Scrollable), 1);
    const auto* const p_proxy = qobject_cast<const QProxyStyle*>(&style);
    ASSERT_NE(p_proxy, nullptr);
    EXPECT_EQ(style.styleHint(QStyle::SH_ToolTip_WakeUpDelay),
        p_proxy->baseStyle()->styleHint(QStyle::SH_ToolTip_WakeUpDelay));
}

TEST(ApplicationManagerInit, MakesTheMessageHandlerOnTheMainThread)
{
    EXPECT_EQ(TestAccess::peek<MessageHandler>(), nullptr);
    const StartedApplication started;
    const MessageHandler* const p_handler = TestAccess::peek<MessageHandler>();
    ASSERT_NE(p_handler, nullptr);
    EXPECT_EQ(p_handler->thread(), QThread::currentThread());
}

TEST(ApplicationManagerInit, MessagesThatWerePostedBeforeAreDelivered)
{
    support::ApplicationMessageSpy spy;
    (new ApplicationMessage)->post();
    const StartedApplication started;
    EXPECT_TRUE(spy.wait_for(1));
}

TEST(ApplicationManagerInit, LoadsTheSettings)
{
    QSettings("Tarqa", "Tarq").setValue("application/industry_sector", 3);
    const StartedApplication started;
    EXPECT_EQ(started.manager().industrySector(), 3);
}

// --- thread pool

TEST(ApplicationManagerThreadPool, LosesOneOfThreeOrFourThreads)
{
    EXPECT_EQ(TestAccess::thread_pool_size(4, 4), 3);
    EXPECT_EQ(TestAccess::thread_pool_size(4, 3), 2);
    EXPECT_EQ(TestAccess::thread_pool_size(64, 4), 3);
    EXPECT_EQ(TestAccess::thread_pool_size(64, 3), 2);
}

TEST(ApplicationManagerThreadPool, LosesTwoOfMoreThreads)
{
    EXPECT_EQ(TestAccess::thread_pool_size(5, 5), 3);
    EXPECT_EQ(TestAccess::thread_pool_size(6, 6), 4);
    EXPECT_EQ(TestAccess::thread_pool_size(8, 8), 6);
    EXPECT_EQ(TestAccess::thread_pool_size(4, 128), 126);
    EXPECT_EQ(TestAccess::thread_pool_size(256, 256), 254);
}

TEST(ApplicationManagerThreadPool, LosesTwoOfOneOrTwoThreadsAsWell)
{
    // Qt takes such a maximum for one thread.
    EXPECT_EQ(TestAccess::thread_pool_size(4, 2), 0);
    EXPECT_EQ(TestAccess::thread_pool_size(4, 1), -1);
}

TEST(ApplicationManagerThreadPool, IsLeftAloneWithFewerThanFourProcessors)
{
    for (const int processors : {-1, 0, 1, 2, 3}) {
        for (const int maximum : {1, 2, 3, 4, 5, 8, 100}) {
            EXPECT_EQ(TestAccess::thread_pool_size(processors, maximum), maximum);
        }
    }
}
