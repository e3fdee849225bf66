#pragma once

#include "help/Bindings.h"

#include <QtGui/QIcon>

class QPalette;

namespace terrain {

/// The picture of a deed, drawn in the palette's text colour; none for deeds that stand in no tool bar.
QIcon icon_of(Deed deed, const QPalette& palette);

} // namespace terrain
