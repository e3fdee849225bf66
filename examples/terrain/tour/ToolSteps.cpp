#include "tour/ToolSteps.h"

#include "commands/BrushCommand.h"
#include "commands/CommandQueue.h"
#include "commands/CommandsController.h"
#include "commands/FlattenCommand.h"
#include "documents/TerrainModel.h"
#include "help/Bindings.h"
#include "tour/CommandSteps.h"
#include "tour/TourLooks.h"
#include "tour/UserInput.h"
#include "views/BrushTool.h"
#include "views/PolygonTool.h"
#include "views/TerrainView.h"
#include "windows/BrushBar.h"
#include "windows/DocumentViews.h"
#include "windows/MainWindow.h"
#include "windows/MapTools.h"

#include <QtCore/QObject>
#include <QtWidgets/QAction>
#include <QtWidgets/QDoubleSpinBox>

#include <algorithm>

namespace terrain {

namespace {

typedef std::vector<TourCheck> Checks;

const int s_part_for_radius = 16; ///< of the smaller side of the map
const int s_most_keys = 20; ///< to make a brush as large as it is to be
const double s_height_factor = 6; ///< of the height that is proposed, so that it shows

MapTools& tools(const MainWindow& window)
{
    return window.views().tools();
}

/// Points around the interesting one. @param way in tenths of the smaller side of the raster, as it is drawn
std::vector<QPoint> around(const TerrainView& view, const std::vector<QPointF>& way)
{
    const Raster& raster = TerrainModel::of(view.document()).raster();
    const QRectF drawn = view.widget_of_cells().mapRect(QRectF(0, 0, raster.columns, raster.rows));
    const double tenth = std::min(drawn.width(), drawn.height()) / 10;
    std::vector<QPoint> points;
    for (const QPointF& point : way) {
        points.push_back(interesting_point(view) + (point * tenth).toPoint());
    }
    return points;
}

void write_height(QDoubleSpinBox& field, double height)
{
    write_over(field, field.locale().toString(height, 'f', field.decimals()));
    press_key(field, Qt::Key_Return, QString());
}

/// Chooses a brush, so large that it will be seen. @param factor of the height that it has
void take_brush(const MainWindow& window, Deed deed, double factor)
{
    window.action(deed).trigger();
    TerrainView& view = *window.view();
    const double needed = 1.0 * std::min(view.width(), view.height()) / s_part_for_radius;
    const auto* const p_tool = qobject_cast<BrushTool*>(tools(window).tool());
    for (int i = 0; p_tool && p_tool->brush().radius * view.scale() < needed && i < s_most_keys; ++i) {
        press_key(view, Qt::Key_BracketRight, "]");
    }
    QDoubleSpinBox& height = tools(window).bar().height();
    write_height(height, height.value() * factor);
}

TourCheck strokes_are_done(const TourStage& stage)
{
    const CommandQueue& queue = tools(stage.window).queue();
    return {QObject::tr("no stroke waits"), queue.waiting() == 0 && !queue.is_running()};
}

} // namespace

void raise_ground(TourStage& stage)
{
    expect_command(stage);
    take_brush(stage.window, Deed::ToolRaise, s_height_factor);
    TerrainView& view = *stage.window.view();
    // The second one is drawn while the first one is carried out.
    drag(view, around(view, {{-2.5, 1.5}, {-1.5, 0}, {0, -0.7}, {1.5, -1}}));
    drag(view, around(view, {{0, -0.7}, {0.8, 0.8}, {0.8, 2}}));
}

Checks see_raised(TourStage& stage)
{
    Checks checks = see_done(stage, BrushCommand::tr("Raise")); // one step of the history
    checks.push_back(strokes_are_done(stage));
    checks.push_back(cells_differ(stage));
    checks.push_back(
        {QObject::tr("the options of the brush are shown"), tools(stage.window).bar().radius().isVisible()});
    return checks;
}

void lower_ground(TourStage& stage)
{
    expect_command(stage);
    take_brush(stage.window, Deed::ToolLower, 1);
    TerrainView& view = *stage.window.view();
    drag(view, around(view, {{-3, -2.5}, {-1, -2}, {1, -2.8}, {3, -2}}));
    move_pointer(view, around(view, {{3, -2}}).front());
}

Checks see_lowered(TourStage& stage)
{
    Checks checks = see_done(stage, BrushCommand::tr("Lower"));
    checks.push_back(strokes_are_done(stage));
    checks.push_back(cells_differ(stage));
    return checks;
}

void click_corners(TourStage& stage)
{
    stage.window.action(Deed::ToolFlatten).trigger();
    TerrainView& view = *stage.window.view();
    for (const QPoint& corner : around(view, {{-3, 1}, {-1, 0.5}, {0, 2}, {-0.5, 3.2}, {-2.5, 3}})) {
        click(view, corner);
    }
    move_pointer(view, around(view, {{-3.2, 2}}).front());
}

Checks see_corners(TourStage& stage)
{
    const auto* const p_tool = qobject_cast<PolygonTool*>(tools(stage.window).tool());
    const std::size_t corners = p_tool ? p_tool->corners().size() : 0;
    return {{QObject::tr("the polygon has %1 corners, expected 5").arg(corners), corners == 5},
        entry_count_is(stage.window, stage.commands), relief_is_drawn(stage.window)};
}

void close_polygon(TourStage& stage)
{
    expect_command(stage);
    press_key(*stage.window.view(), Qt::Key_Return, "\r");
    wait_for_command(stage);
    stage.window.action(Deed::ToolNavigate).trigger();
}

Checks see_flattened(TourStage& stage)
{
    Checks checks = see_done(stage, FlattenCommand::tr("Flatten"));
    checks.push_back(cells_differ(stage));
    checks.push_back({QObject::tr("the tool is put away"), !tools(stage.window).tool()});
    return checks;
}

} // namespace terrain
