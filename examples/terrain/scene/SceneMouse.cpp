#include "scene/SceneMouse.h"

#include <tarqa/housekeeping/ApplicationManager.h>

namespace terrain {

SceneDrag scene_drag(housekeeping::MouseMode mode, Qt::MouseButton button, Qt::KeyboardModifiers modifiers)
{
    const bool left = button == Qt::LeftButton;
    if (button == Qt::MiddleButton) {
        return SceneDrag::Move;
    }
    if (!left && button != Qt::RightButton) {
        return SceneDrag::None;
    }
    if (modifiers.testFlag(Qt::ShiftModifier)) {
        return SceneDrag::Move;
    }
    switch (mode) {
    case housekeeping::THREE_BUTTON_MOUSE_MODE:
        break;
    case housekeeping::TWO_BUTTON_MOUSE_MODE:
        return left
                && modifiers.testFlag(housekeeping::ApplicationManager::const_instance().keyboardModifier())
            ? SceneDrag::Move
            : SceneDrag::Turn;
    case housekeeping::LEFT_BUTTON_NAVIGATION_MOUSE_MODE:
        return left ? SceneDrag::Turn : SceneDrag::Move;
    }
    return SceneDrag::Turn;
}

} // namespace terrain
