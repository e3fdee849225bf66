#include "../application/LogFiles.h"
#include "faults/FaultRounds.h"
#include "support/App.h"
#include "support/DialogDriver.h"
#include "support/LogCapture.h"
#include "support/PrivateHome.h"

#include <tarqa/housekeeping/ErrorHandler.h>
#include <tarqa/housekeeping/LastWords.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

// What the user gets who saves the log when the system refuses its calls.

namespace {

namespace fs = std::filesystem;
using faults::Call;
using faults::Fault;
using faults::FaultRounds;
using support::DialogDriver;
using support::LogCapture;
using support::PrivateHome;
using tarqa::housekeeping::ErrorHandler;
using tarqa::housekeeping::LastWords;

const char* const s_old = "what was there before";

/// An application with a log.
class SavingUnderFaults : public testing::Test
{
protected:
    SavingUnderFaults() { ErrorHandler::instance().report_exception("entry"); }
    ~SavingUnderFaults() override { m_log.take_all(); }

    static std::string directory() { return PrivateHome::scratch_directory() + "/target"; }
    static std::string target() { return directory() + "/saved.log"; }

    static void begin_round()
    {
        fs::remove_all(directory());
        fs::create_directory(directory());
        std::ofstream(target()) << s_old;
    }
    static std::vector<std::string> names()
    {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(directory())) {
            names.push_back(entry.path().filename().string());
        }
        return names;
    }

    /// Saves the log in rounds with faults in files whose path holds @p path_part.
    void save_log(const std::string& name, const std::string& path_part)
    {
        bool saved = false;
        FaultRounds rounds(name, path_part);
        rounds.prepare = [] { begin_round(); };
        rounds.act = [&] {
            DialogDriver dialogs;
            dialogs.choose_file(QString::fromStdString(target())).click(QMessageBox::Yes);
            saved = ErrorHandler::instance().save_log_file();
        };
        rounds.check = [&](const Fault& fault) {
            const bool is_there = fs::exists(target());
            const std::string content = log_files::read(target());
            EXPECT_TRUE(saved || fault.error != 0 || fault.manner != faults::Manner::Once);
            if (saved) {
                EXPECT_EQ(content, log_files::read(log_files::path(1)));
            } else {
                EXPECT_TRUE(!is_there || content == s_old) << content.size();
            }
            const bool may_stay = rounds.point() && rounds.point()->call == Call::Remove;
            EXPECT_TRUE(names().size() == (is_there ? 1u : 0u) || may_stay) << names().front();
        };
        rounds.run();
    }

private:
    LogCapture m_log;
    support::App m_app;
};

} // namespace

TEST_F(SavingUnderFaults, LogIsSavedWholeOrNotAtAll)
{
    save_log("SavingASmallLog", "/scratch/target");
    ErrorHandler::instance().report_exception(std::string(50000, 'x')); // more than Qt writes at a time
    save_log("SavingALargeLog", "/scratch/target");
}

TEST_F(SavingUnderFaults, LogThatCannotBeReadIsNotSaved)
{
    save_log("SavingTheLogSource", "Tarq_1.log");
}

TEST_F(SavingUnderFaults, LastWordsAreSavedWholeOrTheOldFileStays)
{
    const std::string words = PrivateHome::log_directory() + "/Tarq_2.log.lastwords";
    struct Case
    {
        const char* name;
        const char* path_part;
        std::size_t length;
    };
    for (const Case& words_case :
        {Case{"SavingFewLastWords", "/scratch/target", 400},
            Case{"SavingLastWords", "/scratch/target", 40000}, Case{"ReadingLastWords", "Tarq_2.log", 400}}) {
        const std::string words_text(words_case.length, 'w');
        bool saved = false;
        FaultRounds rounds(words_case.name, words_case.path_part);
        rounds.prepare = [&] {
            begin_round();
            fs::remove(words + ".old");
            std::ofstream(words) << words_text;
        };
        rounds.act = [&] {
            DialogDriver dialogs;
            dialogs.click(QMessageBox::Yes)
                .choose_file(QString::fromStdString(target()))
                .click(QMessageBox::Yes) // it exists
                .click(QMessageBox::Ok); // that it cannot be written
            saved = LastWords::offer();
            if (saved) { // the last answer is for nobody
                ErrorHandler::instance().message("title", "text", QMessageBox::Ok);
            }
        };
        rounds.check = [&](const Fault& fault) {
            EXPECT_EQ(log_files::read(target()), saved ? words_text : s_old);
            // What cannot be put in its place can perhaps not be removed either.
            EXPECT_TRUE(names().size() == 1u || fault.manner == faults::Manner::FromThenOn);
            // They are offered again unless they were saved.
            EXPECT_TRUE(saved || fs::exists(words));
            EXPECT_TRUE(fs::exists(words) || fs::exists(words + ".old"));
        };
        rounds.run();
    }
    fs::remove(words);
    fs::remove(words + ".old");
}
