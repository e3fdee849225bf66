#include "windows/DocumentPage.h"

#include "scene/SceneView.h"
#include "views/TerrainView.h"

#include <QtWidgets/QApplication>

namespace terrain {

namespace {

const int s_share = 1000; ///< of each view; only the proportion counts

} // namespace

DocumentPage::DocumentPage(const housekeeping::DocumentId& document, QWidget* p_parent)
    : QSplitter(Qt::Horizontal, p_parent)
    , m_p_map(new TerrainView(document, this))
{
    setChildrenCollapsible(false);
    addWidget(m_p_map);
    connect(qApp, &QApplication::focusChanged, this, &DocumentPage::follow_focus);
}

DocumentPage::~DocumentPage()
{
    disconnect(qApp, nullptr, this,
        nullptr); // a view that goes gives the keyboard up, when the page is none any more
}

void DocumentPage::make_scene()
{
    m_p_scene = new SceneView(m_p_map->document());
    m_p_scene->show(m_p_map->layers());
    connect(m_p_map, &TerrainView::layers_changed, m_p_scene,
        [this](const MapLayers& layers) { m_p_scene->show(layers); });
    connect(m_p_scene, &SceneView::switched, this, &DocumentPage::switched);
    addWidget(m_p_scene);
    setSizes({s_share, s_share});
    emit scene_made(*m_p_scene);
}

void DocumentPage::mode(ViewMode mode)
{
    if (mode != ViewMode::Map && !m_p_scene) {
        make_scene();
    }
    const bool had_focus = isAncestorOf(QApplication::focusWidget());
    m_mode = mode;
    m_p_map->setVisible(mode != ViewMode::Scene);
    if (m_p_scene) {
        m_p_scene->setVisible(mode != ViewMode::Map);
    }
    if (had_focus) {
        give_focus(); // a view that is hidden hands it on to anybody
    }
    emit switched();
}

SceneView* DocumentPage::scene_in_hand() const
{
    const bool scene = m_mode == ViewMode::Scene || (m_mode == ViewMode::Both && m_scene_had_focus);
    return scene ? m_p_scene : nullptr;
}

void DocumentPage::give_focus()
{
    if (SceneView* const p_scene = scene_in_hand()) {
        p_scene->setFocus();
    } else {
        m_p_map->setFocus();
    }
}

void DocumentPage::follow_focus(QWidget*, QWidget* p_now)
{
    if (p_now && isAncestorOf(p_now)) {
        m_scene_had_focus = m_p_scene && (p_now == m_p_scene || m_p_scene->isAncestorOf(p_now));
    }
}

} // namespace terrain
