#include "PanelWindow.h"

#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QVBoxLayout>

PanelWindow::PanelWindow()
{
    auto* const p_central = new QWidget(this);
    auto* const p_layout = new QVBoxLayout(p_central);
    m_panelTabBar = new QTabBar(p_central);
    m_panelStack = new QStackedWidget(p_central);
    p_layout->addWidget(m_panelTabBar);
    p_layout->addWidget(m_panelStack);
    setCentralWidget(p_central);
    // The slots are private, so that derived windows reach them by name only.
    connect(m_panelTabBar, SIGNAL(currentChanged(int)), this, SLOT(currentTabChanged(int)));
}

QStringList PanelWindow::tabs() const
{
    QStringList texts;
    for (int tab = 0; tab < m_panelTabBar->count(); ++tab) {
        texts.append(m_panelTabBar->tabText(tab));
    }
    return texts;
}

std::vector<QWidget*> PanelWindow::docked() const
{
    std::vector<QWidget*> panels;
    for (int index = 0; index < m_panelStack->count(); ++index) {
        panels.push_back(m_panelStack->widget(index));
    }
    return panels;
}

std::vector<QWidget*> PanelWindow::floating() const
{
    std::vector<QWidget*> panels;
    for (const auto& entry : m_floatingPanels) {
        panels.push_back(entry.second);
    }
    return panels;
}

PanelWindow::ChildDockWidget* PanelWindow::window_of(const QWidget* p_panel) const
{
    for (const auto& [p_window, p_floating] : m_floatingPanels) {
        if (p_floating == p_panel) {
            return p_window;
        }
    }
    return nullptr;
}

void PanelWindow::tear_off(const QString& text)
{
    QMetaObject::invokeMethod(this, "slotTabBarMoved", Qt::DirectConnection, Q_ARG(QString, text));
}

void PanelWindow::current_tab_changed(int index)
{
    QMetaObject::invokeMethod(this, "currentTabChanged", Qt::DirectConnection, Q_ARG(int, index));
}

QWidget* panel_in(const PanelWindow::ChildDockWidget& window)
{
    const auto* const p_stack = window.findChild<QStackedWidget*>(QString(), Qt::FindDirectChildrenOnly);
    return p_stack ? p_stack->widget(0) : nullptr;
}
