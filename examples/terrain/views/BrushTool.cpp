#include "views/BrushTool.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtGui/QTransform>
#include <QtGui/QWheelEvent>

#include <algorithm>
#include <cmath>
#include <utility>

namespace terrain {

namespace {

const double s_step = 1.25; ///< of a key and of a notch of the wheel
const double s_notch = 120; ///< what Qt counts for a notch
const double s_grain = 0.5; ///< cells; radii are multiples of it
const double s_spacing = 0.1; ///< parts of the radius; positions nearer than this make no difference
const QColor s_raised(255, 240, 150, 140);
const QColor s_lowered(120, 190, 255, 140);

double distance(const QPointF& from, const QPointF& to)
{
    return std::hypot(to.x() - from.x(), to.y() - from.y());
}

} // namespace

void BrushTool::set_brush(const Brush& brush)
{
    if (brush == m_brush) {
        return;
    }
    forget();
    m_brush = brush;
    update();
}

void BrushTool::press(const QPointF& at)
{
    if (!is_under_way() && may_begin()) {
        m_path = {at};
    }
}

void BrushTool::move(const QPointF& to)
{
    if (is_under_way() && distance(m_path.back(), to) >= s_spacing * m_brush.radius) {
        m_path.push_back(to);
    }
}

void BrushTool::button_is_up()
{
    abandon(tr("The stroke was given up."));
}

void BrushTool::release(const QPointF& at)
{
    if (!is_under_way()) {
        return;
    }
    if (distance(m_path.back(), at) > 0) {
        m_path.push_back(at);
    }
    emit drawn(std::exchange(m_path, {}));
}

bool BrushTool::key(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Escape:
        abandon(tr("The stroke was given up."));
        return true;
    case Qt::Key_BracketLeft:
        choose_radius(1 / s_step);
        return true;
    case Qt::Key_BracketRight:
        choose_radius(s_step);
        return true;
    default:
        return false;
    }
}

bool BrushTool::wheel(const QWheelEvent& event)
{
    if (!event.modifiers().testFlag(Qt::ControlModifier)) {
        return false;
    }
    choose_radius(std::pow(s_step, event.angleDelta().y() / s_notch));
    return true;
}

void BrushTool::choose_radius(double factor)
{
    if (is_under_way() || factor == 1) {
        return;
    }
    const double wanted = std::round(m_brush.radius * factor / s_grain) * s_grain;
    const double least_step = factor > 1 ? s_grain : -s_grain;
    const double radius = wanted == m_brush.radius ? wanted + least_step : wanted;
    emit radius_chosen(std::clamp(radius, Brush::least_radius, Brush::largest_radius));
}

void BrushTool::draw(QPainter& painter, const QTransform& widget_of_cells) const
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    if (is_under_way()) {
        // In cells, so that the band is as wide as what it will change, however the cells are drawn.
        QPainterPath path(m_path.front());
        for (const QPointF& place : m_path) {
            path.lineTo(place);
        }
        if (m_path.size() == 1) {
            path.lineTo(m_path.front() + QPointF(1e-3, 0)); // a line without a length is not drawn
        }
        const QColor colour = m_brush.direction == Brush::Direction::Raise ? s_raised : s_lowered;
        painter.setTransform(widget_of_cells, true);
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(colour, 2 * m_brush.radius, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPath(path);
    }
    painter.restore();
    if (pointer()) {
        QPainterPath circle;
        circle.addEllipse(*pointer(), m_brush.radius, m_brush.radius);
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        draw_outline(painter, widget_of_cells.map(circle));
        painter.restore();
    }
}

} // namespace terrain
