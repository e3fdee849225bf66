#include "LogFiles.h"
#include "support/App.h"
#include "support/DialogDriver.h"
#include "support/LogCapture.h"
#include "support/PlantedFile.h"
#include "support/PrivateHome.h"

#include <tarqa/housekeeping/ErrorHandler.h>

#include <QtTest/QTest>
#include <QtWidgets/QWidget>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

namespace {

using support::DialogDriver;
using support::LogCapture;
using support::ShownDialog;
using tarqa::housekeeping::ErrorHandler;

/// An application with a log of one entry, "entry".
class ErrorLogSaving : public testing::Test
{
protected:
    ErrorLogSaving() { ErrorHandler::instance().report_exception("entry"); }
    ~ErrorLogSaving() override { m_capture.take_all(); }

    static std::string target() { return support::PrivateHome::scratch_directory() + "/saved.log"; }
    static std::string whole_log() { return log_files::head() + "entry\n"; }

private:
    LogCapture m_capture;

protected:
    support::App app;
    DialogDriver dialogs;
};

TEST_F(ErrorLogSaving, AsksForAFile)
{
    QWidget window;
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    dialogs.cancel();
    EXPECT_FALSE(ErrorHandler::instance().save_log_file());
    ASSERT_EQ(dialogs.shown().size(), 1u);
    const ShownDialog& dialog = dialogs.shown().front();
    EXPECT_EQ(dialog.class_name, "QFileDialog");
    EXPECT_EQ(dialog.title, "Save Tarq Error Log");
    EXPECT_EQ(dialog.file, "Tarq_Error.log");
    EXPECT_EQ(dialog.filters, QStringList{"Log files (*.log)"});
    EXPECT_TRUE(dialog.saves);
    EXPECT_EQ(dialog.parent, &window);
}

TEST_F(ErrorLogSaving, WithoutAnAnswerSavesNothing)
{
    dialogs.cancel();
    EXPECT_FALSE(ErrorHandler::instance().save_log_file());
    EXPECT_TRUE(std::filesystem::is_empty(support::PrivateHome::scratch_directory()));
}

TEST_F(ErrorLogSaving, CopiesTheLog)
{
    dialogs.choose_file(QString::fromStdString(target()));
    EXPECT_TRUE(ErrorHandler::instance().save_log_file());
    EXPECT_EQ(log_files::read(target()), whole_log());
    EXPECT_EQ(log_files::read(log_files::path(1)), whole_log());
}

TEST_F(ErrorLogSaving, ReplacesAnExistingFile)
{
    std::ofstream(target()) << std::string(100000, 'x');
    dialogs.choose_file(QString::fromStdString(target())).click(QMessageBox::Yes);
    EXPECT_TRUE(ErrorHandler::instance().save_log_file());
    EXPECT_EQ(log_files::read(target()), whole_log());
}

TEST_F(ErrorLogSaving, FailsWithoutAMessage)
{
    const std::string missing = support::PrivateHome::scratch_directory() + "/missing/saved.log";
    dialogs.choose_file(QString::fromStdString(missing));
    EXPECT_FALSE(ErrorHandler::instance().save_log_file());
    EXPECT_EQ(dialogs.shown().size(), 1u);
    EXPECT_FALSE(std::filesystem::exists(missing));
    EXPECT_EQ(log_files::read(log_files::path(1)), whole_log());
}

TEST_F(ErrorLogSaving, OntoItselfChangesNothing)
{
    const auto modified = std::filesystem::last_write_time(log_files::path(1));
    dialogs.choose_file(QString::fromStdString(log_files::path(1))).click(QMessageBox::Yes);
    EXPECT_TRUE(ErrorHandler::instance().save_log_file());
    EXPECT_EQ(log_files::read(log_files::path(1)), whole_log());
    EXPECT_EQ(std::filesystem::last_write_time(log_files::path(1)), modified);
}

TEST_F(ErrorLogSaving, OntoItselfByALinkedDirectoryChangesNothing)
{
    const std::string link = support::PrivateHome::scratch_directory() + "/link";
    std::filesystem::create_directory_symlink(support::PrivateHome::log_directory(), link);
    dialogs.choose_file(QString::fromStdString(link + "/Tarq_1.log")).click(QMessageBox::Yes);
    EXPECT_TRUE(ErrorHandler::instance().save_log_file());
    EXPECT_EQ(log_files::read(log_files::path(1)), whole_log());
}

TEST_F(ErrorLogSaving, CopyIsForThisUserOnly)
{
    ::umask(0);
    dialogs.choose_file(QString::fromStdString(target()));
    EXPECT_TRUE(ErrorHandler::instance().save_log_file());
    EXPECT_EQ(std::filesystem::perms(0600), std::filesystem::status(target()).permissions());
}

TEST_F(ErrorLogSaving, ReplacesALinkAndNotWhatItLeadsTo)
{
    const support::PlantedFile planted(support::PrivateHome::scratch_directory());
    planted.plant(support::Planted::Link, target());
    dialogs.choose_file(QString::fromStdString(target())).click(QMessageBox::Yes);
    EXPECT_TRUE(ErrorHandler::instance().save_log_file());
    EXPECT_FALSE(std::filesystem::is_symlink(target()));
    EXPECT_EQ(log_files::read(target()), whole_log());
    std::filesystem::remove(target());
    planted.plant(support::Planted::Link, target());
    planted.expect_untouched(target());
}

TEST_F(ErrorLogSaving, ReplacesAPipeWithoutWaitingForAReader)
{
    support::PlantedFile(support::PrivateHome::scratch_directory()).plant(support::Planted::Pipe, target());
    dialogs.choose_file(QString::fromStdString(target())).click(QMessageBox::Yes);
    EXPECT_TRUE(ErrorHandler::instance().save_log_file());
    EXPECT_EQ(log_files::read(target()), whole_log());
}

TEST_F(ErrorLogSaving, IsRequestedWithACaption)
{
    dialogs.click(QMessageBox::No);
    EXPECT_FALSE(ErrorHandler::instance().request_save_log_file("A caption"));
    ASSERT_EQ(dialogs.shown().size(), 1u); // no file is asked for
    const ShownDialog& box = dialogs.shown().front();
    EXPECT_EQ(box.title, "A caption");
    EXPECT_EQ(box.text, "Save error log to file for PKX support");
    EXPECT_EQ(box.icon, QMessageBox::Warning);
    EXPECT_EQ(box.buttons, QMessageBox::Yes | QMessageBox::No);
}

TEST_F(ErrorLogSaving, IsRequestedOverTheActiveWindow)
{
    QWidget window;
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    dialogs.click(QMessageBox::No);
    ErrorHandler::instance().request_save_log_file("A caption");
    ASSERT_EQ(dialogs.shown().size(), 1u);
    EXPECT_EQ(dialogs.shown().front().parent, &window);
}

TEST_F(ErrorLogSaving, ClosedRequestSavesNothing)
{
    dialogs.cancel();
    EXPECT_FALSE(ErrorHandler::instance().request_save_log_file("A caption"));
    EXPECT_EQ(dialogs.shown().size(), 1u);
}

TEST_F(ErrorLogSaving, GrantedRequestSaves)
{
    dialogs.click(QMessageBox::Yes).choose_file(QString::fromStdString(target()));
    EXPECT_TRUE(ErrorHandler::instance().request_save_log_file("A caption"));
    EXPECT_EQ(log_files::read(target()), whole_log());
    EXPECT_EQ(dialogs.shown().size(), 2u);
}

TEST_F(ErrorLogSaving, GrantedRequestWithoutAFileSavesNothing)
{
    dialogs.click(QMessageBox::Yes).cancel();
    EXPECT_FALSE(ErrorHandler::instance().request_save_log_file("A caption"));
    EXPECT_EQ(dialogs.shown().size(), 2u);
}

TEST(ErrorLogSavingWithoutALog, LeavesTheChosenFileAlone)
{
    const std::string elsewhere = support::PrivateHome::scratch_directory() + "/elsewhere";
    std::filesystem::create_directory(elsewhere);
    std::filesystem::create_directory_symlink(::geteuid() == 0 ? elsewhere : "/usr",
        support::PrivateHome::log_directory()); // somebody else's directory: no log
    EXPECT_TRUE(::geteuid() != 0 || ::chown(elsewhere.c_str(), 65534, 65534) == 0);
    const std::string target = support::PrivateHome::scratch_directory() + "/saved.log";
    std::ofstream(target) << "kept";
    support::App app;
    DialogDriver dialogs;
    dialogs.choose_file(QString::fromStdString(target)).click(QMessageBox::Yes);
    EXPECT_FALSE(ErrorHandler::instance().save_log_file());
    EXPECT_EQ("kept", log_files::read(target));
}

} // namespace
