#include "windows/LibraryEntries.h"

#include "windows/Icons.h"

#include <tarqa/housekeeping/gui/UndoRedoPresentation.h>

#include <QtWidgets/QAction>

namespace terrain {

namespace {

namespace gui = tarqa::housekeeping::gui;

/// An entry of the Help menu, and its icon.
struct HelpEntry
{
    const char* object_name;
    const char* icon;
};

const HelpEntry s_help_entries[] = {
    {"help_contents", "help-contents"},
    {"help_quick_help", "quick-help"},
    {"help_shortcuts", "shortcuts"},
    {"help_log_file", "log"},
    {"help_about", "about"},
};

} // namespace

void give_icons_to_library_entries(const QObject& window)
{
    for (const HelpEntry& entry : s_help_entries) {
        if (auto* const p_action
            = window.findChild<QAction*>(entry.object_name, Qt::FindDirectChildrenOnly)) {
            p_action->setIcon(icon(entry.icon));
        }
    }
    if (const auto sp_undo_redo = gui::UndoRedoPresentation::instance()) {
        for (QAction* const p_action : {sp_undo_redo->undo_action(), sp_undo_redo->undo_tool_bar_action()}) {
            p_action->setIcon(icon("undo"));
        }
        for (QAction* const p_action : {sp_undo_redo->redo_action(), sp_undo_redo->redo_tool_bar_action()}) {
            p_action->setIcon(icon("redo"));
        }
    }
}

} // namespace terrain
