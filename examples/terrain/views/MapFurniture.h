#pragma once

#include <QtCore/QRectF>
#include <QtCore/QString>

class QPainter;
class QPalette;

namespace terrain {

/// What is drawn on a map beside the terrain, except for the legend. Texts are in the painter's font, colours
/// those of the map's palette.

constexpr double furniture_margin = 14; ///< from the edges of the map
constexpr double furniture_padding = 9; ///< inside a box

/// Whether a map is so large that furniture does not hide too much of it.
bool has_room_for_furniture(const QRectF& area);
/// Draws the background of a piece of furniture, and leaves the pen of its texts in the painter.
void draw_box(QPainter& painter, const QPalette& palette, const QRectF& box);

/// A length in metres or, from one kilometre on, in kilometres.
QString length_text(double metres);
/// A height with as many digits as are worth reading, for example "523.4".
QString height_text(double height);
/// A multiple of a step from round_step(), with the digits that tell it from its neighbours.
QString tick_text(double number, double step);

/// Draws a bar of a round length into the lower left corner of @p area.
/// @param metres_per_pixel how large the map is drawn; 0 if unknown, then nothing is drawn
void draw_scale_bar(QPainter& painter, const QRectF& area, const QPalette& palette, double metres_per_pixel);

/// Draws what the user should know about the map, at the top of @p area; nothing if it is empty.
void draw_note(QPainter& painter, const QRectF& area, const QPalette& palette, const QString& text);

} // namespace terrain
