#include "support/Fakes.h"
#include "support/LogCapture.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/HousekeepingException.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>
#include <utility>
#include <vector>

using namespace tarqa::housekeeping;
using support::FakeCommand;
using support::FakeProgress;
using support::journal;
using support::JournalingReceiver;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const DocumentId s_document = DocumentId::build(5);

void execute(FakeCommand& command, bool redo = false)
{
    AbstractCommand::Execute(&command).run(redo);
}

void unexecute(FakeCommand& command, bool redo = false)
{
    AbstractCommand::UnExecute(&command).run(redo);
}

/// A sink that fails when it is closed.
class StuckProgress : public FakeProgress
{
public:
    explicit StuckProgress(const FakeCommand::Step& failure)
        : m_failure(failure)
    { }
    void close_run() override
    {
        FakeProgress::close_run();
        m_failure();
    }

private:
    FakeCommand::Step m_failure;
};

/// A sink that changes the name of its command when it is opened.
class RenamingProgress : public FakeProgress
{
public:
    explicit RenamingProgress(FakeCommand& command)
        : m_command(command)
    { }
    void open_run(unsigned int) override { m_command.setName("Turn"); }

private:
    FakeCommand& m_command;
};

} // namespace

TEST(AbstractCommand, DoRunHasAFixedOrder)
{
    FakeProgress sink;
    FakeCommand command(s_document, "Rotate");
    command.setProgress(&sink);
    command.on_do = [&command] { command.progress(50); };
    const JournalingReceiver receiver;
    execute(command);
    EXPECT_THAT(journal().entries(),
        ElementsAre("progress.open(0)", "Rotate.remember", "Rotate.do", "progress.percentage(50)",
            "Rotate.finished(true)", "progress.close", "CommandMessage(Rotate, 0)"));
}

TEST(AbstractCommand, RedoRunHasTheSameOrderAndSaysRedo)
{
    FakeCommand command(s_document, "Rotate");
    const JournalingReceiver receiver;
    support::LogCapture log;
    execute(command, true);
    EXPECT_THAT(journal().entries(),
        ElementsAre(
            "Rotate.remember", "Rotate.do", "Rotate.finished(true)", "CommandMessage(Rotate, 0, redo)"));
    EXPECT_EQ("DO>\tRotate - Succeeded.\n", log.text());
}

TEST(AbstractCommand, UndoRunHasAFixedOrder)
{
    FakeProgress sink;
    FakeCommand command(s_document, "Rotate");
    command.setProgress(&sink);
    const JournalingReceiver receiver;
    unexecute(command);
    EXPECT_THAT(journal().entries(),
        ElementsAre("progress.open(0)", "Rotate.undo", "Rotate.finished(true)", "progress.close",
            "CommandMessage(Rotate, 1)"));
}

TEST(AbstractCommand, UndoRunPassesTheRedoFlagOn)
{
    FakeCommand command(s_document, "Rotate");
    const JournalingReceiver receiver;
    unexecute(command, true);
    EXPECT_EQ(1, journal().count("CommandMessage(Rotate, 1, redo)"));
}

TEST(AbstractCommand, DoRunWritesOneProtocolLine)
{
    FakeCommand command(s_document, "Rotate");
    command.setDescription("3 faults");
    support::LogCapture log;
    execute(command);
    EXPECT_EQ("DO>\tRotate: 3 faults - Succeeded.\n", log.text());
}

TEST(AbstractCommand, UndoRunWritesOneProtocolLine)
{
    FakeCommand command(s_document, "Rotate");
    command.setDescription("3 faults");
    support::LogCapture log;
    unexecute(command);
    command.setDescription("");
    unexecute(command);
    EXPECT_EQ("UNDO>\tRotate: 3 faults - Succeeded.\nUNDO>\tRotate - Succeeded.\n", log.text());
}

TEST(AbstractCommand, ProtocolHasTheNameOfTheStartAndTheDescriptionOfTheEnd)
{
    FakeCommand command(s_document, "Rotate");
    command.on_remember = [&command] { command.setName("Turn"); };
    command.on_do = [&command] { command.setDescription("3 faults"); };
    command.on_finished = [&command] { command.appendDescription("done"); };
    support::LogCapture log;
    execute(command);
    EXPECT_EQ("DO>\tRotate: 3 faults, done - Succeeded.\n", log.text());
}

TEST(AbstractCommand, ProtocolOfUndoHasTheNameOfTheStartAndTheDescriptionOfTheEnd)
{
    FakeCommand command(s_document, "Rotate");
    command.on_undo = [&command] {
        command.setName("Turn");
        command.setDescription("3 faults");
    };
    command.on_finished = [&command] { command.appendDescription("undone"); };
    support::LogCapture log;
    unexecute(command);
    EXPECT_EQ("UNDO>\tRotate: 3 faults, undone - Succeeded.\n", log.text());
}

TEST(AbstractCommand, ProtocolHasTheNameFromBeforeTheProgressIsOpened)
{
    FakeCommand command(s_document, "Rotate");
    RenamingProgress sink(command);
    command.setProgress(&sink);
    support::LogCapture log;
    execute(command);
    command.setName("Rotate");
    unexecute(command);
    EXPECT_EQ("DO>\tRotate - Succeeded.\nUNDO>\tRotate - Succeeded.\n", log.text());
}

TEST(AbstractCommand, ProtocolOfAnyMomentHasThePresentName)
{
    FakeCommand command(s_document, "Rotate");
    EXPECT_EQ("DO>\tRotate - Succeeded.\n", command.protocol("DO>", true));
    command.setName("Turn");
    command.setDescription("3 faults");
    EXPECT_EQ("UNDO>\tTurn: 3 faults - Failed.\n", command.protocol("UNDO>", false));
}

TEST(AbstractCommand, ProtocolKeepsPlaceholdersAndOtherAlphabets)
{
    FakeCommand command(s_document, "%1 Brønn %2");
    command.setDescription("100%3");
    support::LogCapture log;
    execute(command);
    EXPECT_EQ("DO>\t%1 Brønn %2: 100%3 - Succeeded.\n", log.text());
}

TEST(AbstractCommand, SubscribersRunBeforeTheProtocolIsWritten)
{
    FakeCommand command(s_document, "Rotate");
    JournalingReceiver receiver;
    support::LogCapture log;
    std::vector<std::string> texts;
    receiver.on_command = [&](CommandMessage&) {
        texts.push_back(log.text());
        command.setDescription("too late");
    };
    execute(command);
    unexecute(command);
    // The text was collected before the message was sent.
    EXPECT_THAT(texts, ElementsAre("", "DO>\tRotate - Succeeded.\n"));
    EXPECT_EQ("DO>\tRotate - Succeeded.\nUNDO>\tRotate: too late - Succeeded.\n", log.text());
}

TEST(AbstractCommand, MessageTellsIdsCommandAndOutcome)
{
    FakeCommand command(s_document, "Rotate");
    JournalingReceiver receiver;
    int messages = 0;
    receiver.on_command = [&](CommandMessage& message) {
        ++messages;
        EXPECT_EQ(command.id(), message.id());
        EXPECT_EQ(&command, message.command());
        EXPECT_EQ(s_document, message.document_id());
    };
    execute(command);
    unexecute(command);
    EXPECT_EQ(2, messages);
}

TEST(AbstractCommand, RunsWithoutASinkReportNoProgress)
{
    FakeCommand command(s_document, "Rotate");
    command.on_do = [&command] { command.progress(50); };
    execute(command);
    unexecute(command);
    EXPECT_EQ(0, journal().count("progress"));
}

TEST(AbstractCommand, OpenAndCloseOfARunGoToTheSameSink)
{
    FakeProgress first("first");
    FakeProgress second("second");
    FakeCommand command(s_document, "Rotate");
    command.setProgress(&first);
    command.on_do = [&] { command.setProgress(&second); };
    execute(command);
    EXPECT_EQ(1, journal().count("first.open(0)"));
    EXPECT_EQ(1, journal().count("first.close"));
    EXPECT_EQ(0, journal().count("second.close"));

    command.setProgress(&first);
    command.on_undo = [&] { command.setProgress(nullptr); };
    unexecute(command);
    EXPECT_EQ(2, journal().count("first.open(0)"));
    EXPECT_EQ(2, journal().count("first.close"));
}

// Cancellation

TEST(AbstractCommand, CancelledRunIsRolledBackAndFails)
{
    FakeProgress sink;
    FakeCommand command(s_document, "Rotate");
    command.setProgress(&sink);
    command.setDescription("3 faults");
    command.on_do = [&command] {
        command.progress(10);
        command.request_cancel();
        command.progress(20);
        journal().add("never");
    };
    const JournalingReceiver receiver;
    support::LogCapture log;
    execute(command);
    EXPECT_THAT(journal().entries(),
        ElementsAre("progress.open(0)", "Rotate.remember", "Rotate.do", "progress.percentage(10)",
            "Rotate.rollback", "Rotate.finished(false)", "progress.close", "CommandMessage(Rotate, 3)"));
    EXPECT_EQ("DO>\tRotate: 3 faults - Failed.\n", log.text()); // and nothing else
    EXPECT_FALSE(TestAccess::cancel_requested(command));
}

TEST(AbstractCommand, RequestIsForgottenAfterTheRollback)
{
    FakeProgress sink;
    FakeCommand command(s_document, "Rotate");
    command.setProgress(&sink);
    command.request_cancel();
    command.on_do = [&command] { command.progress(50); };
    bool requested = false;
    command.on_rollback = [&] { requested = TestAccess::cancel_requested(command); };
    bool finished_requested = true;
    command.on_finished = [&] { finished_requested = TestAccess::cancel_requested(command); };
    execute(command);
    EXPECT_TRUE(requested);
    EXPECT_FALSE(finished_requested);
}

TEST(AbstractCommand, CancelledCommandRunsAgain)
{
    FakeProgress sink;
    FakeCommand command(s_document, "Rotate");
    command.setProgress(&sink);
    command.on_do = [&command] { command.progress(50); };
    command.request_cancel();
    const JournalingReceiver receiver;
    support::LogCapture log;
    execute(command);
    execute(command, true);
    EXPECT_EQ(1, journal().count("CommandMessage(Rotate, 3)"));
    EXPECT_EQ(1, journal().count("CommandMessage(Rotate, 0, redo)"));
    EXPECT_EQ("DO>\tRotate - Failed.\nDO>\tRotate - Succeeded.\n", log.text());
}

TEST(AbstractCommand, CancelledRedoIsAFailedRedo)
{
    FakeCommand command(s_document, "Rotate");
    command.on_do = support::throws_cancel();
    const JournalingReceiver receiver;
    execute(command, true);
    EXPECT_EQ(1, journal().count("CommandMessage(Rotate, 3, redo)"));
}

TEST(AbstractCommand, CancellationWithoutASinkIsNotNoticed)
{
    FakeCommand command(s_document, "Rotate");
    command.on_do = [&command] { command.progress(50); };
    command.request_cancel();
    const JournalingReceiver receiver;
    execute(command);
    EXPECT_EQ(1, journal().count("CommandMessage(Rotate, 0)"));
    EXPECT_EQ(0, journal().count("Rotate.rollback"));
    EXPECT_TRUE(TestAccess::cancel_requested(command)); // no run ended in cancellation
}

TEST(AbstractCommand, OpeningTheProgressDoesNotTestForCancellation)
{
    FakeProgress sink;
    FakeCommand command(s_document, "Rotate");
    command.setProgress(&sink);
    command.request_cancel();
    const JournalingReceiver receiver;
    execute(command); // reports no progress
    EXPECT_EQ(1, journal().count("CommandMessage(Rotate, 0)"));
    EXPECT_EQ(0, journal().count("progress.percentage"));
}

TEST(AbstractCommand, UndoIsNotCancelled)
{
    FakeProgress sink;
    FakeCommand command(s_document, "Rotate");
    command.setProgress(&sink);
    command.request_cancel();
    const JournalingReceiver receiver;
    support::LogCapture log;
    unexecute(command);
    EXPECT_EQ("UNDO>\tRotate - Succeeded.\n", log.text());
    EXPECT_EQ(1, journal().count("CommandMessage(Rotate, 1)"));
    EXPECT_TRUE(TestAccess::cancel_requested(command));
}

TEST(AbstractCommand, CancellationWhileRememberingIsRolledBackToo)
{
    FakeCommand command(s_document, "Rotate");
    command.on_remember = support::throws_cancel();
    const JournalingReceiver receiver;
    support::LogCapture log;
    execute(command);
    EXPECT_THAT(journal().entries(),
        ElementsAre(
            "Rotate.remember", "Rotate.rollback", "Rotate.finished(false)", "CommandMessage(Rotate, 3)"));
    EXPECT_EQ("DO>\tRotate - Failed.\n", log.text());
}

// What leaves a run

TEST(AbstractCommand, ExceptionOfARollbackLeavesTheRun)
{
    for (const FakeCommand::Step& failure : {support::throws_cancel(), support::throws_failure("no room")}) {
        journal().clear();
        FakeCommand command(s_document, "Rotate");
        command.on_do = failure;
        command.on_rollback = support::throws_std("rollback");
        const JournalingReceiver receiver;
        support::LogCapture log;
        EXPECT_THROW(execute(command), std::runtime_error);
        EXPECT_EQ(0, journal().count("Rotate.finished"));
        EXPECT_EQ(0, journal().count("CommandMessage"));
        EXPECT_EQ(std::string::npos, log.text().find("DO>"));
        log.take_all(); // the failure was reported before
    }
}

TEST(AbstractCommand, ExceptionOfFinishedLeavesTheRun)
{
    FakeCommand command(s_document, "Rotate");
    command.on_finished = support::throws_std("finished");
    const JournalingReceiver receiver;
    support::LogCapture log;
    EXPECT_THROW(execute(command), std::runtime_error);
    EXPECT_THROW(unexecute(command), std::runtime_error);
    EXPECT_EQ(0, journal().count("CommandMessage"));
    EXPECT_EQ("", log.text());
}

TEST(AbstractCommand, ExceptionOfASubscriberLeavesTheRun)
{
    FakeCommand command(s_document, "Rotate");
    JournalingReceiver receiver;
    receiver.on_command = [](CommandMessage&) { throw std::runtime_error("subscriber"); };
    support::LogCapture log;
    EXPECT_THROW(execute(command), std::runtime_error);
    EXPECT_THROW(unexecute(command), std::runtime_error);
    EXPECT_EQ("", log.text());
}

TEST(AbstractCommand, SinkIsClosedWhenAnExceptionLeavesTheRun)
{
    FakeProgress sink;
    FakeCommand command(s_document, "Rotate");
    command.setProgress(&sink);
    command.on_finished = support::throws_std("finished");
    EXPECT_THROW(execute(command), std::runtime_error);
    EXPECT_THAT(journal().entries(),
        ElementsAre(
            "progress.open(0)", "Rotate.remember", "Rotate.do", "Rotate.finished(true)", "progress.close"));

    journal().clear();
    EXPECT_THROW(unexecute(command), std::runtime_error);
    EXPECT_THAT(journal().entries(),
        ElementsAre("progress.open(0)", "Rotate.undo", "Rotate.finished(true)", "progress.close"));

    journal().clear();
    command.on_do = support::throws_cancel();
    command.on_rollback = support::throws_std("rollback");
    EXPECT_THROW(execute(command), std::runtime_error);
    EXPECT_THAT(journal().entries(),
        ElementsAre("progress.open(0)", "Rotate.remember", "Rotate.do", "Rotate.rollback", "progress.close"));
}

TEST(AbstractCommand, ExceptionOfAClosingSinkLeavesTheRun)
{
    StuckProgress sink(support::throws_std("close"));
    FakeCommand command(s_document, "Rotate");
    command.setProgress(&sink);
    const JournalingReceiver receiver;
    support::LogCapture log;
    EXPECT_THROW(execute(command), std::runtime_error);
    EXPECT_EQ(1, journal().count("progress.close"));
    EXPECT_THROW(unexecute(command), std::runtime_error);
    EXPECT_EQ(2, journal().count("progress.close"));
    EXPECT_EQ(0, journal().count("CommandMessage"));
    EXPECT_EQ("", log.text());
}

TEST(AbstractCommand, ExceptionOfAClosingSinkIsLoggedWhileAnotherUnwinds)
{
    std::ostringstream text;
    text << HousekeepingException(42, "close", "tests/Fakes", 7);
    const std::vector<std::pair<FakeCommand::Step, std::string>> failures
        = {{support::throws_std("close"), "STD EXCEPTION THROWN:close\n\n"},
            {support::throws_housekeeping("close"), "TARQA EXCEPTION THROWN:\n" + text.str() + "\n\n"},
            {support::throws_unknown(), "An unknown exception was thrown while progress was closed\n"}};
    for (const auto& [failure, logged] : failures) {
        StuckProgress sink(failure);
        FakeCommand command(s_document, "Rotate");
        command.setProgress(&sink);
        command.on_finished = [] { throw std::logic_error("finished"); };
        support::LogCapture log;
        EXPECT_THROW(execute(command), std::logic_error);
        EXPECT_EQ(logged, log.text());
        EXPECT_THROW(unexecute(command), std::logic_error);
        EXPECT_EQ(logged + logged, log.text());
        log.take_all();
    }
    EXPECT_EQ(6, journal().count("progress.close"));
}
