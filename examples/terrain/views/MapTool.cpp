#include "views/MapTool.h"

#include "views/TerrainView.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

namespace terrain {

namespace {

const QColor s_light(255, 255, 255, 230);
const QColor s_dark(0, 0, 0, 170);
const double s_light_width = 1.5; ///< pixels
const double s_dark_width = 3.5;

} // namespace

MapTool::MapTool(const Objection& objection, QObject* p_parent)
    : QObject(p_parent)
    , m_objection(objection)
{ }

MapTool::~MapTool()
{
    if (m_p_view) {
        m_p_view->removeEventFilter(this);
    }
}

void MapTool::enter(TerrainView& view)
{
    m_p_view = &view;
    m_pointer.reset();
    view.installEventFilter(this); // the last one is the first that is asked
}

void MapTool::leave(TerrainView& view)
{
    forget();
    m_pointer.reset();
    view.removeEventFilter(this);
    m_p_view.clear();
}

TerrainView* MapTool::view() const
{
    return m_p_view;
}

void MapTool::abandon(const QString& why)
{
    if (is_under_way()) {
        forget();
        update();
        emit said(why);
    }
}

bool MapTool::may_begin()
{
    if (!m_p_view->picture().shade().has_heights()) {
        emit said(tr("The raster has no heights to draw on."));
        return false;
    }
    const QString objection = m_objection(m_p_view->document());
    if (!objection.isEmpty()) {
        emit said(objection);
    }
    return objection.isEmpty();
}

void MapTool::update() const
{
    if (m_p_view) {
        m_p_view->update();
    }
}

bool MapTool::wheel(const QWheelEvent&)
{
    return false;
}

QPointF MapTool::position(const QPointF& on_widget) const
{
    return m_p_view->widget_of_cells().inverted().map(on_widget);
}

bool MapTool::eventFilter(QObject* p_watched, QEvent* p_event)
{
    const auto* const p_view = qobject_cast<TerrainView*>(p_watched); // none when it is about to go
    if (!p_view || p_view != m_p_view) {
        return false;
    }
    switch (p_event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
        return mouse(*static_cast<QMouseEvent*>(p_event));
    case QEvent::MouseMove:
        pointer_moved(*static_cast<QMouseEvent*>(p_event));
        return false; // the map tells what is under the pointer
    case QEvent::Leave:
        m_pointer.reset();
        update();
        return false;
    case QEvent::KeyPress:
        return key(*static_cast<QKeyEvent*>(p_event));
    case QEvent::Wheel:
        return wheel(*static_cast<QWheelEvent*>(p_event));
    default:
        return false;
    }
}

bool MapTool::mouse(const QMouseEvent& event)
{
    if (event.button() != Qt::LeftButton) {
        return false;
    }
    const QPointF at = position(event.localPos());
    m_pointer = at;
    switch (event.type()) {
    case QEvent::MouseButtonPress:
        press(at);
        break;
    case QEvent::MouseButtonRelease:
        release(at);
        break;
    default:
        double_click(at);
        break;
    }
    update();
    return true;
}

void MapTool::pointer_moved(const QMouseEvent& event)
{
    m_pointer = position(event.localPos());
    if (!event.buttons().testFlag(Qt::LeftButton)) {
        button_is_up();
    }
    move(*m_pointer);
    update();
}

void MapTool::draw_outline(QPainter& painter, const QPainterPath& outline)
{
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(s_dark, s_dark_width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(outline);
    painter.setPen(QPen(s_light, s_light_width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(outline);
}

} // namespace terrain
