#include "LiveMainWindow.h"

#include <tarqa/housekeeping/gui/AbstractMainWindow.h>

#include <QtWidgets/QApplication>

#include <algorithm>

namespace tarqa::housekeeping::gui {

AbstractMainWindow* live_main_window()
{
    AbstractMainWindow* const p_window = AbstractMainWindow::instance();
    const QWidgetList widgets = QApplication::allWidgets();
    const auto is_window
        = [p_window](QWidget* p_widget) { return qobject_cast<AbstractMainWindow*>(p_widget) == p_window; };
    return p_window && std::any_of(widgets.begin(), widgets.end(), is_window) ? p_window : nullptr;
}

} // namespace tarqa::housekeeping::gui
