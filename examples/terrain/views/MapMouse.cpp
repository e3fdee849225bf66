#include "views/MapMouse.h"

#include <tarqa/housekeeping/ApplicationManager.h>

namespace terrain {

bool moves_map(housekeeping::MouseMode mode, Qt::MouseButton button, Qt::KeyboardModifiers modifiers)
{
    const auto modifier = housekeeping::ApplicationManager::const_instance().keyboardModifier();
    switch (mode) {
    case housekeeping::THREE_BUTTON_MOUSE_MODE:
        return button == Qt::LeftButton || button == Qt::MiddleButton;
    case housekeeping::TWO_BUTTON_MOUSE_MODE:
        return button == Qt::LeftButton;
    case housekeeping::LEFT_BUTTON_NAVIGATION_MOUSE_MODE:
        return button == Qt::RightButton || (button == Qt::LeftButton && !modifiers.testFlag(modifier));
    }
    return button == Qt::LeftButton;
}

} // namespace terrain
