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
    switch (p_event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
        mouse(*p_watched, *static_cast<QMouseEvent*>(p_event));
        break;
    default:
        break;
    }
    return QObject::eventFilter(p_watched, p_event);
}

void MapClicks::mouse(const QObject& watched, const QMouseEvent& event)
{
    const bool is_left = event.button() == Qt::LeftButton;
    if (event.type() == QEvent::MouseButtonPress) {
        m_pressed = is_left ? std::make_optional(event.pos()) : std::nullopt;
    } else if (event.type() == QEvent::MouseMove) {
        if (m_pressed && (event.pos() - *m_pressed).manhattanLength() >= QApplication::startDragDistance()) {
            m_pressed.reset();
        }
    } else if (is_left && std::exchange(m_pressed, std::nullopt)) {
        tell(dynamic_cast<const TerrainView&>(watched), event.localPos());
    }
}

void MapClicks::tell(const TerrainView& view, const QPointF& at)
{
    if (const auto reading = view.reading(at)) {
        emit clicked(view.document(), {reading->column, reading->row});
    }
}

} // namespace terrain
