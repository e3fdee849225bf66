#include "windows/DocumentViews.h"

#include "help/Bindings.h"
#include "views/TerrainView.h"
#include "windows/Deeds.h"
#include "windows/StartPage.h"

#include <QtWidgets/QAction>

#include <utility>

namespace terrain {

DocumentViews::DocumentViews(const RecentFiles& recent, QWidget* p_parent)
    : QStackedWidget(p_parent)
    , m_p_start_page(new StartPage(recent))
{
    addWidget(m_p_start_page);
}

void DocumentViews::obey(const Deeds& deeds)
{
    const std::pair<Deed, void (TerrainView::*)()> slots_of_deeds[] = {{Deed::ZoomIn, &TerrainView::zoom_in},
        {Deed::ZoomOut, &TerrainView::zoom_out}, {Deed::Fit, &TerrainView::fit},
        {Deed::PanLeft, &TerrainView::pan_left}, {Deed::PanRight, &TerrainView::pan_right},
        {Deed::PanUp, &TerrainView::pan_up}, {Deed::PanDown, &TerrainView::pan_down}};
    for (const auto& [deed, slot] : slots_of_deeds) {
        QAction& action = deeds.action(deed);
        if (key_binding(deed).scope == Scope::Map) {
            addAction(&action); // its key works where the map has the keyboard
        }
        connect(&action, &QAction::triggered, this, [this, slot_of_deed = slot] {
            if (TerrainView* const p_view = current()) {
                (p_view->*slot_of_deed)();
            }
        });
    }
    obey_switches(deeds);
}

void DocumentViews::obey_switches(const Deeds& deeds)
{
    m_switches = {{&deeds.action(Deed::ContourLines), &MapLayers::contours},
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
    auto* const p_view = new TerrainView(document);
    addWidget(p_view);
    m_views[document] = p_view;
    connect(p_view, &TerrainView::layers_changed, this, &DocumentViews::show_switches);
    show_document(document);
    return *p_view;
}

void DocumentViews::remove(const housekeeping::DocumentId& document)
{
    const auto found = m_views.find(document);
    if (found == m_views.end()) {
        return;
    }
    if (currentWidget() == found->second) {
        setCurrentWidget(m_p_start_page);
    }
    delete found->second;
    m_views.erase(found);
}

void DocumentViews::show_document(const housekeeping::DocumentId& document)
{
    const auto found = m_views.find(document);
    QWidget* const p_page = found == m_views.end() ? static_cast<QWidget*>(m_p_start_page) : found->second;
    setCurrentWidget(p_page);
    currentWidget()->setFocus();
}

void DocumentViews::refresh(const housekeeping::DocumentId& document)
{
    const auto found = m_views.find(document);
    if (found != m_views.end()) {
        found->second->refresh();
    }
}

TerrainView* DocumentViews::current() const
{
    return qobject_cast<TerrainView*>(currentWidget());
}

} // namespace terrain
