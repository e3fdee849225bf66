#include "CommandFixture.h"
#include "RasterFiles.h"
#include "WindowFixture.h"
#include "commands/CommandRunner.h"
#include "commands/ScaleCommand.h"
#include "commands/SmoothCommand.h"
#include "documents/TerrainDocument.h"
#include "io/RasterReader.h"
#include "support/DialogDriver.h"
#include "support/MessageSpy.h"
#include "support/TestAccess.h"
#include "tour/Gate.h"

#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAction>

#include <boost/make_shared.hpp>

#include <thread>

using namespace host_test;
using housekeeping::DocumentManager;
using support::DialogDriver;
using terrain::Deed;

namespace {

class WindowClosingTest : public WindowTest
{
protected:
    void SetUp() override
    {
        WindowTest::SetUp();
        runner().report_also_to(&gate);
        open_terrain_file("a.tif");
    }
    void TearDown() override
    {
        gate.open();
        runner().abandon();
        runner().report_also_to(nullptr);
        WindowTest::TearDown();
    }

    void change() { run(boost::make_shared<terrain::ScaleCommand>(current().id(), 2)); }

    /// Begins a command and waits until the gate holds it up.
    void begin_and_hold()
    {
        gate.close();
        sp_running = boost::make_shared<terrain::SmoothCommand>(current().id(), 2);
        ASSERT_TRUE(runner().start(sp_running));
        ASSERT_TRUE(support::wait_until([this] { return gate.holds(); }));
    }

    terrain::Gate gate{40};
    boost::shared_ptr<terrain::SmoothCommand> sp_running;
};

} // namespace

TEST_F(WindowClosingTest, ADocumentWithoutChangesIsClosedWithoutAQuestion)
{
    window->close_document();
    EXPECT_EQ(documents(), 0);
}

TEST_F(WindowClosingTest, ChangesAreDiscardedIfTheUserSaysSo)
{
    change();
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Discard);
    window->close_document();
    EXPECT_EQ(dialogs.shown().at(0).text, "\"a\" has changes that are not written to a file.");
    EXPECT_EQ(documents(), 0);
}

TEST_F(WindowClosingTest, CancelKeepsTheDocument)
{
    change();
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Cancel);
    window->close_document();
    EXPECT_EQ(documents(), 1);
    EXPECT_TRUE(window->isWindowModified());
}

TEST_F(WindowClosingTest, SaveWritesAFileFirst)
{
    change();
    const std::string file = scratch("saved.tif");
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Save).click(QMessageBox::No).choose_file(QString::fromStdString(file));
    window->close_document();
    EXPECT_EQ(documents(), 0);
    EXPECT_EQ(terrain::read_raster(file).columns, 20);
    EXPECT_TRUE(log.take("Exported"));
}

TEST_F(WindowClosingTest, SaveWithoutAFileKeepsTheDocument)
{
    change();
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Save).click(QMessageBox::No).cancel();
    window->close_document();
    EXPECT_EQ(documents(), 1);
}

TEST_F(WindowClosingTest, AnExportedDocumentHasNoChanges)
{
    change();
    EXPECT_TRUE(window->isWindowModified());
    EXPECT_TRUE(window->write_export(QString::fromStdString(scratch("out.tif"))));
    EXPECT_FALSE(window->isWindowModified());
    window->close_document();
    EXPECT_EQ(documents(), 0);
    log.take_all();
}

TEST_F(WindowClosingTest, QuittingAsksAboutEachDocumentWithChanges)
{
    change();
    const housekeeping::DocumentId first = current().id();
    open_terrain_file("b.tif");
    open_terrain_file("c.tif");
    change();
    housekeeping::DocumentId shown = housekeeping::DocumentId::null();
    DialogDriver dialogs;
    dialogs.answer([&shown](QDialog& dialog) {
        shown = DocumentManager::instance().current_document_id();
        dynamic_cast<QMessageBox&>(dialog).button(QMessageBox::Discard)->click();
    });
    dialogs.click(QMessageBox::Cancel);
    EXPECT_FALSE(window->close());
    EXPECT_EQ(shown, first) << "people see what they are asked about";
    ASSERT_EQ(dialogs.shown().size(), 2u);
    EXPECT_TRUE(dialogs.shown()[1].text.contains("\"c\""));
    EXPECT_EQ(documents(), 3) << "no document goes before all are agreed upon";
    EXPECT_TRUE(window->isVisible());

    dialogs.click(QMessageBox::Discard).click(QMessageBox::Discard);
    EXPECT_TRUE(window->close());
    EXPECT_EQ(documents(), 0);
}

TEST_F(WindowClosingTest, QuittingCancelsTheRunningCommandAndWaitsForIt)
{
    const auto before = bits(current());
    begin_and_hold();
    std::vector<unsigned long long> after;
    DialogDriver dialogs;
    dialogs.answer([&after](QDialog& dialog) {
        after = bits(current());
        dynamic_cast<QMessageBox&>(dialog).button(QMessageBox::Discard)->click();
    });
    window->action(Deed::Quit).trigger();
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(runner().is_running());
    EXPECT_FALSE(window->close()) << "still not";
    gate.open();
    EXPECT_TRUE(support::wait_until([this] { return !window->isVisible(); }));
    EXPECT_FALSE(runner().is_running());
    EXPECT_EQ(after, before) << "rolled back before the question";
    EXPECT_EQ(documents(), 0);
}

TEST_F(WindowClosingTest, TheUserMayKeepTheDocumentAfterTheCommandWasCancelled)
{
    begin_and_hold();
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Cancel);
    window->close();
    gate.open();
    EXPECT_TRUE(support::wait_until([&dialogs] { return dialogs.shown().size() == 1; }));
    QTest::qWait(20);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(documents(), 1);
    change(); // and commands run as before
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(current().document_history().undoSize(), 2u);
}

TEST_F(WindowClosingTest, MayCloseWaitsForTheCancelledCommand)
{
    const auto before = bits(current());
    begin_and_hold();
    bool was_alive = false;
    QTimer::singleShot(0, window.get(), [this, &was_alive] {
        was_alive = window->isVisible() && runner().is_running();
        EXPECT_FALSE(window->may_close()) << "the first request is still being worked on";
        gate.open();
    });
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Discard);
    EXPECT_TRUE(window->may_close());
    EXPECT_TRUE(was_alive);
    EXPECT_FALSE(runner().is_running());
    EXPECT_EQ(bits(current()), before);
    EXPECT_TRUE(window->isVisible()) << "it was a question";
}

TEST_F(WindowClosingTest, ACommandThatFailsInTheMeantimeKeepsTheWindow)
{
    terrain::Gate at_the_end(100);
    runner().report_also_to(&at_the_end);
    at_the_end.close();
    // The first report of the end comes before the numbers are looked at.
    ASSERT_TRUE(runner().start(boost::make_shared<terrain::ScaleCommand>(current().id(), 1e308)));
    ASSERT_TRUE(support::wait_until([&at_the_end] { return at_the_end.holds(); }));
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Ok);
    EXPECT_FALSE(window->close());
    at_the_end.open();
    runner().wait();
    EXPECT_TRUE(dialogs.shown().at(0).text.contains("too large"));
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(documents(), 1);
    runner().report_also_to(nullptr);
    log.take_all();
}

TEST_F(WindowClosingTest, AWindowThatGoesAbandonsTheCommand)
{
    const auto before = bits(current());
    begin_and_hold();
    std::thread opener([this] {
        while (!housekeeping::TestAccess::cancel_requested(*sp_running)) {
            std::this_thread::yield();
        }
        gate.open();
    });
    window.reset();
    opener.join();
    EXPECT_FALSE(runner().is_running());
    QCoreApplication::processEvents(); // what the run has left behind is harmless
    EXPECT_EQ(bits(current()), before);
}

TEST_F(WindowClosingTest, NoCommandRunsAfterTheEnd)
{
    const auto before = bits(current());
    housekeeping::CommandManager::instance().finish();
    run(boost::make_shared<terrain::ScaleCommand>(current().id(), 2));
    EXPECT_EQ(bits(current()), before);
    EXPECT_FALSE(DocumentManager::instance().documents_busy());
}

// --- asked once, and again when something has changed

TEST_F(WindowClosingTest, ARestartAsksOnce)
{
    change();
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Discard);
    window->action(Deed::Restart).trigger();
    EXPECT_EQ(dialogs.shown().size(), 1u);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(documents(), 0);
    EXPECT_TRUE(log.take("The program could not be started again: " + scratch("no program")))
        << "this is how far it got";
}

TEST_F(WindowClosingTest, ARestartThatTheUserDoesNotWantLeavesEverything)
{
    change();
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Cancel);
    window->action(Deed::Restart).trigger();
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(documents(), 1);
    EXPECT_EQ(log.count("could not be started"), 0);
}

TEST_F(WindowClosingTest, ARestartWritesTheFileOnce)
{
    change();
    const std::string file = scratch("saved.tif");
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Save).click(QMessageBox::No).choose_file(QString::fromStdString(file));
    window->action(Deed::Restart).trigger();
    EXPECT_EQ(documents(), 0);
    EXPECT_TRUE(log.take("Exported"));
    EXPECT_TRUE(log.take("could not be started again"));
}

TEST_F(WindowClosingTest, ARestartCancelsTheRunningCommand)
{
    begin_and_hold();
    QTimer::singleShot(0, window.get(), [this] { gate.open(); });
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Discard);
    window->action(Deed::Restart).trigger();
    EXPECT_EQ(dialogs.shown().size(), 1u);
    EXPECT_FALSE(runner().is_running());
    EXPECT_FALSE(window->isVisible());
    EXPECT_TRUE(log.take("could not be started again"));
}

TEST_F(WindowClosingTest, TheAnswerHoldsForTheCloseThatFollowsAtOnce)
{
    change();
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Discard);
    EXPECT_TRUE(window->may_close());
    EXPECT_TRUE(window->close());
    EXPECT_EQ(dialogs.shown().size(), 1u);
}

TEST_F(WindowClosingTest, AnAnswerIsForgottenWhenTheMainLoopGoesOn)
{
    change();
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Discard).click(QMessageBox::Cancel);
    EXPECT_TRUE(window->may_close());
    QTest::qWait(1);
    EXPECT_FALSE(window->close());
    EXPECT_EQ(dialogs.shown().size(), 2u);
    EXPECT_EQ(documents(), 1);
}

TEST_F(WindowClosingTest, AnAnswerIsForgottenWhenACommandHasRun)
{
    change();
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Discard).click(QMessageBox::Cancel);
    EXPECT_TRUE(window->may_close());
    housekeeping::CommandManager::instance().insert(
        boost::make_shared<terrain::ScaleCommand>(current().id(), 2), false);
    EXPECT_FALSE(window->close());
    EXPECT_EQ(dialogs.shown().size(), 2u);
}

TEST_F(WindowClosingTest, AnAnswerDoesNotCoverADocumentThatWasNotAskedAbout)
{
    open_terrain_file("b.tif");
    EXPECT_TRUE(window->may_close()) << "nothing has changed";
    current().set_modified(true);
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Cancel);
    EXPECT_FALSE(window->close());
    EXPECT_EQ(documents(), 2);
}

TEST_F(WindowClosingTest, ARefusedCloseForgetsTheAnswer)
{
    change();
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Discard);
    EXPECT_TRUE(window->may_close());
    begin_and_hold();
    EXPECT_FALSE(window->close()) << "a command is running";
    gate.open();
    dialogs.click(QMessageBox::Cancel);
    EXPECT_TRUE(support::wait_until([&dialogs] { return dialogs.shown().size() == 2; }));
    EXPECT_TRUE(window->isVisible());
}
