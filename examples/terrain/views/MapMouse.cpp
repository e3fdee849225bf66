#include "views/MapMouse.h"

#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/MouseMode.h>

#include <QtGui/QMouseEvent>

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

namespace {

/// Whether a button moves a map: the one that the mouse mode moves views with, and the left one where the
/// mode has another use for it that a map, with nothing to turn, has not.
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

} // namespace

bool MapDrag::begin(const QMouseEvent& event, bool has_tool)
{
    const auto mode = housekeeping::ApplicationManager::const_instance().mouseMode();
    const bool moves = has_tool ? event.button() == Qt::RightButton || event.button() == Qt::MiddleButton
                                : moves_map(mode, event.button(), event.modifiers());
    if (m_last || !moves) {
        return false;
    }
    m_last = event.localPos();
    m_button = event.button();
    return true;
}

QPointF MapDrag::move(const QMouseEvent& event)
{
    const QPointF by = event.localPos() - *m_last;
    m_last = event.localPos();
    return by;
}

void MapDrag::end(const QMouseEvent& event)
{
    if (event.button() == m_button) {
        m_last.reset();
    }
}

} // namespace terrain
