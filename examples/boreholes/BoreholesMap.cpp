#include "BoreholesMap.h"

#include "BoreholesController.h"

#include <QtCore/QLineF>
#include <QtCore/QLocale>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>

#include <algorithm>
#include <cmath>

namespace boreholes {

namespace {

// In pixels.
const QSize s_smallest(320, 240);
const int s_rim = 48; ///< around the area of the dots, for coordinates and names
const double s_grid = 110; ///< about what is between two lines
const double s_bar = 140; ///< about the length of the scale
const double s_dot = 5; ///< radius
const double s_near = 12; ///< so far from a dot a click is meant for it

const QColor s_colour(176, 84, 40); ///< of the dots

const double s_least_extent = 100; ///< metres; else a single borehole would have no scale

/// What of the map the boreholes take, in metres.
QRectF extent(const Boreholes& boreholes)
{
    if (boreholes.empty()) {
        return {0, 0, s_least_extent, s_least_extent};
    }
    QRectF area(boreholes.front().x, boreholes.front().y, 0, 0);
    for (const Borehole& borehole : boreholes) {
        area.setLeft(std::min(area.left(), borehole.x));
        area.setRight(std::max(area.right(), borehole.x));
        area.setTop(std::min(area.top(), borehole.y));
        area.setBottom(std::max(area.bottom(), borehole.y));
    }
    const double missing_width = std::max(0.0, s_least_extent - area.width()) / 2;
    const double missing_height = std::max(0.0, s_least_extent - area.height()) / 2;
    return area.adjusted(-missing_width, -missing_height, missing_width, missing_height);
}

} // namespace

BoreholesMap::BoreholesMap(BoreholesController& controller, QWidget* p_parent)
    : QWidget(p_parent)
    , m_controller(controller)
{
    setMinimumSize(s_smallest);
    setFocusPolicy(Qt::StrongFocus); // undo and redo act on the widget that has the keyboard
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
}

QPointF BoreholesMap::middle() const
{
    return extent(m_controller.boreholes()).center();
}

QTransform BoreholesMap::view() const
{
    const QRectF area = extent(m_controller.boreholes());
    const double scale
        = std::min((width() - 2 * s_rim) / area.width(), (height() - 2 * s_rim) / area.height());
    QTransform view;
    view.translate(width() / 2.0, height() / 2.0);
    view.scale(scale, -scale); // pixels count downwards
    view.translate(-area.center().x(), -area.center().y());
    return view;
}

double BoreholesMap::round_length(double pixels, const QTransform& view) const
{
    const double wanted = m_controller.in_unit(pixels / view.m11());
    const double power = std::pow(10, std::floor(std::log10(wanted)));
    for (const double factor : {5.0, 2.0}) {
        if (factor * power <= wanted) {
            return m_controller.in_metres(factor * power);
        }
    }
    return m_controller.in_metres(power);
}

// --- painting

void BoreholesMap::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QTransform to_pixels = view();
    draw_grid(painter, to_pixels);
    draw_boreholes(painter, to_pixels);
    draw_scale(painter, to_pixels);
    if (m_controller.boreholes().empty()) {
        painter.setPen(palette().color(QPalette::Text));
        painter.drawText(rect(), Qt::AlignCenter, tr("Ctrl+click where a borehole is"));
    }
}

void BoreholesMap::draw_grid(QPainter& painter, const QTransform& view) const
{
    const double step = round_length(s_grid, view);
    const QRectF area = view.inverted().mapRect(QRectF(rect()));
    const auto number
        = [this](double metres) { return QLocale().toString(m_controller.in_unit(metres), 'f', 0); };
    for (double x = std::ceil(area.left() / step) * step; x < area.right(); x += step) {
        const double column = view.map(QPointF(x, 0)).x();
        painter.setPen(palette().color(QPalette::Midlight));
        painter.drawLine(QLineF(column, 0, column, height()));
        painter.setPen(palette().color(QPalette::Mid).darker());
        if (column + s_rim < width()) { // else it would be cut off
            painter.drawText(QPointF(column + 3, height() - 5), number(x));
        }
    }
    for (double y = std::ceil(area.top() / step) * step; y < area.bottom(); y += step) {
        const double row = view.map(QPointF(0, y)).y();
        painter.setPen(palette().color(QPalette::Midlight));
        painter.drawLine(QLineF(0, row, width(), row));
        painter.setPen(palette().color(QPalette::Mid).darker());
        if (row > s_rim / 2 && row < height() - s_rim / 2) {
            painter.drawText(QPointF(4, row - 3), number(y));
        }
    }
}

void BoreholesMap::draw_boreholes(QPainter& painter, const QTransform& view) const
{
    const Boreholes& boreholes = m_controller.boreholes();
    for (std::size_t index = 0; index < boreholes.size(); ++index) {
        const QPointF dot = view.map(QPointF(boreholes[index].x, boreholes[index].y));
        const bool is_selected = m_controller.selected() == index;
        painter.setPen(QPen(palette().color(QPalette::Text), is_selected ? 2 : 1));
        painter.setBrush(is_selected ? palette().color(QPalette::Highlight) : s_colour);
        painter.drawEllipse(dot, is_selected ? s_dot + 2 : s_dot, is_selected ? s_dot + 2 : s_dot);

        // Beside the dot, on the side where there is room.
        const double length = painter.fontMetrics().horizontalAdvance(boreholes[index].name);
        const bool fits = dot.x() + 2 * s_dot + length < width();
        const double left = fits ? dot.x() + 2 * s_dot : dot.x() - 2 * s_dot - length;
        painter.drawText(QPointF(left, dot.y() + s_dot), boreholes[index].name);
    }
}

void BoreholesMap::draw_scale(QPainter& painter, const QTransform& view) const
{
    const double metres = round_length(s_bar, view);
    const QRectF bar(0, 0, metres * view.m11(), 5);
    const QString text
        = tr("%1 %2").arg(QLocale().toString(m_controller.in_unit(metres), 'g', 6), m_controller.unit_text());
    painter.save();
    painter.translate(width() - bar.width() - 16, height() - 34);
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().color(QPalette::Base));
    painter.drawRect(bar.adjusted(-8, -22, 8, 8)); // over the grid
    painter.setBrush(palette().color(QPalette::Text));
    painter.drawRect(bar);
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(QRectF(0, -20, bar.width(), 18), Qt::AlignCenter, text);
    painter.restore();
}

// --- mouse

void BoreholesMap::mousePressEvent(QMouseEvent* p_event)
{
    if (p_event->button() != Qt::LeftButton) {
        return;
    }
    const QTransform to_pixels = view();
    if (p_event->modifiers() == Qt::ControlModifier) {
        emit borehole_wanted(to_pixels.inverted().map(p_event->localPos()));
        return;
    }
    const Boreholes& boreholes = m_controller.boreholes();
    const auto hit = std::find_if(boreholes.begin(), boreholes.end(), [&](const Borehole& borehole) {
        const QPointF dot = to_pixels.map(QPointF(borehole.x, borehole.y));
        return QLineF(dot, p_event->localPos()).length() < s_near;
    });
    if (hit == boreholes.end()) {
        m_controller.select(std::nullopt);
    } else {
        m_controller.select(static_cast<std::size_t>(hit - boreholes.begin()));
    }
}

} // namespace boreholes
