#pragma once

#include <QtCore/QString>

class QWidget;

namespace tarqa::housekeeping::gui {

/// Logs a text and, where the ErrorHandler may show boxes, shows it in one that does not block, in place of
/// the last one. The text can be selected. Main thread.
/// @param title of the box @param p_parent of the box; null for the active window
void show_notice(const QString& title, const QString& text, QWidget* p_parent);

} // namespace tarqa::housekeeping::gui
