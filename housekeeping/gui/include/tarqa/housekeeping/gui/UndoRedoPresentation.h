#pragma once

#include <tarqa/housekeeping/QuickHelpSection.h>
#include <tarqa/housekeeping/UndoRedoController.h>
#include <tarqa/housekeeping/gui/AbstractPresentation.h>
#include <tarqa/housekeeping/tq_hk_export.h>

#include <QtCore/QObject>

#include <boost/shared_ptr.hpp>

#include <memory>
#include <vector>

class QAction;

namespace tarqa::housekeeping {
class AbstractQuickHelpEntry;
class DocumentMessage;
} // namespace tarqa::housekeeping

namespace tarqa::housekeeping::gui {

class MainWindowMessage;
class UndoRedoSide;

/**
 * Undo and redo in the window: two actions for the Edit menu, two for a tool bar with drop-down lists of the
 * commands that can be undone or redone, and a quick-help entry for each shortcut. Choosing the n-th entry of
 * a list undoes or redoes the last n commands.
 *
 * The library registers it under the name "UndoRedoPresentation". Actions and lists are its own. The
 * shortcuts act on the widget that has the focus: a host adds the menu actions to its views too. Main thread.
 */
class TQ_HK_EXPORT UndoRedoPresentation : public QObject, public AbstractPresentation
{
    Q_OBJECT

public:
    UndoRedoPresentation();
    /// Deletes the two lists.
    ~UndoRedoPresentation() override;

    /// The one that the PresentationManager holds; empty before its init().
    static boost::shared_ptr<UndoRedoPresentation> instance();

    /// The undo action of the menu; null before init(). Owned here.
    QAction* undo_action();
    /// The redo action of the menu; null before init(). Owned here.
    QAction* redo_action();
    /// The undo action of the tool bar; null before init(). Owned here. Its list is up to date only once it
    /// is about to show if it has more than a hundred entries. Qt's own tool bars and buttons learn that a
    /// list came or went when the event loop comes round; changed() is sent at once, as ever.
    QAction* undo_tool_bar_action();
    /// The redo action of the tool bar, as undo_tool_bar_action().
    QAction* redo_tool_bar_action();

    /// Shows what can be undone and redone, or, with false, the plain texts.
    void enable_edit_actions(bool enable);

public slots:
    /// Undoes one command, as undos_selected().
    void undo();
    /// Redoes one command, as redos_selected().
    void redo();
    /// Undoes the last @p num_undos commands of the current document; does nothing without one, and while any
    /// document is busy. The controller's lock is held while the commands run and the views are redrawn.
    void undos_selected(const size_t& num_undos);
    /// The same for the last @p num_redos undone commands.
    void redos_selected(const size_t& num_redos);
    /// Puts the actions into the Edit menu, or hands them to the window that asks for them.
    void handle_message(housekeeping::gui::MainWindowMessage& message);
    /// Shows plain texts while a document is busy, and what can be undone afterwards.
    void handle_message(housekeeping::DocumentMessage& message);

private slots:
    void undo(QAction* p_action);
    void redo(QAction* p_action);
    void hoveredUndo(QAction* p_action);
    void hoveredUndo();
    void hoveredRedo(QAction* p_action);
    void hoveredRedo();

private:
    friend class housekeeping::TestAccess;

    void update_presentation() override;
    void init_presentation() override;
    void build_presentation() override;
    std::string controller_name() const override;
    UndoRedoController* controller() const override;

    void build_actions();
    void set_undo_redo_items(bool fetch);
    AbstractQuickHelpEntry* createQuickHelpKeySequenceEntry(
        QAction* p_action, const QString& description, const QuickHelpSection& section);

    typedef std::vector<CommandDetails> (UndoRedoController::*DetailsOf)(const unsigned long long&) const;
    typedef void (UndoRedoController::*Steps)(const unsigned long long&);
    void fill_waiting_list(UndoRedoSide& side, DetailsOf details_of);
    void run(size_t count, Steps steps, const char* function);

    std::unique_ptr<UndoRedoSide> m_undo; // null before init()
    std::unique_ptr<UndoRedoSide> m_redo;
    AbstractQuickHelpEntry* m_p_undo_quick_help = nullptr; // children of this object
    AbstractQuickHelpEntry* m_p_redo_quick_help = nullptr;
};

} // namespace tarqa::housekeeping::gui
