#pragma once

#include "documents/CellChanges.h"
#include "scene/SceneNavigator.h"
#include "views/MapLayers.h"
#include "views/TerrainWatch.h"

#include <tarqa/housekeeping/ApplicationMessage.h>
#include <tarqa/housekeeping/DocumentId.h>
#include <tarqa/housekeeping/DocumentMessage.h>

#include <QtWidgets/QWidget>

#include <memory>

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

class ReliefScene;
class SceneBar;
class SceneCanvas;
class TerrainDocument;

/**
 * A view of one document's terrain in three dimensions, with a bar for how its heights are exaggerated. Where
 * there is no OpenGL it says so instead.
 *
 * The scene is made when the view is first seen and the document is not busy. The view follows the changes
 * that the terrain controller tells, which must exist: at once while it is seen, otherwise when it is shown
 * again. What fails is said in the picture, and tried again when something changes next. It may outlive its
 * document, and then shows what it showed last. Main thread.
 */
class SceneView : public QWidget
{
    Q_OBJECT

public:
    explicit SceneView(const housekeeping::DocumentId& document, QWidget* p_parent = nullptr);
    ~SceneView() override;

    const housekeeping::DocumentId& document() const { return m_document; }

    /// Shows what has changed; later, if the view is not seen or the document is busy.
    void refresh(const CellChanges& changes);

    /// Looks like a map with these layers: colours, shading, and the triangulation as the surface.
    void show(const MapLayers& layers);
    using QWidget::show;
    void mode(SceneMode mode) { m_navigator.mode(mode); }
    SceneMode mode() const { return m_navigator.mode(); }
    /// As the scene has it; 1 without a scene.
    double exaggeration() const;
    void exaggeration(double exaggeration);

    const SceneNavigator& navigator() const { return m_navigator; }
    /// Null until it is first seen.
    const ReliefScene* scene() const { return m_scene.get(); }
    /// Null without OpenGL.
    SceneCanvas* canvas() const { return m_p_canvas; }
    SceneBar& bar() const { return *m_p_bar; }

public slots:
    /// Shows the whole terrain, looking north.
    void fit() { m_navigator.home(); }
    void zoom_in() { m_navigator.zoom_in(); }
    void zoom_out() { m_navigator.zoom_out(); }
    void look_left() { m_navigator.turn(-1, 0); }
    void look_right() { m_navigator.turn(1, 0); }
    void look_up() { m_navigator.turn(0, -1); }
    void look_down() { m_navigator.turn(0, 1); }
    void exaggerate_more();
    void exaggerate_less();

signals:
    /// Mode or exaggeration is another one.
    void switched();

protected:
    void showEvent(QShowEvent* p_event) override;
    void hideEvent(QHideEvent* p_event) override;
    void changeEvent(QEvent* p_event) override;

private slots:
    /// The user prefers something else now.
    void handle_message(housekeeping::ApplicationMessage& message);
    /// The document may be free now.
    void handle_message(housekeeping::DocumentMessage& message);

private:
    void make_canvas();
    const TerrainDocument* free_document() const;
    template <typename Work>
    bool attempt(Work work);
    void catch_up();
    bool is_up_to_date() const;
    void draw(const TerrainDocument& document);
    void apply_layers(ReliefScene& scene) const;
    void show_background();
    void show_state();
    QString note() const;

    housekeeping::DocumentId m_document;
    TerrainWatch m_watch;
    CellChanges m_pending;
    MapLayers m_layers;
    std::unique_ptr<ReliefScene> m_scene;
    SceneNavigator m_navigator;
    SceneBar* m_p_bar; // a child
    SceneCanvas* m_p_canvas = nullptr; // a child, which the destructor deletes before the scene goes
};

} // namespace terrain
