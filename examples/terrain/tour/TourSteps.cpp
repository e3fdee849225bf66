#include "tour/TourSteps.h"

#include "documents/Raster.h"
#include "help/Bindings.h"
#include "help/TerrainQuickHelp.h"
#include "io/RasterWriter.h"
#include "panels/QuickHelpPanel.h"
#include "panels/QuickHelpSheet.h"
#include "sample/FractalTerrain.h"
#include "tour/UserInput.h"
#include "views/TerrainView.h"
#include "windows/DocumentBox.h"
#include "windows/MainWindow.h"

#include <tarqa/housekeeping/DocumentManager.h>

#include <QtCore/QFileInfo>
#include <QtCore/QObject>
#include <QtCore/QSet>
#include <QtWidgets/QAction>

#include <algorithm>

namespace terrain {

namespace {

typedef std::vector<TourCheck> Checks;

const int s_sample_size = 512;
const int s_second_sample_size = 256;
const unsigned long long s_sample_seed = 1;
const unsigned long long s_second_sample_seed = 7;
const int s_notches = 7;
const int s_many_colours = 40;
const int s_sampling = 7; ///< pixels

unsigned long long documents()
{
    return housekeeping::DocumentManager::const_instance().num_documents();
}

TourCheck document_count_is(unsigned long long expected)
{
    return {QObject::tr("open documents: %1, expected %2").arg(documents()).arg(expected),
        documents() == expected};
}

TourCheck title_names(const MainWindow& window, const QString& file)
{
    const QString name = QFileInfo(file).fileName();
    return {QObject::tr("the title \"%1\" holds \"%2\"").arg(window.windowTitle(), name),
        window.windowTitle().contains(name)};
}

/// Whether there are about as many colours on the map as there are heights.
bool shows_heights(TerrainView& view)
{
    const QImage picture = view.grab().toImage();
    QSet<double> heights;
    QSet<QRgb> colours;
    for (int y = 0; y < view.height(); y += s_sampling) {
        for (int x = 0; x < view.width(); x += s_sampling) {
            const auto reading = view.reading(QPointF(x + 0.5, y + 0.5));
            if (reading && !is_no_data(reading->height)) {
                heights.insert(reading->height);
                colours.insert(picture.pixel(QPoint(x, y) * picture.devicePixelRatio()));
            }
        }
    }
    colours.remove(view.palette().color(QPalette::Base).rgb());
    return !heights.isEmpty() && colours.size() >= std::min(heights.size(), s_many_colours);
}

TourCheck relief_is_drawn(const MainWindow& window)
{
    return {QObject::tr("the relief is drawn"), window.view() && shows_heights(*window.view())};
}

/// A point of the map that holds a height, near the middle.
QPoint interesting_point(const TerrainView& view)
{
    const QPoint middle = view.rect().center();
    for (int away = 0; away < middle.x(); away += 5) {
        const QPoint point = middle - QPoint(away, away / 3);
        const auto reading = view.reading(point);
        if (reading && !is_no_data(reading->height)) {
            return point;
        }
    }
    return middle;
}

// --- 01 the window with the relief

void open_first(TourStage& stage)
{
    stage.window.open(stage.first_file);
}

Checks see_relief(TourStage& stage)
{
    return {document_count_is(1), title_names(stage.window, stage.first_file), relief_is_drawn(stage.window)};
}

// --- 02 zoomed in

void zoom_in(TourStage& stage)
{
    TerrainView& view = *stage.window.view();
    const QPoint pointer = interesting_point(view);
    stage.first_scale = view.scale();
    stage.first_reading = view.reading_text(pointer);
    move_pointer(view, pointer);
    turn_wheel(view, pointer, s_notches);
    drag(view, pointer, pointer + QPoint(60, 40));
}

Checks see_value(TourStage& stage)
{
    const QString reading = stage.window.reading();
    return {
        {QObject::tr("the map is larger"), stage.window.view()->scale() > stage.first_scale},
        // Neither the wheel nor dragging takes the place away from under the pointer.
        {QObject::tr("the status bar says \"%1\", expected \"%2\"").arg(reading, stage.first_reading),
            !reading.isEmpty() && reading == stage.first_reading},
        relief_is_drawn(stage.window),
    };
}

// --- 03 the quick-help panel

void show_quick_help(TourStage& stage)
{
    stage.window.action(Deed::QuickHelp).trigger();
}

Checks see_quick_help(TourStage& stage)
{
    const QuickHelpPanel& panel = stage.window.quick_help();
    const int expected = TerrainQuickHelp::rows(true);
    return {
        {QObject::tr("the quick help is shown"), panel.isVisible()},
        {QObject::tr("it has %1 rows, expected %2").arg(panel.rows_drawn()).arg(expected),
            panel.rows_drawn() == expected},
        {QObject::tr("its picture is not uniform"), is_varied(stage.window.quick_help().grab().toImage())},
    };
}

// --- 04 a second document

void open_second(TourStage& stage)
{
    stage.window.open(stage.second_file);
}

Checks see_second(TourStage& stage)
{
    const int listed = stage.window.document_box().count();
    return {document_count_is(2), title_names(stage.window, stage.second_file),
        {QObject::tr("the list of documents has %1 entries, expected 2").arg(listed), listed == 2},
        relief_is_drawn(stage.window)};
}

// --- 05 everything closed

void close_documents(TourStage& stage)
{
    stage.window.action(Deed::Close).trigger();
    stage.window.action(Deed::Close).trigger();
}

Checks see_start_page(TourStage& stage)
{
    const int rows = stage.window.quick_help().rows_drawn();
    const int expected = TerrainQuickHelp::rows(false);
    return {document_count_is(0), {QObject::tr("no map is shown"), !stage.window.view()},
        {QObject::tr("the quick help has %1 rows, expected %2").arg(rows).arg(expected), rows == expected}};
}

} // namespace

const std::vector<TourStep>& tour_steps()
{
    static const std::vector<TourStep> s_steps = {
        {"relief", TourPicture::Window, &open_first, &see_relief},
        {"zoomed-in", TourPicture::Window, &zoom_in, &see_value},
        {"quick-help", TourPicture::Window, &show_quick_help, &see_quick_help},
        {"second-document", TourPicture::Window, &open_second, &see_second},
        {"start-page", TourPicture::Window, &close_documents, &see_start_page},
    };
    return s_steps;
}

TourStage::TourStage(MainWindow& main_window, const QString& given)
    : window(main_window)
    , first_file(given.isEmpty() ? samples.filePath("sample.tif") : given)
    , second_file(samples.filePath("another.tif"))
{
    if (given.isEmpty()) {
        write_raster(fractal_terrain(s_sample_size, s_sample_seed), first_file.toStdString());
    }
    write_raster(fractal_terrain(s_second_sample_size, s_second_sample_seed), second_file.toStdString());
}

QImage picture_of(TourPicture kind, const TourStage& stage)
{
    switch (kind) {
    case TourPicture::Window:
        return stage.window.grab().toImage();
    }
    return {};
}

bool is_varied(const QImage& picture)
{
    QSet<QRgb> colours;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            colours.insert(picture.pixel(x, y));
            if (colours.size() > s_many_colours) {
                return true;
            }
        }
    }
    return false;
}

} // namespace terrain
