#include "windows/ProfileLink.h"

#include "panels/StatisticsPanel.h"
#include "views/TerrainView.h"

#include <QtGui/QMouseEvent>

namespace terrain {

ProfileLink::ProfileLink(StatisticsPanel& panel, QObject* p_parent)
    : QObject(p_parent)
    , m_panel(panel)
{
    connect(&m_panel, &StatisticsPanel::profile_line_changed, this, &ProfileLink::show_line);
}

void ProfileLink::follow(TerrainView& view)
{
    view.installEventFilter(this);
}

void ProfileLink::show_map(TerrainView* p_map)
{
    if (p_map != m_p_map && m_p_map) {
        m_p_map->show_profile_line({});
    }
    m_p_map = p_map;
    show_line();
}

void ProfileLink::show_line()
{
    if (m_p_map) {
        const bool is_its_own = m_p_map->document() == m_panel.document_id();
        m_p_map->show_profile_line(is_its_own ? m_panel.profile_line() : std::nullopt);
    }
}

bool ProfileLink::eventFilter(QObject* p_watched, QEvent* p_event)
{
    auto* const p_map = qobject_cast<TerrainView*>(p_watched); // none when it is about to go
    if (p_map && p_map == m_p_map) {
        if (p_event->type() == QEvent::MouseMove) {
            m_panel.point_at(p_map->place_on_profile(static_cast<QMouseEvent*>(p_event)->localPos()));
        } else if (p_event->type() == QEvent::Leave) {
            m_panel.point_at({});
        }
    }
    return QObject::eventFilter(p_watched, p_event);
}

} // namespace terrain
