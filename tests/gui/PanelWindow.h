#pragma once

#include <tarqa/housekeeping/gui/AbstractMainWindow.h>
#include <tarqa/housekeeping/gui/ChildDockWidget.h>

#include <QtCore/QStringList>

#include <vector>

/// A main window as hosts derive it: a tab bar over the stack of the panels.
class PanelWindow : public tarqa::housekeeping::gui::AbstractMainWindow
{
public:
    typedef tarqa::housekeeping::gui::ChildDockWidget ChildDockWidget;

    PanelWindow();

    QStackedWidget& stack() const { return *m_panelStack; }
    QTabBar& tab_bar() const { return *m_panelTabBar; }

    QStringList tabs() const;
    /// The pages of the stack, in its order.
    std::vector<QWidget*> docked() const;
    /// The panels that float, in the order of the list.
    std::vector<QWidget*> floating() const;
    /// The floating window of a panel; null if it does not float.
    ChildDockWidget* window_of(const QWidget* p_panel) const;

    /// Drags the tab with this text off the tab bar.
    void tear_off(const QString& text);
    /// What the tab bar's signal leads to.
    void current_tab_changed(int index);
    /// What the window's filter says to an event of another object.
    bool filters(QObject* p_watched, QEvent* p_event) { return eventFilter(p_watched, p_event); }
};

/// The panel in a floating window; null if there is none.
QWidget* panel_in(const PanelWindow::ChildDockWidget& window);
