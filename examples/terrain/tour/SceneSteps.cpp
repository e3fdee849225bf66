#include "tour/SceneSteps.h"

#include "help/Bindings.h"
#include "scene/Graphics.h"
#include "scene/ReliefScene.h"
#include "scene/SceneCanvas.h"
#include "scene/SceneView.h"
#include "tour/TourLooks.h"
#include "tour/UserInput.h"
#include "views/TerrainView.h"
#include "windows/DocumentPage.h"
#include "windows/DocumentViews.h"
#include "windows/MainWindow.h"

#include <QtCore/QObject>
#include <QtWidgets/QAction>

namespace terrain {

namespace {

typedef std::vector<TourCheck> Checks;

const QPoint s_turn(-140, 30); ///< pixels
const int s_notches = 1;
const int s_more_relief = 2; ///< steps of a key

DocumentPage& page(const TourStage& stage)
{
    return *stage.window.views().current_page();
}

SceneCanvas* canvas(const TourStage& stage)
{
    return page(stage).scene() ? page(stage).scene()->canvas() : nullptr;
}

/// As is_varied() with a picture, which is drawn once for each that the canvas draws itself.
bool is_varied(TourStage& stage, SceneCanvas& canvas)
{
    if (canvas.frames() != stage.frames) {
        stage.scene_is_varied = terrain::is_varied(canvas.grabFramebuffer());
        stage.frames = canvas.frames();
    }
    return stage.scene_is_varied;
}

/// Whether what is wanted of the document is seen, and the terrain drawn if it is among that.
Checks sees(TourStage& stage, ViewMode mode)
{
    Checks checks = {{QObject::tr("the views are those that were chosen"), page(stage).mode() == mode},
        {QObject::tr("the map is where it is wanted"),
            page(stage).map().isVisible() == (mode != ViewMode::Scene)},
        {QObject::tr("there is a view in three dimensions"),
            page(stage).scene() && page(stage).scene()->isVisible()}};
    if (!has_scene_graphics()) {
        checks.push_back({QObject::tr("there is no OpenGL here, as the view says"), !canvas(stage)});
        return checks;
    }
    SceneCanvas* const p_canvas = canvas(stage);
    checks.push_back({QObject::tr("the terrain is drawn"), p_canvas && p_canvas->frames() > 0});
    checks.push_back({QObject::tr("it has a surface"),
        p_canvas && page(stage).scene()->scene() && page(stage).scene()->scene()->has_heights()});
    checks.push_back({QObject::tr("its picture is not uniform"), p_canvas && is_varied(stage, *p_canvas)});
    return checks;
}

double heading(const TourStage& stage)
{
    return page(stage).scene()->navigator().camera().heading;
}

} // namespace

void show_scene(TourStage& stage)
{
    stage.window.action(Deed::View3D).trigger();
}

Checks see_scene(TourStage& stage)
{
    return sees(stage, ViewMode::Scene);
}

void turn_scene(TourStage& stage)
{
    SceneCanvas* const p_canvas = canvas(stage);
    if (!p_canvas) {
        return;
    }
    stage.heading = heading(stage);
    stage.exaggeration = page(stage).scene()->exaggeration();
    const QPoint middle = p_canvas->rect().center();
    drag(*p_canvas, middle, middle + s_turn);
    turn_wheel(*p_canvas, middle, s_notches);
    for (int i = 0; i < s_more_relief; ++i) {
        stage.window.action(Deed::ExaggerateMore).trigger();
    }
}

Checks see_turned_scene(TourStage& stage)
{
    Checks checks = sees(stage, ViewMode::Scene);
    if (canvas(stage)) {
        checks.push_back({QObject::tr("one looks from another side"), heading(stage) != stage.heading});
        checks.push_back(
            {QObject::tr("the relief is higher"), page(stage).scene()->exaggeration() > stage.exaggeration});
    }
    return checks;
}

void show_both(TourStage& stage)
{
    stage.window.action(Deed::ViewBoth).trigger();
    stage.window.action(Deed::Fit).trigger();
}

Checks see_both(TourStage& stage)
{
    Checks checks = sees(stage, ViewMode::Both);
    checks.push_back(relief_is_drawn(stage.window));
    return checks;
}

void show_triangles(TourStage& stage)
{
    stage.window.action(Deed::ViewBoth).trigger();
}

Checks see_triangles(TourStage& stage)
{
    Checks checks = see_both(stage);
    const SceneView* const p_view = page(stage).scene();
    if (canvas(stage)) {
        checks.push_back({QObject::tr("the triangles are the surface"),
            p_view->scene() && p_view->scene()->has_mesh() && p_view->scene()->shows_mesh()});
    }
    return checks;
}

} // namespace terrain
