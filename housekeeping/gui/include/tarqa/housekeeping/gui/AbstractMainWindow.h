#pragma once

#include <tarqa/housekeeping/tq_hk_export.h>
#include <tarqa/utilities/UrlList.h>

#include <QtCore/QStringList>
#include <QtWidgets/QMainWindow>

#include <utility>
#include <vector>

class QAction;
class QStackedWidget;
class QTabBar;

namespace tarqa::housekeeping {
class TestAccess;
}

namespace tarqa::housekeeping::gui {

using utilities::UrlList;

class ChildDockWidget;

/**
 * The base of the program's main window, and the keeper of its panels: control widgets that are pages of one
 * stacked area with a tab for each, and that the user can tear off into small floating windows. Closing a
 * floating window puts its panel back. Which panels float, where, and the order of the tabs survive restarts.
 *
 * The derived window makes the stack and the tab bar, connects the tab bar's current-index signal to
 * currentTabChanged(int) and its tear-off gesture to slotTabBarMoved(QString), adds the panels, and calls
 * readSettings() after that, and writeSettings() in its close event: later the floating windows are back in
 * the tab bar.
 *
 * A panel is known by its window title alone: titles are unique, not empty, and hold no "/". Tab texts take
 * "&" for a mnemonic; titles with "A && B" make the way to a floating window and back, "A & B" and "A&&B" do
 * not. Panels belong to the stack or to their floating window, whichever they are in. Main thread.
 */
class TQ_HK_EXPORT AbstractMainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// Becomes instance().
    /// @param p_parent owns the window; normally null
    /// @param flags as QMainWindow takes them
    explicit AbstractMainWindow(QWidget* p_parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());
    /// Leaves instance() pointing to where the window was.
    ~AbstractMainWindow() override;

    /// The main window made last; null, and logged, if there was none.
    static AbstractMainWindow* instance();
    /// Whether a main window was made; logs nothing. True also when it is gone.
    static bool hasInstance();

    /// Adds a panel, docked or, if it floated when the settings were written, floating. The text is not used:
    /// the panel's window title names it; an empty one is logged.
    /// @return its index in the stack; for a floating panel its position among these
    int addPanel(QWidget* p_panel, const QString& text);
    /// Takes a panel out without deleting it: a docked one stays a child of the stack until it is given
    /// another parent, a floating one has none then. An index at or beyond the stack's count, and not below
    /// the number of tabs, takes the first floating panel, whichever the index names.
    void removePanel(int index);
    /// The panel's index in the stack; for a floating panel the number of tabs and its position among these;
    /// -1 for any other widget.
    int indexOf(QWidget* p_panel) const;
    /// Shows all floating windows.
    void restoreChildWidgets();

    /// Puts the tabs into the order that was stored, shows the floating windows and the panel of the first
    /// tab.
    virtual void readSettings();
    /// Stores the order of the tabs, and which panels float and where.
    virtual void writeSettings();

    /// Whether the program may be closed now; the base says yes. A window that has unsaved work asks the
    /// user.
    virtual bool may_close();
    /// Takes the undo and redo actions of the Edit menu for the window's tool bar; the base does nothing.
    /// Their owner keeps them.
    virtual void take_undo_redo_actions(QAction* p_undo, QAction* p_redo);

signals:
    /// Files were dropped on the window; emitted by the derived class.
    void dropped(const UrlList& files);
    /// The panel at @p index of the stack is about to float.
    void detachingPanel(int index);
    /// A panel is back, as tab @p index.
    void attachedPanel(int index);

protected:
    /// Puts the panel of a floating window back when the window is closed.
    bool eventFilter(QObject* p_watched, QEvent* p_event) override;

    /// Floating windows, each with its panel.
    typedef std::vector<std::pair<ChildDockWidget*, QWidget*>> FloatingPanels;

    /// The docked panels, a page each.
    QStackedWidget* m_panelStack = nullptr; // made and owned by the derived class
    /// A tab for each of them, in the user's order.
    QTabBar* m_panelTabBar = nullptr; // made and owned by the derived class
    /// In the order in which they were torn off. Windows are children; panels belong to their windows.
    FloatingPanels m_floatingPanels;

private slots:
    /// A tab was dragged off the tab bar.
    void slotTabBarMoved(const QString& tabText);
    void currentTabChanged(int index);
    void floatingPanelDestroyed(QObject* p_panel);

private:
    friend class housekeeping::TestAccess;

    QWidget* findPanelWidgetFromTabIndex(int index);
    int floatPanel(QWidget* p_panel);
    void dock(ChildDockWidget& window);
    void remove_docked(int index);
    void remove_first_floating();
    FloatingPanels::const_iterator floating(const QObject* p_panel) const;
    int tab_with_text(const QString& text) const;
    void order_tabs(const QStringList& saved);

    static AbstractMainWindow* m_instance; // not owned
};

} // namespace tarqa::housekeeping::gui
