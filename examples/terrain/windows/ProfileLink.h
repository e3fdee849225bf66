#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>

namespace terrain {

class StatisticsPanel;
class TerrainView;

/// Shows on the current map where the profile of the statistics panel runs, and lets both point at the same
/// place of it. The line goes when the profile is no longer seen. Main thread.
class ProfileLink : public QObject
{
    Q_OBJECT

public:
    /// @param panel must outlive what it is shown of
    explicit ProfileLink(StatisticsPanel& panel, QObject* p_parent = nullptr);

    /// Watches the pointer over a map as long as that exists.
    void follow(TerrainView& view);
    /// Another map is the current one; null for none.
    void show_map(TerrainView* p_map);

protected:
    /// Takes nothing away from the map.
    bool eventFilter(QObject* p_watched, QEvent* p_event) override;

private:
    void show_line();

    StatisticsPanel& m_panel; // the window's, which deletes it before this
    QPointer<TerrainView> m_p_map; // the window's
};

} // namespace terrain
