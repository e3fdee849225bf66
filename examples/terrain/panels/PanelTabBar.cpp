#include "panels/PanelTabBar.h"

#include <QtGui/QMouseEvent>
#include <QtWidgets/QApplication>

#include <utility>

namespace terrain {

PanelTabBar::PanelTabBar(QWidget* p_parent)
    : QTabBar(p_parent)
{
    setMovable(true);
    setExpanding(false);
    setDrawBase(false);
    setDocumentMode(true);
    setToolTip(tr("Drag a tab away to see its panel in a window of its own"));
}

void PanelTabBar::mousePressEvent(QMouseEvent* p_event)
{
    QTabBar::mousePressEvent(p_event);
    const int tab = tabAt(p_event->pos());
    m_dragged = p_event->button() == Qt::LeftButton && tab >= 0 ? tabText(tab) : QString();
}

void PanelTabBar::mouseMoveEvent(QMouseEvent* p_event)
{
    const int away = QApplication::startDragDistance();
    const QRect surroundings = rect().adjusted(-away, -away, away, away);
    if (!m_dragged.isEmpty() && !surroundings.contains(p_event->pos())) {
        tear_off();
    } else {
        QTabBar::mouseMoveEvent(p_event);
    }
}

void PanelTabBar::mouseReleaseEvent(QMouseEvent* p_event)
{
    m_dragged.clear();
    QTabBar::mouseReleaseEvent(p_event);
}

void PanelTabBar::tear_off()
{
    const QString text = std::exchange(m_dragged, QString());
    // The base is moving the tab along the bar; let it come to an end with that before the tab goes.
    QMouseEvent release(
        QEvent::MouseButtonRelease, rect().center(), Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    QTabBar::mouseReleaseEvent(&release);
    emit torn_off(text);
}

} // namespace terrain
