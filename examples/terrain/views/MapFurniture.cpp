#include "views/MapFurniture.h"

#include "documents/RoundStep.h"
#include "language/NumberText.h"

#include <QtCore/QObject>
#include <QtGui/QFontMetricsF>
#include <QtGui/QPainter>
#include <QtGui/QPalette>

#include <algorithm>
#include <cmath>

namespace terrain {

namespace {

const double s_gap = 7; ///< between a drawing and its text
const double s_longest_bar = 180;
const double s_bar_thickness = 5;
const double s_smallest_area = 260; ///< a map that is smaller than this has no room for furniture
const int s_digits = 6; ///< of heights
const double s_longest_number = 1e9; ///< from here on, powers of ten are easier to read
const double s_finest_step = 1e-6; ///< and below this one
const int s_paper_alpha = 228;
const int s_rim_alpha = 60;

} // namespace

QString length_text(double metres)
{
    return metres < 1000 ? QObject::tr("%1 m").arg(number_text(metres))
                         : QObject::tr("%1 km").arg(number_text(metres / 1000));
}

QString height_text(double height)
{
    return number_text(height, 'g', s_digits);
}

QString tick_text(double number, double step)
{
    if (!(std::abs(number) < s_longest_number) || !(step >= s_finest_step)) {
        return height_text(number);
    }
    const int decimals = decimals_of(step);
    const bool is_zero = QString::number(number, 'f', decimals).toDouble() == 0;
    return is_zero ? number_text(0) : number_text(number, 'f', decimals); // not "-0.0"
}

bool has_room_for_furniture(const QRectF& area)
{
    return std::min(area.width(), area.height()) >= s_smallest_area;
}

void draw_box(QPainter& painter, const QPalette& palette, const QRectF& box)
{
    QColor paper = palette.color(QPalette::Base);
    paper.setAlpha(s_paper_alpha);
    QColor rim = palette.color(QPalette::Text);
    rim.setAlpha(s_rim_alpha);
    painter.setPen(rim);
    painter.setBrush(paper);
    painter.drawRoundedRect(box, 5, 5);
    painter.setPen(palette.color(QPalette::Text));
}

void draw_scale_bar(QPainter& painter, const QRectF& area, const QPalette& palette, double metres_per_pixel)
{
    if (!(metres_per_pixel > 0) || !std::isfinite(metres_per_pixel) || !has_room_for_furniture(area)) {
        return;
    }
    const double metres = round_step(s_longest_bar * metres_per_pixel);
    const double length = metres / metres_per_pixel;
    const QFontMetricsF font(painter.font());
    const QSizeF size(
        length + 2 * furniture_padding, font.height() + s_gap / 2 + s_bar_thickness + 2 * furniture_padding);
    const QRectF box(
        QPointF(area.left() + furniture_margin, area.bottom() - furniture_margin - size.height()), size);

    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    draw_box(painter, palette, box);
    const QRectF inside
        = box.adjusted(furniture_padding, furniture_padding, -furniture_padding, -furniture_padding);
    painter.drawText(inside, Qt::AlignHCenter | Qt::AlignTop | Qt::TextDontClip, length_text(metres));
    // One half filled, one open, so that half the length can be read too.
    QRectF bar(inside.left(), inside.bottom() - s_bar_thickness, length, s_bar_thickness);
    painter.setBrush(palette.color(QPalette::Base));
    painter.drawRect(bar);
    bar.setWidth(length / 2);
    painter.setBrush(palette.color(QPalette::Text));
    painter.drawRect(bar);
    painter.restore();
}

void draw_note(QPainter& painter, const QRectF& area, const QPalette& palette, const QString& text)
{
    if (text.isEmpty() || !has_room_for_furniture(area)) {
        return;
    }
    const double around = 2 * (furniture_margin + furniture_padding);
    const QRectF room(0, 0, area.width() - around, area.height() - around);
    const int flags = Qt::AlignCenter | Qt::TextWordWrap;
    const QSizeF size = QFontMetricsF(painter.font()).boundingRect(room, flags, text).size();
    QRectF inside(QPointF(area.center().x() - size.width() / 2, area.top() + furniture_margin), size);
    inside.translate(0, furniture_padding);
    const double padding = furniture_padding;

    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    draw_box(painter, palette, inside.adjusted(-padding, -padding, padding, padding));
    painter.drawText(inside, flags | Qt::TextDontClip, text);
    painter.restore();
}

} // namespace terrain
