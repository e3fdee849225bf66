#include "LogFiles.h"
#include "support/App.h"
#include "support/DialogDriver.h"
#include "support/LogCapture.h"
#include "support/PlantedFile.h"
#include "support/PrivateHome.h"

#include <tarqa/housekeeping/ErrorHandler.h>
#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/housekeeping/LastWords.h>

#include <QtWidgets/QWidget>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include <sys/stat.h>

// What a program makes of the last words of earlier ones.

namespace {

namespace fs = std::filesystem;
using support::App;
using support::DialogDriver;
using support::PrivateHome;
using tarqa::housekeeping::ErrorHandler;
using tarqa::housekeeping::ErrorProtocol;
using tarqa::housekeeping::LastWords;
using testing::ElementsAre;
using testing::IsEmpty;

std::string target()
{
    return PrivateHome::scratch_directory() + "/saved.log";
}

/// Takes the logs away that it made: they are none of the test's own.
class LastWordsOfEarlierRuns : public testing::Test
{
protected:
    ~LastWordsOfEarlierRuns() override
    {
        for (const std::string& log : m_logs) {
            fs::remove(log);
        }
    }

    /// The files of a run that died, so many minutes ago. @return that of the words
    std::string leave(const std::string& log_name, const std::string& words, int minutes)
    {
        const std::string log = PrivateHome::log_directory() + "/" + log_name;
        fs::create_directories(PrivateHome::log_directory());
        const auto time = fs::file_time_type::clock::now() - std::chrono::minutes(minutes);
        std::ofstream(log) << "log of " << log_name << "\n";
        fs::last_write_time(log, time);
        std::ofstream(log + ".lastwords") << words;
        fs::last_write_time(log + ".lastwords", time);
        m_logs.push_back(log);
        return log + ".lastwords";
    }

private:
    std::vector<std::string> m_logs;
};

} // namespace

TEST_F(LastWordsOfEarlierRuns, AreListedTheOldestFirst)
{
    const std::string young = leave("Tarq_1.log", "young", 1);
    const std::string old = leave("Tarq_2.log", "old", 9);
    const std::string between = leave("Tarq_12.log", "between", 5);
    EXPECT_THAT(LastWords::left_behind(), ElementsAre(old, between, young));
}

TEST_F(LastWordsOfEarlierRuns, AreThoseOfThisProductOnly)
{
    leave("Other_1.log", "words", 1);
    leave("Tarq_1.log", "", 1);
    leave("Tarq_x.log", "words", 1);
    fs::rename(leave("Tarq_3.log", "words", 1), PrivateHome::log_directory() + "/Tarq_3.log.lastwords.old");
    fs::create_symlink("/etc/passwd", PrivateHome::log_directory() + "/Tarq_4.log.lastwords");
    fs::create_directory(PrivateHome::log_directory() + "/Tarq_5.log.lastwords");
    EXPECT_THAT(LastWords::left_behind(), IsEmpty());
}

TEST_F(LastWordsOfEarlierRuns, NoneAskNothing)
{
    App app;
    DialogDriver dialogs;
    EXPECT_FALSE(LastWords::offer());
    EXPECT_THAT(dialogs.shown(), IsEmpty());
}

TEST_F(LastWordsOfEarlierRuns, AreSavedWithTheirLogs)
{
    const std::string second = leave("Tarq_2.log", "words 2\n", 5);
    const std::string first = leave("Tarq_1.log", "words 1\n", 9);
    App app;
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Yes).choose_file(QString::fromStdString(target()));
    EXPECT_TRUE(LastWords::offer());
    EXPECT_EQ(log_files::read(target()), "words 1\nlog of Tarq_1.log\nwords 2\nlog of Tarq_2.log\n");
    ASSERT_EQ(dialogs.shown().size(), 2u);
    EXPECT_EQ(dialogs.shown()[0].title, "The program ended unexpectedly");
    EXPECT_EQ(dialogs.shown()[0].buttons, QMessageBox::Yes | QMessageBox::No);
    EXPECT_EQ(dialogs.shown()[1].file, "Tarq_Error.log");
    EXPECT_TRUE(dialogs.shown()[1].saves);
    EXPECT_THAT(LastWords::left_behind(), IsEmpty());
    EXPECT_EQ(log_files::read(first + ".old"), "words 1\n");
    EXPECT_EQ(log_files::read(second + ".old"), "words 2\n");
}

TEST_F(LastWordsOfEarlierRuns, LogOfALaterRunIsNotTakenForTheirs)
{
    const std::string words = leave("Tarq_1.log", "words\n", 9);
    fs::last_write_time(PrivateHome::log_directory() + "/Tarq_1.log", fs::file_time_type::clock::now());
    App app;
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Yes).choose_file(QString::fromStdString(target()));
    EXPECT_TRUE(LastWords::offer());
    EXPECT_EQ(log_files::read(target()), "words\n");
}

TEST_F(LastWordsOfEarlierRuns, LogThatIsALinkIsNotSavedWithThem)
{
    leave("Tarq_1.log", "words\n", -5); // later than what the link leads to
    const std::string log = PrivateHome::log_directory() + "/Tarq_1.log";
    fs::remove(log);
    const support::PlantedFile planted(PrivateHome::scratch_directory());
    planted.plant(support::Planted::Link, log);
    App app;
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Yes).choose_file(QString::fromStdString(target()));
    EXPECT_TRUE(LastWords::offer());
    EXPECT_EQ(log_files::read(target()), "words\n");
}

TEST_F(LastWordsOfEarlierRuns, PipesAreNeitherWaitedForNorListed)
{
    leave("Tarq_1.log", "words\n", 1);
    const std::string log = PrivateHome::log_directory() + "/Tarq_1.log";
    fs::remove(log);
    const support::PlantedFile planted(PrivateHome::scratch_directory());
    planted.plant(support::Planted::Pipe, log);
    planted.plant(support::Planted::Pipe, PrivateHome::log_directory() + "/Tarq_2.log.lastwords");
    planted.plant(support::Planted::HardLink, PrivateHome::log_directory() + "/Tarq_3.log.lastwords");
    App app;
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Yes).choose_file(QString::fromStdString(target()));
    EXPECT_TRUE(LastWords::offer());
    EXPECT_EQ(log_files::read(target()), "words\n");
}

TEST_F(LastWordsOfEarlierRuns, CopyIsForThisUserOnly)
{
    leave("Tarq_1.log", "words\n", 1);
    std::ofstream(target()) << "before";
    ::chmod(target().c_str(), 0666);
    App app;
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Yes).choose_file(QString::fromStdString(target())).click(QMessageBox::Yes);
    EXPECT_TRUE(LastWords::offer());
    EXPECT_EQ(fs::perms(0600), fs::status(target()).permissions());
    EXPECT_EQ(log_files::read(target()), "words\nlog of Tarq_1.log\n");
}

TEST_F(LastWordsOfEarlierRuns, CopyReplacesALinkAndNotWhatItLeadsTo)
{
    leave("Tarq_1.log", "words\n", 1);
    const support::PlantedFile planted(PrivateHome::scratch_directory());
    planted.plant(support::Planted::Link, target());
    App app;
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Yes).choose_file(QString::fromStdString(target())).click(QMessageBox::Yes);
    EXPECT_TRUE(LastWords::offer());
    EXPECT_FALSE(fs::is_symlink(target()));
    fs::remove(target());
    planted.plant(support::Planted::Link, target());
    planted.expect_untouched(target());
}

TEST_F(LastWordsOfEarlierRuns, DeclinedAreNotOfferedAgain)
{
    const std::string words = leave("Tarq_1.log", "words\n", 9);
    App app;
    DialogDriver dialogs;
    dialogs.click(QMessageBox::No);
    EXPECT_FALSE(LastWords::offer());
    EXPECT_FALSE(LastWords::offer());
    EXPECT_EQ(log_files::read(words + ".old"), "words\n");
}

TEST_F(LastWordsOfEarlierRuns, AreOfferedAgainWhenNoFileWasChosen)
{
    const std::string words = leave("Tarq_1.log", "words\n", 9);
    App app;
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Yes).cancel();
    EXPECT_FALSE(LastWords::offer());
    EXPECT_THAT(LastWords::left_behind(), ElementsAre(words));
}

TEST_F(LastWordsOfEarlierRuns, AreOfferedAgainWhenTheyCouldNotBeSaved)
{
    ErrorProtocol::instance(); // the first log is this program's own
    const std::string words = leave("Tarq_2.log", "words\n", 9);
    fs::remove(PrivateHome::log_directory() + "/Tarq_2.log"); // somebody tidied up
    support::LogCapture log;
    const std::string file = PrivateHome::scratch_directory() + "/missing/saved.log";
    App app;
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Yes).choose_file(QString::fromStdString(file)).click(QMessageBox::Ok);
    EXPECT_FALSE(LastWords::offer());
    EXPECT_EQ(dialogs.shown().back().text, QString::fromStdString(file + " cannot be written"));
    EXPECT_TRUE(log.take(file + " cannot be written"));
    EXPECT_THAT(LastWords::left_behind(), ElementsAre(words));
}

TEST_F(LastWordsOfEarlierRuns, AreNotAskedForWhereNobodySeesIt)
{
    const std::string words = leave("Tarq_1.log", "words\n", 9);
    App app;
    DialogDriver dialogs;
    ErrorHandler::show_dialogs(false);
    EXPECT_FALSE(LastWords::offer());
    EXPECT_THAT(dialogs.shown(), IsEmpty());
    EXPECT_THAT(LastWords::left_behind(), ElementsAre(words));
}

TEST_F(LastWordsOfEarlierRuns, QuestionGoesWithItsWindow)
{
    const std::string words = leave("Tarq_1.log", "words\n", 9);
    App app;
    auto p_window = std::make_unique<QWidget>();
    p_window->show();
    p_window->activateWindow();
    DialogDriver dialogs;
    dialogs.answer([&](QDialog& dialog) {
        EXPECT_EQ(dialog.parentWidget(), p_window.get());
        p_window.reset();
    });
    while (!QApplication::activeWindow()) {
        app.application().processEvents();
    }
    EXPECT_FALSE(LastWords::offer());
    EXPECT_THAT(LastWords::left_behind(), ElementsAre(words));
}
