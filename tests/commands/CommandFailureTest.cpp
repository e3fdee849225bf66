#include "commands/FatalErrorProbe.h"
#include "support/App.h"
#include "support/DialogDriver.h"
#include "support/Fakes.h"
#include "support/LogCapture.h"

#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/housekeeping/FailedCommandException.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

using namespace tarqa::housekeeping;
using support::FakeCommand;
using support::FakeProgress;
using support::FatalErrorProbe;
using support::journal;
using support::JournalingReceiver;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

const char* const s_source = "housekeeping/src/AbstractCommand";
const char* const s_unknown = "An unknown serious error has occured in this Command";
const DocumentId s_document = DocumentId::build(5);

std::string text_of(const tarqa::Exception& exception)
{
    std::ostringstream stream;
    stream << exception;
    return stream.str();
}

/// What the fatal errors of the steps leave in the log and on the standard error stream.
struct FatalCase
{
    FakeCommand::Step step;
    std::string log;
    std::string detail;
};

std::string emptied_log(const std::string& text)
{
    return "FATAL ERROR!\nFurther Information: " + text + "\n\n";
}

std::string appended_log(const tarqa::Exception& exception)
{
    return "fatal error!\nCause: tarqa::Exception\nFurther Information: " + text_of(exception);
}

/// A plain exception of the framework or of the libraries below, caught in a do run.
FatalCase exception_case(const FakeCommand::Step& step)
{
    HousekeepingException expected(42, "boom", "tests/Fakes", 7);
    expected.caught_here(s_source, 223);
    return {step, appended_log(expected), "A C++ fatal error has occured : \n" + text_of(expected)};
}

FatalCase unknown_case()
{
    const HousekeepingException expected(2, s_unknown, s_source, 234);
    return {support::throws_unknown(), appended_log(expected),
        "A C++ fatal error has occured : \n" + text_of(expected)};
}

FatalCase std_case()
{
    const std::string text = std::string(s_unknown) + " : boom";
    return {support::throws_std("boom"), emptied_log(text), text + "\n"};
}

/// One do run that throws in do_command() or, if @p early, in remember().
void expect_fatal_do_run(const FatalCase& fatal, bool early = false)
{
    FakeProgress sink;
    FakeCommand command(s_document, "Rotate");
    command.setProgress(&sink);
    (early ? command.on_remember : command.on_do) = fatal.step;
    const JournalingReceiver receiver;
    support::LogCapture log;
    FatalErrorProbe probe;
    AbstractCommand::Execute(&command).run(false);

    std::vector<std::string> expected = {"progress.open(0)", "Rotate.remember"};
    if (!early) {
        expected.push_back("Rotate.do");
    }
    // The outcome is the fatal error's business: the run itself goes on as if it had succeeded.
    for (const char* entry :
        {"exit_main_loop", "Rotate.finished(true)", "progress.close", "CommandMessage(Rotate, 0)"}) {
        expected.push_back(entry);
    }
    EXPECT_EQ(expected, journal().entries());
    EXPECT_EQ(fatal.log + "DO>\tRotate - Succeeded.\n", log.text());
    EXPECT_THAT(probe.standard_error(), HasSubstr("Fatal error!  "));
    EXPECT_THAT(probe.standard_error(), HasSubstr("\nDetail: " + fatal.detail));
    log.take_all();
}

/// One undo run that throws.
void expect_fatal_undo_run(const FakeCommand::Step& step, const std::string& text)
{
    FakeProgress sink;
    FakeCommand command(s_document, "Rotate");
    command.setProgress(&sink);
    command.on_undo = step;
    const JournalingReceiver receiver;
    support::LogCapture log;
    FatalErrorProbe probe;
    AbstractCommand::UnExecute(&command).run(false);
    EXPECT_THAT(journal().entries(),
        ElementsAre("progress.open(0)", "Rotate.undo", "exit_main_loop", "Rotate.finished(true)",
            "progress.close", "CommandMessage(Rotate, 1)"));
    EXPECT_EQ(emptied_log(text) + "UNDO>\tRotate - Succeeded.\n", log.text());
    EXPECT_THAT(probe.standard_error(), HasSubstr("\nDetail: " + text + "\n"));
    log.take_all();
}

} // namespace

// Expected failures

TEST(AbstractCommand, FailureIsReportedAndRolledBack)
{
    FakeProgress sink;
    FakeCommand command(s_document, "Rotate");
    command.setProgress(&sink);
    command.on_do = support::throws_failure("no room");
    const JournalingReceiver receiver;
    support::LogCapture log;
    FatalErrorProbe probe;
    AbstractCommand::Execute(&command).run(false);
    EXPECT_THAT(journal().entries(),
        ElementsAre("progress.open(0)", "Rotate.remember", "Rotate.do", "Rotate.rollback",
            "Rotate.finished(false)", "progress.close", "CommandMessage(Rotate, 3)"));
    EXPECT_EQ("TARQA EXCEPTION THROWN:\n" + text_of(FailedCommandException(42, "no room", "tests/Fakes", 7))
            + "\n\nDO>\tRotate - Failed.\n",
        log.text());
    EXPECT_EQ(0, FatalErrorProbe::exits());
    EXPECT_EQ("", probe.standard_error());
    log.take_all();
}

TEST(AbstractCommand, FailureWhileRememberingIsRolledBackToo)
{
    FakeCommand command(s_document, "Rotate");
    command.on_remember = support::throws_failure("no room");
    const JournalingReceiver receiver;
    support::LogCapture log;
    AbstractCommand::Execute(&command).run(true);
    EXPECT_THAT(journal().entries(),
        ElementsAre("Rotate.remember", "Rotate.rollback", "Rotate.finished(false)",
            "CommandMessage(Rotate, 3, redo)"));
    EXPECT_THAT(log.text(), HasSubstr("DO>\tRotate - Failed.\n"));
    log.take_all();
}

TEST(AbstractCommand, FailureIsShownInABoxWithOk)
{
    const support::App app;
    support::DialogDriver dialogs;
    dialogs.click(QMessageBox::Ok);
    FakeCommand command(s_document, "Rotate");
    command.on_do = support::throws_failure("no room");
    command.on_rollback
        = [&dialogs] { EXPECT_EQ(1u, dialogs.shown().size()); }; // first told, then taken back
    support::LogCapture log;
    AbstractCommand::Execute(&command).run(false);
    ASSERT_EQ(1u, dialogs.shown().size());
    EXPECT_EQ("Error", dialogs.shown()[0].title);
    EXPECT_EQ("no room\n", dialogs.shown()[0].text);
    EXPECT_EQ(QMessageBox::StandardButtons(QMessageBox::Ok), dialogs.shown()[0].buttons);
    EXPECT_EQ(1, journal().count("Rotate.rollback"));
    log.take_all();
}

TEST(AbstractCommand, CancellationShowsNoBox)
{
    const support::App app;
    const support::DialogDriver dialogs; // fails the test if one appears
    FakeCommand command(s_document, "Rotate");
    command.on_do = support::throws_cancel();
    AbstractCommand::Execute(&command).run(false);
    EXPECT_EQ(1, journal().count("Rotate.rollback"));
    EXPECT_TRUE(dialogs.shown().empty());
}

TEST(AbstractCommand, FailureDoesNotForgetARequestToCancel)
{
    FakeProgress sink;
    FakeCommand command(s_document, "Rotate");
    command.setProgress(&sink);
    command.request_cancel();
    command.on_do = support::throws_failure("no room");
    support::LogCapture log;
    AbstractCommand::Execute(&command).run(false);
    EXPECT_THROW(command.progress(1), tarqa::Exception);
    log.take_all();
}

// Everything else in a do run

TEST(AbstractCommand, PlainHousekeepingExceptionIsFatal)
{
    expect_fatal_do_run(exception_case(support::throws_housekeeping("boom")));
}

TEST(AbstractCommand, ExceptionOfTheLibrariesBelowIsFatal)
{
    expect_fatal_do_run(exception_case(support::throws_tarqa("boom")));
}

TEST(AbstractCommand, StandardExceptionIsFatalAndStandsAloneInTheLog)
{
    expect_fatal_do_run(std_case());
}

TEST(AbstractCommand, AnythingElseThrownIsFatal)
{
    expect_fatal_do_run(unknown_case());
}

TEST(AbstractCommand, PlainHousekeepingExceptionWhileRememberingIsFatal)
{
    expect_fatal_do_run(exception_case(support::throws_housekeeping("boom")), true);
}

TEST(AbstractCommand, StandardExceptionWhileRememberingIsFatal)
{
    expect_fatal_do_run(std_case(), true);
}

TEST(AbstractCommand, AnythingElseThrownWhileRememberingIsFatal)
{
    expect_fatal_do_run(unknown_case(), true);
}

TEST(AbstractCommand, TextOfAFatalErrorNamesTheLogFile)
{
    FakeCommand command(s_document, "Rotate");
    command.on_do = support::throws_std("boom");
    support::LogCapture log;
    FatalErrorProbe probe;
    AbstractCommand::Execute(&command).run(false);
    EXPECT_THAT(probe.standard_error(),
        HasSubstr(" has terminated unexpectedly. Please contact Velmor Stade with a bug report."
                  "A full failure report can be found in the file : "
            + ErrorProtocol::instance().log_filename()
            + "\nDetail: An unknown serious error has occured in this Command : boom\n\n\n\n"));
    log.take_all();
}

TEST(AbstractCommand, FatalErrorEmptiesWhatWasLoggedBefore)
{
    FakeCommand fine(s_document, "Move");
    FakeCommand command(s_document, "Rotate");
    command.on_do = support::throws_std("boom");
    support::LogCapture log;
    const FatalErrorProbe probe;
    AbstractCommand::Execute(&fine).run(false);
    EXPECT_EQ("DO>\tMove - Succeeded.\n", log.text());
    AbstractCommand::Execute(&command).run(false);
    EXPECT_EQ(emptied_log(std::string(s_unknown) + " : boom") + "DO>\tRotate - Succeeded.\n", log.text());
    log.take_all();
}

TEST(AbstractCommand, FatalErrorWithoutAHookReturns)
{
    FakeCommand command(s_document, "Rotate");
    command.on_do = support::throws_std("boom");
    support::LogCapture log;
    const FatalErrorProbe probe;
    ErrorHandler::exit_main_loop_with(nullptr);
    AbstractCommand::Execute(&command).run(false);
    EXPECT_EQ(1, journal().count("Rotate.finished(true)"));
    EXPECT_EQ(0, FatalErrorProbe::exits());
    log.take_all();
}

// Undo runs

TEST(AbstractCommand, UndoDoesNotDistinguishCancellation)
{
    expect_fatal_undo_run(support::throws_cancel(), std::string(s_unknown) + " UNDO : cancelled");
}

TEST(AbstractCommand, UndoDoesNotDistinguishFailure)
{
    expect_fatal_undo_run(support::throws_failure("no room"), std::string(s_unknown) + " UNDO : no room");
}

TEST(AbstractCommand, HousekeepingExceptionOfAnUndoIsFatal)
{
    expect_fatal_undo_run(support::throws_housekeeping("boom"), std::string(s_unknown) + " UNDO : boom");
}

TEST(AbstractCommand, ExceptionOfTheLibrariesBelowInAnUndoIsFatal)
{
    expect_fatal_undo_run(support::throws_tarqa("boom"), std::string(s_unknown) + " UNDO : boom");
}

TEST(AbstractCommand, StandardExceptionOfAnUndoIsFatal)
{
    expect_fatal_undo_run(support::throws_std("boom"), std::string(s_unknown) + " UNDO : boom");
}

TEST(AbstractCommand, AnythingElseThrownByAnUndoIsFatal)
{
    expect_fatal_undo_run(support::throws_unknown(), std::string(s_unknown) + " UNDO");
}
