#include "gui/UndoRedoFixture.h"

#include <QtGui/QHelpEvent>
#include <QtGui/QTextDocument>
#include <QtGui/QTextDocumentFragment>
#include <QtWidgets/QToolBar>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QToolTip>

#include <gtest/gtest.h>

// Tool tips of commands whose names look like HTML.

using namespace undo_redo_test;

namespace {

const char* const s_name = "<b>Rotate</b> <img src='file:///etc/passwd'> & <a href='x'>y</a>";

class UndoRedoToolTips : public UndoRedoFixture
{
protected:
    UndoRedoToolTips()
    {
        bar.addAction(&undo_tool());
        bar.addAction(&redo_tool());
        bar.addAction(&undo_action());
        bar.addAction("other")->setToolTip("a <b>bold</b> word of the host's");
        bar.show();
    }

    /// What the tool tip of a button shows, as text; @p is_html becomes whether Qt takes it for HTML.
    QString shown(QAction* p_action, bool& is_html)
    {
        auto* const p_button = qobject_cast<QToolButton*>(bar.widgetForAction(p_action));
        QToolTip::hideText();
        QHelpEvent event(QEvent::ToolTip, QPoint(2, 2), p_button->mapToGlobal(QPoint(2, 2)));
        QCoreApplication::sendEvent(p_button, &event);
        is_html = Qt::mightBeRichText(QToolTip::text());
        return is_html ? QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText() : QToolTip::text();
    }

    FakeDocument& document = support::create_document();
    QToolBar bar;
};

TEST_F(UndoRedoToolTips, ShowNamesThatLookLikeHtmlAsTheyAre)
{
    run(document, s_name);
    const QString expected = QString("Undo ") + s_name;
    EXPECT_EQ(expected, undo_tool().toolTip()); // the text itself is what it always was
    bool is_html = false;
    EXPECT_EQ(expected, shown(&undo_tool(), is_html));
    EXPECT_EQ(expected, shown(&undo_action(), is_html));
    controller().undo(1);
    EXPECT_EQ(QString("Redo ") + s_name, shown(&redo_tool(), is_html));
}

TEST_F(UndoRedoToolTips, OthersAreShownAsEver)
{
    run(document, "Rotate");
    bool is_html = true;
    EXPECT_EQ("Undo Rotate", shown(&undo_tool(), is_html));
    EXPECT_FALSE(is_html);
    EXPECT_EQ("a bold word of the host's", shown(bar.actions().last(), is_html));
    EXPECT_TRUE(is_html);
}

} // namespace
