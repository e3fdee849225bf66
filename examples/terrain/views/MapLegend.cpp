#include "views/MapLegend.h"

#include "documents/RoundStep.h"
#include "views/ElevationColours.h"
#include "views/MapFurniture.h"

#include <QtCore/QObject>
#include <QtGui/QFontMetricsF>
#include <QtGui/QLinearGradient>
#include <QtGui/QPainter>
#include <QtGui/QPalette>

#include <algorithm>
#include <cmath>

namespace terrain {

namespace {

const double s_gap = 7; ///< between a drawing and its text
const double s_bar_width = 16;
const double s_bar_height = 150; ///< or, if this is more ...
const double s_lines_of_bar = 7; ///< ... this many lines of text
const double s_tick = 3; ///< pixels that a number's mark reaches out of the bar
const double s_line_distance = 1.15; ///< between numbers, in lines of text
const double s_digits_of_ends = 100; ///< the ends are told this much finer than the round numbers
const double s_sample_line = 1.4; ///< pixels

/// What a legend is made of, from top to bottom, and where it lies.
class Layout
{
public:
    Layout(const QFontMetricsF& font, const QRectF& area, const MapLegend& legend)
        : m_line(font.height())
    {
        if (legend.contour_interval > 0) {
            m_interval
                = QObject::tr("every %1").arg(tick_text(legend.contour_interval, legend.contour_interval));
        }
        m_title = legend.unit;
        const double around = 2 * (furniture_margin + furniture_padding);
        const double others = head() + m_line / 2 + foot();
        m_bar_height
            = std::min(std::max(s_bar_height, s_lines_of_bar * m_line), area.height() - around - others);
        m_ticks = legend_ticks(legend.lowest, legend.highest, s_line_distance * m_line / m_bar_height);
        double widest = 0;
        if (!legend.colours) {
            const QString last = m_ticks.back().text;
            const QString range
                = m_ticks.size() == 1 ? last : QObject::tr("%1 – %2").arg(m_ticks.front().text, last);
            m_title = QString("%1 %2").arg(range, legend.unit).trimmed();
            m_ticks.clear();
        }
        for (const LegendTick& tick : m_ticks) {
            widest = std::max(widest, font.horizontalAdvance(tick.text));
        }
        widest = std::max(widest, font.horizontalAdvance(m_interval));
        const double width = std::max(font.horizontalAdvance(m_title), s_bar_width + s_gap + widest);
        const double height = m_ticks.empty() ? m_line + foot() : others + m_bar_height;
        const double padding = 2 * furniture_padding;
        m_box = QRectF(area.right() - furniture_margin - width - padding, area.top() + furniture_margin,
            width + padding, height + padding);
    }

    const QString& title() const { return m_title; }
    const QString& interval() const { return m_interval; }
    const std::vector<LegendTick>& ticks() const { return m_ticks; }
    const QRectF& box() const { return m_box; }
    QRectF inside() const
    {
        const double padding = furniture_padding;
        return m_box.adjusted(padding, padding, -padding, -padding);
    }
    QRectF bar() const { return {inside().left(), inside().top() + head(), s_bar_width, m_bar_height}; }
    /// The room of a number at a height.
    QRectF text_at(double y) const
    {
        const double left = bar().right() + s_gap;
        return {left, y - m_line / 2, inside().right() - left, m_line};
    }

private:
    /// The title stands above the bar; the outer texts stick out of it by half their height.
    double head() const { return m_line / 2 + (m_title.isEmpty() ? 0 : m_line + s_gap / 2); }
    double foot() const { return m_interval.isEmpty() ? 0 : m_line + s_gap / 2; }

    double m_line; // of text
    QString m_title;
    QString m_interval; // text
    std::vector<LegendTick> m_ticks;
    double m_bar_height = 0;
    QRectF m_box;
};

void draw_bar(QPainter& painter, const QRectF& bar, bool is_flat)
{
    QLinearGradient colours(bar.bottomLeft(), bar.topLeft());
    const int stops = 20;
    for (int i = 0; i <= stops; ++i) {
        const double fraction = static_cast<double>(i) / stops;
        colours.setColorAt(fraction, QColor(elevation_colour(is_flat ? 0.5 : fraction)));
    }
    painter.fillRect(bar, colours);
}

void draw_ticks(QPainter& painter, const Layout& layout)
{
    const QRectF bar = layout.bar();
    for (const LegendTick& tick : layout.ticks()) {
        const double y = bar.bottom() - tick.fraction * bar.height();
        painter.drawLine(QPointF(bar.right(), y), QPointF(bar.right() + s_tick, y));
        painter.drawText(layout.text_at(y), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip, tick.text);
    }
}

/// A piece of a line and the height between two of them.
void draw_interval(QPainter& painter, const Layout& layout, double line)
{
    const double y = layout.inside().bottom() - line / 2;
    const QPen text = painter.pen();
    painter.setPen(QPen(text.color(), s_sample_line));
    painter.drawLine(QPointF(layout.bar().left(), y), QPointF(layout.bar().right(), y));
    painter.setPen(text);
    painter.drawText(
        layout.text_at(y), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip, layout.interval());
}

} // namespace

std::vector<LegendTick> legend_ticks(double lowest, double highest, double smallest_fraction)
{
    // Divided before they are subtracted, or huge heights overflow.
    const double half = highest / 2 - lowest / 2;
    const double smallest_step = half * smallest_fraction * 2;
    const auto tick = [&](double height, const QString& text) {
        return LegendTick{height, text, half > 0 ? (height / 2 - lowest / 2) / half : 0.5};
    };
    if (!std::isnormal(smallest_step) || smallest_step < 0) {
        return {tick(highest, height_text(highest))};
    }
    const double step = round_step(smallest_step * 2.5); // the next round number that is not smaller
    const double fine_step = step / s_digits_of_ends;
    std::vector<LegendTick> ticks{tick(lowest, tick_text(lowest, fine_step))};
    const LegendTick last = tick(highest, tick_text(highest, fine_step));
    const double first = std::floor(lowest / step);
    for (int i = 1; i * smallest_fraction <= 1; ++i) {
        const double height = (first + i) * step;
        const LegendTick between = tick(height, tick_text(height, step));
        // Among huge numbers the next one may be the same.
        if (between.fraction >= smallest_fraction && between.fraction <= 1 - smallest_fraction
            && height > ticks.back().height) {
            ticks.push_back(between);
        }
    }
    ticks.push_back(last);
    return ticks;
}

void draw_legend(QPainter& painter, const QRectF& area, const QPalette& palette, const MapLegend& legend)
{
    if (!has_room_for_furniture(area)) {
        return;
    }
    const QFontMetricsF font(painter.font());
    const Layout layout(font, area, legend);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    draw_box(painter, palette, layout.box());
    painter.drawText(layout.inside(), Qt::AlignLeft | Qt::AlignTop | Qt::TextDontClip, layout.title());
    if (!layout.ticks().empty()) {
        draw_bar(painter, layout.bar(), layout.ticks().size() == 1);
        draw_ticks(painter, layout);
    }
    if (!layout.interval().isEmpty()) {
        draw_interval(painter, layout, font.height());
    }
    painter.restore();
}

} // namespace terrain
