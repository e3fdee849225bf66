#pragma once

#include <QtCore/QRectF>
#include <QtCore/QString>

class QPainter;

namespace terrain {

/// What is drawn on a map beside the terrain. Texts are in the painter's font.

/// A length that is good to read: 1, 2 or 5 times a power of ten, as long as possible.
/// @param longest positive
double round_length(double longest);
/// A length in metres or, from one kilometre on, in kilometres.
QString length_text(double metres);
/// A height with as many digits as are worth reading, for example "523.4".
QString height_text(double height);

/// Draws a bar of a round length into the lower left corner of @p area.
/// @param metres_per_pixel how large the map is drawn; 0 if unknown, then nothing is drawn
void draw_scale_bar(QPainter& painter, const QRectF& area, double metres_per_pixel);

/// Draws which colour stands for which height into the upper right corner of @p area.
void draw_legend(QPainter& painter, const QRectF& area, double lowest, double highest, const QString& unit);

} // namespace terrain
