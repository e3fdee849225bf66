#include "views/PolygonTool.h"

#include "commands/FlattenCommand.h"

#include <QtGui/QKeyEvent>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtGui/QTransform>

#include <utility>

namespace terrain {

namespace {

const QColor s_inside(255, 236, 170, 90);
const double s_corner_radius = 3.5; ///< pixels

} // namespace

void PolygonTool::press(const QPointF& at)
{
    if (is_under_way() || may_begin()) {
        m_corners.push_back(at);
    }
}

/// The first of the two clicks has added the last corner.
void PolygonTool::double_click(const QPointF&)
{
    close();
}

void PolygonTool::close()
{
    if (!is_under_way()) {
        return;
    }
    const QString objection = FlattenCommand::objection(m_corners);
    if (!objection.isEmpty()) {
        emit said(objection + '.'); // and more corners can be added
        return;
    }
    if (!may_begin()) {
        return; // it can be closed later
    }
    const std::vector<QPointF> corners = std::exchange(m_corners, {});
    update();
    emit drawn(corners);
}

void PolygonTool::resume(const std::vector<QPointF>& corners)
{
    m_corners = corners;
    update();
}

bool PolygonTool::key(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        close();
        return true;
    case Qt::Key_Backspace:
        if (is_under_way()) {
            m_corners.pop_back();
            update();
        }
        return true;
    case Qt::Key_Escape:
        abandon(tr("The polygon was given up."));
        return true;
    default:
        return false;
    }
}

void PolygonTool::draw(QPainter& painter, const QTransform& widget_of_cells) const
{
    if (!is_under_way()) {
        return;
    }
    QPolygonF outline;
    for (const QPointF& corner : m_corners) {
        outline.append(widget_of_cells.map(corner));
    }
    const QPolygonF corners = outline;
    if (pointer()) {
        outline.append(widget_of_cells.map(*pointer()));
    }
    QPainterPath path; // its fill rule is the even-odd one
    path.addPolygon(outline);
    path.closeSubpath();
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(path, s_inside);
    draw_outline(painter, path);
    QPainterPath dots;
    for (const QPointF& corner : corners) {
        dots.addEllipse(corner, s_corner_radius, s_corner_radius);
    }
    draw_outline(painter, dots);
    painter.restore();
}

} // namespace terrain
