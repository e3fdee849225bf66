#pragma once

#include <tarqa/housekeeping/DocumentId.h>

#include <QtWidgets/QSplitter>

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

class SceneView;
class TerrainView;

/// What is seen of a document.
enum class ViewMode
{
    Map,
    Scene, ///< in three dimensions
    Both ///< side by side
};

/// The views of one document: its map, and beside or instead of it the terrain in three dimensions, which is
/// made when it is first wanted. Main thread.
class DocumentPage : public QSplitter
{
    Q_OBJECT

public:
    /// Shows the map. @throws housekeeping::HousekeepingException if there is no such document, or it cannot
    /// be drawn
    explicit DocumentPage(const housekeeping::DocumentId& document, QWidget* p_parent = nullptr);
    ~DocumentPage() override;

    void mode(ViewMode mode);
    ViewMode mode() const { return m_mode; }

    TerrainView& map() const { return *m_p_map; }
    /// Null until it is first wanted.
    SceneView* scene() const { return m_p_scene; }
    /// The scene if it is the view that keys and menus are about: the only one that is seen, or the one that
    /// had the keyboard last. Null if that is the map.
    SceneView* scene_in_hand() const;
    /// Gives the keyboard to the view in hand.
    void give_focus();

signals:
    /// The scene was made.
    void scene_made(terrain::SceneView& scene);
    /// Another view is seen, or something in the scene was switched.
    void switched();

private:
    void make_scene();
    void follow_focus(QWidget* p_before, QWidget* p_now);

    ViewMode m_mode = ViewMode::Map;
    TerrainView* m_p_map; // a child
    SceneView* m_p_scene = nullptr; // a child
    bool m_scene_had_focus = false;
};

} // namespace terrain
