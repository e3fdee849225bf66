#include "commands/FatalErrorProbe.h"
#include "support/App.h"
#include "support/DialogDriver.h"
#include "support/Fakes.h"
#include "support/LogCapture.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/CancelCommandException.h>
#include <tarqa/housekeeping/CompositeCommand.h>
#include <tarqa/housekeeping/FailedCommandException.h>

#include <QtTest/QTest>

#include <boost/make_shared.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <exception>
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

const char* const s_source = "housekeeping/src/CompositeCommand";
const char* const s_unknown = "An unknown serious error has occured in this Command";
const DocumentId s_document = DocumentId::build(5);
const QMessageBox::StandardButtons s_question
    = QMessageBox::Yes | QMessageBox::YesToAll | QMessageBox::Cancel;
const QMessageBox::StandardButtons s_ok = QMessageBox::Ok;

/// The composite "Batch" of the children A, B, C and so on, a receiver, and a log whose entries may be any.
class Batch
{
public:
    explicit Batch(int count)
        : composite(s_document, "Batch", false)
    {
        for (int i = 0; i < count; ++i) {
            children.push_back(support::make_command(s_document, std::string(1, static_cast<char>('A' + i))));
            composite.push_back(children.back());
        }
    }
    ~Batch() { log.take_all(); }

    FakeCommand& operator[](int index) { return *children.at(static_cast<std::size_t>(index)); }
    void run(bool redo = false) { AbstractCommand::Execute(&composite).run(redo); }
    void undo() { AbstractCommand::UnExecute(&composite).run(false); }

    std::vector<bool> flags() const
    {
        std::vector<bool> result;
        for (const auto& entry : composite.commands()) {
            result.push_back(entry.second);
        }
        return result;
    }

    support::LogCapture log;
    CompositeCommand composite;
    std::vector<boost::shared_ptr<FakeCommand>> children;
    JournalingReceiver receiver;
};

std::string text_of(const tarqa::Exception& exception)
{
    std::ostringstream stream;
    stream << exception;
    return stream.str();
}

void expect_box(const support::DialogDriver& dialogs, std::size_t index, const QString& text,
    QMessageBox::StandardButtons buttons)
{
    ASSERT_GT(dialogs.shown().size(), index);
    EXPECT_EQ("Warning", dialogs.shown()[index].title);
    EXPECT_EQ(text, dialogs.shown()[index].text);
    EXPECT_EQ(buttons, dialogs.shown()[index].buttons);
}

} // namespace

// Cancelled children

TEST(CompositeCommand, CancelledChildDoesNotStopTheBatch)
{
    Batch batch(3);
    batch[1].on_do = support::throws_cancel();
    batch.run();
    EXPECT_THAT(journal().entries(),
        ElementsAre("A.remember", "A.do", "A.finished(true)", "B.remember", "B.do", "B.rollback",
            "C.remember", "C.do", "C.finished(true)", "CommandMessage(Batch, 0)"));
    EXPECT_THAT(batch.flags(), ElementsAre(true, false, true));
    EXPECT_EQ("DO>\tBatch - Succeeded.\n\t* A - Succeeded.\n\t* B - Failed.\n\t* C - Succeeded.\n",
        batch.log.text());
}

TEST(CompositeCommand, CancelledLastChildDoesNotFailTheBatch)
{
    Batch batch(2);
    batch[1].on_do = support::throws_cancel();
    batch.run();
    EXPECT_THAT(batch.flags(), ElementsAre(true, false));
    EXPECT_EQ(1, journal().count("CommandMessage(Batch, 0)"));
    EXPECT_EQ(0, journal().count("A.rollback"));
}

TEST(CompositeCommand, CancelledChildForgetsTheRequest)
{
    FakeProgress sink;
    Batch batch(2);
    batch[0].setProgress(&sink);
    batch[0].on_do = [&batch] { batch[0].progress(50); };
    batch[0].request_cancel();
    batch.run();
    EXPECT_FALSE(TestAccess::cancel_requested(batch[0]));
    EXPECT_THAT(batch.flags(), ElementsAre(false, true));
    batch.run(true);
    EXPECT_THAT(batch.flags(), ElementsAre(true, true));
}

TEST(CompositeCommand, CancelledChildForgetsTheRequestAfterItsRollback)
{
    FakeProgress sink;
    Batch batch(2);
    batch[0].setProgress(&sink);
    batch[0].on_do = [&batch] { batch[0].progress(50); };
    batch[0].request_cancel();
    bool requested = false;
    batch[0].on_rollback = [&] { requested = TestAccess::cancel_requested(batch[0]); };
    batch.run();
    EXPECT_TRUE(requested);
}

TEST(CompositeCommand, CancelledChildKeepsItsFlagUntilItIsRolledBack)
{
    Batch batch(2);
    batch[0].on_do = support::throws_cancel();
    bool flag = false;
    batch[0].on_rollback = [&] { flag = batch.flags().at(0); };
    batch.run();
    EXPECT_TRUE(flag);
    EXPECT_THAT(batch.flags(), ElementsAre(false, true));
}

TEST(CompositeCommand, ChildThatCancelsWhileRememberingIsRolledBack)
{
    Batch batch(2);
    batch[0].on_remember = support::throws_cancel();
    batch.run();
    EXPECT_THAT(journal().entries(),
        ElementsAre("A.remember", "A.rollback", "B.remember", "B.do", "B.finished(true)",
            "CommandMessage(Batch, 0)"));
    EXPECT_THAT(batch.flags(), ElementsAre(false, true));
}

// Failing children, with somebody to ask

TEST(CompositeCommand, YesGoesOnWithTheNextChild)
{
    const support::App app;
    support::DialogDriver dialogs;
    dialogs.click(QMessageBox::Yes);
    Batch batch(2);
    batch[0].on_do = support::throws_failure("no room");
    batch.run();
    expect_box(dialogs, 0, "no room\nContinue ?", s_question);
    EXPECT_THAT(journal().entries(),
        ElementsAre(
            "A.remember", "A.do", "B.remember", "B.do", "B.finished(true)", "CommandMessage(Batch, 0)"));
    EXPECT_THAT(batch.flags(), ElementsAre(true, true)); // the failed one deliberately keeps its flag
    EXPECT_EQ("no room\nContinue ?\nDO>\tBatch - Succeeded.\n\t* A - Succeeded.\n\t* B - Succeeded.\n",
        batch.log.text());
}

TEST(CompositeCommand, UndoCallsAChildThatFailedAndWasPassedOver)
{
    const support::App app;
    support::DialogDriver dialogs;
    dialogs.click(QMessageBox::Yes);
    Batch batch(2);
    batch[0].on_do = support::throws_failure("no room");
    batch.run();
    journal().clear();
    batch.undo();
    EXPECT_THAT(journal().entries(),
        ElementsAre("B.undo", "B.finished(true)", "A.undo", "A.finished(true)", "CommandMessage(Batch, 1)"));
}

TEST(CompositeCommand, YesAsksAgainAtTheNextFailure)
{
    const support::App app;
    support::DialogDriver dialogs;
    dialogs.click(QMessageBox::Yes).click(QMessageBox::Yes);
    Batch batch(3);
    batch[0].on_do = support::throws_failure("no room");
    batch[1].on_do = support::throws_failure("no luck");
    batch.run();
    expect_box(dialogs, 0, "no room\nContinue ?", s_question);
    expect_box(dialogs, 1, "no luck\nContinue ?", s_question);
    EXPECT_EQ(1, journal().count("CommandMessage(Batch, 0)"));
}

TEST(CompositeCommand, YesToAllAsksNoMore)
{
    const support::App app;
    support::DialogDriver dialogs;
    dialogs.click(QMessageBox::YesToAll); // and fails the test if another box appears
    Batch batch(3);
    for (int i = 0; i < 3; ++i) {
        batch[i].on_do = support::throws_failure("no room");
    }
    batch.run();
    EXPECT_EQ(1u, dialogs.shown().size());
    EXPECT_EQ(1, journal().count("CommandMessage(Batch, 0)")); // the last child's failure is passed over too
    EXPECT_EQ(0, journal().count("A.rollback"));
    EXPECT_THAT(batch.flags(), ElementsAre(true, true, true));
}

TEST(CompositeCommand, YesToAllHoldsForOneRun)
{
    const support::App app;
    support::DialogDriver dialogs;
    dialogs.click(QMessageBox::YesToAll).click(QMessageBox::YesToAll);
    Batch batch(2);
    batch[0].on_do = support::throws_failure("no room");
    batch.run();
    batch.undo();
    batch.run(true);
    EXPECT_EQ(2u, dialogs.shown().size());
}

TEST(CompositeCommand, CancelRollsTheBatchBack)
{
    const support::App app;
    support::DialogDriver dialogs;
    dialogs.click(QMessageBox::Cancel);
    Batch batch(4);
    batch[1].on_do = support::throws_cancel();
    batch[2].on_do = support::throws_failure("no room");
    batch.run();
    expect_box(dialogs, 0, "no room\nContinue ?", s_question);
    EXPECT_THAT(journal().entries(),
        ElementsAre("A.remember", "A.do", "A.finished(true)", "B.remember", "B.do", "B.rollback",
            "C.remember", "C.do", "A.rollback", "C.rollback", "CommandMessage(Batch, 3)"));
    EXPECT_THAT(batch.flags(), ElementsAre(true, false, true, false));
    EXPECT_EQ("no room\nContinue ?\nDO>\tBatch - Failed.\n"
              "\t* A - Succeeded.\n\t* B - Failed.\n\t* C - Succeeded.\n\t* D - Failed.\n",
        batch.log.text());
}

TEST(CompositeCommand, FailureOfTheLastChildCountsAsCancel)
{
    const support::App app;
    support::DialogDriver dialogs;
    dialogs.click(QMessageBox::Ok);
    Batch batch(2);
    batch[1].on_do = support::throws_failure("no room");
    batch.run();
    expect_box(dialogs, 0, "no room", s_ok);
    EXPECT_THAT(journal().entries(),
        ElementsAre("A.remember", "A.do", "A.finished(true)", "B.remember", "B.do", "A.rollback",
            "B.rollback", "CommandMessage(Batch, 3)"));
    EXPECT_THAT(batch.log.text(), HasSubstr("DO>\tBatch - Failed.\n"));
}

TEST(CompositeCommand, FailureOfTheOnlyChildCountsAsCancel)
{
    const support::App app;
    support::DialogDriver dialogs;
    dialogs.click(QMessageBox::Ok);
    Batch batch(1);
    batch[0].on_do = support::throws_failure("no room");
    batch.run();
    expect_box(dialogs, 0, "no room", s_ok);
    EXPECT_EQ(1u, dialogs.shown().size());
    EXPECT_THAT(
        journal().entries(), ElementsAre("A.remember", "A.do", "A.rollback", "CommandMessage(Batch, 3)"));
}

TEST(CompositeCommand, FailureOfTheLastChildAfterYesCountsAsCancel)
{
    const support::App app;
    support::DialogDriver dialogs;
    dialogs.click(QMessageBox::Yes).click(QMessageBox::Ok);
    Batch batch(2);
    batch[0].on_do = support::throws_failure("no room");
    batch[1].on_do = support::throws_failure("no luck");
    batch.run();
    expect_box(dialogs, 1, "no luck", s_ok);
    EXPECT_EQ(1, journal().count("A.rollback"));
    EXPECT_EQ(1, journal().count("B.rollback"));
    EXPECT_EQ(1, journal().count("CommandMessage(Batch, 3)"));
}

TEST(CompositeCommand, ClosingTheQuestionCancels)
{
    const support::App app;
    support::DialogDriver dialogs;
    dialogs.answer([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    Batch batch(2);
    batch[0].on_do = support::throws_failure("no room");
    batch.run();
    EXPECT_EQ(1, journal().count("CommandMessage(Batch, 3)"));
    EXPECT_EQ(0, journal().count("B."));
}

// Failing children, with nobody to ask

TEST(CompositeCommand, WithoutAnApplicationTheBatchGoesOn)
{
    Batch batch(3);
    batch[0].on_do = support::throws_failure("no room");
    batch[1].on_remember = support::throws_failure("no luck");
    batch.run();
    EXPECT_THAT(journal().entries(),
        ElementsAre("A.remember", "A.do", "B.remember", "C.remember", "C.do", "C.finished(true)",
            "CommandMessage(Batch, 0)"));
    EXPECT_THAT(batch.log.text(), HasSubstr("no room\nContinue ?\nno luck\nContinue ?\nDO>\tBatch"));
}

TEST(CompositeCommand, FailureThatIsPassedOverHasACatchPoint)
{
    Batch batch(2);
    const std::exception_ptr failure
        = std::make_exception_ptr(FailedCommandException(42, "no room", "tests/Fakes", 7));
    batch[0].on_do = [&failure] { std::rethrow_exception(failure); };
    batch.run();
    EXPECT_EQ(1, journal().count("CommandMessage(Batch, 0)"));
    try {
        std::rethrow_exception(failure); // the same object again
    } catch (FailedCommandException& exception) {
        FailedCommandException expected(42, "no room", "tests/Fakes", 7);
        expected.caught_here(s_source, 146);
        EXPECT_EQ(expected.trail(), exception.trail());
    }
}

TEST(CompositeCommand, FailureThatIsPassedOverWithoutAQuestionHasACatchPointToo)
{
    const support::App app;
    support::DialogDriver dialogs;
    dialogs.click(QMessageBox::YesToAll);
    Batch batch(2);
    const std::exception_ptr failure
        = std::make_exception_ptr(FailedCommandException(42, "no luck", "tests/Fakes", 7));
    batch[0].on_do = support::throws_failure("no room");
    batch[1].on_do = [&failure] { std::rethrow_exception(failure); };
    batch.run();
    try {
        std::rethrow_exception(failure); // the same object again
    } catch (FailedCommandException& exception) {
        FailedCommandException expected(42, "no luck", "tests/Fakes", 7);
        expected.caught_here(s_source, 146);
        EXPECT_EQ(expected.trail(), exception.trail());
    }
}

TEST(CompositeCommand, WithoutAnApplicationTheLastFailureStillCancels)
{
    Batch batch(2);
    batch[1].on_do = support::throws_failure("no room");
    batch.run();
    EXPECT_EQ(1, journal().count("A.rollback"));
    EXPECT_EQ(1, journal().count("CommandMessage(Batch, 3)"));
    EXPECT_EQ("no room\nDO>\tBatch - Failed.\n\t* A - Succeeded.\n\t* B - Succeeded.\n", batch.log.text());
}

TEST(CompositeCommand, GivingUpThrowsACancellationThatKeepsTheTrail)
{
    Batch batch(1);
    batch[0].on_do = support::throws_failure("no room");
    try {
        TestAccess::do_command(batch.composite);
        FAIL() << "nothing was thrown";
    } catch (CancelCommandException& exception) {
        EXPECT_EQ(7006u, exception.code());
        EXPECT_EQ("Insertion Cancelled", exception.message());
        EXPECT_EQ(s_source, exception.file());
        EXPECT_EQ(142u, exception.line());
        HousekeepingException expected(7006, "Insertion Cancelled", s_source, 142);
        expected.catch_and_transfer(HousekeepingException(42, "no room", "tests/Fakes", 7));
        EXPECT_EQ(expected.trail(), exception.trail());
    }
}

TEST(CompositeCommand, BrokenOffInnerCompositeIsACancelledChild)
{
    Batch inner(2);
    inner[1].on_do = support::throws_failure("no room");
    CompositeCommand outer(s_document, "Outer", false);
    const auto child = boost::make_shared<CompositeCommand>(inner.composite);
    child->setName("Inner");
    outer.push_back(child);
    outer.push_back(support::make_command(s_document, "C"));
    AbstractCommand::Execute(&outer).run(false);
    EXPECT_THAT(journal().entries(),
        ElementsAre("A.remember", "A.do", "A.finished(true)", "B.remember", "B.do", "A.rollback",
            "B.rollback", "C.remember", "C.do", "C.finished(true)", "CommandMessage(Outer, 0)"));
    EXPECT_FALSE(outer.commands()[0].second);
    EXPECT_TRUE(outer.commands()[1].second);
}

TEST(CompositeCommand, RedoThatIsCutShortRollsBackOnlyWhatItRan)
{
    const support::App app;
    support::DialogDriver dialogs;
    dialogs.click(QMessageBox::Cancel);
    Batch batch(3);
    batch.run();
    batch.undo();
    batch[1].on_do = support::throws_failure("no room");
    journal().clear();
    batch.run(true);
    EXPECT_THAT(journal().entries(),
        ElementsAre("A.remember", "A.do", "A.finished(true)", "B.remember", "B.do", "A.rollback",
            "B.rollback", "CommandMessage(Batch, 3, redo)"));
    EXPECT_THAT(batch.flags(), ElementsAre(true, true, false));
}

// Anything else

TEST(CompositeCommand, OtherExceptionsAreFatalAndTheBatchGoesOn)
{
    for (const FakeCommand::Step& step :
        {support::throws_housekeeping("boom"), support::throws_tarqa("boom")}) {
        Batch batch(2);
        batch[0].on_do = step;
        journal().clear();
        FatalErrorProbe probe;
        batch.run();
        EXPECT_THAT(journal().entries(),
            ElementsAre("A.remember", "A.do", "exit_main_loop", "B.remember", "B.do", "B.finished(true)",
                "CommandMessage(Batch, 0)"));
        EXPECT_THAT(batch.flags(), ElementsAre(true, true));
        HousekeepingException expected(42, "boom", "tests/Fakes", 7);
        expected.caught_here(s_source, 151);
        EXPECT_EQ("fatal error!\nCause: tarqa::Exception\nFurther Information: " + text_of(expected)
                + "DO>\tBatch - Succeeded.\n\t* A - Succeeded.\n\t* B - Succeeded.\n",
            batch.log.text());
        EXPECT_THAT(probe.standard_error(), HasSubstr(text_of(expected)));
    }
}

TEST(CompositeCommand, StandardExceptionIsFatalAndTheBatchGoesOn)
{
    Batch batch(2);
    batch[0].on_remember = support::throws_std("boom");
    const FatalErrorProbe probe;
    batch.run();
    EXPECT_THAT(journal().entries(),
        ElementsAre("A.remember", "exit_main_loop", "B.remember", "B.do", "B.finished(true)",
            "CommandMessage(Batch, 0)"));
    EXPECT_EQ(std::string("FATAL ERROR!\nFurther Information: ") + s_unknown
            + " : boom\n\nDO>\tBatch - Succeeded.\n\t* A - Failed.\n\t* B - Succeeded.\n",
        batch.log.text());
}

TEST(CompositeCommand, AnythingElseThrownIsFatalAndTheBatchGoesOn)
{
    Batch batch(2);
    batch[1].on_do = support::throws_unknown();
    const FatalErrorProbe probe;
    batch.run();
    EXPECT_EQ(1, FatalErrorProbe::exits());
    EXPECT_EQ(1, journal().count("CommandMessage(Batch, 0)"));
    EXPECT_EQ(0, journal().count("A.rollback"));
    EXPECT_EQ("fatal error!\nCause: tarqa::Exception\nFurther Information: "
            + text_of(HousekeepingException(2, s_unknown, s_source, 162))
            + "DO>\tBatch - Succeeded.\n\t* A - Succeeded.\n\t* B - Succeeded.\n",
        batch.log.text());
}

TEST(CompositeCommand, ExceptionOfAChildsFinishedIsFatalAndTheBatchGoesOn)
{
    Batch batch(2);
    batch[0].on_finished = support::throws_std("boom");
    const FatalErrorProbe probe;
    batch.run();
    EXPECT_THAT(journal().entries(),
        ElementsAre("A.remember", "A.do", "A.finished(true)", "exit_main_loop", "B.remember", "B.do",
            "B.finished(true)", "CommandMessage(Batch, 0)"));
    EXPECT_THAT(batch.flags(), ElementsAre(true, true));
    EXPECT_EQ(std::string("FATAL ERROR!\nFurther Information: ") + s_unknown
            + " : boom\n\nDO>\tBatch - Succeeded.\n\t* A - Succeeded.\n\t* B - Succeeded.\n",
        batch.log.text());
}

TEST(CompositeCommand, ExceptionOfACancelledChildsRollbackEndsTheBatch)
{
    Batch batch(2);
    batch[0].on_do = support::throws_cancel();
    batch[0].on_rollback = support::throws_std("boom");
    const FatalErrorProbe probe;
    batch.run();
    EXPECT_THAT(journal().entries(),
        ElementsAre("A.remember", "A.do", "A.rollback", "exit_main_loop", "CommandMessage(Batch, 0)"));
}

TEST(CompositeCommand, ExceptionOfAChildsUndoIsFatal)
{
    Batch batch(2);
    batch.run();
    batch[1].on_undo = support::throws_std("boom");
    journal().clear();
    const FatalErrorProbe probe;
    batch.undo();
    EXPECT_THAT(journal().entries(), ElementsAre("B.undo", "exit_main_loop", "CommandMessage(Batch, 1)"));
    EXPECT_EQ(std::string("FATAL ERROR!\nFurther Information: ") + s_unknown
            + " UNDO : boom\n\nUNDO>\tBatch - Succeeded.\n\t* A - Succeeded.\n\t* B - Succeeded.\n",
        batch.log.text());
}
