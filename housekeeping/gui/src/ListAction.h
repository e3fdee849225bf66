#pragma once

#include <QtWidgets/QAction>

class QMenu;

namespace tarqa::housekeeping::gui {

/**
 * An action of a tool bar with a drop-down list that comes and goes, and a tool tip.
 *
 * Qt lays its tool bars out and draws its buttons anew at every change of an action, whatever it is. Every
 * command takes the list away and gives it back, and changes the tool tip: nothing that a button draws. So
 * Qt's own buttons and bars are told of show()'s changes only when the event loop comes round, before
 * anything is drawn, and only if there is a list where there was none, or the other way round. Buttons of
 * classes that are derived from Qt's are told at once, as are all of changes that are made elsewhere. Main
 * thread.
 */
class ListAction : public QAction
{
public:
    ListAction(const QIcon& icon, const QString& text, const QString& tool_tip, QObject* p_parent);

    /// @param p_list not owned; null: there is nothing to choose from
    void show(const QString& tool_tip, QMenu* p_list);

    bool event(QEvent* p_event) override;
    /// Watches the buttons and bars.
    bool eventFilter(QObject* p_receiver, QEvent* p_event) override;

private:
    class Change;

    bool put_off(QObject* p_receiver, QEvent* p_event);
    void tell_widgets();

    bool m_expects_change = false; // one of show(), which Qt is about to tell the widgets
    const QEvent* m_p_change = nullptr; // that change, while Qt tells them
    bool m_had_list = false; // when the widgets last knew all
    bool m_must_look = false; // an event is posted that makes this see whether the widgets are to be told
    bool m_drawn_meanwhile = false; // since it was posted
};

} // namespace tarqa::housekeeping::gui
