#pragma once

#include <QtCore/QMetaType>

namespace tarqa::housekeeping {

/// Which mouse button does what in the views; stored as its number. The modes of two buttons stand in for the
/// missing third one with a modifier key, see ApplicationManager::keyboardModifier().
enum MouseMode
{
    THREE_BUTTON_MOUSE_MODE = 0, ///< left selects, middle pans, right turns
    TWO_BUTTON_MOUSE_MODE = 1, ///< left selects, right turns; left with the modifier pans
    LEFT_BUTTON_NAVIGATION_MOUSE_MODE = 2 ///< left turns, right pans; left with the modifier selects
};

} // namespace tarqa::housekeeping

// Slots and signals write the type without the maker's namespace; ApplicationManager registers that name.
Q_DECLARE_METATYPE(tarqa::housekeeping::MouseMode)
