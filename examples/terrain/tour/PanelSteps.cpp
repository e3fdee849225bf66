#include "tour/PanelSteps.h"

#include "documents/RasterSummary.h"
#include "documents/TerrainModel.h"
#include "help/Bindings.h"
#include "panels/HistogramPlot.h"
#include "panels/LayersPanel.h"
#include "panels/ProfilePlot.h"
#include "panels/StatisticsPanel.h"
#include "tour/UserInput.h"
#include "views/TerrainView.h"
#include "windows/MainWindow.h"

#include <QtCore/QObject>
#include <QtWidgets/QAction>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QStyle>

#include <qwt_plot_curve.h>
#include <qwt_plot_histogram.h>

namespace terrain {

namespace {

typedef std::vector<TourCheck> Checks;

const int s_on_indicator = 8; ///< pixels from the left edge of a box to check

const Raster& raster_of(const MainWindow& window)
{
    return TerrainModel::of(window.view()->document()).raster();
}

} // namespace

void open_statistics(TourStage& stage)
{
    stage.window.action(Deed::Statistics).trigger();
    TerrainView& view = *stage.window.view();
    click(view, view.rect().center());
}

Checks see_statistics(TourStage& stage)
{
    const StatisticsPanel& panel = stage.window.statistics();
    const Raster& raster = raster_of(stage.window);
    const RasterSummary summary(raster.cells);
    const QString cells = panel.figure(StatisticsPanel::Cells).text();
    const QString gaps = panel.figure(StatisticsPanel::WithoutData).text();
    const int points = static_cast<int>(panel.profile().curve().dataSize());
    return {{QObject::tr("the statistics are shown"), panel.isVisible() && panel.is_up_to_date()},
        {QObject::tr("of %1 cells %2 have no data").arg(cells, gaps),
            QLocale().toULongLong(cells) == raster.cells.size()
                && QLocale().toULongLong(gaps) == summary.without_data},
        {QObject::tr("the distribution is drawn"),
            panel.histogram().isVisible() && panel.histogram().histogram().dataSize() > 0},
        {QObject::tr("the profile has %1 points, expected %2").arg(points).arg(raster.columns),
            panel.profile().isVisible() && points == raster.columns},
        {QObject::tr("it says where it is: \"%1\"").arg(panel.profile_text().text()),
            panel.profile_text().isVisible()}};
}

void open_layers(TourStage& stage)
{
    stage.window.action(Deed::Fit).trigger();
    stage.window.action(Deed::Layers).trigger();
    QCheckBox& box = stage.window.layers().box(&MapLayers::contours);
    const QPoint indicator(s_on_indicator, box.height() / 2);
    click(box, QStyle::visualPos(box.layoutDirection(), box.rect(), indicator));
}

Checks see_layers(TourStage& stage)
{
    const LayersPanel& panel = stage.window.layers();
    return {{QObject::tr("the layers are shown"), panel.isVisible()},
        {QObject::tr("the box of the contour lines is checked"), panel.box(&MapLayers::contours).isChecked()},
        {QObject::tr("the map has contour lines"), stage.window.view()->layers().contours},
        {QObject::tr("the View menu says so too"), stage.window.action(Deed::ContourLines).isChecked()}};
}

} // namespace terrain
