#pragma once

namespace tarqa::housekeeping::gui {

class AbstractMainWindow;

/// The main window, if there is one and it was not deleted, which AbstractMainWindow::instance() does not
/// notice; else null. Logs what instance() logs. Main thread.
AbstractMainWindow* live_main_window();

} // namespace tarqa::housekeeping::gui
