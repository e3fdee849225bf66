#pragma once

#include <tarqa/housekeeping/MouseMode.h>

#include <QtCore/Qt>

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

/// Whether a button moves a map: the one that the mouse mode moves views with, and the left one where the
/// mode has another use for it that a map, with nothing to turn, has not.
bool moves_map(housekeeping::MouseMode mode, Qt::MouseButton button, Qt::KeyboardModifiers modifiers);

} // namespace terrain
