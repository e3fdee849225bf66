// What a map of 4,000 x 4,000 cells costs: a frame while it is moved, and the redraw after a stroke of the
// brush.

#include "RatioReporter.h"

#include "documents/OpenTerrain.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "sample/FractalTerrain.h"
#include "views/TerrainView.h"

#include <QtGui/QPixmap>
#include <QtWidgets/QGraphicsPixmapItem>
#include <QtWidgets/QGraphicsScene>
#include <QtWidgets/QGraphicsView>
#include <QtWidgets/QScrollBar>

#include <cmath>

namespace {

using terrain::CellChanges;
using terrain::TerrainModel;
using terrain::TerrainView;

const int s_side = 4000; ///< cells
const QSize s_window(1200, 800);
const int s_frames_before_turning = 150;
const QPoint s_step(5, 3); ///< pixels that a frame is moved by
const QRect s_stroke(1960, 1960, 80, 80); ///< cells that the brush touches

/// The map of a large raster. Leaked, as the document is: it lives as long as the program.
TerrainView& map()
{
    static TerrainView* const s_p_view = [] {
        const auto& document
            = terrain::open_terrain({"mountains", terrain::fractal_terrain(s_side, 1), false, {}, 1, ""});
        auto* const p_view = new TerrainView(document.id());
        p_view->resize(s_window);
        p_view->show();
        return p_view;
    }();
    return *s_p_view;
}

/// Draws what a widget shows, whether its window is on a screen or not.
void draw(QWidget& widget)
{
    static QImage s_frame(s_window, QImage::Format_RGB32);
    widget.render(&s_frame);
}

/// Shows the map at a number of pixels for a cell.
void show_at(TerrainView& view, double scale)
{
    view.fit();
    view.zoom(scale / view.scale(), QPointF(view.width() / 2.0, view.height() / 2.0));
}

double scale_of(const benchmark::State& state)
{
    return static_cast<double>(state.range(0)) / 100;
}

void move_map(benchmark::State& state)
{
    TerrainView& view = map();
    show_at(view, scale_of(state));
    int frame = 0;
    for (auto _ : state) {
        view.pan(frame++ / s_frames_before_turning % 2 == 0 ? s_step : -s_step);
        draw(view);
    }
}
BENCHMARK(move_map)->Arg(20)->Arg(50)->Arg(100)->Arg(400);

/// The peer: a ready picture of the whole in a graphics view.
void move_picture(benchmark::State& state)
{
    QImage picture(s_side, s_side, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < s_side; ++y) {
        auto* const p_pixels = reinterpret_cast<QRgb*>(picture.scanLine(y));
        for (int x = 0; x < s_side; ++x) {
            p_pixels[x] = qRgb(x & 255, y & 255, (x * y) & 255);
        }
    }
    QGraphicsScene scene;
    scene.addPixmap(QPixmap::fromImage(picture))->setTransformationMode(Qt::SmoothTransformation);
    QGraphicsView view(&scene);
    view.resize(s_window);
    view.scale(scale_of(state), scale_of(state));
    view.show();
    view.centerOn(s_side / 2.0, s_side / 2.0);
    int frame = 0;
    for (auto _ : state) {
        const QPoint step = frame++ / s_frames_before_turning % 2 == 0 ? s_step : -s_step;
        view.horizontalScrollBar()->setValue(view.horizontalScrollBar()->value() + step.x());
        view.verticalScrollBar()->setValue(view.verticalScrollBar()->value() + step.y());
        draw(view);
    }
}
BENCHMARK(move_picture)->Arg(20)->Arg(50)->Arg(100)->Arg(400);

/// Makes a hill that is no higher than the mountains, or takes it away.
void change_heights(TerrainModel& model, double by)
{
    for (int row = s_stroke.top(); row <= s_stroke.bottom(); ++row) {
        for (int column = s_stroke.left(); column <= s_stroke.right(); ++column) {
            model.cells()[model.raster().index(column, row)] += by;
        }
    }
}

template <class Redraw>
void redraw_after_stroke(benchmark::State& state, Redraw redraw)
{
    TerrainView& view = map();
    TerrainModel& model = TerrainModel::of(view.document());
    show_at(view, 1);
    double by = 1;
    for (auto _ : state) {
        change_heights(model, by);
        by = -by;
        redraw(view);
        draw(view);
    }
}

void redraw_what_changed(benchmark::State& state)
{
    redraw_after_stroke(state, [](TerrainView& view) {
        CellChanges changes;
        changes.cells = s_stroke;
        view.refresh(changes);
    });
}
BENCHMARK(redraw_what_changed);

/// The peer: all of it.
void redraw_everything(benchmark::State& state)
{
    redraw_after_stroke(state, [](TerrainView& view) { view.refresh(); });
}
BENCHMARK(redraw_everything)->Iterations(5);

const Ratio s_whole(
    "moving the whole map of 4,000 x 4,000 / a picture in a QGraphicsView", "move_map/20", "move_picture/20");
const Ratio s_half("moving it at half a pixel for a cell / the same", "move_map/50", "move_picture/50");
const Ratio s_full("moving it at a pixel for a cell / the same", "move_map/100", "move_picture/100");
const Ratio s_close("moving it at four pixels for a cell / the same", "move_map/400", "move_picture/400");
const Ratio s_redraw(
    "redrawing after a stroke of the brush / redrawing the map", "redraw_what_changed", "redraw_everything");

} // namespace
