#pragma once

#include <tarqa/housekeeping/MessageFamily.h>

#include <QtCore/QPointer>
#include <QtWidgets/QWidget>

#include <vector>

class QAction;
class QMenu;

namespace tarqa::housekeeping::gui {

class MainWindowMessage;

} // namespace tarqa::housekeeping::gui

namespace tarqa::housekeeping {

class TestAccess;
extern template class TQ_HK_EXPORT MessageFamily<gui::MainWindowMessage>;

} // namespace tarqa::housekeeping

namespace tarqa::housekeeping::gui {

/**
 * Collects the entries of a menu bar, menu or tool bar from all subscribers and adds them when it is deleted.
 *
 * The window sends it with Message::dispatch() (never from a stack that outlives the target). Subscribers add
 * menus, actions and separators (null entries), at the end or by slot, so that several of them lay out one
 * menu without knowing each other's entries. The destructor then adds what was collected: never a separator
 * first, never two in a row. For a menu bar it also sends one message of kind 1 for each menu.
 *
 * The message owns neither target nor entries. A target that died in between, an entry of another type than
 * menu or action, and an exception while an entry is added cost that entry only. A copy is inert: its
 * destructor adds nothing. Main thread.
 */
class TQ_HK_EXPORT MainWindowMessage : public MessageFamily<MainWindowMessage>
{
    Q_OBJECT

public:
    /// What the target is; with any other kind nothing is added, but subscribers may act on it.
    enum Kind : int
    {
        MenuBar = 0,
        Menu = 1,
        ToolBar = 2,
        EditActions = 6 ///< the owner asks for the undo and redo actions, see AbstractMainWindow
    };

    /// Menus live on the main thread.
    static constexpr bool crosses_threads = false;
    /// The text that slots and signals name the class by; see MessageFamily.
    static const char* type_name() { return "housekeeping::gui::MainWindowMessage"; }

    MainWindowMessage();
    MainWindowMessage(const MainWindowMessage&);
    ~MainWindowMessage() override;

    /// The QMenuBar, QMenu or QToolBar that receives the entries.
    void target(QWidget* p_target) { m_target = p_target; }
    QWidget* target() const { return m_target; }
    /// What the target is, one of Kind or a value of the host's own; MenuBar until set.
    void kind(int kind) { m_kind = kind; }
    int kind() const { return m_kind; }
    /// The widget that owns the menus, normally the main window; copied into nested messages.
    void owner(QWidget* p_owner) { m_owner = p_owner; }
    QWidget* owner() const { return m_owner; }

    /// Appends a menu; null stands for a separator.
    void addMenu(QMenu* p_menu);
    /// Appends an action; null stands for a separator.
    void addAction(QAction* p_action);
    /// Appends a separator.
    void addSeparator();

    /// Places a menu at slot @p index: the list grows up to there with empty slots (separators), an empty
    /// slot is filled, and before a filled one the menu is inserted. An index below 0 inserts at the front.
    void insertMenu(int index, QMenu* p_menu);
    /// Places an action, as insertMenu().
    void insertAction(int index, QAction* p_action);
    /// Places a separator, as insertMenu().
    void insertSeparator(int index);

signals:
    /// Carries each message to the subscribers; connected by subscribe(), emitted by dispatch().
    void message_dispatched(housekeeping::gui::MainWindowMessage&);

private:
    friend class MessageFamily<MainWindowMessage>;
    friend class housekeeping::TestAccess;
    void class_instance_dispatch(MainWindowMessage* p_message);

    void append(QObject* p_entry);
    void insert(int index, QObject* p_entry);
    void fill_menu_bar();
    void fill_with_separators();
    void add_to_menu_bar(QObject* p_entry);

    QPointer<QWidget> m_target; // not owned
    int m_kind = MenuBar;
    QPointer<QWidget> m_owner; // not owned
    std::vector<QPointer<QObject>> m_entries; // not owned
    bool m_inert = false; // a copy adds nothing
};

} // namespace tarqa::housekeeping::gui
