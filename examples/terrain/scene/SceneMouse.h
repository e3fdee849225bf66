#pragma once

#include <tarqa/housekeeping/MouseMode.h>

#include <QtCore/Qt>

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

/// What dragging in a scene does.
enum class SceneDrag
{
    None,
    Turn, ///< goes around the terrain, or looks around
    Move
};

/// What a button does when it drags: what the mouse mode says that it does in views, and turning where the
/// mode selects things with it, of which a scene has none. The middle button and Shift always move.
SceneDrag scene_drag(housekeeping::MouseMode mode, Qt::MouseButton button, Qt::KeyboardModifiers modifiers);

} // namespace terrain
