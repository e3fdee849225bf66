#pragma once

#include "style/DesktopColours.h"

#include <QtGui/QPalette>

#include <memory>

namespace terrain {

/**
 * The colours of all windows, light or dark as the desktop likes it, from its construction until it goes.
 *
 * It sets the palette of the application and of its tool tips: at first, and where the desktop says nothing,
 * as dark or light as the platform's own palette is, and in the desktop's colours as soon as those are known.
 * What is shown follows at once, since all windows take their colours from the palette. The background of
 * maps is a preference of its own.
 *
 * One in a program, made after the application object and before the windows, and deleted before the former.
 * Main thread.
 */
class ColourScheme
{
public:
    ColourScheme();
    ~ColourScheme();
    ColourScheme(const ColourScheme&) = delete;
    ColourScheme& operator=(const ColourScheme&) = delete;

    bool is_dark() const { return m_is_dark; }

private:
    void follow(DesktopColours desktop);
    void dress(bool dark);

    bool m_platform_is_dark;
    bool m_is_dark;
    std::unique_ptr<QObject> m_desktop; // last, since it may call follow() at once
};

/// Whether texts are lighter than what they stand on.
bool is_dark(const QPalette& palette);

/// The program's own colours, for all roles and states.
QPalette scheme_palette(bool dark);

} // namespace terrain
