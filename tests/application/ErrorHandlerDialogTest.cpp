#include "LogFiles.h"
#include "support/App.h"
#include "support/DialogDriver.h"
#include "support/LogCapture.h"
#include "support/PrivateHome.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/ErrorHandler.h>
#include <tarqa/housekeeping/HousekeepingException.h>

#include <QtCore/QThread>
#include <QtTest/QTest>
#include <QtWidgets/QLabel>
#include <QtWidgets/QWidget>

#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

using support::DialogDriver;
using support::LogCapture;
using support::ShownDialog;
using tarqa::housekeeping::ErrorHandler;
using tarqa::housekeeping::HousekeepingException;
using tarqa::housekeeping::TestAccess;

int s_exits = 0;
std::size_t s_dialogs_before_exit = 0;
const DialogDriver* s_p_dialogs = nullptr; // for note_exit()

void note_exit()
{
    ++s_exits;
    s_dialogs_before_exit = s_p_dialogs ? s_p_dialogs->shown().size() : 0;
}

std::string information(const tarqa::Exception& exception)
{
    std::ostringstream stream;
    stream << exception;
    return stream.str();
}

QString failure_message(const std::string& detail)
{
    return QString::fromStdString(
        "Fatal error!  Tarq has terminated unexpectedly. Please contact Velmor Stade with a bug report."
        "A full failure report can be found in the file : "
        + log_files::path(1) + "\nDetail: " + detail);
}

/// An application whose main thread is the handler's, with a driver for its dialogs.
class ErrorHandlerDialogs : public testing::Test
{
protected:
    ErrorHandlerDialogs()
    {
        ErrorHandler::instance();
        ErrorHandler::exit_main_loop_with(&note_exit);
        s_p_dialogs = &dialogs;
    }
    ~ErrorHandlerDialogs() override { m_capture.take_all(); }

    std::string entries() const { return m_capture.text(); }
    void show_window()
    {
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    }

private:
    LogCapture m_capture;

protected:
    support::App app;
    DialogDriver dialogs;
    QWidget window;
};

TEST_F(ErrorHandlerDialogs, MessageShowsTheTextInAWarning)
{
    show_window();
    dialogs.click(QMessageBox::No);
    EXPECT_EQ(ErrorHandler::instance().message("A title", "a text", QMessageBox::Yes | QMessageBox::No),
        QMessageBox::No);
    ASSERT_EQ(dialogs.shown().size(), 1u);
    const ShownDialog& box = dialogs.shown().front();
    EXPECT_EQ(box.class_name, "QMessageBox");
    EXPECT_EQ(box.title, "A title");
    EXPECT_EQ(box.text, "a text");
    EXPECT_EQ(box.icon, QMessageBox::Warning);
    EXPECT_EQ(box.buttons, QMessageBox::Yes | QMessageBox::No);
    EXPECT_EQ(box.parent, &window);
    EXPECT_EQ(entries(), "a text\n");
    EXPECT_EQ(s_exits, 0);
}

TEST_F(ErrorHandlerDialogs, TextsThatLookLikeHtmlAreShownAsTheyAre)
{
    const std::string text
        = "<b>x</b><img src='file:///etc/passwd'> &amp; <a href='http://help.example/'>y</a>";
    const auto expect_plain = [](QDialog& dialog) {
        auto* const p_text = dialog.findChild<QLabel*>("qt_msgbox_label");
        EXPECT_TRUE(p_text);
        EXPECT_EQ(Qt::PlainText, p_text ? p_text->textFormat() : Qt::AutoText);
        dialog.done(QMessageBox::Ok);
    };
    ErrorHandler& handler = ErrorHandler::instance();
    show_window();
    dialogs.answer(expect_plain).click(QMessageBox::No);
    handler.fatal_error(text);
    dialogs.answer(expect_plain).answer(expect_plain).answer(expect_plain);
    handler.message(text, text, QMessageBox::Ok);
    handler.message(text, std::runtime_error(text), QMessageBox::Ok);
    handler.message(text, HousekeepingException(2, text, "file", 1), QMessageBox::Ok);
    ASSERT_EQ(dialogs.shown().size(), 5u);
    EXPECT_TRUE(dialogs.shown()[0].text.contains(QString::fromStdString(text)));
    EXPECT_EQ(dialogs.shown()[2].text, QString::fromStdString(text));
    EXPECT_EQ(dialogs.shown()[2].title, QString::fromStdString(text));
    EXPECT_EQ(dialogs.shown()[3].text, QString::fromStdString(text + '\n'));
    EXPECT_EQ(dialogs.shown()[4].text, QString::fromStdString(text + '\n'));
}

TEST_F(ErrorHandlerDialogs, MessageRemembersTheChosenButton)
{
    ErrorHandler& handler = ErrorHandler::instance();
    EXPECT_EQ(TestAccess::last_button(handler), QMessageBox::NoButton);
    dialogs.click(QMessageBox::YesToAll).click(QMessageBox::Cancel);
    const QMessageBox::StandardButtons buttons
        = QMessageBox::Yes | QMessageBox::YesToAll | QMessageBox::Cancel;
    EXPECT_EQ(handler.message("Warning", "first", buttons), QMessageBox::YesToAll);
    EXPECT_EQ(TestAccess::last_button(handler), QMessageBox::YesToAll);
    EXPECT_EQ(handler.message("Warning", "second", buttons), QMessageBox::Cancel);
    EXPECT_EQ(TestAccess::last_button(handler), QMessageBox::Cancel);
}

TEST_F(ErrorHandlerDialogs, MessageIsLoggedBeforeItIsShown)
{
    std::string logged;
    dialogs.answer([this, &logged](QDialog& dialog) {
        logged = entries();
        dialog.reject();
    });
    ErrorHandler::instance().message("Title", "a text", QMessageBox::Ok);
    EXPECT_EQ(logged, "a text\n");
}

TEST_F(ErrorHandlerDialogs, MessageNeedsNoWindow)
{
    dialogs.click(QMessageBox::Ok);
    EXPECT_EQ(ErrorHandler::instance().message("Title", "a text", QMessageBox::Ok), QMessageBox::Ok);
    ASSERT_EQ(dialogs.shown().size(), 1u);
    EXPECT_EQ(dialogs.shown().front().parent, nullptr);
}

TEST_F(ErrorHandlerDialogs, MessageShowsUtf8AsItStands)
{
    dialogs.click(QMessageBox::Ok);
    ErrorHandler::instance().message("Titel für µ", "Größe %1", QMessageBox::Ok);
    ASSERT_EQ(dialogs.shown().size(), 1u);
    EXPECT_EQ(dialogs.shown().front().title, QString::fromUtf8("Titel für µ"));
    EXPECT_EQ(dialogs.shown().front().text, QString::fromUtf8("Größe %1"));
}

TEST_F(ErrorHandlerDialogs, ExceptionIsLoggedAndDescribed)
{
    const HousekeepingException exception(2, std::string("bad thing"), "housekeeping/src/X", 7);
    dialogs.click(QMessageBox::Ok);
    EXPECT_EQ(ErrorHandler::instance().message("Error", exception, QMessageBox::Ok), QMessageBox::Ok);
    ASSERT_EQ(dialogs.shown().size(), 1u);
    const ShownDialog& box = dialogs.shown().front();
    EXPECT_EQ(box.title, "Error");
    EXPECT_EQ(box.icon, QMessageBox::Warning);
    EXPECT_EQ(box.buttons, QMessageBox::Ok);
    EXPECT_EQ(box.text, "bad thing\n");
    EXPECT_EQ(entries(), "TARQA EXCEPTION THROWN:\n" + information(exception) + "\n\n");
}

TEST_F(ErrorHandlerDialogs, StandardExceptionIsLoggedAndDescribed)
{
    dialogs.click(QMessageBox::Ok);
    ErrorHandler::instance().message("Error", std::runtime_error("standard"), QMessageBox::Ok);
    ASSERT_EQ(dialogs.shown().size(), 1u);
    EXPECT_EQ(dialogs.shown().front().text, "standard\n");
    EXPECT_EQ(entries(), "STD EXCEPTION THROWN:standard\n\n");
}

TEST_F(ErrorHandlerDialogs, WorkerThreadShowsNothing)
{
    QMessageBox::StandardButton text = QMessageBox::NoButton;
    QMessageBox::StandardButton exception = QMessageBox::NoButton;
    bool saved = true;
    bool requested = true;
    std::thread([&] {
        ErrorHandler& handler = ErrorHandler::instance();
        text = handler.message("Title", "a text", QMessageBox::Yes | QMessageBox::No);
        exception = handler.message("Title", std::runtime_error("standard"), QMessageBox::Cancel);
        saved = handler.save_log_file();
        requested = handler.request_save_log_file("Caption");
    }).join();
    QTest::qWait(50); // nothing was left for the main thread either
    EXPECT_EQ(text, QMessageBox::Ok);
    EXPECT_EQ(exception, QMessageBox::Ok);
    EXPECT_FALSE(saved);
    EXPECT_FALSE(requested);
    EXPECT_TRUE(dialogs.shown().empty());
    EXPECT_EQ(entries(), "a text\nSTD EXCEPTION THROWN:standard\n\n");
    EXPECT_EQ(TestAccess::last_button(ErrorHandler::instance()), QMessageBox::NoButton);
}

TEST_F(ErrorHandlerDialogs, MayBeShownOnTheMainThreadOnly)
{
    EXPECT_TRUE(ErrorHandler::instance().may_show_dialogs());
    bool in_worker = true;
    std::thread([&in_worker] { in_worker = ErrorHandler::instance().may_show_dialogs(); }).join();
    EXPECT_FALSE(in_worker);
    EXPECT_TRUE(ErrorHandler::const_instance().may_show_dialogs());
}

TEST_F(ErrorHandlerDialogs, MayNotBeShownWhereNobodySeesThem)
{
    ErrorHandler::show_dialogs(false);
    EXPECT_FALSE(ErrorHandler::instance().may_show_dialogs());
    EXPECT_EQ(ErrorHandler::instance().message("Title", "a text", QMessageBox::Yes | QMessageBox::No),
        QMessageBox::Ok);
    EXPECT_TRUE(dialogs.shown().empty());
    ErrorHandler::show_dialogs(true);
    EXPECT_TRUE(ErrorHandler::instance().may_show_dialogs());
}

TEST_F(ErrorHandlerDialogs, FatalTextIsShownAndTheLogOffered)
{
    show_window();
    dialogs.click(QMessageBox::Ok).click(QMessageBox::No);
    testing::internal::CaptureStderr();
    ErrorHandler::instance().fatal_error("the disk is gone");
    const std::string printed = testing::internal::GetCapturedStderr(); // the platform may print there
    EXPECT_EQ(printed.find("Fatal error!"), std::string::npos) << printed;
    ASSERT_EQ(dialogs.shown().size(), 2u);
    const ShownDialog& box = dialogs.shown().at(0);
    EXPECT_EQ(box.title, "Fatal Error");
    EXPECT_EQ(box.text, failure_message("the disk is gone\n\n\n\n"));
    EXPECT_EQ(box.icon, QMessageBox::Critical);
    EXPECT_EQ(box.buttons, QMessageBox::Ok);
    EXPECT_EQ(box.parent, &window);
    const ShownDialog& offer = dialogs.shown().at(1);
    EXPECT_EQ(offer.title, "Tarq Fatal Error");
    EXPECT_EQ(offer.text, "Save error log to file for PKX support");
    EXPECT_EQ(offer.icon, QMessageBox::Warning);
    EXPECT_EQ(offer.buttons, QMessageBox::Yes | QMessageBox::No);
}

TEST_F(ErrorHandlerDialogs, FatalErrorThatIsShownSavesTheLogOnYes)
{
    show_window();
    const std::string target = support::PrivateHome::scratch_directory() + "/saved.log";
    dialogs.click(QMessageBox::Ok).click(QMessageBox::Yes).choose_file(QString::fromStdString(target));
    ErrorHandler::instance().fatal_error("the disk is gone");
    EXPECT_EQ(log_files::read(target), "FATAL ERROR!\nFurther Information: the disk is gone\n\n");
    EXPECT_EQ(s_exits, 1);
    EXPECT_EQ(s_dialogs_before_exit, 3u);
}

TEST_F(ErrorHandlerDialogs, FatalErrorLeavesTheMainLoopLast)
{
    show_window();
    dialogs.click(QMessageBox::Ok).click(QMessageBox::No);
    ErrorHandler::instance().fatal_error("the disk is gone");
    EXPECT_EQ(s_exits, 1);
    EXPECT_EQ(s_dialogs_before_exit, 2u);
}

TEST_F(ErrorHandlerDialogs, FatalErrorIsLoggedBeforeItIsShown)
{
    show_window();
    std::string logged;
    dialogs
        .answer([&logged](QDialog& dialog) {
            logged = log_files::read(log_files::path(1));
            dialog.reject();
        })
        .click(QMessageBox::No);
    ErrorHandler::instance().fatal_error("text");
    EXPECT_EQ(logged, "FATAL ERROR!\nFurther Information: text\n\n");
}

TEST_F(ErrorHandlerDialogs, FatalExceptionIsShown)
{
    show_window();
    const HousekeepingException exception(2, std::string("bad thing"), "housekeeping/src/X", 7);
    dialogs.click(QMessageBox::Ok).click(QMessageBox::No);
    ErrorHandler::instance().fatal_error(exception);
    ASSERT_EQ(dialogs.shown().size(), 2u);
    EXPECT_EQ(dialogs.shown().at(0).title, "Fatal Error");
    EXPECT_EQ(dialogs.shown().at(0).text,
        failure_message("A C++ fatal error has occured : \n" + information(exception) + "\n"));
    EXPECT_EQ(dialogs.shown().at(1).title, "Tarq Fatal Error");
    EXPECT_EQ(s_exits, 1);
}

TEST_F(ErrorHandlerDialogs, FatalStandardExceptionIsShown)
{
    show_window();
    dialogs.click(QMessageBox::Ok).click(QMessageBox::No);
    ErrorHandler::instance().fatal_error(std::runtime_error("standard"));
    ASSERT_EQ(dialogs.shown().size(), 2u);
    EXPECT_EQ(dialogs.shown().at(0).title, "Fatal Error");
    EXPECT_EQ(dialogs.shown().at(0).text,
        failure_message("An Exception creating a fatal error has occured : standard\n\n\n\n"));
    EXPECT_EQ(dialogs.shown().at(1).title, "Tarq Fatal Error");
    EXPECT_EQ(s_exits, 1);
}

TEST_F(ErrorHandlerDialogs, FatalErrorWithoutAnActiveWindowShowsNothing)
{
    testing::internal::CaptureStderr();
    ErrorHandler::instance().fatal_error("text");
    const std::string printed = testing::internal::GetCapturedStderr(); // the platform may print there
    const std::string expected = failure_message("text\n\n\n\n").toStdString();
    EXPECT_NE(printed.find(expected), std::string::npos) << printed;
    EXPECT_TRUE(dialogs.shown().empty());
    EXPECT_EQ(s_exits, 1);
}

TEST_F(ErrorHandlerDialogs, FatalErrorInAWorkerGoesToStandardError)
{
    show_window();
    testing::internal::CaptureStderr();
    std::thread([] { ErrorHandler::instance().fatal_error(std::runtime_error("standard")); }).join();
    QTest::qWait(50);
    const std::string shown = testing::internal::GetCapturedStderr();
    const std::string expected
        = failure_message("An Exception creating a fatal error has occured : standard\n\n\n\n").toStdString();
    EXPECT_EQ(shown.find(expected), 0u) << shown;
    EXPECT_TRUE(dialogs.shown().empty());
    EXPECT_EQ(s_exits, 1);
}

TEST_F(ErrorHandlerDialogs, FatalExceptionInAWorkerGoesToStandardError)
{
    show_window();
    const HousekeepingException exception(2, std::string("bad thing"), "housekeeping/src/X", 7);
    testing::internal::CaptureStderr();
    std::thread([&exception] { ErrorHandler::instance().fatal_error(exception); }).join();
    QCoreApplication::processEvents();
    const std::string shown = testing::internal::GetCapturedStderr();
    const std::string expected
        = failure_message("A C++ fatal error has occured : \n" + information(exception) + "\n").toStdString();
    EXPECT_EQ(shown.find(expected), 0u) << shown;
    EXPECT_TRUE(dialogs.shown().empty());
    EXPECT_EQ(
        entries(), "fatal error!\nCause: tarqa::Exception\nFurther Information: " + information(exception));
    EXPECT_EQ(s_exits, 1);
}

TEST(ErrorHandlerThreads, MadeByAWorkerBelongsToTheApplicationsThread)
{
    LogCapture capture;
    const support::App app;
    std::thread([] { ErrorHandler::instance(); }).join();
    EXPECT_EQ(ErrorHandler::instance().thread(), QThread::currentThread());
    DialogDriver dialogs;
    dialogs.click(QMessageBox::No);
    EXPECT_EQ(ErrorHandler::instance().message("Title", "a text", QMessageBox::Yes | QMessageBox::No),
        QMessageBox::No);
    EXPECT_EQ(dialogs.shown().size(), 1u);
    EXPECT_TRUE(capture.take("a text"));
}

} // namespace
