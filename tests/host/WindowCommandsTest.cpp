#include "CommandFixture.h"
#include "RasterFiles.h"
#include "WindowFixture.h"
#include "commands/CommandsController.h"
#include "commands/ScaleCommand.h"
#include "commands/SmoothCommand.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "help/TerrainQuickHelp.h"
#include "panels/HistoryModel.h"
#include "panels/HistoryPanel.h"
#include "panels/HomePanel.h"
#include "panels/QuickHelpPanel.h"
#include "panels/QuickHelpSheet.h"
#include "presentations/CommandsPresentation.h"
#include "presentations/ProgressPresentation.h"
#include "support/DialogDriver.h"
#include "support/MessageSpy.h"
#include "support/TestAccess.h"
#include "tour/Gate.h"
#include "views/TerrainView.h"
#include "views/TerrainWatch.h"

#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/HousekeepingException.h>
#include <tarqa/housekeeping/ProgressBarsController.h>
#include <tarqa/housekeeping/gui/UndoRedoPresentation.h>

#include <QtTest/QSignalSpy>
#include <QtTest/QTest>
#include <QtWidgets/QAction>
#include <QtWidgets/QDoubleSpinBox>
#include <QtWidgets/QListWidget>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QToolBar>
#include <QtWidgets/QToolButton>

#include <boost/make_shared.hpp>

using namespace host_test;
using housekeeping::DocumentManager;
using housekeeping::gui::UndoRedoPresentation;
using support::DialogDriver;
using terrain::CommandRunner;
using terrain::CommandsPresentation;
using terrain::ProgressPresentation;
using terrain::SmoothCommand;
using terrain::TerrainWatch;

namespace {

class WindowCommandsTest : public WindowTest
{
protected:
    void SetUp() override
    {
        WindowTest::SetUp();
        runner().report_also_to(&gate);
    }
    void TearDown() override
    {
        gate.open();
        runner().abandon();
        runner().report_also_to(nullptr);
        WindowTest::TearDown();
    }

    static CommandsPresentation& tools() { return CommandsPresentation::instance(); }
    static ProgressPresentation& progress() { return ProgressPresentation::instance(); }
    static UndoRedoPresentation& undo_redo() { return *UndoRedoPresentation::instance(); }

    /// Begins a command and waits until the gate holds it up.
    void begin_and_hold()
    {
        gate.close();
        ASSERT_TRUE(runner().start(boost::make_shared<SmoothCommand>(current().id(), 2)));
        ASSERT_TRUE(support::wait_until(
            [this] { return gate.holds() && progress().bar()->value() > 0 && !history().isEmpty(); }));
    }

    QStringList history() const
    {
        QStringList texts;
        for (const terrain::HistoryLine& line : window->history().model().lines()) {
            if (line.kind == terrain::HistoryLine::Kind::Done
                || line.kind == terrain::HistoryLine::Kind::Undone) {
                texts.append(line.text);
            }
        }
        return texts;
    }

    /// Enters numbers into the dialog of a command and accepts it.
    static DialogDriver::Answer enter(const std::vector<double>& numbers)
    {
        return [numbers](QDialog& dialog) {
            const auto boxes = dialog.findChildren<QDoubleSpinBox*>();
            ASSERT_EQ(boxes.size(), static_cast<int>(numbers.size()));
            for (int i = 0; i < boxes.size(); ++i) {
                boxes[i]->setValue(numbers[static_cast<std::size_t>(i)]);
            }
            dialog.accept();
        };
    }

    terrain::Gate gate{40};
};

} // namespace

// --- menus

TEST_F(WindowCommandsTest, TheToolsNeedADocument)
{
    EXPECT_FALSE(tools().fill_sinks_action()->isEnabled());
    open_terrain_file("a.tif");
    EXPECT_TRUE(tools().fill_sinks_action()->isEnabled());
    window->close_document();
    EXPECT_FALSE(tools().fill_sinks_action()->isEnabled());
    tools().fill_sinks_action()->trigger(); // nothing happens
    EXPECT_FALSE(runner().is_running());
}

TEST_F(WindowCommandsTest, TheQuickHelpTellsTheKeysOfUndoAndRedoToo)
{
    EXPECT_EQ(window->quick_help().sheet().rows(), terrain::TerrainQuickHelp::rows(false) + 2);
    open_terrain_file("a.tif");
    EXPECT_EQ(window->quick_help().sheet().rows(), terrain::TerrainQuickHelp::rows(true) + 2);
}

// --- commands

TEST_F(WindowCommandsTest, ACommandOfTheMenuRunsInAnotherThreadAndTheMapFollows)
{
    open_terrain_file("a.tif");
    const auto before = bits(current());
    const QImage picture = window->view()->grab().toImage();
    support::CommandMessageSpy spy(support::Subscription::None);
    housekeeping::CommandMessage::subscribe(&spy, Qt::DirectConnection);
    tools().fill_sinks_action()->trigger();
    EXPECT_TRUE(runner().is_running());
    EXPECT_TRUE(DocumentManager::instance().document_busy(current().id()));
    runner().wait();
    EXPECT_FALSE(runner().is_running());
    EXPECT_FALSE(DocumentManager::instance().documents_busy());
    ASSERT_EQ(spy.count(), 1);
    EXPECT_NE(spy.received()[0].thread, QThread::currentThread());
    EXPECT_NE(bits(current()), before);
    EXPECT_NE(window->view()->grab().toImage(), picture);
    EXPECT_EQ(window->statusBar()->currentMessage(), "Fill sinks: done");
    EXPECT_TRUE(window->isWindowModified());
    EXPECT_EQ(history().size(), 1);
}

TEST_F(WindowCommandsTest, ADialogAsksForTheParametersAndProposesThoseOfTheLastTime)
{
    open_terrain_file("a.tif");
    const auto before = bits(current());
    double proposed = 0;
    DialogDriver dialogs;
    dialogs.answer(enter({3})).answer([&proposed](QDialog& dialog) {
        proposed = dialog.findChild<QDoubleSpinBox*>()->value();
        dialog.reject();
    });
    tools().smooth_action()->trigger();
    runner().wait();
    EXPECT_EQ(dialogs.shown().at(0).title, "Smooth");
    EXPECT_NE(bits(current()), before);
    ASSERT_EQ(history().size(), 1);
    EXPECT_TRUE(history()[0].startsWith("Smooth: radius 3")) << history()[0].toStdString();
    tools().smooth_action()->trigger();
    EXPECT_EQ(proposed, 3);
    EXPECT_FALSE(runner().is_running()) << "the dialog was cancelled";
    EXPECT_EQ(history().size(), 1);
}

TEST_F(WindowCommandsTest, EachDocumentHasParametersOfItsOwn)
{
    open_terrain_file("a.tif");
    const housekeeping::DocumentId first = current().id();
    terrain::CommandsController::instance().state()->radius = 9;
    open_terrain_file("b.tif");
    EXPECT_EQ(terrain::CommandsController::instance().state()->radius, 2);
    DocumentManager::instance().current_document(first);
    EXPECT_EQ(terrain::CommandsController::instance().state()->radius, 9);
}

TEST_F(WindowCommandsTest, ClampAndScaleAskToo)
{
    open_terrain_file("a.tif");
    DialogDriver dialogs;
    dialogs.answer(enter({310, 320})).answer(enter({2}));
    tools().clamp_action()->trigger();
    runner().wait();
    tools().scale_action()->trigger();
    runner().wait();
    tools().clean_up_action()->trigger();
    runner().wait();
    ASSERT_EQ(history().size(), 3);
    EXPECT_TRUE(history()[2].startsWith("Clamp: 310 to 320"));
    EXPECT_TRUE(history()[1].startsWith("Scale: factor 2"));
    EXPECT_TRUE(history()[0].startsWith("Clean up"));
}

TEST_F(WindowCommandsTest, AFailureIsShownInABox)
{
    open_terrain_file("a.tif");
    const auto before = bits(current());
    DialogDriver dialogs;
    dialogs.answer(enter({320, 310})).click(QMessageBox::Ok);
    tools().clamp_action()->trigger();
    runner().wait();
    ASSERT_EQ(dialogs.shown().size(), 2u);
    EXPECT_EQ(dialogs.shown()[1].title, "Clamp");
    EXPECT_EQ(dialogs.shown()[1].text.trimmed(), "The lower bound is above the upper one");
    EXPECT_EQ(bits(current()), before);
    EXPECT_EQ(window->statusBar()->currentMessage(), "Clamp: failed");
    EXPECT_FALSE(DocumentManager::instance().documents_busy());
    log.take_all();
}

TEST_F(WindowCommandsTest, TheBoxOfAFailureBelongsToTheWindow)
{
    open_terrain_file("a.tif");
    qRegisterMetaType<CommandRunner::Outcome>();
    const QSignalSpy finished(&runner(), &CommandRunner::finished);
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Ok);
    // The height gets too large for a number.
    run(boost::make_shared<terrain::ScaleCommand>(current().id(), 1e308));
    ASSERT_EQ(finished.count(), 1);
    EXPECT_EQ(finished[0][0].value<CommandRunner::Outcome>(), CommandRunner::Outcome::Failed);
    EXPECT_TRUE(dialogs.shown().at(0).text.contains("too large for a number"));
    EXPECT_EQ(dialogs.shown()[0].parent, window.get());
    log.take_all();
}

// --- while a command runs

TEST_F(WindowCommandsTest, TheProgressIsInTheStatusBarWhileACommandRuns)
{
    EXPECT_FALSE(progress().bar()->isVisible());
    open_terrain_file("a.tif");
    begin_and_hold();
    EXPECT_TRUE(progress().bar()->isVisible());
    EXPECT_GE(progress().bar()->value(), 40);
    EXPECT_LT(progress().bar()->value(), 100);
    EXPECT_TRUE(progress().cancel_button()->isEnabled());
    gate.open();
    runner().wait();
    EXPECT_FALSE(progress().bar()->isVisible());
}

TEST_F(WindowCommandsTest, TheWindowIsAliveWhileACommandRuns)
{
    open_terrain_file("a.tif");
    open_terrain_file("b.tif");
    begin_and_hold();
    const double scale = window->view()->scale();
    QTest::keyClick(window->view(), Qt::Key_Plus);
    EXPECT_GT(window->view()->scale(), scale);
    EXPECT_EQ(window->view()->reading_text(window->view()->rect().center()), "")
        << "nobody reads the cells while the command may write them";
    QListWidget& list = window->home().documents();
    QTest::mouseClick(
        list.viewport(), Qt::LeftButton, Qt::NoModifier, list.visualItemRect(list.item(0)).center());
    EXPECT_EQ(current().short_title(), "a");
    EXPECT_NE(window->view()->reading_text(window->view()->rect().center()), "") << "this one is free";
    window->close_document();
    EXPECT_EQ(documents(), 1);
    open_terrain_file("c.tif");
    EXPECT_EQ(documents(), 2);
    EXPECT_TRUE(runner().is_running());
    gate.open();
    runner().wait();
    EXPECT_EQ(current().short_title(), "c");
}

TEST_F(WindowCommandsTest, TheCancelButtonCancels)
{
    open_terrain_file("a.tif");
    const auto before = bits(current());
    begin_and_hold();
    QTest::mouseClick(progress().cancel_button(), Qt::LeftButton);
    EXPECT_FALSE(progress().cancel_button()->isEnabled());
    gate.open();
    runner().wait();
    EXPECT_EQ(bits(current()), before);
    EXPECT_EQ(window->statusBar()->currentMessage(), "Smooth: cancelled");
    EXPECT_EQ(history().size(), 1) << "it is in the history all the same";

    // The next run is not cancelled, and neither is a redo.
    undo_redo().undo();
    undo_redo().redo();
    EXPECT_NE(bits(current()), before);
}

TEST_F(WindowCommandsTest, ARequestThatComesTooLateCancelsNoRedo)
{
    open_terrain_file("a.tif");
    const auto before = bits(current());
    const auto sp_command = boost::make_shared<terrain::ScaleCommand>(current().id(), 2);
    int ends = 0;
    RecordingProgress sink;
    sink.on_report = [&sp_command, &ends](unsigned int percentage) {
        if (percentage == 100 && ++ends == 2) { // the last report, after which nobody looks
            sp_command->request_cancel();
        }
    };
    runner().report_also_to(&sink);
    run(sp_command);
    EXPECT_EQ(ends, 2);
    const auto done = bits(current());
    EXPECT_NE(done, before);
    EXPECT_FALSE(housekeeping::TestAccess::cancel_requested(*sp_command));
    undo_redo().undo();
    undo_redo().redo();
    EXPECT_EQ(bits(current()), done);
}

TEST_F(WindowCommandsTest, ARunEndsWhateverThoseThrowWhoAreTold)
{
    open_terrain_file("a.tif");
    int heard = 0;
    const TerrainWatch exceptional(current().id(), [](const terrain::CellChanges&) {
        throw housekeeping::HousekeepingException(1, "No drawing", "test", 1);
    });
    QString problem;
    const TerrainWatch standard(
        current().id(), [](const terrain::CellChanges&) { throw std::runtime_error("No room"); },
        [&problem](const QString& text) { problem = text; });
    const TerrainWatch other(current().id(), [&heard](const terrain::CellChanges&) { ++heard; });
    const QSignalSpy finished(&runner(), &CommandRunner::finished);
    run(boost::make_shared<SmoothCommand>(current().id(), 1));
    EXPECT_EQ(finished.size(), 1);
    EXPECT_EQ(heard, 1) << "the others are told all the same";
    EXPECT_EQ(problem, "No room");
    EXPECT_FALSE(current().is_busy());
    EXPECT_TRUE(log.take("No drawing"));
    EXPECT_TRUE(log.take("No room"));
    log.take_all();
}

TEST_F(WindowCommandsTest, ARunEndsAlsoIfTheMessageOfItsEndFails)
{
    open_terrain_file("a.tif");
    support::DocumentMessageSpy spy;
    bool has_thrown = false;
    spy.run_in_slot([&has_thrown](housekeeping::DocumentMessage& message) {
        if (message.doc_change_type() == housekeeping::DocumentMessage::Idle) {
            has_thrown = true;
            throw std::runtime_error("Not idle");
        }
    });
    const QSignalSpy finished(&runner(), &CommandRunner::finished);
    run(boost::make_shared<SmoothCommand>(current().id(), 1));
    EXPECT_EQ(finished.size(), 1);
    EXPECT_TRUE(has_thrown);
    EXPECT_FALSE(runner().is_running());
    EXPECT_FALSE(current().is_busy());
    EXPECT_TRUE(log.take("Not idle"));
    log.take_all();
}

TEST_F(WindowCommandsTest, OneCommandAtATime)
{
    open_terrain_file("a.tif");
    begin_and_hold();
    tools().fill_sinks_action()->trigger();
    EXPECT_EQ(window->statusBar()->currentMessage(),
        "A command is running. Wait until it has ended, or cancel it.");
    EXPECT_FALSE(runner().start(boost::make_shared<SmoothCommand>(current().id(), 1)));
    tools().smooth_action()->trigger(); // asks for nothing
    EXPECT_EQ(history().size(), 1);
    gate.open();
    runner().wait();
    EXPECT_EQ(history().size(), 1);
    tools().fill_sinks_action()->trigger();
    runner().wait();
    EXPECT_EQ(history().size(), 2);
}

TEST_F(WindowCommandsTest, NothingStartsWhileSomebodyElseHoldsADocument)
{
    open_terrain_file("a.tif");
    DocumentManager::instance().document_busy(current().id(), true);
    EXPECT_FALSE(runner().start(boost::make_shared<SmoothCommand>(current().id(), 1)));
    EXPECT_FALSE(runner().is_running());
    DocumentManager::instance().document_busy(current().id(), false);
    EXPECT_EQ(history(), QStringList());
}

TEST_F(WindowCommandsTest, UndoHasItsPlainTextWhileACommandRunsAndDoesNothing)
{
    open_terrain_file("a.tif");
    run(boost::make_shared<terrain::ScaleCommand>(current().id(), 2));
    EXPECT_EQ(undo_redo().undo_action()->text(), "&Undo Scale");
    const auto before = bits(current());
    begin_and_hold();
    EXPECT_EQ(undo_redo().undo_action()->text(), "&Undo");
    EXPECT_EQ(undo_redo().undo_tool_bar_action()->menu(), nullptr);
    undo_redo().undo();
    QTest::keyClick(window->view(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(current().document_history().undoSize(), 2u);
    gate.open();
    runner().wait();
    EXPECT_EQ(undo_redo().undo_action()->text(), "&Undo Smooth");
    EXPECT_NE(undo_redo().undo_tool_bar_action()->menu(), nullptr);
    undo_redo().undo();
    EXPECT_EQ(bits(current()), before);
}

TEST_F(WindowCommandsTest, ABusyDocumentStaysOpen)
{
    open_terrain_file("a.tif");
    begin_and_hold();
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Ok);
    window->close_document();
    EXPECT_TRUE(dialogs.shown().at(0).text.contains("a.tif\" is busy"));
    EXPECT_EQ(documents(), 1);
    EXPECT_FALSE(DocumentManager::instance().destroy_document(
        current().id(), false, false, false, housekeeping::DocumentId::null()));
    gate.open();
    runner().wait();
    log.take_all();
}

TEST_F(WindowCommandsTest, UndoKeepsItsPlainTextWhenAnotherDocumentIsChosenMeanwhile)
{
    open_terrain_file("a.tif");
    const housekeeping::DocumentId first = current().id();
    run(boost::make_shared<terrain::ScaleCommand>(first, 2));
    open_terrain_file("b.tif");
    begin_and_hold();
    DocumentManager::instance().current_document(first);
    EXPECT_EQ(undo_redo().undo_action()->text(), "&Undo");
    gate.open();
    runner().wait();
    EXPECT_EQ(undo_redo().undo_action()->text(), "&Undo Scale");
}

// --- undo and redo

TEST_F(WindowCommandsTest, TheMapFollowsUndoAndRedo)
{
    open_terrain_file("a.tif");
    const QImage first = window->view()->grab().toImage();
    run(boost::make_shared<SmoothCommand>(current().id(), 2));
    const QImage smooth = window->view()->grab().toImage();
    EXPECT_NE(first, smooth);
    undo_redo().undo();
    EXPECT_EQ(window->view()->grab().toImage(), first);
    undo_redo().redo();
    EXPECT_EQ(window->view()->grab().toImage(), smooth);
}

TEST_F(WindowCommandsTest, TheKeysOfUndoAndRedoWorkInTheMapAndInThePanels)
{
    open_terrain_file("a.tif");
    const auto before = bits(current());
    run(boost::make_shared<SmoothCommand>(current().id(), 1));
    const auto after = bits(current());
    for (QWidget* const p_widget : std::initializer_list<QWidget*>{
             window->view(), &window->home().documents(), &window->history().entries()}) {
        if (p_widget == &window->history().entries()) {
            window->show_panel(window->history());
        }
        p_widget->setFocus();
        ASSERT_EQ(QApplication::focusWidget(), p_widget);
        QTest::keyClick(p_widget, Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(bits(current()), before) << p_widget->metaObject()->className();
        QTest::keyClick(p_widget, Qt::Key_Y, Qt::ControlModifier);
        EXPECT_EQ(bits(current()), after) << p_widget->metaObject()->className();
    }
}

TEST_F(WindowCommandsTest, AnEntryOfTheListUndoesAllUpToIt)
{
    open_terrain_file("a.tif");
    run(boost::make_shared<terrain::ScaleCommand>(current().id(), 2));
    const auto first = bits(current());
    run(boost::make_shared<SmoothCommand>(current().id(), 1));
    run(boost::make_shared<SmoothCommand>(current().id(), 2));
    QMenu* const p_list = undo_redo().undo_tool_bar_action()->menu();
    ASSERT_NE(p_list, nullptr);
    p_list->popup(window->mapToGlobal(QPoint(50, 50)));
    p_list->setActiveAction(p_list->actions()[1]);
    EXPECT_EQ(p_list->actions().last()->text(), "Undo 2 Actions");
    QTest::mouseClick(
        p_list, Qt::LeftButton, Qt::NoModifier, p_list->actionGeometry(p_list->actions()[1]).center());
    EXPECT_EQ(bits(current()), first);
    EXPECT_EQ(current().document_history().redoSize(), 2u);
}

TEST_F(WindowCommandsTest, TheButtonOfTheToolBarUndoes)
{
    open_terrain_file("a.tif");
    const auto before = bits(current());
    run(boost::make_shared<terrain::ScaleCommand>(current().id(), 2));
    QWidget* const p_button = window->tool_bar().widgetForAction(undo_redo().undo_tool_bar_action());
    QTest::mouseClick(p_button, Qt::LeftButton, Qt::NoModifier, QPoint(10, p_button->height() / 2));
    EXPECT_EQ(bits(current()), before);
}
