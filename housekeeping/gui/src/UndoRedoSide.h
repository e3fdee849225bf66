#pragma once

#include <tarqa/housekeeping/CommandDetails.h>

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtGui/QKeySequence>
#include <QtWidgets/QAction>
#include <QtWidgets/QMenu>

#include <vector>

namespace tarqa::housekeeping::gui {

class ListAction;

/**
 * One direction of the UndoRedoPresentation, undo or redo: its two actions and its drop-down list.
 *
 * A list of up to `at_once` commands, and any that is open, is filled at once; a longer one waits(), to be
 * filled when it is about to show. Filling thousands of entries after every command would cost more than the
 * commands. Main thread.
 */
class UndoRedoSide
{
public:
    /// How many entries a list may have that is filled at once.
    static constexpr unsigned long long at_once = 100;

    /// The translated texts.
    struct Texts
    {
        QString word; ///< "Undo"
        QString menu; ///< "&Undo"
        QString status_tip; ///< of the menu action
    };

    /// @param p_owner owns the actions
    UndoRedoSide(QObject* p_owner, const Texts& texts, const QString& icon, const QKeySequence& shortcut);

    QAction* menu_action() { return m_p_menu_action; }
    QAction* tool_bar_action();
    QMenu& list() { return m_list; }

    /// Closes the list if it is open although it is not attached any more: its entries are of the past.
    void close_detached_list();
    /// How many details set_items() wants, if there are as many. @param count how many commands there are
    unsigned long long wanted(unsigned long long count) const;
    /// Shows what can be undone, and takes the list off the tool bar's action or puts it there.
    /// @param details most recent first @param count how many commands there are
    void set_items(const std::vector<CommandDetails>& details, unsigned long long count);

    bool waits() const { return m_waits; }
    /// Fills the list with one entry per command, a separator and the entry for all.
    void fill_list(const std::vector<CommandDetails>& details);

    /// Checks the first @p n entries and says in the last one how many they are.
    void hover(unsigned long long n);

private:
    QString count_text(unsigned long long n) const;
    void resize_list(int count);
    void fill_entry(QAction* p_entry, const CommandDetails& details, int position);

    Texts m_texts;
    QAction* m_p_menu_action; // the owner's
    ListAction* m_p_tool_bar_action; // the owner's
    QMenu m_list;
    QAction* m_p_separator; // the list's, and in it once it is filled
    QAction* m_p_all; // the last entry; likewise
    bool m_waits = false;
};

} // namespace tarqa::housekeeping::gui
