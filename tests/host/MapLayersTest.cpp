#include "views/MapLayers.h"
#include "CommandFixture.h"
#include "HeightsOf.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "io/ReferenceSystem.h"
#include "support/App.h"
#include "views/TerrainView.h"

#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <QtTest/QSignalSpy>

#include <gtest/gtest.h>

using namespace host_test;
using terrain::MapLayers;
using terrain::TerrainView;

namespace {

const QSize s_size(640, 480);
const int s_columns = 60;
const int s_rows = 45;
const double s_ground = 206; ///< the grey of a map without colours and relief

/// Ten higher with each column: with an interval of 100 a line at each tenth column.
double slope(int column, int)
{
    return 10.0 * column + 5;
}

double hill(int column, int row)
{
    return 600 - 8 * std::hypot(column - 30, row - 22);
}

/// Nothing but grey: lines and letters are easy to find on it.
MapLayers bare()
{
    MapLayers layers;
    layers.colours = layers.relief = layers.legend = layers.scale_bar = false;
    return layers;
}

MapLayers bare_with_contours(double interval)
{
    MapLayers layers = bare();
    layers.contours = true;
    layers.contour_interval = interval;
    return layers;
}

bool is_grey(QRgb colour)
{
    return qRed(colour) == qGreen(colour) && qGreen(colour) == qBlue(colour);
}

/// Counts what is painted.
class Paints : public QObject
{
public:
    explicit Paints(TerrainView& view)
    {
        QCoreApplication::processEvents();
        view.installEventFilter(this);
    }
    bool eventFilter(QObject*, QEvent* p_event) override
    {
        count += p_event->type() == QEvent::Paint;
        return false;
    }
    int count = 0;
};

class MapLayersTest : public testing::Test
{
protected:
    void SetUp() override
    {
        QCoreApplication::setOrganizationName("Tarqa"); // for a place to store preferences
        housekeeping::ApplicationManager::instance().setAnimateCameraJumps(false);
    }

    /// Shows a map of a raster with a place on the Earth.
    TerrainView& show(const std::function<double(int, int)>& height, const MapLayers& layers = MapLayers())
    {
        terrain::Raster raster = raster_of(s_columns, s_rows, height);
        raster.geotransform = {1000, 10, 0, 9000, 0, -10};
        raster.reference_system = terrain::reference_system_from_epsg(32632);
        document = &make_document(raster);
        view = std::make_unique<TerrainView>(document->id());
        view->resize(s_size);
        view->show();
        view->set_layers(layers);
        return *view;
    }
    QImage picture() const { return view->grab().toImage(); }
    /// The map without what is around it.
    QImage map() const
    {
        const QRectF area(view->widget_position({0, 0}), view->widget_position({s_columns, s_rows}));
        return picture().copy(area.toRect().adjusted(2, 2, -2, -2));
    }
    /// How much darker than the ground a row of the picture is, from one column of cells to another, in
    /// pixels of full black.
    double darkness(double from, double to, double row) const
    {
        const QImage shown = picture();
        const int y = static_cast<int>(view->widget_position({0, row}).y());
        const int last = static_cast<int>(view->widget_position({to, row}).x());
        double sum = 0;
        for (int x = static_cast<int>(view->widget_position({from, row}).x()); x < last; ++x) {
            sum += std::max(s_ground - qGray(shown.pixel(x, y)), 0.0) / s_ground;
        }
        return sum;
    }

    support::App application;
    terrain::TerrainDocument* document = nullptr;
    std::unique_ptr<TerrainView> view;
};

int number_of(const QImage& picture, const std::function<bool(QRgb)>& is_one)
{
    int count = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            count += is_one(picture.pixel(x, y));
        }
    }
    return count;
}

} // namespace

TEST_F(MapLayersTest, AMapBeginsWithAllButContourLines)
{
    const MapLayers layers = show(hill).layers();
    EXPECT_TRUE(layers.colours && layers.relief && layers.legend && layers.scale_bar);
    EXPECT_FALSE(layers.contours);
    EXPECT_EQ(layers.contour_interval, 0);
}

TEST_F(MapLayersTest, WithoutColoursTheReliefIsGrey)
{
    MapLayers layers = bare();
    layers.relief = true;
    show(hill, layers);
    const QImage relief = map();
    EXPECT_EQ(number_of(relief, [](QRgb colour) { return !is_grey(colour); }), 0);
    EXPECT_GT(qGray(relief.pixel(relief.width() / 4, relief.height() / 4)),
        qGray(relief.pixel(relief.width() * 3 / 4, relief.height() * 3 / 4)) + 40)
        << "the north-western slope is lit";
}

TEST_F(MapLayersTest, WithoutReliefEqualHeightsHaveEqualColours)
{
    MapLayers layers = bare();
    layers.colours = true;
    show(hill, layers);
    const auto colour = [this](double column, double row) {
        return picture().pixel(view->widget_position({column, row}).toPoint());
    };
    EXPECT_EQ(colour(20.5, 12.5), colour(40.5, 32.5)) << "in the light and in the shade";
    EXPECT_NE(colour(20.5, 12.5), colour(30.5, 22.5));
    EXPECT_FALSE(is_grey(colour(20.5, 12.5)));
}

TEST_F(MapLayersTest, WithoutBothTheGroundIsEven)
{
    show(hill, bare());
    const QImage ground = map();
    EXPECT_TRUE(is_grey(ground.pixel(5, 5)));
    EXPECT_EQ(number_of(ground, [&](QRgb colour) { return colour != ground.pixel(5, 5); }), 0);
}

TEST_F(MapLayersTest, ContourLinesLieWhereTheirHeightIs)
{
    show(slope, bare_with_contours(100));
    for (int tenth = 1; tenth < 6; ++tenth) { // 5, 15, 25 ...: 100 lies between the columns 9 and 10
        EXPECT_GT(darkness(10 * tenth - 0.5, 10 * tenth + 0.5, 2), 0) << tenth;
        EXPECT_EQ(darkness(10 * tenth + 1, 10 * tenth + 9, 2), 0) << tenth;
    }
}

TEST_F(MapLayersTest, EveryFifthLineIsBolder)
{
    show(slope, bare_with_contours(100));
    EXPECT_GT(darkness(49, 51, 2), 1.5 * darkness(39, 41, 2));
    EXPECT_NEAR(darkness(39, 41, 2), darkness(29, 31, 2), 0.1);
}

TEST_F(MapLayersTest, LinesAreAsThickWhenTheMapIsLarger)
{
    show(slope, bare_with_contours(100));
    const QPointF fixed = view->widget_position({40, 2});
    const double before = darkness(39, 41, 2);
    view->zoom(4, fixed);
    EXPECT_NEAR(darkness(39, 41, 2), before, 0.1);
}

TEST_F(MapLayersTest, BoldLinesCarryTheirHeight)
{
    const auto is_letter_or_halo = [](QRgb colour) { return qGray(colour) > 240; };
    show(slope, bare_with_contours(100));
    const double x = view->widget_position({50, 0}).x();
    const QImage shown = picture();
    const QImage bold = shown.copy(static_cast<int>(x) - 12, 20, 24, s_size.height() - 40);
    EXPECT_GT(number_of(bold, is_letter_or_halo), 30);
    const double thin_x = view->widget_position({40, 0}).x();
    const QImage thin = shown.copy(static_cast<int>(thin_x) - 12, 20, 24, s_size.height() - 40);
    EXPECT_EQ(number_of(thin, is_letter_or_halo), 0);
}

TEST_F(MapLayersTest, LinesShowOnColoursAndReliefToo)
{
    MapLayers layers;
    layers.legend = layers.scale_bar = false;
    show(hill, layers);
    const QImage without = map();
    layers.contours = true;
    view->set_layers(layers);
    const QImage with = map();
    ASSERT_EQ(with.size(), without.size());
    int clear = 0;
    for (int y = 0; y < with.height(); ++y) {
        for (int x = 0; x < with.width(); ++x) {
            clear += std::abs(qGray(with.pixel(x, y)) - qGray(without.pixel(x, y))) > 40;
        }
    }
    EXPECT_GT(clear, with.width() * 5);
}

TEST_F(MapLayersTest, TheIntervalSuitsTheHeightsUnlessOneIsChosen)
{
    show(hill, bare_with_contours(0));
    picture();
    EXPECT_EQ(view->picture().contours().interval(),
        terrain::contour_interval(view->picture().shade().lowest(), view->picture().shade().highest()));
    view->set_layers(bare_with_contours(37));
    picture();
    EXPECT_EQ(view->picture().contours().interval(), 37);
}

TEST_F(MapLayersTest, LinesAreMadeOnceForAStateOfTheCells)
{
    show(hill);
    picture();
    const auto times = [this] { return view->picture().contours().times_made(); };
    EXPECT_EQ(times(), 0) << "not while they are hidden";
    view->set_layers(bare_with_contours(0));
    picture();
    view->zoom_in();
    picture();
    EXPECT_EQ(times(), 1);
    view->set_layers(bare());
    picture();
    MapLayers layers = view->layers();
    layers.contours = layers.colours = true;
    view->set_layers(layers);
    picture();
    EXPECT_EQ(times(), 1) << "they have not changed meanwhile";
    for (double& cell : document->terrain().cells()) {
        cell *= 2;
    }
    picture();
    EXPECT_EQ(times(), 1) << "nobody has said so yet";
    view->refresh();
    picture();
    EXPECT_EQ(times(), 2);
}

TEST_F(MapLayersTest, LinesTooCloseTogetherAreToldAndLeftOut)
{
    MapLayers layers;
    show(hill, layers);
    layers.contours = true;
    layers.contour_interval = 1e-3;
    const QImage without = picture();
    view->set_layers(layers);
    const QImage with = picture();
    EXPECT_EQ(view->picture().contours().count(), 0U);
    EXPECT_FALSE(view->picture().contours().problem().isEmpty());
    const QRect top(0, 0, s_size.width() / 2 + 40, 60);
    EXPECT_NE(with.copy(top), without.copy(top)) << "a note says so";
    const QRect below(0, 80, s_size.width() - 200, 200);
    EXPECT_EQ(with.copy(below), without.copy(below));
    layers.contour_interval = 50;
    view->set_layers(layers);
    picture();
    EXPECT_TRUE(view->picture().contours().problem().isEmpty());
    EXPECT_GT(view->picture().contours().count(), 0U);
}

TEST_F(MapLayersTest, LegendAndScaleBarCanBeHidden)
{
    MapLayers layers;
    show(hill, layers);
    const QImage with = picture();
    const auto is_changed = [&](const QRect& area) { return picture().copy(area) != with.copy(area); };
    const QRect legend(s_size.width() - 100, 0, 100, 200);
    const QRect scale_bar(0, s_size.height() - 60, 200, 60);
    layers.legend = false;
    view->set_layers(layers);
    EXPECT_TRUE(is_changed(legend));
    EXPECT_FALSE(is_changed(scale_bar));
    layers.legend = true;
    layers.scale_bar = false;
    view->set_layers(layers);
    EXPECT_FALSE(is_changed(legend));
    EXPECT_TRUE(is_changed(scale_bar));
    layers.scale_bar = true;
    view->set_layers(layers);
    EXPECT_EQ(picture(), with);
}

TEST_F(MapLayersTest, ChangesAreToldAndPaintedWithoutBeingAskedFor)
{
    show(hill);
    const QSignalSpy spy(view.get(), &TerrainView::layers_changed);
    Paints paints(*view);
    view->set_layers(bare());
    EXPECT_EQ(spy.count(), 1);
    EXPECT_EQ(view->layers(), bare());
    QCoreApplication::processEvents();
    EXPECT_EQ(paints.count, 1);
}

TEST_F(MapLayersTest, NothingHappensWhileNothingChanges)
{
    show(hill);
    const QSignalSpy spy(view.get(), &TerrainView::layers_changed);
    const Paints paints(*view);
    view->set_layers(MapLayers());
    QCoreApplication::processEvents();
    EXPECT_EQ(spy.count(), 0);
    EXPECT_EQ(paints.count, 0);
}

TEST_F(MapLayersTest, CanBeChangedWhenTheDocumentHasGone)
{
    show(hill);
    housekeeping::DocumentManager::instance().destroy_document(
        document->id(), true, false, false, housekeeping::DocumentId::null());
    view->set_layers(bare_with_contours(50));
    picture();
    EXPECT_GT(view->picture().contours().count(), 0U);
    EXPECT_EQ(number_of(map(), [](QRgb colour) { return qGray(colour) > 240; }) > 0, true) << "with heights";
}

TEST_F(MapLayersTest, ARasterWithoutHeightsHasNoLines)
{
    show([](int, int) { return N; }, bare_with_contours(0));
    picture();
    EXPECT_EQ(view->picture().contours().count(), 0U);
    EXPECT_TRUE(view->picture().contours().problem().isEmpty());
}

// When the raster has another extent or resolution than before

TEST_F(MapLayersTest, AWholeRasterThatIsCutIsShownWholeAgain)
{
    show(hill);
    terrain::Raster cut = raster_of(20, 30, hill);
    cut.geotransform = {1100, 10, 0, 8900, 0, -10};
    document->terrain().raster(cut);
    view->refresh();
    const QRectF area(view->widget_position({0, 0}), view->widget_position({20, 30}));
    EXPECT_TRUE(QRectF(view->rect()).contains(area));
    EXPECT_GT(area.height(), 440);
    EXPECT_FALSE(view->reading(view->widget_position({20.5, 5})));
    EXPECT_TRUE(view->reading(view->widget_position({19.5, 29.5})));
}

TEST_F(MapLayersTest, APlaceStaysWhereItIsWhenTheRasterIsCutOrRefined)
{
    show(hill);
    view->zoom(5, {320, 240});
    const double scale = view->scale();
    const QPointF place = view->widget_position({25, 20});
    terrain::Raster cut = raster_of(40, 30, hill);
    cut.geotransform = {1100, 10, 0, 8900, 0, -10}; // ten columns and rows less at the upper left
    document->terrain().raster(cut);
    view->refresh();
    EXPECT_NEAR(view->widget_position({15, 10}).x(), place.x(), 1e-6);
    EXPECT_NEAR(view->widget_position({15, 10}).y(), place.y(), 1e-6);
    EXPECT_EQ(view->scale(), scale);
    terrain::Raster fine = raster_of(80, 60, hill);
    fine.geotransform = {1100, 5, 0, 8900, 0, -5};
    document->terrain().raster(fine);
    view->refresh();
    EXPECT_NEAR(view->widget_position({30, 20}).x(), place.x(), 1e-6);
    EXPECT_NEAR(view->widget_position({30, 20}).y(), place.y(), 1e-6);
    EXPECT_NEAR(view->scale(), scale / 2, 1e-9);
}

TEST_F(MapLayersTest, ARasterOfAnotherSizeWithoutAPlaceIsShownWhole)
{
    show(hill);
    view->zoom(5, {320, 240});
    document->terrain().raster(raster_of(10, 90, hill));
    view->refresh();
    const QRectF area(view->widget_position({0, 0}), view->widget_position({10, 90}));
    EXPECT_TRUE(QRectF(view->rect()).contains(area));
    EXPECT_TRUE(view->reading(view->widget_position({9.5, 89.5})));
}

TEST_F(MapLayersTest, CellsHaveTheProportionThatTheyHaveOnTheGroundAfterARefresh)
{
    terrain::Raster raster = raster_of(s_columns, s_rows, hill);
    show(hill, bare());
    raster.geotransform = {1000, 20, 0, 9000, 0, -10};
    document->terrain().raster(raster);
    view->refresh();
    const QPointF cell = view->widget_position({1, 1}) - view->widget_position({0, 0});
    EXPECT_NEAR(cell.x(), 2 * cell.y(), 1e-6);
}
