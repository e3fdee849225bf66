#include "support/App.h"
#include "support/Fakes.h"
#include "support/LogCapture.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/CancelCommandException.h>
#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <QtGui/QIcon>
#include <QtGui/QPixmap>

#include <boost/make_shared.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>

using namespace tarqa::housekeeping;
using support::create_document;
using support::FakeCommand;
using support::FakeDocument;
using support::FakeProgress;
using support::journal;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const char* const s_source = "housekeeping/src/AbstractCommand";
const DocumentId s_document = DocumentId::build(5);

/// A command that keeps everything that can be kept as the base has it.
class PlainCommand : public AbstractCommand
{
public:
    PlainCommand()
        : AbstractCommand(s_document, "Plain")
    { }
    void rollback() override { }

protected:
    void remember() override { }
    void do_command() override { }
    void undo_command() override { }
};

/// A command that handles the request to cancel itself.
class CancellableCommand : public PlainCommand
{
public:
    bool cancelled() const { return m_cancelled; }
    void cancelled(bool on) { m_cancelled = on; }
};

} // namespace

TEST(AbstractCommand, StartsWithTheDefaults)
{
    PlainCommand command;
    EXPECT_EQ("Plain", command.name());
    EXPECT_EQ("Plain", command.details().name());
    EXPECT_EQ("", command.details().description());
    EXPECT_TRUE(command.details().icon().isNull());
    EXPECT_EQ(s_document, command.document_id());
    EXPECT_EQ(1u, command.size());
    EXPECT_FALSE(command.empty());
    EXPECT_TRUE(command.validUndo());
    EXPECT_TRUE(command.set_document_busy());
    EXPECT_FALSE(command.stackIndenticalCommand());
    EXPECT_FALSE(command.shouldClearRedoWhenUndoing());
    EXPECT_FALSE(TestAccess::cancel_requested(command));
    command.rememberGeo(17); // does nothing
    EXPECT_EQ("", command.details().description());
}

TEST(AbstractCommand, BaseMergesWithNothing)
{
    PlainCommand command;
    EXPECT_FALSE(command.stackWith(boost::make_shared<PlainCommand>()));
    EXPECT_FALSE(command.stackWith(nullptr)); // the argument is not looked at
}

TEST(AbstractCommand, DrawsItsIdFromTheCommandManager)
{
    const CommandId before = CommandManager::instance().createId();
    const PlainCommand first;
    const PlainCommand second;
    EXPECT_EQ(CommandId::build(before.getId() + 1), first.id());
    EXPECT_EQ(CommandId::build(before.getId() + 2), second.id());
}

TEST(AbstractCommand, CopyKeepsTheIdTheFlagsAndTheSink)
{
    FakeProgress sink;
    FakeCommand command(s_document, "Rotate");
    command.setDescription("3 faults");
    command.valid_undo(false);
    command.sets_document_busy(false);
    command.stack_identical(true);
    command.clears_redo_when_undoing(true);
    command.setProgress(&sink);
    command.request_cancel();
    const CommandId next = CommandId::build(command.id().getId() + 1);

    const FakeCommand copy(command);
    FakeCommand assigned(DocumentId::build(6), "Other");
    EXPECT_EQ(next, assigned.id()); // the copy drew none
    assigned = command;
    for (const FakeCommand* other : {&copy, static_cast<const FakeCommand*>(&assigned)}) {
        EXPECT_EQ(command.id(), other->id());
        EXPECT_EQ(s_document, other->document_id());
        EXPECT_EQ("Rotate", other->name());
        EXPECT_EQ("3 faults", other->details().description());
        EXPECT_FALSE(other->validUndo());
        EXPECT_FALSE(other->set_document_busy());
        EXPECT_TRUE(other->stackIndenticalCommand());
        EXPECT_TRUE(other->shouldClearRedoWhenUndoing());
        EXPECT_TRUE(TestAccess::cancel_requested(*other));
        journal().clear();
        other->progress_text("copied");
        EXPECT_THAT(journal().entries(), ElementsAre("progress.text(copied)"));
    }
}

TEST(AbstractCommand, DetailsAreSet)
{
    PlainCommand command;
    command.setName("Turn");
    command.setDescription("a");
    EXPECT_EQ("Turn", command.name());
    EXPECT_EQ("a", command.details().description());
}

TEST(AbstractCommand, DescriptionsAreAppendedAfterAComma)
{
    PlainCommand command;
    command.appendDescription("b");
    EXPECT_EQ("b", command.details().description());
    command.setDescription("a");
    command.appendDescription("b");
    EXPECT_EQ("a, b", command.details().description());
    command.appendDescription("c");
    EXPECT_EQ("a, b, c", command.details().description());
    command.appendDescription("");
    EXPECT_EQ("a, b, c, ", command.details().description());
}

TEST(AbstractCommand, IconIsSet)
{
    const support::App app;
    QPixmap pixmap(4, 4);
    pixmap.fill(Qt::red);
    const QIcon icon(pixmap);
    PlainCommand command;
    command.setIcon(icon);
    EXPECT_EQ(icon.cacheKey(), command.details().icon().cacheKey());
    command.setIcon(QIcon());
    EXPECT_TRUE(command.details().icon().isNull());
}

// The request to cancel

TEST(AbstractCommand, DerivedCommandsReadSetAndClearTheRequest)
{
    CancellableCommand command;
    EXPECT_FALSE(command.cancelled());
    command.request_cancel();
    EXPECT_TRUE(command.cancelled());
    command.cancelled(false);
    EXPECT_FALSE(command.cancelled());
    EXPECT_FALSE(TestAccess::cancel_requested(command));
    command.cancelled(true);
    EXPECT_TRUE(TestAccess::cancel_requested(command));
}

// Progress

TEST(AbstractCommand, ProgressWithoutASinkDoesNothing)
{
    FakeCommand command(s_document, "Rotate");
    command.request_cancel();
    EXPECT_NO_THROW(command.progress(50));
    EXPECT_NO_THROW(command.progress(150)); // and nothing is logged
    command.progress_text("text");
    EXPECT_THAT(journal().entries(), IsEmpty());
    EXPECT_TRUE(TestAccess::cancel_requested(command));
}

TEST(AbstractCommand, ProgressReachesTheSink)
{
    FakeProgress sink;
    FakeCommand command(s_document, "Rotate");
    command.setProgress(&sink);
    command.progress(0);
    command.progress(100);
    command.progress_text("Brønn åtte");
    EXPECT_THAT(journal().entries(),
        ElementsAre("progress.percentage(0)", "progress.percentage(100)", "progress.text(Brønn åtte)"));
    command.setProgress(nullptr);
    command.progress(150);
    EXPECT_EQ(3u, journal().entries().size());
}

TEST(AbstractCommand, ProgressAboveAHundredIsLoggedAndPassedOn)
{
    FakeProgress sink;
    FakeCommand command(s_document, "Rotate");
    command.setProgress(&sink);
    for (const unsigned int percentage : {101u, 150u}) {
        support::LogCapture log;
        command.progress(percentage);
        EXPECT_TRUE(log.took_assert("100 >= percentage", "AbstractCommand::progress", s_source, 136));
    }
    EXPECT_THAT(journal().entries(), ElementsAre("progress.percentage(101)", "progress.percentage(150)"));
}

TEST(AbstractCommand, ProgressOfACancelledCommandThrowsBeforeTheSinkIsTold)
{
    FakeProgress sink;
    FakeCommand command(s_document, "Rotate");
    command.setProgress(&sink);
    command.request_cancel();
    try {
        command.progress(50);
        FAIL() << "nothing was thrown";
    } catch (CancelCommandException& exception) {
        EXPECT_EQ(1028u, exception.code());
        EXPECT_EQ("Command was cancelled by user!", exception.message());
        EXPECT_EQ(s_source, exception.file());
    }
    EXPECT_THAT(journal().entries(), IsEmpty());
    EXPECT_TRUE(TestAccess::cancel_requested(command)); // until a run ends in cancellation
}

TEST(AbstractCommand, ProgressAboveAHundredIsLoggedBeforeTheCancellation)
{
    FakeProgress sink;
    FakeCommand command(s_document, "Rotate");
    command.setProgress(&sink);
    command.request_cancel();
    support::LogCapture log;
    EXPECT_THROW(command.progress(150), CancelCommandException);
    EXPECT_TRUE(log.took_assert("100 >= percentage", "AbstractCommand::progress", s_source, 136));
}

TEST(AbstractCommand, ProgressTextDoesNotTestForCancellation)
{
    FakeProgress sink;
    FakeCommand command(s_document, "Rotate");
    command.setProgress(&sink);
    command.request_cancel();
    EXPECT_NO_THROW(command.progress_text("still here"));
    EXPECT_THAT(journal().entries(), ElementsAre("progress.text(still here)"));
}

// Runnables

TEST(AbstractCommand, ExecuteRunnableMarksTheDocumentAsModified)
{
    FakeDocument& document = create_document();
    FakeCommand command(document.id(), "Rotate");
    journal().clear();
    const std::unique_ptr<Runnable> runnable(command.execute_runnable());
    EXPECT_TRUE(runnable);
    EXPECT_THAT(journal().entries(), ElementsAre("Document 1.modified(true)"));
}

TEST(AbstractCommand, UnexecuteRunnableHasNoOtherEffect)
{
    FakeDocument& document = create_document();
    FakeCommand command(document.id(), "Rotate");
    journal().clear();
    const std::unique_ptr<Runnable> runnable(command.unexecute_runnable());
    EXPECT_TRUE(runnable);
    EXPECT_THAT(journal().entries(), IsEmpty());
}

TEST(AbstractCommand, EveryRunnableIsANewOne)
{
    FakeDocument& document = create_document();
    FakeCommand command(document.id(), "Rotate");
    const std::unique_ptr<Runnable> first(command.execute_runnable());
    const std::unique_ptr<Runnable> second(command.execute_runnable());
    EXPECT_NE(first, second);
}

TEST(AbstractCommand, ExecuteRunnableOfAnUnknownDocumentThrows)
{
    FakeCommand command(DocumentId::build(77), "Rotate");
    try {
        const std::unique_ptr<Runnable> runnable(command.execute_runnable());
        FAIL() << "nothing was thrown";
    } catch (HousekeepingException& exception) {
        EXPECT_EQ(1014u, exception.code());
    }
    const std::unique_ptr<Runnable> undo(command.unexecute_runnable()); // does not ask for the document
    EXPECT_TRUE(undo);
}

TEST(AbstractCommand, RunnablesAreCopied)
{
    FakeDocument& document = create_document();
    FakeCommand command(document.id(), "Rotate");
    journal().clear();
    const AbstractCommand::Execute execute(&command);
    AbstractCommand::Execute(execute).run(false);
    const AbstractCommand::UnExecute unexecute(&command);
    AbstractCommand::UnExecute(unexecute).run(false);
    EXPECT_THAT(journal().entries(),
        ElementsAre(
            "Rotate.remember", "Rotate.do", "Rotate.finished(true)", "Rotate.undo", "Rotate.finished(true)"));
}
