#include "gui/UndoRedoFixture.h"

#include <QtGui/QActionEvent>
#include <QtWidgets/QToolBar>
#include <QtWidgets/QToolButton>

#include <gtest/gtest.h>

// The buttons of the tool bar: drawn anew when their list comes or goes, and not by each command.

using namespace undo_redo_test;

namespace {

/// Counts how often a widget is drawn, and how often it is to lay out what is in it.
class Watch : public QObject
{
public:
    explicit Watch(QWidget& widget) { widget.installEventFilter(this); }

    bool eventFilter(QObject*, QEvent* p_event) override
    {
        drawn += p_event->type() == QEvent::Paint;
        laid_out += p_event->type() == QEvent::LayoutRequest;
        return false;
    }

    int drawn = 0;
    int laid_out = 0;
};

/// A host's own button, which looks at changes itself.
class OwnButton : public QToolButton
{
public:
    int told = 0;

protected:
    void actionEvent(QActionEvent* p_event) override
    {
        told += p_event->type() == QEvent::ActionChanged;
        QToolButton::actionEvent(p_event);
    }
};

/// A document with three commands, and both actions in a bar that is shown.
class UndoRedoButtons : public UndoRedoFixture
{
protected:
    UndoRedoButtons()
    {
        run_many(document, 3);
        bar.addAction(&undo_tool());
        bar.addAction(&redo_tool());
        bar.show();
        settle();
    }

    static QToolButton& button_in(const QToolBar& a_bar, QAction& action)
    {
        return *qobject_cast<QToolButton*>(a_bar.widgetForAction(&action));
    }
    QToolButton& undo_button() { return button_in(bar, undo_tool()); }
    QToolButton& redo_button() { return button_in(bar, redo_tool()); }

    /// Until nothing more is to be drawn.
    static void settle()
    {
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
    }

    FakeDocument& document = support::create_document();
    QToolBar bar;
};

} // namespace

TEST_F(UndoRedoButtons, AreNotDrawnForACommandMore)
{
    const Watch undo_watch(undo_button());
    const Watch redo_watch(redo_button());
    const Watch bar_watch(bar);
    run(document, "4", "another");
    settle();
    EXPECT_EQ(0, undo_watch.drawn);
    EXPECT_EQ(0, redo_watch.drawn);
    EXPECT_EQ(0, bar_watch.drawn);
    EXPECT_EQ(0, bar_watch.laid_out);
    EXPECT_EQ("Undo 4: another", undo_button().toolTip());
}

TEST_F(UndoRedoButtons, TipsAreRightAtOnce)
{
    run(document, "4");
    EXPECT_EQ("Undo 4", undo_button().toolTip());
    EXPECT_EQ("Redo", redo_button().toolTip());
    DocumentManager::instance().document_busy(document.id(), true);
    EXPECT_EQ("Undo", undo_button().toolTip());
    DocumentManager::instance().document_busy(document.id(), false);
    EXPECT_EQ("Undo 4", undo_button().toolTip());
    presentation().undo();
    EXPECT_EQ("Undo 3", undo_button().toolTip());
    EXPECT_EQ("Redo 4", redo_button().toolTip());
}

TEST_F(UndoRedoButtons, AreDrawnWhenTheirListComesOrGoes)
{
    const Watch undo_watch(undo_button());
    const Watch redo_watch(redo_button());
    presentation().undos_selected(2); // one left, two to redo
    settle();
    EXPECT_LT(0, undo_watch.drawn);
    EXPECT_LT(0, redo_watch.drawn);
    const int undo_drawn = undo_watch.drawn;
    const int redo_drawn = redo_watch.drawn;
    presentation().redo();
    settle();
    EXPECT_LT(undo_drawn, undo_watch.drawn);
    EXPECT_LT(redo_drawn, redo_watch.drawn);
}

TEST_F(UndoRedoButtons, AreDrawnWhileADocumentStaysBusyAndAfterwards)
{
    const Watch watch(undo_button());
    const Watch redo_watch(redo_button());
    DocumentManager::instance().document_busy(document.id(), true);
    EXPECT_EQ(0, watch.drawn);
    settle();
    EXPECT_LT(0, watch.drawn);
    const int drawn = watch.drawn;
    DocumentManager::instance().document_busy(document.id(), false);
    settle();
    EXPECT_LT(drawn, watch.drawn);
    EXPECT_EQ(0, redo_watch.drawn); // it has no list, before and after
}

TEST_F(UndoRedoButtons, AreDrawnAgainIfTheyWereDrawnWithoutTheListMeanwhile)
{
    const Watch watch(undo_button());
    DocumentManager::instance().document_busy(document.id(), true);
    undo_button().repaint();
    DocumentManager::instance().document_busy(document.id(), false);
    const int drawn = watch.drawn;
    EXPECT_LT(0, drawn);
    settle();
    EXPECT_LT(drawn, watch.drawn);
    run(document, "4");
    const int drawn_again = watch.drawn;
    settle();
    EXPECT_EQ(drawn_again, watch.drawn);
}

TEST_F(UndoRedoButtons, ShowWhatAHostChangesAtOnce)
{
    undo_tool().setIcon(icon(Qt::red));
    EXPECT_EQ(undo_tool().icon().cacheKey(), undo_button().icon().cacheKey());
    run(document, "4");
    undo_tool().setEnabled(false);
    EXPECT_FALSE(undo_button().isEnabled());
    run(document, "5");
    undo_tool().setEnabled(true);
    EXPECT_TRUE(undo_button().isEnabled());
}

TEST_F(UndoRedoButtons, ShowWhatAHostChangesBecauseOfACommand)
{
    const QIcon red = icon(Qt::red);
    QObject::connect(&undo_tool(), &QAction::changed, &undo_tool(), [&red] {
        if (undo_tool().icon().cacheKey() != red.cacheKey()) {
            undo_tool().setIcon(red);
        }
    });
    run(document, "4");
    EXPECT_EQ(red.cacheKey(), undo_button().icon().cacheKey());
}

TEST_F(UndoRedoButtons, OfAHostsOwnClassAreToldAtOnce)
{
    OwnButton own;
    own.setDefaultAction(&undo_tool());
    own.told = 0;
    run(document, "4");
    EXPECT_LT(0, own.told);
    EXPECT_EQ("Undo 4", own.toolTip());
    const int told = own.told;
    settle();
    EXPECT_EQ(told, own.told); // and only once
}

TEST_F(UndoRedoButtons, ThatHoldTheActionAmongOthersAreToldAtOnce)
{
    QAction other("other");
    QToolButton button;
    button.setDefaultAction(&other);
    button.addAction(&undo_tool());
    button.setToolTip("a host's own");
    run(document, "4");
    EXPECT_EQ("a host's own", button.toolTip());
    EXPECT_EQ("Undo 4", undo_button().toolTip());
}

TEST_F(UndoRedoButtons, MayBeInSeveralBarsThatComeAndGo)
{
    {
        QToolBar second;
        second.addAction(&undo_tool());
        second.show();
        settle();
        const Watch watch(button_in(second, undo_tool()));
        run(document, "4");
        settle();
        EXPECT_EQ(0, watch.drawn);
        EXPECT_EQ("Undo 4", button_in(second, undo_tool()).toolTip());
        presentation().undos_selected(3);
        settle();
        EXPECT_LT(0, watch.drawn);
        presentation().redo();
    }
    const Watch watch(undo_button());
    settle();
    EXPECT_LT(0, watch.drawn);
    EXPECT_EQ("Undo 2", undo_button().toolTip());
}

TEST_F(UndoRedoButtons, OutliveThePresentation)
{
    run(document, "4");
    tarqa::housekeeping::TestAccess::destroy<PresentationManager>(); // before the buttons have looked
    settle();
    EXPECT_TRUE(bar.actions().isEmpty());
}
