#include "views/ContourLayer.h"

#include "views/ContourLabels.h"
#include "views/HillShade.h"
#include "views/MapFurniture.h"

#include <tarqa/utilities/Exception.h>

#include <QtGui/QPainter>

#include <algorithm>
#include <cmath>
#include <exception>
#include <utility>

namespace terrain {

namespace {

const int s_bold_every = 5;
const double s_thin = 1; ///< pixels
const double s_bold = 1.8;
const double s_rim = 3.6; ///< pixels, of a light line below a bold one, which shows it on dark ground
const QColor s_ink(50, 32, 18, 200);
const QColor s_bold_ink(40, 25, 12, 235);
const QColor s_rim_ink(255, 252, 245, 110);
const double s_smallest_step = 1.2; ///< pixels; points that are closer to each other cannot be told apart
const double s_reach = 4; ///< pixels outside of the widget that a line is drawn to

bool is_bold(double height, double interval)
{
    return std::fmod(std::abs(std::round(height / interval)), s_bold_every) == 0;
}

/// What is worth drawing of a line: parts in sight, without points that are too close.
class VisibleParts
{
public:
    VisibleParts(const QTransform& to_widget, const QRectF& visible)
        : m_to_widget(to_widget)
        , m_visible(visible.adjusted(-s_reach, -s_reach, s_reach, s_reach))
    { }

    std::vector<QPolygonF> of(const QPolygonF& line) const
    {
        std::vector<QPolygonF> parts;
        QPolygonF part;
        QPointF last = m_to_widget.map(line.first());
        for (int i = 1; i < line.size(); ++i) {
            const QPointF next = m_to_widget.map(line[i]);
            const QPointF step = next - last;
            if (i + 1 < line.size() && QPointF::dotProduct(step, step) < s_smallest_step * s_smallest_step) {
                continue;
            }
            if (may_be_seen(last, next)) {
                if (part.isEmpty()) {
                    part.append(last);
                }
                part.append(next);
            } else if (!part.isEmpty()) {
                parts.push_back(std::exchange(part, QPolygonF()));
            }
            last = next;
        }
        if (!part.isEmpty()) {
            parts.push_back(part);
        }
        return parts;
    }

private:
    bool may_be_seen(const QPointF& a, const QPointF& b) const
    {
        return std::max(a.x(), b.x()) >= m_visible.left() && std::min(a.x(), b.x()) <= m_visible.right()
            && std::max(a.y(), b.y()) >= m_visible.top() && std::min(a.y(), b.y()) <= m_visible.bottom();
    }

    const QTransform& m_to_widget;
    QRectF m_visible;
};

} // namespace

void ContourLayer::clear()
{
    m_lines.clear();
    m_asked_interval = -1;
    m_interval = 0;
    m_problem.clear();
}

void ContourLayer::make(const HillShade& shade, double interval)
{
    if (interval == m_asked_interval) {
        return;
    }
    clear();
    m_asked_interval = interval;
    m_interval = interval > 0 ? interval : contour_interval(shade.lowest(), shade.highest());
    ++m_times_made;
    std::vector<ContourLine> lines;
    try {
        lines = contour_lines(shade.heights(), m_interval);
    } catch (const tarqa::Exception& error) { // the map is being painted, which cannot fail
        m_problem = QString::fromStdString(error.what());
    } catch (const std::exception& error) {
        m_problem = QString::fromStdString(error.what());
    }
    const double cells = shade.cells_per_pixel();
    m_lines.reserve(lines.size());
    for (const ContourLine& line : lines) {
        if (line.points.size() < 2) {
            continue;
        }
        Line made;
        made.points.reserve(static_cast<int>(line.points.size()));
        for (const QPointF& point : line.points) {
            made.points.append(point * cells);
        }
        made.bounds = made.points.boundingRect();
        if (is_bold(line.height, m_interval)) {
            made.label = tick_text(line.height, m_interval);
        }
        m_lines.push_back(std::move(made));
    }
}

void ContourLayer::draw(QPainter& painter, const QTransform& to_widget, const QRectF& visible) const
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const VisibleParts visible_parts(to_widget, visible);
    ContourLabels labels(painter.font(), to_widget, visible);
    const QRectF cells = to_widget.inverted().mapRect(visible);
    const QPen thin(s_ink, s_thin);
    const QPen bold(s_bold_ink, s_bold, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin);
    const QPen rim(s_rim_ink, s_rim, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin);
    for (const Line& line : m_lines) {
        // By hand: the bounds of a straight line have no area, so they would intersect nothing.
        if (line.bounds.right() < cells.left() || line.bounds.left() > cells.right()
            || line.bounds.bottom() < cells.top() || line.bounds.top() > cells.bottom()) {
            continue;
        }
        const bool is_bold_line = !line.label.isEmpty();
        for (const QPolygonF& part : visible_parts.of(line.points)) {
            if (is_bold_line) {
                painter.setPen(rim);
                painter.drawPolyline(part);
            }
            painter.setPen(is_bold_line ? bold : thin);
            painter.drawPolyline(part);
        }
        if (is_bold_line) {
            labels.place(line.points, line.label);
        }
    }
    labels.draw(painter);
    painter.restore();
}

} // namespace terrain
