#include <tarqa/housekeeping/gui/MainWindowMessage.h>

#include "Assertion.h"
#include "LoggingExceptions.h"

#include <QtWidgets/QAction>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QToolBar>

namespace tarqa::housekeeping {

template class MessageFamily<gui::MainWindowMessage>;

} // namespace tarqa::housekeeping

namespace tarqa::housekeeping::gui {

namespace {

const char* const s_source = "housekeeping/gui/src/MainWindowMessage";

/// The action behind an entry; null if it is neither a menu nor an action.
QAction* action_of(QObject* p_entry)
{
    if (QMenu* p_menu = qobject_cast<QMenu*>(p_entry)) {
        return p_menu->menuAction();
    }
    return qobject_cast<QAction*>(p_entry);
}

const char* const s_unknown = "An unknown exception was thrown while a menu was filled";

} // namespace

MainWindowMessage::MainWindowMessage() = default;

MainWindowMessage::MainWindowMessage(const MainWindowMessage& other)
    : MessageFamily<MainWindowMessage>(other)
    , m_target(other.m_target)
    , m_kind(other.m_kind)
    , m_owner(other.m_owner)
    , m_entries(other.m_entries)
    , m_inert(true)
{ }

MainWindowMessage::~MainWindowMessage()
{
    if (m_inert || !m_target) {
        return;
    }
    if (m_kind == MenuBar) {
        fill_menu_bar();
    } else if (m_kind == Menu || m_kind == ToolBar) {
        fill_with_separators();
    }
}

void MainWindowMessage::class_instance_dispatch(MainWindowMessage* p_message)
{
    if (HK_ASSERT(p_message, "p_message")) {
        emit message_dispatched(*p_message);
    }
}

void MainWindowMessage::addMenu(QMenu* p_menu)
{
    append(p_menu);
}

void MainWindowMessage::addAction(QAction* p_action)
{
    append(p_action);
}

void MainWindowMessage::addSeparator()
{
    append(nullptr);
}

void MainWindowMessage::insertMenu(int index, QMenu* p_menu)
{
    insert(index, p_menu);
}

void MainWindowMessage::insertAction(int index, QAction* p_action)
{
    insert(index, p_action);
}

void MainWindowMessage::insertSeparator(int index)
{
    insert(index, nullptr);
}

void MainWindowMessage::append(QObject* p_entry)
{
    m_entries.push_back(p_entry);
}

void MainWindowMessage::insert(int index, QObject* p_entry)
{
    if (index < 0) {
        m_entries.insert(m_entries.begin(), p_entry);
        return;
    }
    const auto slot = static_cast<std::size_t>(index);
    if (slot >= m_entries.size()) {
        m_entries.resize(slot + 1);
    }
    if (!m_entries[slot]) {
        m_entries[slot] = p_entry;
    } else {
        m_entries.insert(m_entries.begin() + index, p_entry);
    }
}

void MainWindowMessage::fill_menu_bar()
{
    for (const QPointer<QObject>& entry : m_entries) {
        if (entry) {
            logging_exceptions(s_unknown, [this, &entry] { add_to_menu_bar(entry); });
        }
    }
}

void MainWindowMessage::add_to_menu_bar(QObject* p_entry)
{
    QMenuBar* const p_menu_bar = qobject_cast<QMenuBar*>(m_target);
    if (!p_menu_bar) {
        return;
    }
    QMenu* const p_menu = qobject_cast<QMenu*>(p_entry);
    if (!p_menu) {
        if (QAction* p_action = qobject_cast<QAction*>(p_entry)) {
            p_menu_bar->addAction(p_action);
        }
        return;
    }
    p_menu_bar->addMenu(p_menu);
    MainWindowMessage* const p_nested = MainWindowMessage::instance();
    p_nested->kind(Menu);
    p_nested->target(p_menu);
    p_nested->owner(m_owner);
    Message::dispatch(p_nested);
}

void MainWindowMessage::fill_with_separators()
{
    QMenu* const p_menu = qobject_cast<QMenu*>(m_target);
    QToolBar* const p_tool_bar = qobject_cast<QToolBar*>(m_target);
    bool last_was_separator = true;
    for (const QPointer<QObject>& entry : m_entries) {
        if (QAction* p_action = action_of(entry)) {
            logging_exceptions(s_unknown, [this, p_action] { m_target->addAction(p_action); });
            last_was_separator = false;
        } else if (!entry && !last_was_separator) {
            logging_exceptions(s_unknown, [p_menu, p_tool_bar] {
                if (p_menu) {
                    p_menu->addSeparator();
                } else if (p_tool_bar) {
                    p_tool_bar->addSeparator();
                }
            });
            last_was_separator = true;
        }
    }
}

} // namespace tarqa::housekeeping::gui
