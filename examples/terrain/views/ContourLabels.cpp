#include "views/ContourLabels.h"

#include <QtCore/QLineF>
#include <QtGui/QFontMetricsF>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

#include <algorithm>
#include <cmath>

namespace terrain {

namespace {

const double s_font_part = 0.9; ///< of the map's font
const double s_shortest_distance = 260; ///< pixels between the labels of a line
const double s_gap = 6; ///< pixels between two labels
const double s_halo = 3.2; ///< pixels, the thickness of the line around letters
const double s_straight = 0.9; ///< of the way along the line that its ends are apart at least
const QColor s_ink(40, 26, 14);
const QColor s_paper(255, 252, 245, 225);

/// Walks along a line and finds the points at given ways from its beginning.
class Walk
{
public:
    Walk(const QPolygonF& line, const QTransform& to_widget)
        : m_line(line)
        , m_to_widget(to_widget)
        , m_from(to_widget.map(line.first()))
        , m_to(m_from)
    { }

    /// @param way in pixels, not shorter than the one before @return whether the line is so long
    bool go_to(double way)
    {
        while (m_way + m_length < way) {
            if (++m_next >= m_line.size()) {
                return false;
            }
            m_way += m_length;
            m_from = m_to;
            m_to = m_to_widget.map(m_line[m_next]);
            m_length = QLineF(m_from, m_to).length();
        }
        const double part = m_length > 0 ? (way - m_way) / m_length : 0;
        m_point = m_from + (m_to - m_from) * part;
        return true;
    }
    const QPointF& point() const { return m_point; }

private:
    const QPolygonF& m_line;
    const QTransform& m_to_widget;
    int m_next = 0;
    double m_way = 0; // up to m_from
    double m_length = 0; // from there to m_to
    QPointF m_from;
    QPointF m_to;
    QPointF m_point;
};

} // namespace

ContourLabels::ContourLabels(const QFont& font, const QTransform& to_widget, const QRectF& visible)
    : m_font(font)
    , m_to_widget(to_widget)
    , m_visible(visible)
{
    if (font.pointSizeF() > 0) {
        m_font.setPointSizeF(font.pointSizeF() * s_font_part);
    }
    // In steps, so that half of the labels stay where they are while the map grows.
    const double scale = to_widget.m22();
    m_distance = std::exp2(std::ceil(std::log2(s_shortest_distance / scale))) * scale;
}

void ContourLabels::place(const QPolygonF& line, const QString& text)
{
    const double width = QFontMetricsF(m_font).horizontalAdvance(text) + s_gap;
    const double step = width * m_distance / s_shortest_distance;
    Walk walk(line, m_to_widget);
    double begin = step;
    while (walk.go_to(begin)) {
        const QPointF before = walk.point();
        if (!walk.go_to(begin + width)) {
            return;
        }
        // Nothing but the line itself decides where the next one stands, or they would jump about when others
        // come into sight.
        const QLineF chord(before, walk.point());
        const bool is_straight = chord.length() >= width * s_straight;
        if (is_straight) {
            place_at(chord, text);
        }
        begin += is_straight ? m_distance : step;
    }
}

void ContourLabels::place_at(const QLineF& chord, const QString& text)
{
    const QPointF centre = chord.center();
    const double side = chord.length();
    const QRectF room(centre.x() - side / 2, centre.y() - side / 2, side, side);
    const bool is_taken = std::any_of(
        m_labels.begin(), m_labels.end(), [&](const Label& label) { return label.room.intersects(room); });
    if (is_taken || !m_visible.contains(room)) {
        return;
    }
    double angle = std::remainder(-chord.angle(), 360);
    if (std::abs(angle) > 90) { // it would stand on its head
        angle -= std::copysign(180, angle);
    }
    m_labels.push_back({centre, angle, text, room});
}

void ContourLabels::draw(QPainter& painter) const
{
    const QFontMetricsF font(m_font);
    for (const Label& label : m_labels) {
        QPainterPath letters;
        letters.addText(-font.horizontalAdvance(label.text) / 2, font.capHeight() / 2, m_font, label.text);
        painter.save();
        painter.translate(label.centre);
        painter.rotate(label.angle);
        painter.strokePath(letters, QPen(s_paper, s_halo, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.fillPath(letters, s_ink);
        painter.restore();
    }
}

} // namespace terrain
