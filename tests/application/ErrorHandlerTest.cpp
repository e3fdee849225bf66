#include "LogFiles.h"
#include "support/LogCapture.h"
#include "support/TestAccess.h"

#include <pkBaseQt/pkProductInfo.h>
#include <tarqa/housekeeping/ErrorHandler.h>
#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/housekeeping/HousekeepingException.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QThread>

#include <gtest/gtest.h>

#include <atomic>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>

namespace {

using support::LogCapture;
using tarqa::housekeeping::ErrorHandler;
using tarqa::housekeeping::HousekeepingException;
using tarqa::housekeeping::TestAccess;

std::atomic<int> s_exits{0};
std::atomic<QThread*> s_exit_thread{nullptr};

void note_exit()
{
    ++s_exits;
    s_exit_thread = QThread::currentThread();
}

HousekeepingException some_exception()
{
    return HousekeepingException(2, std::string("bad thing"), "housekeeping/src/X", 7);
}

std::string information(const tarqa::Exception& exception)
{
    std::ostringstream stream;
    stream << exception;
    return stream.str();
}

std::string failure_message(const std::string& product, const std::string& detail)
{
    return "Fatal error!  " + product
        + " has terminated unexpectedly. Please contact Velmor Stade with a bug report."
        + "A full failure report can be found in the file : " + log_files::path(1) + "\nDetail: " + detail;
}

/// No application object: nothing can be shown, everything is logged.
class ErrorHandlerWithoutApplication : public testing::Test
{
protected:
    ErrorHandlerWithoutApplication() { ErrorHandler::exit_main_loop_with(&note_exit); }
    ~ErrorHandlerWithoutApplication() override { m_capture.take_all(); }

    std::string entries() const { return m_capture.text(); }

private:
    LogCapture m_capture;
};

TEST_F(ErrorHandlerWithoutApplication, IsOneObject)
{
    EXPECT_EQ(&ErrorHandler::instance(), &ErrorHandler::const_instance());
    EXPECT_EQ(ErrorHandler::instance().thread(), QThread::currentThread());
    EXPECT_EQ(log_files::names().size(), 0u); // the log is made by the first entry
}

TEST_F(ErrorHandlerWithoutApplication, ReportsAreLoggedOnly)
{
    const HousekeepingException exception = some_exception();
    ErrorHandler& handler = ErrorHandler::instance();
    handler.report_command("DO>\tmove");
    handler.report_command("\tFinished.\n");
    handler.report_exception("a text");
    handler.report_exception(exception);
    handler.report_exception(std::runtime_error("standard"));
    EXPECT_EQ(entries(),
        "DO>\tmove\tFinished.\na text\nTARQA EXCEPTION THROWN:\n" + information(exception)
            + "\n\nSTD EXCEPTION THROWN:standard\n\n");
}

TEST_F(ErrorHandlerWithoutApplication, MessageIsLoggedAndAnsweredWithOk)
{
    const HousekeepingException exception = some_exception();
    ErrorHandler& handler = ErrorHandler::instance();
    EXPECT_EQ(handler.message("Title", "a text", QMessageBox::Yes | QMessageBox::No), QMessageBox::Ok);
    EXPECT_EQ(handler.message("Title", exception, QMessageBox::Cancel), QMessageBox::Ok);
    EXPECT_EQ(handler.message("Title", std::runtime_error("standard"), QMessageBox::Cancel), QMessageBox::Ok);
    EXPECT_EQ(entries(),
        "a text\nTARQA EXCEPTION THROWN:\n" + information(exception)
            + "\n\nSTD EXCEPTION THROWN:standard\n\n");
}

TEST_F(ErrorHandlerWithoutApplication, ApplicationWithoutWidgetsShowsNothingEither)
{
    char name[] = "test";
    char* arguments[] = {name, nullptr};
    int count = 1;
    const QCoreApplication application(count, arguments);
    EXPECT_EQ(ErrorHandler::instance().message("Title", "a text", QMessageBox::Cancel), QMessageBox::Ok);
    EXPECT_FALSE(ErrorHandler::instance().save_log_file());
    EXPECT_EQ(entries(), "a text\n");
}

TEST_F(ErrorHandlerWithoutApplication, NoDialogMayBeShown)
{
    EXPECT_FALSE(ErrorHandler::instance().may_show_dialogs());
    char name[] = "test";
    char* arguments[] = {name, nullptr};
    int count = 1;
    const QCoreApplication application(count, arguments); // has no widgets
    EXPECT_FALSE(ErrorHandler::instance().may_show_dialogs());
}

TEST_F(ErrorHandlerWithoutApplication, LogIsNotSaved)
{
    EXPECT_FALSE(ErrorHandler::instance().request_save_log_file("Caption"));
    EXPECT_FALSE(ErrorHandler::instance().save_log_file());
    EXPECT_EQ(entries(), "");
}

TEST_F(ErrorHandlerWithoutApplication, FatalTextGoesToLogAndStandardError)
{
    testing::internal::CaptureStderr();
    ErrorHandler::instance().fatal_error("the disk is gone");
    const std::string shown = testing::internal::GetCapturedStderr();
    EXPECT_EQ(shown.find(failure_message("Tarq", "the disk is gone\n\n\n\n")), 0u) << shown;
    EXPECT_EQ(log_files::read(log_files::path(1)), "FATAL ERROR!\nFurther Information: the disk is gone\n\n");
    EXPECT_EQ(s_exits, 1);
}

TEST_F(ErrorHandlerWithoutApplication, FatalExceptionGoesToLogAndStandardError)
{
    const HousekeepingException exception = some_exception();
    testing::internal::CaptureStderr();
    ErrorHandler::instance().fatal_error(exception);
    const std::string shown = testing::internal::GetCapturedStderr();
    const std::string detail = "A C++ fatal error has occured : \n" + information(exception) + "\n";
    EXPECT_EQ(shown.find(failure_message("Tarq", detail)), 0u) << shown;
    EXPECT_EQ(log_files::read(log_files::path(1)),
        log_files::head()
            + "fatal error!\nCause: tarqa::Exception\nFurther Information: " + information(exception));
    EXPECT_EQ(s_exits, 1);
}

TEST_F(ErrorHandlerWithoutApplication, FatalStandardExceptionGoesToLogAndStandardError)
{
    testing::internal::CaptureStderr();
    ErrorHandler::instance().fatal_error(std::runtime_error("standard"));
    const std::string shown = testing::internal::GetCapturedStderr();
    const std::string detail = "An Exception creating a fatal error has occured : standard\n\n\n\n";
    EXPECT_EQ(shown.find(failure_message("Tarq", detail)), 0u) << shown;
    EXPECT_EQ(log_files::read(log_files::path(1)),
        log_files::head() + "FATAL ERROR!\nCause: std::exception\nFurther Information: standard\n");
    EXPECT_EQ(s_exits, 1);
}

TEST_F(ErrorHandlerWithoutApplication, FailureMessageNamesProductAndLog)
{
    pkBase::pkProductInfo::instance().product_name("Tarq");
    EXPECT_EQ(TestAccess::failure_error_message("why"), failure_message("Tarq", "why"));
}

TEST_F(ErrorHandlerWithoutApplication, FailureMessageDoesNotFillInItsOwnTexts)
{
    EXPECT_EQ(TestAccess::failure_error_message("%1 %2 %99"), failure_message("Tarq", "%1 %2 %99"));
}

TEST_F(ErrorHandlerWithoutApplication, FatalErrorReturnsWithoutAnExitFunction)
{
    ErrorHandler::exit_main_loop_with(nullptr);
    testing::internal::CaptureStderr();
    ErrorHandler::instance().fatal_error("text");
    EXPECT_NE(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(s_exits, 0);
}

TEST_F(ErrorHandlerWithoutApplication, OnlyFatalErrorsEndTheMainLoop)
{
    ErrorHandler::instance().message("Title", "text", QMessageBox::Ok);
    ErrorHandler::instance().report_exception(std::runtime_error("standard"));
    ErrorHandler::instance().request_save_log_file("Caption");
    EXPECT_EQ(s_exits, 0);
}

TEST_F(ErrorHandlerWithoutApplication, FatalErrorInAWorkerEndsTheMainLoopFromThere)
{
    ErrorHandler::instance();
    testing::internal::CaptureStderr();
    QThread* p_worker = nullptr;
    std::thread([&p_worker] {
        p_worker = QThread::currentThread();
        ErrorHandler::instance().fatal_error("text");
    }).join();
    const std::string shown = testing::internal::GetCapturedStderr();
    EXPECT_EQ(shown.find(failure_message("Tarq", "text\n\n\n\n")), 0u) << shown;
    EXPECT_EQ(s_exits, 1);
    EXPECT_EQ(s_exit_thread, p_worker);
    EXPECT_NE(s_exit_thread, QThread::currentThread());
}

} // namespace
