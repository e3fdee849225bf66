#include "windows/Panels.h"

#include "documents/TerrainDocument.h"
#include "language/UnitText.h"
#include "panels/HistoryPanel.h"
#include "panels/HomePanel.h"
#include "panels/LayersPanel.h"
#include "panels/QuickHelpPanel.h"
#include "panels/QuickHelpSheet.h"
#include "panels/StatisticsPanel.h"
#include "windows/MapClicks.h"
#include "windows/ProfileLink.h"

#include <tarqa/housekeeping/DataSource.h>
#include <tarqa/housekeeping/DocumentManager.h>

namespace terrain {

namespace {

QString unit_of(const housekeeping::DocumentId& document)
{
    const auto& manager = housekeeping::DocumentManager::const_instance();
    if (!manager.document_exists(document)) {
        return {};
    }
    return height_unit_text(manager.document_from_id(document).datasource());
}

} // namespace

Panels::Panels(QObject* p_parent)
    : QObject(p_parent)
    , m_p_clicks(new MapClicks(this))
    , m_p_home(new HomePanel)
    , m_p_quick_help(new QuickHelpPanel)
    , m_p_history(new HistoryPanel)
    , m_p_statistics(new StatisticsPanel)
    , m_p_layers(new LayersPanel)
    , m_p_profile_link(new ProfileLink(*m_p_statistics, this))
{
    connect(m_p_home, &HomePanel::chosen, this, &Panels::chosen);
    connect(m_p_clicks, &MapClicks::clicked, m_p_statistics, &StatisticsPanel::show_profile);
}

std::vector<QWidget*> Panels::all() const
{
    return {m_p_home, m_p_quick_help, m_p_history, m_p_statistics, m_p_layers};
}

void Panels::follow(TerrainView& view)
{
    m_p_clicks->follow(view);
    m_p_profile_link->follow(view);
}

void Panels::show(const std::vector<housekeeping::DocumentId>& documents,
    const housekeeping::DocumentId& current, TerrainView* p_map)
{
    m_p_home->list(documents, current);
    m_p_quick_help->sheet().show_document(current);
    m_p_statistics->show_document(current);
    m_p_profile_link->show_map(p_map);
    m_p_layers->show_map(p_map, unit_of(current));
}

} // namespace terrain
