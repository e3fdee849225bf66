#pragma once

#include <QtCore/QObject>

#include <functional>
#include <memory>

namespace terrain {

/// What the desktop says of the colours that its user likes.
enum class DesktopColours
{
    NoPreference,
    Light,
    Dark
};

typedef std::function<void(DesktopColours)> DesktopColoursHandler;

/// Tells @p told what the desktop says, as soon as that is known, perhaps before this returns, and again
/// whenever it changes, as long as the returned object lives. It never waits: where the desktop says nothing,
/// nothing is told, not even that. Main thread, after the application object was made.
std::unique_ptr<QObject> watch_desktop_colours(const DesktopColoursHandler& told);

} // namespace terrain
