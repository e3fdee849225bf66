#pragma once

#include <tarqa/housekeeping/QuickHelpSection.h>

#include <QtCore/QString>
#include <QtCore/Qt>
#include <QtGui/QKeySequence>

#include <vector>

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

/// What the user can do in the main window.
enum class Deed
{
    Open,
    Save,
    SaveAs,
    Export,
    Close,
    Preferences,
    Report,
    Restart,
    Quit,
    ZoomIn,
    ZoomOut,
    Fit,
    PanLeft,
    PanRight,
    PanUp,
    PanDown,
    ContourLines,
    Triangulation,
    Legend,
    ScaleBar,
    ViewMap,
    View3D,
    ViewBoth,
    Orbit,
    Fly,
    ExaggerateMore,
    ExaggerateLess,
    ToolNavigate,
    ToolRaise,
    ToolLower,
    ToolFlatten,
    PreviousDocument,
    NextDocument,
    QuickHelp,
    Statistics,
    Layers
};

/// Where a deed is possible.
enum class Scope
{
    Program, ///< always
    Document, ///< with an open document
    Map, ///< with an open document, while its map has the keyboard
    Scene ///< with an open document that is seen in three dimensions
};

/// A deed, its picture and key, and what people are told about it. Both the menus and the quick help are made
/// from it.
struct KeyBinding
{
    Deed deed;
    const char* icon; ///< its name; see windows/Icons
    Scope scope;
    QKeySequence keys; ///< empty for none; the quick help leaves the deed out then
    QString text; ///< in menus, with a mnemonic
    QString description; ///< in the quick help and in the status bar
    housekeeping::QuickHelpSection section;
    bool checkable = false; ///< switches something on and off
};

/// A key that is no deed's, such as those of the library's Help menu, and what the quick help tells about it.
struct HelpBinding
{
    QKeySequence keys;
    QString description;
    housekeeping::QuickHelpSection section;
};

/// What the mouse does on a map, unless another place is named.
struct MouseBinding
{
    Qt::MouseButton button; ///< Qt::NoButton for the wheel
    QString description;
    housekeeping::QuickHelpSection section;
};

/// One for each deed. Main thread.
const std::vector<KeyBinding>& key_bindings();
const KeyBinding& key_binding(Deed deed);

const std::vector<HelpBinding>& help_bindings();
const std::vector<MouseBinding>& mouse_bindings();
/// Keys of the tools, which are no deeds.
const std::vector<HelpBinding>& tool_key_bindings();
/// The keys that only a view in three dimensions knows.
const std::vector<HelpBinding>& scene_key_bindings();

} // namespace terrain
