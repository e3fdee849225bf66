#pragma once

#include <QtGui/QIcon>

class QPalette;

namespace terrain {

enum class HelpDeed;

/// The picture of what can be done in the help window, drawn in the palette's text colour; none for what
/// stands in no tool bar.
QIcon icon_of(HelpDeed deed, const QPalette& palette);

} // namespace terrain
