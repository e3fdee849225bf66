#include <tarqa/housekeeping/gui/ChildDockWidget.h>

#include <tarqa/housekeeping/gui/AbstractMainWindow.h>

#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QVBoxLayout>

namespace tarqa::housekeeping::gui {

ChildDockWidget::ChildDockWidget(const QString& title, AbstractMainWindow* p_parent)
    : QWidget(p_parent,
        Qt::Window | Qt::MSWindowsFixedSizeDialogHint | Qt::CustomizeWindowHint | Qt::WindowCloseButtonHint)
    , m_p_stack(new QStackedWidget)
{
    setWindowTitle(title);
    m_p_stack->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Minimum);
    auto* const p_layout = new QVBoxLayout(this);
    p_layout->addWidget(m_p_stack);
    p_layout->setSizeConstraint(QLayout::SetFixedSize);
}

ChildDockWidget::~ChildDockWidget() = default;

void ChildDockWidget::put_panel(QWidget* p_panel)
{
    p_panel->setParent(m_p_stack);
    m_p_stack->addWidget(p_panel);
}

QWidget* ChildDockWidget::take_panel()
{
    QWidget* const p_panel = m_p_stack->widget(0);
    if (p_panel) {
        m_p_stack->removeWidget(p_panel);
        // Otherwise the panel would go with this window.
        p_panel->setParent(nullptr);
    }
    return p_panel;
}

} // namespace tarqa::housekeeping::gui
