#include "windows/MainMenus.h"

#include "presentations/CommandsPresentation.h"
#include "windows/Deeds.h"
#include "windows/RecentMenu.h"

#include <tarqa/housekeeping/gui/UndoRedoPresentation.h>

#include <QtWidgets/QMenu>

#include <vector>

namespace terrain {

namespace {

namespace gui = housekeeping::gui;

typedef std::vector<std::vector<Deed>> Groups; // with a separator between them

void add(gui::MainWindowMessage& message, const Deeds& deeds, const Groups& groups)
{
    for (const std::vector<Deed>& group : groups) {
        message.addSeparator(); // the first one is left out
        for (const Deed deed : group) {
            message.addAction(&deeds.action(deed));
        }
    }
}

/// The commands are in it, too.
bool is_tools_menu(const gui::MainWindowMessage& message)
{
    return message.kind() == gui::MainWindowMessage::Menu && message.target()
        && message.target() == CommandsPresentation::instance().menu();
}

} // namespace

MainMenus::MainMenus(const Deeds& deeds, RecentMenu* p_recent, QWidget* p_window)
    : QObject(p_window)
    , m_deeds(deeds)
    , m_p_window(p_window)
    , m_p_recent(p_recent)
    , m_p_file(new QMenu(tr("&File"), p_window))
    , m_p_edit(new QMenu(tr("&Edit"), p_window))
    , m_p_view(new QMenu(tr("&View"), p_window))
{
    gui::MainWindowMessage::subscribe(this, Qt::AutoConnection);
    connect(m_p_file, &QMenu::aboutToShow, m_p_recent, &RecentMenu::fill);
}

void MainMenus::handle_message(housekeeping::gui::MainWindowMessage& message)
{
    using gui::MainWindowMessage;
    if (message.owner() != m_p_window) {
        return;
    }
    if (message.kind() == MainWindowMessage::MenuBar) {
        int place = 0;
        for (QMenu* const p_menu : {m_p_file, m_p_edit, m_p_view}) {
            message.insertMenu(place++, p_menu);
        }
    } else if (message.kind() == MainWindowMessage::ToolBar) {
        fill_tool_bar(message);
    } else if (is_tools_menu(message)) {
        add(message, m_deeds, {{Deed::ToolNavigate, Deed::ToolRaise, Deed::ToolLower, Deed::ToolFlatten}});
    } else if (message.kind() == MainWindowMessage::Menu && message.target() == m_p_file) {
        fill_file_menu(message);
    } else if (message.kind() == MainWindowMessage::Menu && message.target() == m_p_view) {
        add(message, m_deeds,
            {{Deed::ZoomIn, Deed::ZoomOut, Deed::Fit},
                {Deed::PanLeft, Deed::PanRight, Deed::PanUp, Deed::PanDown},
                {Deed::ViewMap, Deed::View3D, Deed::ViewBoth},
                {Deed::Orbit, Deed::Fly, Deed::ExaggerateMore, Deed::ExaggerateLess},
                {Deed::ContourLines, Deed::Triangulation, Deed::Legend, Deed::ScaleBar},
                {Deed::PreviousDocument, Deed::NextDocument},
                {Deed::QuickHelp, Deed::Statistics, Deed::Layers}});
    }
}

void MainMenus::fill_file_menu(housekeeping::gui::MainWindowMessage& message) const
{
    add(message, m_deeds, {{Deed::Open}});
    message.addMenu(m_p_recent);
    add(message, m_deeds,
        {{Deed::Save, Deed::SaveAs}, {Deed::Export}, {Deed::Close}, {Deed::Preferences}, {Deed::Report},
            {Deed::Restart, Deed::Quit}});
}

void MainMenus::fill_tool_bar(housekeeping::gui::MainWindowMessage& message) const
{
    add(message, m_deeds, {{Deed::Open, Deed::Save, Deed::Export}});
    if (const auto sp_undo_redo = gui::UndoRedoPresentation::instance()) {
        message.addSeparator();
        message.addAction(sp_undo_redo->undo_tool_bar_action());
        message.addAction(sp_undo_redo->redo_tool_bar_action());
    }
    add(message, m_deeds,
        {{Deed::ZoomIn, Deed::ZoomOut, Deed::Fit}, {Deed::ViewMap, Deed::View3D, Deed::ViewBoth},
            {Deed::ToolNavigate, Deed::ToolRaise, Deed::ToolLower, Deed::ToolFlatten}});
    message.addSeparator();
}

} // namespace terrain
