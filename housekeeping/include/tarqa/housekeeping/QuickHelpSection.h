#pragma once

namespace tarqa::housekeeping {

/// The sections of the quick help, each a list of its own.
enum class QuickHelpSection : unsigned int
{
    CurrentTool = 0,
    View = 1,
    Navigator = 2,
    Selection = 3,
    Visibility = 4,
    Tools = 5,
    Editing = 6,
    File = 7,
    NoSection = 8 ///< belongs to no list
};

} // namespace tarqa::housekeeping
