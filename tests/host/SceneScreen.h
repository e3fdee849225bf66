#pragma once

#include "support/VirtualScreen.h"

#include <QtCore/QByteArray>

namespace host_test {

/// A screen with OpenGL for the application object that is made after it.
class SceneScreen
{
public:
    /// @param scale of everything that Qt draws
    explicit SceneScreen(int scale = 1)
    {
        qputenv("DISPLAY", m_screen.display().toLocal8Bit());
        qputenv("QT_QPA_PLATFORM", "xcb");
        qputenv("QT_SCALE_FACTOR", QByteArray::number(scale));
    }

private:
    support::VirtualScreen m_screen;
};

} // namespace host_test
