#include "windows/DocumentViews.h"

#include "help/Bindings.h"
#include "scene/Graphics.h"
#include "scene/SceneView.h"
#include "views/TerrainView.h"
#include "windows/Deeds.h"
#include "windows/DocumentPage.h"
#include "windows/MapTools.h"
#include "windows/StartPage.h"

#include <tarqa/housekeeping/ApplicationManager.h>

#include <QtWidgets/QAction>
#include <QtWidgets/QActionGroup>

#include <utility>

namespace terrain {

namespace {

/// A deed that moves whichever view is in hand.
struct Move
{
    Deed deed;
    void (TerrainView::*map)();
    void (SceneView::*scene)();
};

const Move s_moves[] = {
    {Deed::ZoomIn, &TerrainView::zoom_in, &SceneView::zoom_in},
    {Deed::ZoomOut, &TerrainView::zoom_out, &SceneView::zoom_out},
    {Deed::Fit, &TerrainView::fit, &SceneView::fit},
    {Deed::PanLeft, &TerrainView::pan_left, &SceneView::look_left},
    {Deed::PanRight, &TerrainView::pan_right, &SceneView::look_right},
    {Deed::PanUp, &TerrainView::pan_up, &SceneView::look_up},
    {Deed::PanDown, &TerrainView::pan_down, &SceneView::look_down},
};

const std::pair<Deed, ViewMode> s_view_modes[]
    = {{Deed::ViewMap, ViewMode::Map}, {Deed::View3D, ViewMode::Scene}, {Deed::ViewBoth, ViewMode::Both}};
const std::pair<Deed, SceneMode> s_scene_modes[]
    = {{Deed::Orbit, SceneMode::Orbit}, {Deed::Fly, SceneMode::Fly}};
const std::pair<Deed, void (SceneView::*)()> s_exaggerations[] = {
    {Deed::ExaggerateMore, &SceneView::exaggerate_more},
    {Deed::ExaggerateLess, &SceneView::exaggerate_less},
};

} // namespace

DocumentViews::DocumentViews(const RecentFiles& recent, QWidget* p_parent)
    : QStackedWidget(p_parent)
    , m_p_start_page(new StartPage(recent))
    , m_p_tools(new MapTools(this))
{
    connect(this, &QStackedWidget::currentChanged, this, [this] { m_p_tools->use_on(current()); });
    addWidget(m_p_start_page);
}

void DocumentViews::obey(const Deeds& deeds)
{
    m_p_deeds = &deeds;
    obey_moves(deeds);
    obey_switches(deeds);
    obey_modes(deeds);
    obey_scene(deeds);
    m_p_tools->obey(deeds);
}

void DocumentViews::obey_moves(const Deeds& deeds)
{
    for (const Move& move : s_moves) {
        QAction& action = deeds.action(move.deed);
        if (key_binding(move.deed).scope == Scope::Map) {
            addAction(&action); // its key works where the map has the keyboard
        }
        connect(&action, &QAction::triggered, this, [this, &move] {
            const DocumentPage* const p_page = current_page();
            if (!p_page) {
                return;
            }
            if (SceneView* const p_scene = p_page->scene_in_hand()) {
                (p_scene->*move.scene)();
            } else {
                (p_page->map().*move.map)();
            }
        });
    }
}

/// One view or the other, or both.
void DocumentViews::obey_modes(const Deeds& deeds)
{
    auto* const p_group = new QActionGroup(this);
    for (const auto& [deed, mode_of_deed] : s_view_modes) {
        p_group->addAction(&deeds.action(deed));
        connect(&deeds.action(deed), &QAction::triggered, this, [this, mode = mode_of_deed] {
            if (DocumentPage* const p_page = current_page()) {
                p_page->mode(mode);
            }
        });
    }
    connect(this, &QStackedWidget::currentChanged, this, &DocumentViews::show_modes);
    show_modes();
}

void DocumentViews::obey_scene(const Deeds& deeds)
{
    const auto scene = [this] { return current_page() ? current_page()->scene() : nullptr; };
    auto* const p_group = new QActionGroup(this);
    for (const auto& [deed, mode_of_deed] : s_scene_modes) {
        p_group->addAction(&deeds.action(deed));
        connect(&deeds.action(deed), &QAction::triggered, this, [scene, mode = mode_of_deed] {
            if (SceneView* const p_scene = scene()) {
                p_scene->mode(mode);
            }
        });
    }
    for (const auto& [deed, slot] : s_exaggerations) {
        connect(&deeds.action(deed), &QAction::triggered, this, [scene, slot_of_deed = slot] {
            if (SceneView* const p_scene = scene()) {
                (p_scene->*slot_of_deed)();
            }
        });
    }
}

/// Lets the deeds tell which views are seen, and how one gets about in the scene.
void DocumentViews::show_modes() const
{
    const DocumentPage* const p_page = current_page();
    const ViewMode mode = p_page ? p_page->mode() : ViewMode::Map;
    const SceneView* const p_scene = mode == ViewMode::Map ? nullptr : p_page->scene();
    for (const auto& [deed, mode_of_deed] : s_view_modes) {
        m_p_deeds->action(deed).setChecked(mode == mode_of_deed);
    }
    for (const auto& [deed, mode_of_deed] : s_scene_modes) {
        m_p_deeds->action(deed).setChecked((p_scene ? p_scene->mode() : SceneMode::Orbit) == mode_of_deed);
    }
    m_p_deeds->scene_seen(p_scene && p_scene->canvas());
}

void DocumentViews::obey_switches(const Deeds& deeds)
{
    m_switches = {{&deeds.action(Deed::ContourLines), &MapLayers::contours},
        {&deeds.action(Deed::Triangulation), &MapLayers::triangulation},
        {&deeds.action(Deed::Legend), &MapLayers::legend},
        {&deeds.action(Deed::ScaleBar), &MapLayers::scale_bar}};
    for (const auto& [p_switch, member] : m_switches) {
        connect(p_switch, &QAction::triggered, this, [this, layer = member](bool on) {
            if (TerrainView* const p_view = current()) {
                MapLayers layers = p_view->layers();
                layers.*layer = on;
                p_view->set_layers(layers);
            }
        });
    }
    connect(this, &QStackedWidget::currentChanged, this, &DocumentViews::show_switches);
}

/// Lets the switches tell what the map on top shows.
void DocumentViews::show_switches() const
{
    const TerrainView* const p_view = current();
    for (const auto& [p_switch, layer] : m_switches) {
        p_switch->setChecked(p_view && p_view->layers().*layer);
    }
}

TerrainView& DocumentViews::add(const housekeeping::DocumentId& document)
{
    auto* const p_page = new DocumentPage(document);
    addWidget(p_page);
    m_pages[document] = p_page;
    connect(&p_page->map(), &TerrainView::layers_changed, this, &DocumentViews::show_switches);
    connect(p_page, &DocumentPage::scene_made, this, &DocumentViews::scene_made);
    connect(p_page, &DocumentPage::switched, this, &DocumentViews::show_modes);
    if (housekeeping::ApplicationManager::const_instance().use3DViewByDefault() && has_scene_graphics()) {
        p_page->mode(ViewMode::Both);
    }
    show_document(document);
    return p_page->map();
}

void DocumentViews::remove(const housekeeping::DocumentId& document)
{
    const auto found = m_pages.find(document);
    if (found == m_pages.end()) {
        return;
    }
    if (currentWidget() == found->second) {
        setCurrentWidget(m_p_start_page);
    }
    delete found->second;
    m_pages.erase(found);
}

void DocumentViews::show_document(const housekeeping::DocumentId& document)
{
    const auto found = m_pages.find(document);
    if (found == m_pages.end()) {
        setCurrentWidget(m_p_start_page);
        m_p_start_page->setFocus();
    } else {
        setCurrentWidget(found->second);
        found->second->give_focus();
    }
}

DocumentPage* DocumentViews::current_page() const
{
    return qobject_cast<DocumentPage*>(currentWidget());
}

TerrainView* DocumentViews::current() const
{
    const DocumentPage* const p_page = current_page();
    return p_page ? &p_page->map() : nullptr;
}

} // namespace terrain
