#pragma once

class QObject;

namespace terrain {

/// Gives the entries that the library made for a window, those of the Help menu and undo and redo, icons of
/// the same look as the host's own. After the window's menus are built; main thread.
/// @param window the owner of the Help menu's entries
void give_icons_to_library_entries(const QObject& window);

} // namespace terrain
