#pragma once

#include <tarqa/housekeeping/DocumentId.h>

#include <QtCore/QObject>

#include <vector>

class QWidget;

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

class HistoryPanel;
class HomePanel;
class LayersPanel;
class MapClicks;
class ProfileLink;
class QuickHelpPanel;
class StatisticsPanel;
class TerrainView;

/// The panels of the main window, and what they hear from it. The window takes them in, and with that they
/// belong to it. Main thread.
class Panels : public QObject
{
    Q_OBJECT

public:
    explicit Panels(QObject* p_parent = nullptr);

    /// In the order of their tabs.
    std::vector<QWidget*> all() const;

    HomePanel& home() const { return *m_p_home; }
    QuickHelpPanel& quick_help() const { return *m_p_quick_help; }
    HistoryPanel& history() const { return *m_p_history; }
    StatisticsPanel& statistics() const { return *m_p_statistics; }
    LayersPanel& layers() const { return *m_p_layers; }

    /// Listens to a map, as long as that exists.
    void follow(TerrainView& view);
    /// Lists the open documents, and shows the one that is current. @param p_map its map; null for none
    void show(const std::vector<housekeeping::DocumentId>& documents, const housekeeping::DocumentId& current,
        TerrainView* p_map);

signals:
    /// The user wants to see another document.
    void chosen(const housekeeping::DocumentId& document);

private:
    MapClicks* m_p_clicks; // a child, as the last one
    // The window's, in the end.
    HomePanel* m_p_home;
    QuickHelpPanel* m_p_quick_help;
    HistoryPanel* m_p_history;
    StatisticsPanel* m_p_statistics;
    LayersPanel* m_p_layers;
    ProfileLink* m_p_profile_link;
};

} // namespace terrain
