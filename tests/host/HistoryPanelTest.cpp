#include "panels/HistoryPanel.h"
#include "CommandFixture.h"
#include "RasterFiles.h"
#include "WindowFixture.h"
#include "commands/ClampCommand.h"
#include "commands/CommandRunner.h"
#include "commands/ScaleCommand.h"
#include "commands/SmoothCommand.h"
#include "documents/TerrainDocument.h"
#include "panels/HistoryModel.h"
#include "support/DialogDriver.h"
#include "support/MessageSpy.h"
#include "tour/Gate.h"
#include "views/TerrainView.h"

#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/FailedCommandException.h>

#include <QtGui/QFont>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QListView>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QStatusBar>

#include <boost/make_shared.hpp>

using namespace host_test;
using housekeeping::DocumentManager;
using support::DialogDriver;
using terrain::HistoryLine;
using terrain::HistoryModel;
using terrain::HistoryPanel;
using terrain::ScaleCommand;
using terrain::SmoothCommand;

namespace {

typedef HistoryLine::Kind Kind;

/// A command that costs nothing, and fails when it is told to.
class CountCommand : public housekeeping::AbstractCommand
{
public:
    CountCommand(housekeeping::DocumentId document, int& counted)
        : AbstractCommand(document, "Count")
        , m_counted(counted)
    { }

    bool fails = false;

protected:
    void remember() override { }
    void do_command() override
    {
        if (fails) {
            throw housekeeping::FailedCommandException(1, "Cannot count", "test", 1);
        }
        ++m_counted;
        m_is_done = true;
    }
    void undo_command() override { rollback(); }
    void rollback() override
    {
        m_counted -= m_is_done;
        m_is_done = false;
    }

private:
    int& m_counted;
    bool m_is_done = false;
};

class HistoryPanelTest : public WindowTest
{
protected:
    void SetUp() override
    {
        WindowTest::SetUp();
        window->show_panel(panel());
    }

    HistoryPanel& panel() const { return window->history(); }
    const HistoryModel& model() const { return panel().model(); }
    QListView& list() const { return panel().entries(); }

    /// A document with three commands; its cells after none, one, two and all of them.
    void run_three()
    {
        open_terrain_file("a.tif");
        states.push_back(bits(current()));
        const housekeeping::DocumentId id = current().id();
        for (const auto& sp_command : std::vector<boost::shared_ptr<housekeeping::AbstractCommand>>{
                 boost::make_shared<ScaleCommand>(id, 2), boost::make_shared<SmoothCommand>(id, 1),
                 boost::make_shared<SmoothCommand>(id, 2)}) {
            run(sp_command);
            states.push_back(bits(current()));
        }
    }

    /// Puts commands that were never run into the history: quick, however many they are.
    void fill_history(int commands)
    {
        for (int i = 0; i < commands; ++i) {
            current().document_history().insertUndoCommand(
                boost::make_shared<CountCommand>(current().id(), counted));
        }
    }

    /// Clicks in the middle of a line, where it is in the list.
    void click(int row) const
    {
        list().scrollTo(model().index(row));
        QTest::mouseClick(list().viewport(), Qt::LeftButton, Qt::NoModifier,
            list().visualRect(model().index(row)).center());
    }

    QString data(int row, int role) const { return model().index(row).data(role).toString(); }
    int present() const { return model().present().row(); }
    std::vector<Kind> kinds() const
    {
        std::vector<Kind> kinds;
        for (const HistoryLine& line : model().lines()) {
            kinds.push_back(line.kind);
        }
        return kinds;
    }
    int rows() const { return model().rowCount(); }

    std::vector<std::vector<unsigned long long>> states;
    int counted = 0;
};

} // namespace

TEST_F(HistoryPanelTest, IsEmptyWithoutADocument)
{
    EXPECT_EQ(rows(), 0);
    EXPECT_FALSE(model().present().isValid());
    QTest::mouseClick(list().viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(20, 10));
    list().setFocus();
    QTest::keyClick(&list(), Qt::Key_Return);
    EXPECT_EQ(documents(), 0);
}

TEST_F(HistoryPanelTest, ADocumentThatWasJustOpenedHasOneLine)
{
    open_terrain_file("a.tif");
    ASSERT_EQ(kinds(), std::vector<Kind>{Kind::Opened});
    EXPECT_EQ(data(0, Qt::DisplayRole), "Opened");
    EXPECT_EQ(present(), 0);
    click(0);
    EXPECT_FALSE(current().is_modified());
}

TEST_F(HistoryPanelTest, ListsTheNewestFirstAndTheOpenedDocumentLast)
{
    run_three();
    ASSERT_EQ(kinds(), (std::vector<Kind>{Kind::Done, Kind::Done, Kind::Done, Kind::Opened}));
    EXPECT_TRUE(data(0, Qt::DisplayRole).startsWith("Smooth: radius 2"));
    EXPECT_TRUE(data(2, Qt::DisplayRole).startsWith("Scale: factor 2"));
    EXPECT_EQ(model().commands(), 3);
    EXPECT_EQ(present(), 0);
}

TEST_F(HistoryPanelTest, AClickUndoesEverythingAboveIt)
{
    run_three();
    click(2);
    EXPECT_EQ(bits(current()), states[1]);
    EXPECT_EQ(current().document_history().undoSize(), 1u);
    EXPECT_EQ(current().document_history().redoSize(), 2u);
    EXPECT_EQ(kinds(), (std::vector<Kind>{Kind::Undone, Kind::Undone, Kind::Done, Kind::Opened}));
    EXPECT_EQ(present(), 2);
}

TEST_F(HistoryPanelTest, AClickRedoesUpToItself)
{
    run_three();
    click(3);
    EXPECT_EQ(bits(current()), states[0]);
    EXPECT_EQ(present(), 3);
    click(1);
    EXPECT_EQ(bits(current()), states[2]);
    EXPECT_EQ(present(), 1);
    click(0);
    EXPECT_EQ(bits(current()), states[3]);
    EXPECT_EQ(current().document_history().redoSize(), 0u);
}

TEST_F(HistoryPanelTest, AClickOnThePresentChangesNothing)
{
    run_three();
    click(1);
    click(1);
    QTest::mouseDClick(
        list().viewport(), Qt::LeftButton, Qt::NoModifier, list().visualRect(model().index(1)).center());
    EXPECT_EQ(bits(current()), states[2]);
    EXPECT_EQ(present(), 1);
}

TEST_F(HistoryPanelTest, OnlyTheLeftButtonAndOnlyALineActs)
{
    run_three();
    QTest::mouseClick(
        list().viewport(), Qt::RightButton, Qt::NoModifier, list().visualRect(model().index(3)).center());
    QTest::mouseClick(list().viewport(), Qt::LeftButton, Qt::NoModifier,
        list().visualRect(model().index(3)).center() + QPoint(0, 80));
    QTest::mousePress(
        list().viewport(), Qt::LeftButton, Qt::NoModifier, list().visualRect(model().index(3)).center());
    QTest::mouseRelease(
        list().viewport(), Qt::LeftButton, Qt::NoModifier, list().visualRect(model().index(1)).center());
    EXPECT_EQ(bits(current()), states[3]);
}

TEST_F(HistoryPanelTest, TheKeysMoveAndChoose)
{
    run_three();
    list().setFocus();
    EXPECT_EQ(list().currentIndex().row(), 0) << "where the document is";
    QTest::keyClick(&list(), Qt::Key_Down);
    QTest::keyClick(&list(), Qt::Key_Down);
    EXPECT_EQ(bits(current()), states[3]) << "moving is not choosing";
    QTest::keyClick(&list(), Qt::Key_Return);
    EXPECT_EQ(bits(current()), states[1]);
    EXPECT_EQ(QApplication::focusWidget(), &list());
    QTest::keyClick(&list(), Qt::Key_Up);
    QTest::keyClick(&list(), Qt::Key_Space);
    EXPECT_EQ(bits(current()), states[2]);
    QTest::keyClick(&list(), Qt::Key_End);
    QTest::keyClick(&list(), Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(bits(current()), states[0]);
    QTest::keyClick(&list(), Qt::Key_Home);
    QTest::keyClick(&list(), Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(bits(current()), states[0]) << "that is another key";
}

TEST_F(HistoryPanelTest, TheKeysOfUndoAndRedoLeadThePresentThroughTheList)
{
    run_three();
    list().setFocus();
    QTest::keyClick(&list(), Qt::Key_Z, Qt::ControlModifier);
    QTest::keyClick(&list(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(bits(current()), states[1]);
    EXPECT_EQ(present(), 2);
    EXPECT_EQ(list().currentIndex().row(), 2);
    EXPECT_TRUE(list().selectionModel()->isSelected(model().index(2)));
    QTest::keyClick(&list(), Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(present(), 1);
}

TEST_F(HistoryPanelTest, ThePresentIsMarkedByMoreThanColour)
{
    run_three();
    click(1);
    EXPECT_TRUE(model().index(1).data(Qt::FontRole).value<QFont>().bold());
    EXPECT_FALSE(model().index(2).data(Qt::FontRole).value<QFont>().bold());
    EXPECT_TRUE(model().index(0).data(Qt::FontRole).value<QFont>().italic()) << "it is undone";
    EXPECT_EQ(data(1, Qt::AccessibleTextRole), "Present state: " + data(1, Qt::DisplayRole));
    EXPECT_EQ(data(0, Qt::AccessibleTextRole), "Undone: " + data(0, Qt::DisplayRole));
    EXPECT_EQ(data(2, Qt::AccessibleTextRole), data(2, Qt::DisplayRole));
    // The arrow is drawn where the other lines have nothing.
    list().clearSelection();
    const auto gutter = [this](int row) {
        QRect place = list().visualRect(model().index(row));
        place.setWidth(14);
        return list().viewport()->grab(place).toImage();
    };
    EXPECT_NE(gutter(1), gutter(2));
    EXPECT_EQ(
        gutter(2).convertToFormat(QImage::Format_RGB32), gutter(3).convertToFormat(QImage::Format_RGB32));
}

TEST_F(HistoryPanelTest, SaysWhatAClickDoes)
{
    run_three();
    EXPECT_EQ(data(0, Qt::StatusTipRole), "This is the present state");
    EXPECT_EQ(data(1, Qt::StatusTipRole), "Undo 1 step");
    EXPECT_EQ(data(3, Qt::StatusTipRole), "Undo 3 steps");
    EXPECT_TRUE(data(3, Qt::ToolTipRole).endsWith("\nUndo 3 steps"));
    click(3);
    EXPECT_EQ(data(0, Qt::StatusTipRole), "Redo 3 steps");
    EXPECT_EQ(data(2, Qt::AccessibleDescriptionRole), "Redo 1 step");

    QTest::mouseMove(list().viewport(), list().visualRect(model().index(1)).center());
    QMouseEvent move(QEvent::MouseMove, list().visualRect(model().index(0)).center(), Qt::NoButton,
        Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(list().viewport(), &move);
    EXPECT_EQ(window->statusBar()->currentMessage(), "Redo 3 steps");
}

TEST_F(HistoryPanelTest, ShowsTheIconsOfTheCommands)
{
    open_terrain_file("a.tif");
    QPixmap red(16, 16);
    red.fill(Qt::red);
    const auto sp_command = boost::make_shared<CountCommand>(current().id(), counted);
    sp_command->setIcon(QIcon(red));
    insert(sp_command);
    const auto icon = model().index(0).data(Qt::DecorationRole).value<QIcon>();
    EXPECT_EQ(icon.pixmap(16).toImage().pixelColor(8, 8), QColor(Qt::red));
    list().clearSelection(); // in which icons are tinted
    const QImage line = list().viewport()->grab(list().visualRect(model().index(0))).toImage();
    bool has_red = false;
    for (int x = 0; x < line.width(); ++x) {
        has_red = has_red || line.pixelColor(x, line.height() / 2) == QColor(Qt::red);
    }
    EXPECT_TRUE(has_red);
}

TEST_F(HistoryPanelTest, IsLockedWhileACommandRuns)
{
    run_three();
    terrain::Gate gate(40);
    runner().report_also_to(&gate);
    gate.close();
    ASSERT_TRUE(runner().start(boost::make_shared<SmoothCommand>(current().id(), 3)));
    ASSERT_TRUE(support::wait_until([&] { return gate.holds() && model().commands() == 4; }));
    EXPECT_TRUE(model().is_locked());
    for (int row = 0; row < rows(); ++row) {
        EXPECT_FALSE(model().flags(model().index(row)) & Qt::ItemIsEnabled) << row;
    }
    EXPECT_EQ(data(4, Qt::StatusTipRole), "Wait until the running command has ended");
    click(4);
    list().setFocus();
    QTest::keyClick(&list(), Qt::Key_Return);
    EXPECT_EQ(current().document_history().undoSize(), 4u);

    gate.open();
    runner().wait();
    runner().report_also_to(nullptr);
    EXPECT_FALSE(model().is_locked());
    click(4);
    EXPECT_EQ(bits(current()), states[0]);
}

TEST_F(HistoryPanelTest, IsLockedWhileAnotherDocumentIsBusy)
{
    run_three();
    const housekeeping::DocumentId first = current().id();
    open_terrain_file("b.tif");
    const housekeeping::DocumentId second = current().id();
    DocumentManager::instance().document_busy(second, true);
    DocumentManager::instance().current_document(first);
    click(3);
    EXPECT_EQ(bits(current()), states[3]);
    DocumentManager::instance().document_busy(second, false);
    click(3);
    EXPECT_EQ(bits(current()), states[0]);
}

TEST_F(HistoryPanelTest, FollowsFromDocumentToDocument)
{
    run_three();
    const housekeeping::DocumentId first = current().id();
    click(2);
    open_terrain_file("b.tif");
    EXPECT_EQ(kinds(), std::vector<Kind>{Kind::Opened});
    EXPECT_EQ(list().currentIndex().row(), 0);
    DocumentManager::instance().current_document(first);
    EXPECT_EQ(rows(), 4);
    EXPECT_EQ(present(), 2);
    EXPECT_EQ(list().currentIndex().row(), 2);
    click(3);
    EXPECT_EQ(bits(current()), states[0]);
}

TEST_F(HistoryPanelTest, TheCurrentLineIsNotThatOfAnotherDocument)
{
    open_terrain_file("a.tif");
    fill_history(2);
    const housekeeping::DocumentId first = current().id();
    open_terrain_file("b.tif");
    fill_history(2);
    DocumentManager::instance().current_document(first);
    panel().refresh();
    list().setCurrentIndex(model().index(2));
    panel().refresh();
    EXPECT_EQ(list().currentIndex().row(), 2) << "kept in the same document";
    window->close_document();
    ASSERT_EQ(rows(), 3);
    EXPECT_EQ(present(), 0);
    EXPECT_EQ(list().currentIndex().row(), 0);
}

TEST_F(HistoryPanelTest, ANewCommandTakesThePlaceOfWhatWasUndone)
{
    run_three();
    click(2);
    run(boost::make_shared<ScaleCommand>(current().id(), 3));
    ASSERT_EQ(kinds(), (std::vector<Kind>{Kind::Done, Kind::Done, Kind::Opened}));
    EXPECT_EQ(present(), 0);
    EXPECT_TRUE(data(0, Qt::DisplayRole).startsWith("Scale: factor 3"));
    click(1);
    EXPECT_EQ(bits(current()), states[1]);
}

TEST_F(HistoryPanelTest, ACommandThatFailsInRedoIsToldAndTheOthersAreRedone)
{
    open_terrain_file("a.tif");
    std::vector<boost::shared_ptr<CountCommand>> commands;
    for (int i = 0; i < 3; ++i) {
        commands.push_back(boost::make_shared<CountCommand>(current().id(), counted));
        insert(commands.back());
    }
    ASSERT_EQ(counted, 3);
    click(3);
    ASSERT_EQ(counted, 0);
    commands[1]->fails = true;
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Ok);
    click(0);
    ASSERT_EQ(dialogs.shown().size(), 1u);
    EXPECT_TRUE(dialogs.shown()[0].text.contains("Cannot count"));
    EXPECT_EQ(counted, 2);
    EXPECT_EQ(present(), 0) << "it stays in the history";
    EXPECT_FALSE(model().is_locked());
    click(3);
    EXPECT_EQ(counted, 0) << "undoing it changes nothing";
    log.take_all();
}

TEST_F(HistoryPanelTest, ACommandThatFailedBeforeStaysWithoutAnyCells)
{
    open_terrain_file("a.tif");
    const auto before = bits(current());
    DialogDriver dialogs;
    dialogs.click(QMessageBox::Ok).click(QMessageBox::Ok);
    run(boost::make_shared<terrain::ClampCommand>(current().id(), 5, 1));
    run(boost::make_shared<ScaleCommand>(current().id(), 2));
    const auto after = bits(current());
    click(2);
    EXPECT_EQ(bits(current()), before);
    click(0);
    EXPECT_EQ(bits(current()), after);
    log.take_all();
}

TEST_F(HistoryPanelTest, ListsAHundredOfEachKindAndSaysHowManyAreLeftOut)
{
    open_terrain_file("a.tif");
    fill_history(10000);
    ASSERT_EQ(rows(), 102);
    EXPECT_EQ(model().lines()[100].kind, Kind::Remark);
    EXPECT_EQ(model().lines()[100].text, QLocale().toString(9900) + " older commands are not listed");
    EXPECT_EQ(data(101, Qt::StatusTipRole), "Undo 10000 steps");
    click(100);
    EXPECT_EQ(current().document_history().undoSize(), 10000u) << "a remark is no state";

    click(99);
    EXPECT_EQ(current().document_history().undoSize(), 9901u);
    ASSERT_EQ(rows(), 201);
    EXPECT_EQ(present(), 99);

    list().setFocus();
    QTest::keyClick(&list(), Qt::Key_End);
    QTest::keyClick(&list(), Qt::Key_Return);
    EXPECT_EQ(current().document_history().undoSize(), 0u);
    ASSERT_EQ(rows(), 102);
    EXPECT_EQ(model().lines()[0].text, QLocale().toString(9900) + " more can be redone");
    EXPECT_EQ(present(), 101);
    click(1);
    EXPECT_EQ(counted, 100);
    EXPECT_EQ(current().document_history().undoSize(), 100u);
}

TEST_F(HistoryPanelTest, StaysWhereItIsWhenItIsRefreshed)
{
    open_terrain_file("a.tif");
    fill_history(60);
    list().setCurrentIndex(model().index(40));
    list().verticalScrollBar()->setValue(list().verticalScrollBar()->maximum() / 2);
    const int place = list().verticalScrollBar()->value();
    ASSERT_GT(place, 0);
    panel().refresh();
    EXPECT_EQ(list().verticalScrollBar()->value(), place);
    EXPECT_EQ(list().currentIndex().row(), 40);
}

TEST_F(HistoryPanelTest, KeepsTheLineOnTopWhenAChosenOneIsInSight)
{
    open_terrain_file("a.tif");
    fill_history(60);
    list().scrollTo(model().index(20), QAbstractItemView::PositionAtTop);
    const int place = list().verticalScrollBar()->value();
    QTest::mouseClick(
        list().viewport(), Qt::LeftButton, Qt::NoModifier, list().visualRect(model().index(25)).center());
    EXPECT_EQ(present(), 25);
    EXPECT_EQ(list().verticalScrollBar()->value(), place);
    // A command that was not in sight is: the present leads.
    insert(boost::make_shared<CountCommand>(current().id(), counted));
    EXPECT_EQ(present(), 0);
    EXPECT_TRUE(list().viewport()->rect().contains(list().visualRect(model().present()).center()));
}

TEST_F(HistoryPanelTest, LongTextsEndInDotsAndAreToldInTheToolTip)
{
    open_terrain_file("a.tif");
    const auto sp_command = boost::make_shared<CountCommand>(current().id(), counted);
    const QString text(400, QChar(0x00fc));
    sp_command->setDescription(text.toStdString());
    insert(sp_command);
    EXPECT_LE(list().visualRect(model().index(0)).width(), list().viewport()->width());
    EXPECT_FALSE(list().horizontalScrollBar()->isVisible());
    EXPECT_TRUE(data(0, Qt::ToolTipRole).contains(text));
}

TEST_F(HistoryPanelTest, WorksInAWindowOfItsOwn)
{
    run_three();
    tear_off(panel());
    click(3);
    EXPECT_EQ(bits(current()), states[0]);
    list().setFocus();
    QTest::keyClick(&list(), Qt::Key_Home);
    QTest::keyClick(&list(), Qt::Key_Space);
    EXPECT_EQ(bits(current()), states[3]);
}
