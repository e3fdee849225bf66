#include "scene/SceneOverlay.h"

#include "views/MapFurniture.h"

#include <QtGui/QFontMetricsF>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

#include <cmath>

namespace terrain {

namespace {

const double s_compass_radius = 30;
const double s_needle_part = 0.52; ///< of the radius
const double s_needle_width = 6;
const double s_degrees = 180 / std::acos(-1); ///< of a radian
const QColor s_north_colour(200, 60, 50);

} // namespace

SceneOverlay::SceneOverlay(QWidget* p_parent)
    : QWidget(p_parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
}

void SceneOverlay::show_heading(double heading)
{
    if (heading != m_heading) {
        m_heading = heading;
        update();
    }
}

void SceneOverlay::show_note(const QString& note)
{
    if (note != m_note) {
        m_note = note;
        update();
    }
}

void SceneOverlay::show_problem(const QString& problem)
{
    if (problem != m_problem) {
        m_problem = problem;
        update();
    }
}

void SceneOverlay::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (!m_problem.isEmpty()) {
        draw_note(painter, rect(), palette(), m_problem);
    } else if (has_room_for_furniture(rect())) {
        draw_compass(painter);
        draw_text(painter);
    }
}

void SceneOverlay::draw_compass(QPainter& painter) const
{
    const double radius = s_compass_radius;
    painter.save();
    painter.translate(width() - furniture_margin - s_compass_radius, furniture_margin + s_compass_radius);
    draw_box(painter, palette(), QRectF(-radius, -radius, 2 * radius, 2 * radius));
    painter.rotate(-m_heading * s_degrees);
    const double length = radius * s_needle_part;
    const double middle = (radius - length) / 2; // leaves room for the letter
    for (const bool north : {true, false}) {
        QPainterPath needle;
        needle.moveTo(0, middle + (north ? -length : length));
        needle.lineTo(s_needle_width, middle);
        needle.lineTo(-s_needle_width, middle);
        needle.closeSubpath();
        QColor south = palette().color(QPalette::Text);
        south.setAlphaF(0.45);
        painter.fillPath(needle, north ? s_north_colour : south);
    }
    // The letter goes around with the needle, but stands upright.
    const double end = middle - length - (radius - length + middle) / 2 + 1;
    painter.translate(0, end);
    painter.rotate(m_heading * s_degrees);
    QFont font = painter.font();
    font.setBold(true);
    font.setPixelSize(12);
    painter.setFont(font);
    painter.drawText(QRectF(-radius, -radius, 2 * radius, 2 * radius), Qt::AlignCenter, tr("N", "north"));
    painter.restore();
}

void SceneOverlay::draw_text(QPainter& painter) const
{
    if (m_note.isEmpty()) {
        return;
    }
    const QFontMetricsF font(painter.font());
    const QSizeF size(font.horizontalAdvance(m_note), font.height());
    const QRectF text(QPointF(furniture_margin + furniture_padding,
                          height() - furniture_margin - furniture_padding - size.height()),
        size);
    const double padding = furniture_padding;
    draw_box(painter, palette(), text.adjusted(-padding, -padding, padding, padding));
    painter.drawText(text, Qt::AlignCenter | Qt::TextDontClip, m_note);
}

} // namespace terrain
