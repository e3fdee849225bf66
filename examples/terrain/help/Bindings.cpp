#include "help/Bindings.h"

#include "views/TerrainView.h"

#include <QtCore/QObject>

#include <algorithm>

namespace terrain {

const std::vector<KeyBinding>& key_bindings()
{
    using Section = housekeeping::QuickHelpSection;
    static const std::vector<KeyBinding> s_bindings = {
        {Deed::Open, Scope::Program, QKeySequence::Open, QObject::tr("&Open…"),
            QObject::tr("Open elevation rasters"), Section::File},
        {Deed::Save, Scope::Document, QKeySequence::Save, QObject::tr("&Save"),
            QObject::tr("Save the document to its own file"), Section::File},
        {Deed::SaveAs, Scope::Document, Qt::CTRL + Qt::SHIFT + Qt::Key_S, QObject::tr("Save &As…"),
            QObject::tr("Save the document to another file"), Section::File},
        {Deed::Export, Scope::Document, Qt::CTRL + Qt::Key_E, QObject::tr("&Export…"),
            QObject::tr("Write the raster or its contour lines to a file"), Section::File},
        {Deed::Close, Scope::Document, Qt::CTRL + Qt::Key_W, QObject::tr("&Close"),
            QObject::tr("Close the document"), Section::File},
        {Deed::Preferences, Scope::Program, Qt::CTRL + Qt::Key_Comma, QObject::tr("&Preferences…"),
            QObject::tr("Change how the program looks and works"), Section::File},
        {Deed::Report, Scope::Program, QKeySequence(), QObject::tr("Report a Pro&blem…"),
            QObject::tr("Describe a problem to the makers, in the web browser"), Section::File},
        {Deed::Restart, Scope::Program, QKeySequence(), QObject::tr("Res&tart"),
            QObject::tr("Close all, quit and start again"), Section::File},
        {Deed::Quit, Scope::Program, Qt::CTRL + Qt::Key_Q, QObject::tr("&Quit"),
            QObject::tr("Close all and quit"), Section::File},
        {Deed::ZoomIn, Scope::Document, Qt::Key_Plus, QObject::tr("Zoom &In"), QObject::tr("Zoom in"),
            Section::View},
        {Deed::ZoomOut, Scope::Document, Qt::Key_Minus, QObject::tr("Zoom &Out"), QObject::tr("Zoom out"),
            Section::View},
        {Deed::Fit, Scope::Document, Qt::Key_0, QObject::tr("&Whole Raster"),
            QObject::tr("Show the whole raster"), Section::View},
        {Deed::PanLeft, Scope::Map, Qt::Key_Left, QObject::tr("Look &Left"), QObject::tr("Look further left"),
            Section::View},
        {Deed::PanRight, Scope::Map, Qt::Key_Right, QObject::tr("Look &Right"),
            QObject::tr("Look further right"), Section::View},
        {Deed::PanUp, Scope::Map, Qt::Key_Up, QObject::tr("Look &Up"), QObject::tr("Look further up"),
            Section::View},
        {Deed::PanDown, Scope::Map, Qt::Key_Down, QObject::tr("Look &Down"), QObject::tr("Look further down"),
            Section::View},
        {Deed::ContourLines, Scope::Document, Qt::Key_C, QObject::tr("&Contour Lines"),
            QObject::tr("Show or hide contour lines"), Section::View, true},
        {Deed::Legend, Scope::Document, QKeySequence(), QObject::tr("Le&gend"),
            QObject::tr("Show or hide what the colours mean"), Section::View, true},
        {Deed::ScaleBar, Scope::Document, QKeySequence(), QObject::tr("&Scale Bar"),
            QObject::tr("Show or hide how long things are"), Section::View, true},
        {Deed::PreviousDocument, Scope::Document, Qt::CTRL + Qt::Key_PageUp,
            QObject::tr("&Previous Document"), QObject::tr("Previous document"), Section::Navigator},
        {Deed::NextDocument, Scope::Document, Qt::CTRL + Qt::Key_PageDown, QObject::tr("&Next Document"),
            QObject::tr("Next document"), Section::Navigator},
        {Deed::QuickHelp, Scope::Program, QKeySequence(), QObject::tr("Quick &Help"),
            QObject::tr("Show the keys and what the mouse does"), Section::Visibility},
        {Deed::Statistics, Scope::Program, QKeySequence(), QObject::tr("S&tatistics"),
            QObject::tr("Show figures of the heights, their distribution and a profile"),
            Section::Visibility},
        {Deed::Layers, Scope::Program, QKeySequence(), QObject::tr("La&yers"),
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
    };
    return s_bindings;
}

} // namespace terrain
