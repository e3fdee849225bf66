#pragma once

#include <tarqa/housekeeping/tq_hk_export.h>

#include <QtCore/QSize>
#include <QtWidgets/QWidget>

class QStackedWidget;

namespace tarqa::housekeeping::gui {

class AbstractMainWindow;

/// The floating window of one panel. AbstractMainWindow makes it when a panel is torn off and deletes it when
/// the panel goes back. Main thread.
class TQ_HK_EXPORT ChildDockWidget : public QWidget
{
    Q_OBJECT

public:
    /// @param title the panel's @param p_parent owns the window
    ChildDockWidget(const QString& title, AbstractMainWindow* p_parent);
    ~ChildDockWidget() override;

    /// Takes the panel in; it becomes a child.
    void put_panel(QWidget* p_panel);
    /// Lets the panel go, which then has no parent. @return null if there is none
    QWidget* take_panel();

private:
    QStackedWidget* m_p_stack; // a child
    QSize m_size; // invalid; reserved
};

} // namespace tarqa::housekeeping::gui
