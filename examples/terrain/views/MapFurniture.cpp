#include "views/MapFurniture.h"

#include "views/ElevationColours.h"

#include <QtCore/QObject>
#include <QtGui/QFontMetricsF>
#include <QtGui/QLinearGradient>
#include <QtGui/QPainter>

#include <algorithm>
#include <cmath>

namespace terrain {

namespace {

const double s_margin = 14; ///< from the edges of the map
const double s_padding = 9; ///< inside a box
const double s_gap = 7; ///< between a drawing and its text
const double s_longest_bar = 180;
const double s_bar_thickness = 5;
const double s_legend_width = 16;
const double s_legend_height = 150;
const double s_smallest_area = 260; ///< a map that is smaller than this has no room for furniture
const int s_digits = 6; ///< of heights

const QColor s_ink(40, 44, 52);
const QColor s_paper(255, 255, 255, 225);
const QColor s_rim(0, 0, 0, 45);

void draw_box(QPainter& painter, const QRectF& box)
{
    painter.setPen(s_rim);
    painter.setBrush(s_paper);
    painter.drawRoundedRect(box, 5, 5);
}

bool has_room(const QRectF& area)
{
    return std::min(area.width(), area.height()) >= s_smallest_area;
}

} // namespace

double round_length(double longest)
{
    const double power = std::pow(10, std::floor(std::log10(longest)));
    const double rounding = 1 + 1e-9; // 1000 must not become 500
    for (const double step : {5, 2}) {
        if (step * power <= longest * rounding) {
            return step * power;
        }
    }
    return power;
}

QString length_text(double metres)
{
    return metres < 1000 ? QObject::tr("%1 m").arg(QString::number(metres))
                         : QObject::tr("%1 km").arg(QString::number(metres / 1000));
}

QString height_text(double height)
{
    return QString::number(height, 'g', s_digits);
}

void draw_scale_bar(QPainter& painter, const QRectF& area, double metres_per_pixel)
{
    if (!(metres_per_pixel > 0) || !std::isfinite(metres_per_pixel) || !has_room(area)) {
        return;
    }
    const double metres = round_length(s_longest_bar * metres_per_pixel);
    const double length = metres / metres_per_pixel;
    const QFontMetricsF font(painter.font());
    const QSizeF size(length + 2 * s_padding, font.height() + s_gap / 2 + s_bar_thickness + 2 * s_padding);
    const QRectF box(QPointF(area.left() + s_margin, area.bottom() - s_margin - size.height()), size);

    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    draw_box(painter, box);
    const QRectF inside = box.adjusted(s_padding, s_padding, -s_padding, -s_padding);
    painter.setPen(s_ink);
    painter.drawText(inside, Qt::AlignHCenter | Qt::AlignTop | Qt::TextDontClip, length_text(metres));
    // One half filled, one open, so that half the length can be read too.
    QRectF bar(inside.left(), inside.bottom() - s_bar_thickness, length, s_bar_thickness);
    painter.setBrush(Qt::white);
    painter.drawRect(bar);
    bar.setWidth(length / 2);
    painter.setBrush(s_ink);
    painter.drawRect(bar);
    painter.restore();
}

void draw_legend(QPainter& painter, const QRectF& area, double lowest, double highest, const QString& unit)
{
    if (!has_room(area)) {
        return;
    }
    const QFontMetricsF font(painter.font());
    const QString texts[]
        = {height_text(highest), height_text(highest / 2 + lowest / 2), height_text(lowest)};
    double widest = font.horizontalAdvance(unit) - s_legend_width - s_gap;
    for (const QString& text : texts) {
        widest = std::max(widest, font.horizontalAdvance(text));
    }
    // The unit stands above the bar; the outer texts stick out of it by half their height.
    const double head = font.height() * 1.5 + s_gap / 2;
    const QSizeF size(s_legend_width + s_gap + widest + 2 * s_padding,
        head + s_legend_height + font.height() / 2 + 2 * s_padding);
    const QRectF box(QPointF(area.right() - s_margin - size.width(), area.top() + s_margin), size);

    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    draw_box(painter, box);
    const QRectF bar(box.left() + s_padding, box.top() + s_padding + head, s_legend_width, s_legend_height);
    QLinearGradient colours(bar.bottomLeft(), bar.topLeft());
    const int stops = 20;
    for (int i = 0; i <= stops; ++i) {
        const double fraction = static_cast<double>(i) / stops;
        colours.setColorAt(fraction, QColor(elevation_colour(fraction)));
    }
    painter.setPen(s_rim);
    painter.setBrush(colours);
    painter.drawRect(bar);
    painter.setPen(s_ink);
    painter.drawText(QPointF(bar.left(), box.top() + s_padding + font.ascent()), unit);
    for (int i = 0; i < 3; ++i) {
        const double y = bar.top() + bar.height() * i / 2;
        painter.drawText(QRectF(bar.right() + s_gap, y - font.height() / 2, widest, font.height()),
            Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip, texts[i]);
    }
    painter.restore();
}

} // namespace terrain
