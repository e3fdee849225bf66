#pragma once

#include <QtCore/QUrl>

class QWidget;

namespace tarqa::housekeeping::gui {

/// Opens an address with the program that the desktop has for it. If there is none, logs that and names the
/// address, to be copied, in a box that does not block. Main thread.
/// @param p_parent of the box; null for the active window @return whether it was opened
bool open_outside(const QUrl& address, QWidget* p_parent);

} // namespace tarqa::housekeeping::gui
