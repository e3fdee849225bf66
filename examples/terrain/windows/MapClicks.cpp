#include "windows/MapClicks.h"

#include "views/TerrainView.h"

#include <QtGui/QMouseEvent>
#include <QtWidgets/QApplication>

#include <utility>

namespace terrain {

MapClicks::MapClicks(QObject* p_parent)
    : QObject(p_parent)
{ }

void MapClicks::follow(TerrainView& view)
{
    view.installEventFilter(this);
}

bool MapClicks::eventFilter(QObject* p_watched, QEvent* p_event)
{
    const auto* const p_mouse = static_cast<QMouseEvent*>(p_event); // if it is one
    switch (p_event->type()) {
    case QEvent::MouseButtonPress:
        m_pressed.reset();
        if (p_mouse->button() == Qt::LeftButton) {
            m_pressed = p_mouse->pos();
        }
        break;
    case QEvent::MouseMove:
        if (m_pressed
            && (p_mouse->pos() - *m_pressed).manhattanLength() >= QApplication::startDragDistance()) {
            m_pressed.reset();
        }
        break;
    case QEvent::MouseButtonRelease:
        if (p_mouse->button() == Qt::LeftButton && std::exchange(m_pressed, std::nullopt)) {
            tell(dynamic_cast<TerrainView&>(*p_watched), p_mouse->localPos());
        }
        break;
    default:
        break;
    }
    return QObject::eventFilter(p_watched, p_event);
}

void MapClicks::tell(const TerrainView& view, const QPointF& at)
{
    if (const auto reading = view.reading(at)) {
        emit clicked(view.document(), {reading->column, reading->row});
    }
}

} // namespace terrain
