#include "help/Bindings.h"

#include "views/TerrainView.h"

#include <QtCore/QObject>

#include <algorithm>

namespace terrain {

const std::vector<KeyBinding>& key_bindings()
{
    using Section = housekeeping::QuickHelpSection;
    static const std::vector<KeyBinding> s_bindings = {
        {Deed::Open, "open", Scope::Program, QKeySequence::Open, QObject::tr("&Open…"),
            QObject::tr("Open elevation rasters"), Section::File},
        {Deed::Save, "save", Scope::Document, QKeySequence::Save, QObject::tr("&Save"),
            QObject::tr("Save the document to its own file"), Section::File},
        {Deed::SaveAs, "save-as", Scope::Document, Qt::CTRL + Qt::SHIFT + Qt::Key_S, QObject::tr("Save &As…"),
            QObject::tr("Save the document to another file"), Section::File},
        {Deed::Export, "export", Scope::Document, Qt::CTRL + Qt::Key_E, QObject::tr("&Export…"),
            QObject::tr("Write the raster or its contour lines to a file"), Section::File},
        {Deed::Close, "close", Scope::Document, Qt::CTRL + Qt::Key_W, QObject::tr("&Close"),
            QObject::tr("Close the document"), Section::File},
        {Deed::Preferences, "preferences", Scope::Program, Qt::CTRL + Qt::Key_Comma,
            QObject::tr("&Preferences…"), QObject::tr("Change how the program looks and works"),
            Section::File},
        {Deed::Report, "report", Scope::Program, QKeySequence(), QObject::tr("Report a Pro&blem…"),
            QObject::tr("Describe a problem to the makers, in the web browser"), Section::File},
        {Deed::Restart, "restart", Scope::Program, QKeySequence(), QObject::tr("Res&tart"),
            QObject::tr("Close all, quit and start again"), Section::File},
        {Deed::Quit, "quit", Scope::Program, Qt::CTRL + Qt::Key_Q, QObject::tr("&Quit"),
            QObject::tr("Close all and quit"), Section::File},
        {Deed::ZoomIn, "zoom-in", Scope::Document, Qt::Key_Plus, QObject::tr("Zoom &In"),
            QObject::tr("Zoom in"), Section::View},
        {Deed::ZoomOut, "zoom-out", Scope::Document, Qt::Key_Minus, QObject::tr("Zoom &Out"),
            QObject::tr("Zoom out"), Section::View},
        {Deed::Fit, "fit", Scope::Document, Qt::Key_0, QObject::tr("&Whole Raster"),
            QObject::tr("Show the whole raster"), Section::View},
        {Deed::PanLeft, "look-left", Scope::Map, Qt::Key_Left, QObject::tr("Look &Left"),
            QObject::tr("Look further left"), Section::View},
        {Deed::PanRight, "look-right", Scope::Map, Qt::Key_Right, QObject::tr("Look &Right"),
            QObject::tr("Look further right"), Section::View},
        {Deed::PanUp, "look-up", Scope::Map, Qt::Key_Up, QObject::tr("Look &Up"),
            QObject::tr("Look further up"), Section::View},
        {Deed::PanDown, "look-down", Scope::Map, Qt::Key_Down, QObject::tr("Look &Down"),
            QObject::tr("Look further down"), Section::View},
        {Deed::ContourLines, "contour-lines", Scope::Document, Qt::Key_C, QObject::tr("&Contour Lines"),
            QObject::tr("Show or hide contour lines"), Section::View, true},
        {Deed::Triangulation, "triangulation", Scope::Document, Qt::Key_T, QObject::tr("Tri&angulation"),
            QObject::tr("Show or hide the edges of the triangulation"), Section::View, true},
        {Deed::Legend, "legend", Scope::Document, QKeySequence(), QObject::tr("Le&gend"),
            QObject::tr("Show or hide what the colours mean"), Section::View, true},
        {Deed::ScaleBar, "scale-bar", Scope::Document, QKeySequence(), QObject::tr("&Scale Bar"),
            QObject::tr("Show or hide how long things are"), Section::View, true},
        {Deed::ViewMap, "view-map", Scope::Document, Qt::Key_F6, QObject::tr("&Map"),
            QObject::tr("Show the map"), Section::Visibility, true},
        {Deed::View3D, "view-3d", Scope::Document, Qt::Key_F7, QObject::tr("&3D View"),
            QObject::tr("Show the terrain in three dimensions"), Section::Visibility, true},
        {Deed::ViewBoth, "view-both", Scope::Document, Qt::Key_F8, QObject::tr("Both &Views"),
            QObject::tr("Show the map and the terrain in three dimensions, side by side"),
            Section::Visibility, true},
        {Deed::Orbit, "orbit", Scope::Scene, Qt::SHIFT + Qt::Key_F7, QObject::tr("Or&bit"),
            QObject::tr("Go around the terrain"), Section::View, true},
        {Deed::Fly, "fly", Scope::Scene, Qt::SHIFT + Qt::Key_F8, QObject::tr("&Fly"),
            QObject::tr("Fly through the terrain"), Section::View, true},
        {Deed::ExaggerateMore, "exaggerate-more", Scope::Scene, Qt::CTRL + Qt::Key_Up,
            QObject::tr("E&xaggerate More"), QObject::tr("Exaggerate the heights more"), Section::View},
        {Deed::ExaggerateLess, "exaggerate-less", Scope::Scene, Qt::CTRL + Qt::Key_Down,
            QObject::tr("&Exaggerate Less"), QObject::tr("Exaggerate the heights less"), Section::View},
        {Deed::ToolNavigate, "navigate", Scope::Document, Qt::Key_H, QObject::tr("Mo&ve the Map"),
            QObject::tr("Move the map with the mouse"), Section::CurrentTool, true},
        {Deed::ToolRaise, "brush-raise", Scope::Document, Qt::Key_R, QObject::tr("Ra&ise"),
            QObject::tr("Raise the terrain with a brush"), Section::CurrentTool, true},
        {Deed::ToolLower, "brush-lower", Scope::Document, Qt::Key_L, QObject::tr("&Lower"),
            QObject::tr("Lower the terrain with a brush"), Section::CurrentTool, true},
        {Deed::ToolFlatten, "flatten", Scope::Document, Qt::Key_P, QObject::tr("Flatte&n a Polygon"),
            QObject::tr("Draw a polygon and give its cells one height"), Section::CurrentTool, true},
        {Deed::PreviousDocument, "previous-document", Scope::Document, Qt::CTRL + Qt::Key_PageUp,
            QObject::tr("&Previous Document"), QObject::tr("Previous document"), Section::Navigator},
        {Deed::NextDocument, "next-document", Scope::Document, Qt::CTRL + Qt::Key_PageDown,
            QObject::tr("&Next Document"), QObject::tr("Next document"), Section::Navigator},
        {Deed::QuickHelp, "quick-help", Scope::Program, QKeySequence(), QObject::tr("Quick &Help"),
            QObject::tr("Show the keys and what the mouse does"), Section::Visibility},
        {Deed::Statistics, "statistics", Scope::Program, QKeySequence(), QObject::tr("S&tatistics"),
            QObject::tr("Show figures of the heights, their distribution and a profile"),
            Section::Visibility},
        {Deed::Layers, "layers", Scope::Program, QKeySequence(), QObject::tr("La&yers"),
            QObject::tr("Choose what the map shows"), Section::Visibility},
    };
    return s_bindings;
}

const KeyBinding& key_binding(Deed deed)
{
    return *std::find_if(key_bindings().begin(), key_bindings().end(),
        [deed](const KeyBinding& binding) { return binding.deed == deed; });
}

const std::vector<HelpBinding>& help_bindings()
{
    using Section = housekeeping::QuickHelpSection;
    static const std::vector<HelpBinding> s_bindings = {
        {Qt::Key_F1, QObject::tr("Help about this map or panel"), Section::Visibility},
        {Qt::SHIFT + Qt::Key_F1, QObject::tr("Show the Quick Help panel"), Section::Visibility},
    };
    return s_bindings;
}

const std::vector<MouseBinding>& mouse_bindings()
{
    using Section = housekeeping::QuickHelpSection;
    static const std::vector<MouseBinding> s_bindings = {
        {TerrainView::drag_button, QObject::tr("Drag to move the map"), Section::CurrentTool},
        {Qt::LeftButton, QObject::tr("Click for the profile through a cell"), Section::CurrentTool},
        {Qt::NoButton, QObject::tr("Zoom at the pointer"), Section::CurrentTool},
        {Qt::LeftButton, QObject::tr("Raise, Lower: drag to draw a stroke"), Section::CurrentTool},
        {Qt::NoButton, QObject::tr("Raise, Lower: with Ctrl, the radius of the brush"), Section::CurrentTool},
        {Qt::LeftButton, QObject::tr("Flatten: click for corners, double-click to close the polygon"),
            Section::CurrentTool},
        {Qt::RightButton, QObject::tr("With a tool: drag to move the map"), Section::CurrentTool},
        {Qt::LeftButton, QObject::tr("3D view: drag to turn, with Shift to move"), Section::CurrentTool},
        {Qt::MiddleButton, QObject::tr("3D view: drag to move"), Section::CurrentTool},
        {Qt::LeftButton, QObject::tr("3D view: double-click to go to a place"), Section::CurrentTool},
        {Qt::LeftButton, QObject::tr("Click on a line of the History to go to that state"), Section::Editing},
    };
    return s_bindings;
}

const std::vector<HelpBinding>& tool_key_bindings()
{
    using Section = housekeeping::QuickHelpSection;
    static const std::vector<HelpBinding> s_bindings = {
        {Qt::Key_BracketLeft, QObject::tr("Raise, Lower: smaller brush, with ] a larger one"),
            Section::CurrentTool},
        {Qt::Key_Return, QObject::tr("Flatten: close the polygon"), Section::CurrentTool},
        {Qt::Key_Backspace, QObject::tr("Flatten: take the last corner back"), Section::CurrentTool},
        {Qt::Key_Escape, QObject::tr("Give up a stroke or a polygon"), Section::CurrentTool},
    };
    return s_bindings;
}

const std::vector<HelpBinding>& scene_key_bindings()
{
    using Section = housekeeping::QuickHelpSection;
    static const std::vector<HelpBinding> s_bindings = {
        {Qt::Key_N, QObject::tr("3D view: look north, and back"), Section::View},
        {Qt::Key_W, QObject::tr("Flying: forward, with S back, with A and D aside"), Section::View},
        {Qt::Key_PageUp, QObject::tr("Flying: up, with Page Down down"), Section::View},
    };
    return s_bindings;
}

} // namespace terrain
