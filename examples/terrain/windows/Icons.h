#pragma once

#include "help/Bindings.h"

#include <QtGui/QIcon>

class QPainter;
class QPalette;

namespace terrain {

/// Draws a picture with lines, in a square of 24 by 24.
typedef void (*Drawing)(QPainter& painter);

/// The icon of a drawing, in the palette's text colours, for tool bars of all sizes; none for a null drawing.
QIcon drawn_icon(Drawing drawing, const QPalette& palette);

/// The picture of a deed, drawn in the palette's text colour; none for deeds that stand in no tool bar.
QIcon icon_of(Deed deed, const QPalette& palette);

} // namespace terrain
