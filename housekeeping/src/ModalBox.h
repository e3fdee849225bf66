#pragma once

#include <QtCore/QString>
#include <QtWidgets/QMessageBox>

namespace tarqa::housekeeping {

/**
 * Boxes and dialogs that wait for the user, over a window that may be gone before the answer comes: it takes
 * the box with it, and there is no answer then. (Qt's static functions keep theirs on the stack, where nobody
 * may delete it.) Main thread.
 */
namespace modal_box {

/// @return the button; QMessageBox::NoButton if the window was deleted meanwhile
QMessageBox::StandardButton ask(QWidget* p_parent, QMessageBox::Icon icon, const QString& title,
    const QString& text, QMessageBox::StandardButtons buttons);

/// Asks for a file to write. @return its path; empty if there is none, or the window was deleted meanwhile
QString ask_for_file(QWidget* p_parent, const QString& title, const QString& proposal, const QString& filter);

} // namespace modal_box
} // namespace tarqa::housekeeping
