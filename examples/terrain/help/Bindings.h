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
    Legend,
    ScaleBar,
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
    Map ///< with an open document, while its map has the keyboard
};

/// A deed, its key, and what people are told about it. Both the menus and the quick help are made from it.
struct KeyBinding
{
    Deed deed;
    Scope scope;
    QKeySequence keys; ///< empty for none; the quick help leaves the deed out then
    QString text; ///< in menus, with a mnemonic
    QString description; ///< in the quick help and in the status bar
    housekeeping::QuickHelpSection section;
    bool checkable = false; ///< switches something on and off
};

/// A key of the library's Help menu, and what the quick help tells about it.
struct HelpBinding
{
    QKeySequence keys;
    QString description;
    housekeeping::QuickHelpSection section;
};

/// What the mouse does on a map.
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

} // namespace terrain
