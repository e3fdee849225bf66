#include "texts/Texts.h"

#include "support/App.h"
#include "support/DialogDriver.h"
#include "support/LogCapture.h"
#include "support/StartedApplication.h"
#include "support/TestAccess.h"

#include <pkBase/pkDestructor.h>
#include <pkBaseQt/QLogFileViewer.h>
#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/ErrorHandler.h>
#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/housekeeping/ErrorProtocolOutput.h>
#include <tarqa/housekeeping/HousekeepingException.h>
#include <tarqa/housekeeping/QTarqaApplication.h>
#include <tarqa/housekeeping/ThreadLocal.h>

#include <QtCore/QDir>
#include <QtCore/QMetaMethod>
#include <QtCore/QThreadStorage>
#include <QtCore/QTimer>
#include <QtNetwork/QNetworkProxy>
#include <QtTest/QTest>
#include <QtWidgets/QWidget>

// One set of handlers in the whole program: with hidden visibility the test would have its own.
#pragma GCC visibility push(default)
#include <CGAL/assertions.h>
#pragma GCC visibility pop

#include <cpl_conv.h>
#include <cpl_error.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <limits>
#include <set>
#include <sstream>
#include <stdexcept>

#include <unistd.h>

// What start-up, main loop and the libraries below write to the error log, the log itself, and what the user
// is shown of it.

using namespace tarqa::housekeeping;
using support::LogCapture;
using support::ShownDialog;
using support::StartedApplication;

namespace {

typedef ApplicationManager Manager;
typedef std::function<void()> Action;

// --- what is logged

std::string logged(const Action& action)
{
    LogCapture log;
    action();
    const std::string text = log.text();
    log.take_all();
    return text;
}

/// The same in a started application, without what the start logs.
std::string logged_after_start(const Action& action)
{
    const StartedApplication started;
    return logged(action);
}

ErrorProtocol& error_log()
{
    return ErrorProtocol::instance();
}

std::string whole_log()
{
    std::ifstream stream(error_log().log_filename(), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

/// The part from the beginning, or from behind @p begin, up to and with @p end.
std::string part_of(const std::string& text, std::size_t begin, const std::string& end)
{
    return text.substr(begin, text.find(end, begin) + end.size() - begin);
}

std::string last_line(const std::string& text)
{
    return text.substr(text.rfind('\n', text.size() - 2) + 1);
}

std::string log_after_the_end()
{
    LogCapture log;
    error_log().log_message("entry");
    const std::string file = error_log().log_filename();
    pkBase::pkDestructor::run();
    const std::string text = log.text();
    log.take_all();
    return text.substr(text.find('\n') + 1);
}

HousekeepingException exception()
{
    return HousekeepingException(2, std::string("bad thing"), "housekeeping/src/X", 7);
}

std::string information()
{
    std::ostringstream text;
    text << exception();
    return text.str();
}

const std::vector<texts::Row> s_log = {
    {"Opening", "************ ERROR LOG OPENED ************ \n\nSYSTEM INFROMATION\n",
        [] { return part_of(whole_log(), 0, "ATION\n"); }},
    {"Beginning", "************ ERROR LOG BEGIN  ************ \n", [] { return last_line(whole_log()); }},
    {"End", "************** END OF ERROR LOG ***************\n", &log_after_the_end},
    {"File", "Tarq_1.log",
        [] { return std::filesystem::path(error_log().log_filename()).filename().string(); }},
    {"Message", "text\n", [] { return logged([] { error_log().log_message("text"); }); }},
    {"Command", "text", [] { return logged([] { error_log().log_command("text"); }); }},
    {"Assertion", "file:7 ASSERT FAILED in function: expression\n",
        [] { return logged([] { error_log().log_assert("expression", "function", "file", 7); }); }},
    {"AssertionWithoutFile", ":7 ASSERT FAILED in function: expression\n",
        [] { return logged([] { error_log().log_assert("expression", "function", nullptr, 7); }); }},
    {"MakersException", "TARQA EXCEPTION THROWN:\n" + information() + "\n\n",
        [] { return logged([] { error_log().log_exception(exception()); }); }},
    {"StandardException", "STD EXCEPTION THROWN:bad thing\n\n",
        [] { return logged([] { error_log().log_exception(std::runtime_error("bad thing")); }); }},
    {"FatalText", "FATAL ERROR!\nFurther Information: text\n\n",
        [] { return logged([] { error_log().log_fatal_error("text"); }); }},
    {"FatalMakersException", "fatal error!\nCause: tarqa::Exception\nFurther Information: " + information(),
        [] { return logged([] { error_log().log_fatal_error(exception()); }); }},
    {"FatalStandardException", "FATAL ERROR!\nCause: std::exception\nFurther Information: bad thing\n",
        [] { return logged([] { error_log().log_fatal_error(std::runtime_error("bad thing")); }); }},
    {"LargestNumber", "NULL\n",
        [] {
            return logged([] { ErrorProtocolOutput() << std::numeric_limits<unsigned long long>::max(); });
        }},
};

INSTANTIATE_TEST_SUITE_P(ErrorLog, Texts, testing::ValuesIn(s_log), texts::name_of);

// --- start-up

/// The line of the start that says whether views are drawn in the background.
std::string background_rendering()
{
    LogCapture log;
    const StartedApplication started(log);
    const std::string line = last_line(log.text());
    support::take_start_up_lines(log);
    return line;
}

/// The first line of the start, without the path in it.
std::string first_line_of_the_start()
{
    LogCapture log;
    const StartedApplication started(log);
    const std::string line = log.lines().front();
    support::take_start_up_lines(log);
    const std::string path = QCoreApplication::libraryPaths().front().toStdString();
    EXPECT_EQ(line.size(), line.rfind(path) + path.size());
    return line.substr(0, line.rfind(path));
}

std::set<std::string> environment()
{
    std::set<std::string> entries;
    for (char** p_entry = environ; *p_entry; ++p_entry) {
        entries.insert(*p_entry);
    }
    return entries;
}

/// What the start adds to the environment.
std::string new_variables()
{
    unsetenv("QT_DEVICE_PIXEL_RATIO");
    const std::set<std::string> before = environment();
    const StartedApplication started;
    std::string variables;
    for (const std::string& entry : environment()) {
        variables += before.count(entry) ? "" : entry + '\n';
    }
    return variables;
}

std::string lock_file()
{
    setenv("XDG_SESSION_ID", "31", 1);
    const StartedApplication started;
    return QDir(QDir::tempPath()).entryList({"*lockfile*"}, QDir::Files).join('\n').toStdString();
}

std::string signals_of_the_manager()
{
    const QMetaObject& meta = Manager::staticMetaObject;
    std::string signatures;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        signatures += (meta.method(i).methodSignature() + '\n').toStdString();
    }
    return signatures;
}

const std::vector<texts::Row> s_start = {
    {"LibraryPath", "post-Qt init Path: ", &first_line_of_the_start},
    {"BackgroundRendering", "Background rendering is ON\n",
        [] {
            unsetenv("TARQ_NO_BACKGROUND_RENDERING");
            return background_rendering();
        }},
    {"NoBackgroundRendering", "Background rendering is OFF\n",
        [] {
            setenv("TARQ_NO_BACKGROUND_RENDERING", "anything", 1);
            return background_rendering();
        }},
    {"Environment", "QT_DEVICE_PIXEL_RATIO=auto\n", &new_variables},
    {"LockFile", "Tarq-a5cf-1f-lockfile", &lock_file},
    {"OptionOfGDAL", "TOWGS84",
        [] {
            const StartedApplication started;
            return std::string(CPLGetConfigOption("GDAL_FIX_ESRI_WKT", ""));
        }},
    {"Renderer", "???", [] { return Manager::instance().glRenderer(); }},
    {"Signals",
        "suspendApplication()\nresumeApplication()\n"
        "mouseButtonsPreferencesChanged(housekeeping::MouseMode)\nlastWindowClosed()\nprogressThreadWait()\n",
        &signals_of_the_manager},
};

INSTANTIATE_TEST_SUITE_P(Start, Texts, testing::ValuesIn(s_start), texts::name_of);

// --- messages of other libraries

std::string logged_for_qt(QtMsgType type, const char* file)
{
    return logged_after_start([type, file] {
        const QtMessageHandler handler = qInstallMessageHandler(nullptr);
        testing::internal::CaptureStderr(); // where fatal errors go as well
        handler(type, QMessageLogContext(file, 7, nullptr, nullptr), "text");
        testing::internal::GetCapturedStderr();
    });
}

std::string logged_for_gdal(CPLErr severity)
{
    return logged_after_start([severity] {
        const CPLErrorHandler handler = CPLSetErrorHandler(nullptr);
        CPLSetErrorHandler(handler);
        handler(severity, CPLE_AppDefined, "text"); // GDAL itself would end the program after a fatal one
    });
}

std::string logged_for_cgal_error()
{
    return logged_after_start([] {
        const CGAL::Failure_function handler = CGAL::set_error_handler(nullptr);
        handler("what", "expression", "file", 7, nullptr);
    });
}

std::string logged_for_cgal_warning()
{
    return logged_after_start([] {
        const CGAL::Failure_function handler = CGAL::set_warning_handler(nullptr);
        handler("what", "expression", "file", 7, nullptr);
    });
}

const std::vector<texts::Row> s_hooks = {
    {"QtCritical", "QtCriticalMsg: text\n", [] { return logged_for_qt(QtCriticalMsg, nullptr); }},
    {"QtCriticalInAFile", "QtCriticalMsg: text (in file.cpp:7)\n",
        [] { return logged_for_qt(QtCriticalMsg, "file.cpp"); }},
    {"QtFatal", "FATAL ERROR!\nFurther Information: QtFatalMsg: text (in file.cpp:7)\n\n",
        [] {
            const std::string log = logged_for_qt(QtFatalMsg, "file.cpp");
            return log.substr(0, log.find("\n\n") + 2); // the check for a main window follows
        }},
    {"GDALNone", "CE_None: text\n", [] { return logged_for_gdal(CE_None); }},
    {"GDALDebug", "CE_Debug: text\n", [] { return logged_for_gdal(CE_Debug); }},
    {"GDALWarning", "CE_Warning: text\n", [] { return logged_for_gdal(CE_Warning); }},
    {"GDALFailure", "CE_Failure: text\n", [] { return logged_for_gdal(CE_Failure); }},
    {"GDALFatal", "CE_Fatal: text\n", [] { return logged_for_gdal(CE_Fatal); }},
    {"GDALUnknown", "", [] { return logged_for_gdal(static_cast<CPLErr>(CE_Fatal + 1)); }},
    {"CGALError",
        "A CGAL runtime error has been trapped\nCGAL error: what\nExpr: expression\nFile: file\nLine: 7\n",
        &logged_for_cgal_error},
    {"CGALWarning",
        "A CGAL runtime warning has been trapped\nCGAL warning: what\nExpr: expression\nFile: file\n"
        "Line: 7\n",
        &logged_for_cgal_warning},
};

INSTANTIATE_TEST_SUITE_P(LogHooks, Texts, testing::ValuesIn(s_hooks), texts::name_of);

// --- the system's proxy

class Factory : public QNetworkProxyFactory
{
public:
    explicit Factory(QNetworkProxy::ProxyType type)
        : m_type(type)
    { }
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery&) override
    {
        return {QNetworkProxy(m_type, "host", 8080)};
    }

private:
    QNetworkProxy::ProxyType m_type;
};

std::string logged_for_proxy(QNetworkProxy::ProxyType type)
{
    return logged_after_start([type] {
        QNetworkProxyFactory::setApplicationProxyFactory(new Factory(type));
        Manager::testProxySettings();
    });
}

const std::vector<texts::Row> s_proxies = {
    {"No", "No system proxy configuration found.\n", [] { return logged_for_proxy(QNetworkProxy::NoProxy); }},
    {"Default", "System proxy: host:8080 (default)\n",
        [] { return logged_for_proxy(QNetworkProxy::DefaultProxy); }},
    {"Socks5", "System proxy: host:8080 (SOCKS5)\n",
        [] { return logged_for_proxy(QNetworkProxy::Socks5Proxy); }},
    {"Http", "System proxy: host:8080 (HTTP)\n", [] { return logged_for_proxy(QNetworkProxy::HttpProxy); }},
    {"HttpCaching", "System proxy: host:8080 (HTTP caching)\n",
        [] { return logged_for_proxy(QNetworkProxy::HttpCachingProxy); }},
    {"FtpCaching", "System proxy: host:8080 (FTP caching)\n",
        [] { return logged_for_proxy(QNetworkProxy::FtpCachingProxy); }},
    {"Other", "System proxy: host:8080 (none)", // no proxy has such a type
        [] { return TestAccess::proxy_report("host", 8080, 99).toStdString(); }},
};

INSTANTIATE_TEST_SUITE_P(Proxies, Texts, testing::ValuesIn(s_proxies), texts::name_of);

// --- failed checks

/// The source and the condition of each failed check, in the order in which they are logged.
std::string checks(const Action& action)
{
    std::istringstream log(logged(action));
    std::string found;
    for (std::string line; std::getline(log, line);) {
        EXPECT_NE(std::string::npos, line.find(" ASSERT FAILED in ")) << line;
        found += line.substr(0, line.find(':')) + ": " + line.substr(line.rfind(": ") + 2) + '\n';
    }
    return found;
}

/// Inside the main loop of a program with a window.
std::string checks_inside(const Action& action)
{
    const StartedApplication started;
    QWidget window;
    started.manager().top_level_widget(&window);
    std::string found;
    QTimer::singleShot(0, [&] {
        found = checks(action);
        started.manager().exit_main_loop();
    });
    started.manager().main_loop();
    return found;
}

void start_again()
{
    int count = 0;
    char** p_arguments = nullptr;
    Manager::instance().init(count, p_arguments, "test", true);
}

const std::string s_source = "housekeeping/src/ApplicationManager: ";

const std::vector<texts::Row> s_checks = {
    {"Start",
        s_source + "0 == m_p_top_widget\n" + s_source + "false == m_in_main_loop\n" + s_source
            + "!QCoreApplication::instance()\n",
        [] { return checks_inside(&start_again); }},
    {"SettingTheWindow",
        s_source + "p_widget\n" + s_source + "0 == m_p_top_widget\n" + s_source + "false == m_in_main_loop\n",
        [] { return checks_inside([] { Manager::instance().top_level_widget(nullptr); }); }},
    {"SettingTheWindowTooEarly", s_source + "p_widget\n" + s_source + "m_p_qapplication\n",
        [] { return checks([] { Manager::instance().top_level_widget(nullptr); }); }},
    {"Window", s_source + "m_p_top_widget\n",
        [] { return checks([] { Manager::const_instance().top_level_widget(); }); }},
    {"Application", s_source + "m_p_qapplication\n",
        [] { return checks([] { Manager::const_instance().qapplication(); }); }},
    {"Translator", s_source + "m_p_qtranslator\n",
        [] { return checks([] { Manager::const_instance().qtranslator(); }); }},
    {"Showing",
        s_source + "m_p_top_widget\n" + s_source + "m_gui_application\n" + s_source + "m_p_qapplication\n",
        [] { return checks([] { Manager::const_instance().show(); }); }},
    {"Leaving", s_source + "m_p_top_widget\n" + s_source + "m_gui_application\n",
        [] { return checks([] { Manager::const_instance().exit_main_loop(); }); }},
    {"MainLoop", s_source + "m_p_top_widget\n" + s_source + "m_gui_application\n",
        [] {
            const StartedApplication started(false);
            QTimer::singleShot(0, &Manager::quit);
            return checks([] { Manager::const_instance().main_loop(); });
        }},
    {"MainLoopInside", s_source + "false == m_in_main_loop\n",
        [] {
            const StartedApplication started;
            QWidget window;
            started.manager().top_level_widget(&window);
            std::string found;
            QTimer::singleShot(0, [&] {
                found = checks([] { Manager::const_instance().main_loop(); });
                started.manager().exit_main_loop();
            });
            started.manager().main_loop();
            return found;
        }},
    {"MessageOfTheSystem", s_source + "msg\n",
        [] {
            const StartedApplication started;
            return checks([&started] {
                dynamic_cast<QTarqaApplication&>(started.application()).winEventFilter(nullptr, nullptr);
            });
        }},
    {"FirstThread", s_source + "!m_thread_local_ids.hasLocalData()\n",
        [] {
            { // Qt gives the place of a storage that is gone to the next one.
                QThreadStorage<unsigned int> former;
                former.setLocalData(99);
            }
            return checks([] { ThreadLocal::instance(); });
        }},
    {"MainThread", s_source + "m_main_thread_id\n" + s_source + "m_main_thread_id\n",
        [] {
            TestAccess::main_thread_id(ThreadLocal::instance(), 0);
            return checks([] {
                ThreadLocal::instance().main_thread_id();
                ThreadLocal::instance().is_main_thread();
            });
        }},
};

INSTANTIATE_TEST_SUITE_P(StartAndLoopChecks, Texts, testing::ValuesIn(s_checks), texts::name_of);

// --- what the user is shown

/// An application with an active window, whose dialogs are closed one after the other.
std::vector<ShownDialog> dialogs_of(const Action& action, int count)
{
    const support::App app;
    LogCapture log;
    QWidget window;
    window.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    support::DialogDriver dialogs;
    for (int i = 0; i < count; ++i) {
        dialogs.answer([](QDialog& dialog) { dialog.reject(); });
    }
    action();
    log.take_all();
    std::vector<ShownDialog> shown = dialogs.shown();
    shown.resize(static_cast<std::size_t>(count));
    return shown;
}

std::string title_and_text(const ShownDialog& dialog)
{
    return (dialog.title + '\n' + dialog.text).toStdString();
}

/// The first box of a fatal error, with the log's file name in place of its path.
template <class Error>
std::string fatal_box(const Error& error)
{
    const auto boxes = dialogs_of([&error] { ErrorHandler::instance().fatal_error(error); }, 2);
    std::string text = title_and_text(boxes.front());
    const std::string path = error_log().log_filename();
    EXPECT_NE(std::string::npos, text.find(path));
    return text.replace(text.find(path), path.size(), "LOG");
}

template <class What>
std::string message_box(const What& what)
{
    const auto boxes
        = dialogs_of([&what] { ErrorHandler::instance().message("title", what, QMessageBox::Ok); }, 1);
    return title_and_text(boxes.front());
}

const std::string s_failure
    = "Fatal Error\n"
      "Fatal error!  Tarq has terminated unexpectedly. Please contact Velmor Stade with a bug report."
      "A full failure report can be found in the file : LOG\nDetail: ";

const std::vector<texts::Row> s_boxes = {
    {"FatalText", s_failure + "text\n\n\n\n", [] { return fatal_box(std::string("text")); }},
    {"FatalMakersException", s_failure + "A C++ fatal error has occured : \n" + information() + "\n",
        [] { return fatal_box(exception()); }},
    {"FatalStandardException", s_failure + "An Exception creating a fatal error has occured : text\n\n\n\n",
        [] { return fatal_box(std::runtime_error("text")); }},
    {"OfferAfterAFatalError", "Tarq Fatal Error\nSave error log to file for PKX support",
        [] {
            return title_and_text(
                dialogs_of([] { ErrorHandler::instance().fatal_error(std::string("text")); }, 2).at(1));
        }},
    {"Offer", "caption\nSave error log to file for PKX support",
        [] {
            return title_and_text(
                dialogs_of([] { ErrorHandler::instance().request_save_log_file("caption"); }, 1).at(0));
        }},
    {"Saving", "Save Tarq Error Log\nTarq_Error.log\nLog files (*.log)",
        [] {
            const ShownDialog dialog
                = dialogs_of([] { ErrorHandler::instance().save_log_file(); }, 1).front();
            return (dialog.title + '\n' + dialog.file + '\n' + dialog.filters.join('\n')).toStdString();
        }},
    {"Message", "title\ntext", [] { return message_box(std::string("text")); }},
    {"MakersException", "title\nbad thing\n", [] { return message_box(exception()); }},
    {"StandardException", "title\ntext\n", [] { return message_box(std::runtime_error("text")); }},
};

INSTANTIATE_TEST_SUITE_P(BoxesOfErrors, Texts, testing::ValuesIn(s_boxes), texts::name_of);

} // namespace
