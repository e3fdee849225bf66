#include "CommandFixture.h"
#include "HeightsOf.h"
#include "commands/BrushCommand.h"
#include "commands/CellPatch.h"
#include "commands/ClampCommand.h"
#include "documents/Mesh.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "support/App.h"
#include "views/MapPicture.h"
#include "views/TerrainController.h"
#include "views/TerrainWatch.h"

#include <tarqa/housekeeping/DocumentManager.h>

#include <QtGui/QPainter>

#include <gtest/gtest.h>

#include <cmath>

using namespace host_test;
using housekeeping::DocumentManager;
using terrain::CellChanges;
using terrain::CellPatch;
using terrain::Footprint;
using terrain::HillShade;
using terrain::MapPicture;
using terrain::Raster;
using terrain::Sampling;
using terrain::TerrainWatch;

namespace {

const HillShade::Look s_looks[] = {{true, true}, {false, true}, {true, false}, {false, false}};

double hills(int column, int row)
{
    return 50 + 40 * std::sin(column / 9.0) * std::cos(row / 7.0);
}

/// Hills between two cells that are the lowest and the highest, so that the range stays when others change.
Raster hilly_raster(int columns, int rows)
{
    Raster raster = raster_of(columns, rows, hills);
    raster.cells[raster.index(columns / 2, rows / 2)] = 0;
    raster.cells[raster.index(columns / 2 + 1, rows / 2)] = 100;
    return raster;
}

/// Gives some cells other heights; every third none.
void change(Raster& raster, const QRect& cells)
{
    for (int row = cells.top(); row <= cells.bottom(); ++row) {
        for (int column = cells.left(); column <= cells.right(); ++column) {
            double& cell = raster.cells[raster.index(column, row)];
            if (cell != 0 && cell != 100) {
                cell = (column + row) % 3 == 0 ? N : 30 + (7 * column + 13 * row) % 40;
            }
        }
    }
}

/// Changes cells of a raster, and expects the refreshed picture to be the one that is made anew, where the
/// exaggeration of the relief is that of before.
void expect_as_new(Raster raster, const QRect& cells, Sampling sampling, const HillShade::Look& look)
{
    const Footprint footprint(raster);
    HillShade shade(raster, footprint, sampling, look);
    change(raster, cells);
    ASSERT_TRUE(shade.refresh(raster, cells));
    const HillShade fresh(raster, footprint, sampling, look);
    EXPECT_EQ(bits(shade.heights().cells), bits(fresh.heights().cells));
    // All of the map in the shades of the picture.
    const QImage whole = shade.detail(
        raster, shade.cells_per_pixel(), QRect(QPoint(0, 0), shade.size_in_detail(shade.cells_per_pixel())));
    EXPECT_EQ(shade.picture(), whole) << cells.x() << " " << cells.y();
    if (!look.relief) {
        EXPECT_EQ(shade.picture(), fresh.picture());
    }
}

const std::array<double, 6> s_turnings[]
    = {{0, 30, 0, 0, 0, -30}, {0, -30, 0, 0, 0, -30}, {0, 30, 0, 0, 0, 30}, {0, -30, 0, 0, 0, 30}};

QImage drawn(MapPicture& picture, const Raster& raster, double scale)
{
    QImage image(300, 200, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    while (!picture.draw(painter, QTransform::fromScale(scale, scale), image.rect(), &raster, false)) {
        painter.fillRect(image.rect(), Qt::white);
    }
    return image;
}

/// Notes what it hears of a document.
struct Listener
{
    explicit Listener(const terrain::TerrainDocument& document)
        : watch(document.id(), [this](const CellChanges& changes) { heard.push_back(changes); })
    { }

    std::vector<CellChanges> heard;
    TerrainWatch watch;
};

void run_dab(const terrain::TerrainDocument& document, const QPointF& place, double radius = 1)
{
    insert(boost::make_shared<terrain::BrushCommand>(document.id(),
        terrain::Brush{terrain::Brush::Direction::Raise, radius, 5}, terrain::BrushCommand::Path{place}));
}

terrain::TerrainDocument& flat_document()
{
    return make_document(raster_of(20, 15, [](int, int) { return 10.0; }));
}

} // namespace

// --- pictures

TEST(PartialRefresh, ThePictureIsAsIfMadeAnewInEveryLookWhereverTheCellsLie)
{
    const QRect places[] = {{0, 0, 1, 1}, {89, 69, 1, 1}, {0, 69, 3, 1}, {89, 0, 1, 4}, {30, 20, 12, 9},
        {0, 0, 90, 70}, {0, 33, 90, 1}, {44, 34, 4, 4}};
    for (const HillShade::Look& look : s_looks) {
        for (const QRect& place : places) {
            expect_as_new(hilly_raster(90, 70), place, Sampling::Mean, look);
        }
    }
}

TEST(PartialRefresh, TurnedRastersArePaintedWhereTheyBelong)
{
    for (const auto& turning : s_turnings) {
        Raster raster = hilly_raster(60, 40);
        raster.geotransform = turning;
        for (const QRect& place : {QRect(2, 3, 7, 5), QRect(0, 0, 1, 1), QRect(59, 39, 1, 1)}) {
            expect_as_new(raster, place, Sampling::Mean, {true, true});
            expect_as_new(raster, place, Sampling::Mean, {true, false});
        }
    }
}

TEST(PartialRefresh, PixelsThatStandForManyCellsAreMadeFromAllOfThem)
{
    const int columns = HillShade::max_side * 2 + 1; // 3 cells for a pixel, and the last ones reach beyond
    for (const Sampling sampling : {Sampling::Mean, Sampling::Nearest}) {
        for (const QRect& place :
            {QRect(10, 10, 1, 1), QRect(columns - 1, 19, 1, 1), QRect(1000, 3, 50, 12)}) {
            expect_as_new(hilly_raster(columns, 20), place, sampling, {true, true});
        }
    }
    Raster turned = hilly_raster(columns, 20);
    turned.geotransform = s_turnings[3];
    expect_as_new(turned, QRect(100, 5, 40, 3), Sampling::Mean, {true, true});
}

TEST(PartialRefresh, AnotherRangeOfHeightsMakesAllAnew)
{
    Raster raster = hilly_raster(50, 40);
    const Footprint footprint(raster);
    HillShade shade(raster, footprint);
    raster.cells[3] = 150;
    EXPECT_FALSE(shade.refresh(raster, QRect(3, 0, 1, 1)));
    EXPECT_EQ(shade.highest(), 150);
    EXPECT_EQ(shade.picture(), HillShade(raster, footprint).picture());
    raster.cells[3] = 50;
    EXPECT_FALSE(shade.refresh(raster, QRect(3, 0, 1, 1)));
    EXPECT_EQ(shade.highest(), 100);
}

TEST(PartialRefresh, TheLastHeightMayGoAndTheFirstOneCome)
{
    Raster raster = raster_of(5, 5, [](int, int) { return N; });
    const Footprint footprint(raster);
    HillShade shade(raster, footprint);
    raster.cells[12] = 7;
    EXPECT_FALSE(shade.refresh(raster, QRect(2, 2, 1, 1)));
    EXPECT_TRUE(shade.has_heights());
    EXPECT_EQ(shade.picture(), HillShade(raster, footprint).picture());
    raster.cells[12] = N;
    EXPECT_FALSE(shade.refresh(raster, QRect(2, 2, 1, 1)));
    EXPECT_FALSE(shade.has_heights());
    EXPECT_EQ(shade.picture(), HillShade(raster, footprint).picture());
}

TEST(PartialRefresh, ThePictureFollowsChangesThatAreMadeWhileTheReliefIsHidden)
{
    Raster raster = hilly_raster(60, 40);
    const Footprint footprint(raster);
    HillShade shade(raster, footprint, Sampling::Mean, {true, true});
    shade.show({true, false});
    change(raster, QRect(5, 5, 10, 10));
    ASSERT_TRUE(shade.refresh(raster, QRect(5, 5, 10, 10)));
    shade.show({true, true});
    EXPECT_EQ(shade.picture(), shade.detail(raster, 1, QRect(0, 0, 60, 40)));
}

// --- tiles

TEST(PartialRefresh, TilesThatDoNotShowTheCellsAreKept)
{
    const int side = HillShade::max_side * 2;
    Raster raster = hilly_raster(side, 600);
    MapPicture picture(raster, Footprint(raster), Sampling::Mean, terrain::MapLayers());
    drawn(picture, raster, 1); // 300 x 200 cells, and 1 more around
    const int tiles = picture.tiles().count();
    EXPECT_EQ(tiles, 2);
    change(raster, QRect(3000, 400, 5, 5));
    picture.refresh(raster, QRect(3000, 400, 5, 5));
    EXPECT_EQ(picture.tiles().count(), tiles) << "far away";
    change(raster, QRect(20, 20, 5, 5));
    picture.refresh(raster, QRect(20, 20, 5, 5));
    EXPECT_EQ(picture.tiles().count(), tiles - 1);
    const QImage again = drawn(picture, raster, 1);
    EXPECT_EQ(picture.tiles().count(), tiles);
    QImage expected(again.size(), again.format());
    expected.fill(Qt::white);
    QPainter(&expected).drawImage(0, 0, picture.shade().detail(raster, 1, expected.rect()));
    EXPECT_EQ(again, expected);
    picture.refresh(raster, QRect(256, 20, 1, 1));
    EXPECT_EQ(picture.tiles().count(), 0) << "the light beside depends on it, too";
}

TEST(PartialRefresh, AnotherRangeForgetsAllTiles)
{
    Raster raster = hilly_raster(HillShade::max_side * 2, 600);
    MapPicture picture(raster, Footprint(raster), Sampling::Mean, terrain::MapLayers());
    drawn(picture, raster, 1);
    raster.cells.back() = 500;
    picture.refresh(raster, QRect(raster.columns - 1, 599, 1, 1));
    EXPECT_EQ(picture.tiles().count(), 0);
}

// --- what changes

TEST(PartialRefresh, APatchKnowsTheColumnsAndRowsOfItsCells)
{
    std::vector<double> before(20 * 10, 1);
    EXPECT_TRUE(CellPatch(before, before).area(20).isEmpty());
    std::vector<double> after = before;
    after[3 * 20 + 7] = 2;
    EXPECT_EQ(CellPatch(before, after).area(20), QRect(7, 3, 1, 1));
    after[5 * 20 + 2] = 2;
    EXPECT_EQ(CellPatch(before, after).area(20), QRect(2, 3, 6, 3));
    after = before;
    after[3 * 20 + 19] = 2; // one run, over the end of a row
    after[4 * 20] = 2;
    EXPECT_EQ(CellPatch(before, after).area(20), QRect(0, 3, 20, 2));
}

TEST(PartialRefresh, APatchOfAnAreaIsThatOfTheWhole)
{
    const std::vector<double> before = mixed_raster(20, 10).cells;
    const QRect area(4, 2, 5, 6);
    std::vector<double> after = before;
    std::vector<double> part;
    for (int row = area.top(); row <= area.bottom(); ++row) {
        for (int column = area.left(); column <= area.right(); ++column) {
            double& cell = after[static_cast<std::size_t>(row * 20 + column)];
            cell = column % 2 ? cell : 0.1 * column;
            part.push_back(cell);
        }
    }
    const CellPatch patch(before, 20, area, part);
    EXPECT_EQ(patch.changed(), CellPatch(before, after).changed());
    EXPECT_EQ(patch.area(20), CellPatch(before, after).area(20));
    patch.restore(after);
    EXPECT_EQ(bits(after), bits(before));
}

TEST(PartialRefresh, TwoPatchesBecomeOne)
{
    const std::vector<double> first = mixed_raster(40, 30).cells;
    for (const std::size_t step : {1u, 2u, 5u, 17u, 400u}) {
        std::vector<double> second = first;
        for (std::size_t i = 0; i < second.size(); i += step) {
            second[i] = 0.5;
        }
        std::vector<double> third = second;
        for (std::size_t i = 100; i < third.size(); i += 3) {
            third[i] = i % 2 ? first[i] : 0.1; // some go back to what they were
        }
        CellPatch patch(first, second);
        patch.add(CellPatch(second, third), third);
        EXPECT_EQ(patch.changed(), CellPatch(first, third).changed());
        std::vector<double> cells = third;
        patch.restore(cells);
        EXPECT_EQ(bits(cells), bits(first));
    }
    CellPatch nothing;
    nothing.add(CellPatch(), first);
    EXPECT_EQ(nothing.changed(), 0u);
}

TEST(PartialRefresh, AModelTellsItsChangesOnce)
{
    terrain::TerrainModel& model = flat_document().terrain();
    EXPECT_FALSE(model.take_changes().any()) << "its first raster is no change";
    model.cells_changed(QRect(1, 2, 3, 4));
    model.cells_changed(QRect(6, 2, 1, 1));
    const CellChanges changes = model.take_changes();
    EXPECT_EQ(changes.cells, QRect(1, 2, 6, 4));
    EXPECT_FALSE(changes.reshaped);
    EXPECT_FALSE(changes.mesh);
    EXPECT_FALSE(model.take_changes().any());
    model.mesh(boost::make_shared<const terrain::Mesh>());
    EXPECT_TRUE(model.take_changes().mesh);
    model.cells_changed(QRect(0, 0, 1, 1));
    EXPECT_EQ(model.mesh(), nullptr) << "it is of other heights";
    EXPECT_TRUE(model.take_changes().mesh);
    Raster other = make_raster(1, 1, {1});
    model.swap(other);
    EXPECT_TRUE(model.take_changes().reshaped);
}

// --- who hears of it

TEST(PartialRefresh, AViewHearsOnceAfterEachRunWhatChanged)
{
    const terrain::TerrainDocument& document = flat_document();
    Listener listener(document);
    run_dab(document, {5.5, 6.5});
    ASSERT_EQ(listener.heard.size(), 1u);
    EXPECT_EQ(listener.heard[0].cells, QRect(5, 6, 1, 1));
    EXPECT_FALSE(listener.heard[0].reshaped);
    undo(document);
    ASSERT_EQ(listener.heard.size(), 2u);
    EXPECT_EQ(listener.heard[1].cells, QRect(5, 6, 1, 1));
}

TEST(PartialRefresh, AStrokeTellsOnlyWhatItChangesThoughItBecomesPartOfAnother)
{
    const terrain::TerrainDocument& document = flat_document();
    Listener listener(document);
    run_dab(document, {5.5, 6.5});
    run_dab(document, {15.5, 2.5});
    ASSERT_EQ(listener.heard.size(), 2u);
    EXPECT_EQ(listener.heard[1].cells, QRect(15, 2, 1, 1));
    undo(document);
    ASSERT_EQ(listener.heard.size(), 3u);
    EXPECT_EQ(listener.heard[2].cells, QRect(5, 2, 11, 5)) << "both";
}

TEST(PartialRefresh, ARunThatChangedNothingIsNotHeard)
{
    const terrain::TerrainDocument& document = flat_document();
    Listener listener(document);
    insert(boost::make_shared<terrain::ClampCommand>(document.id(), -1000, 1000));
    EXPECT_TRUE(listener.heard.empty());
    undo(document);
    EXPECT_TRUE(listener.heard.empty());
}

TEST(PartialRefresh, BusyMarksNestAndOnlyTheLastOneTells)
{
    const terrain::TerrainDocument& document = flat_document();
    Listener listener(document);
    DocumentManager::instance().document_busy(document.id(), true);
    document.terrain().cells_changed(QRect(1, 1, 1, 1));
    DocumentManager::instance().document_busy(document.id(), true);
    document.terrain().cells_changed(QRect(3, 1, 1, 1));
    DocumentManager::instance().document_busy(document.id(), false);
    EXPECT_TRUE(listener.heard.empty());
    DocumentManager::instance().document_busy(document.id(), false);
    ASSERT_EQ(listener.heard.size(), 1u);
    EXPECT_EQ(listener.heard[0].cells, QRect(1, 1, 3, 1));
}

TEST(PartialRefresh, ChangesOfADocumentThatIsNotCurrentWait)
{
    const terrain::TerrainDocument& first = flat_document();
    const terrain::TerrainDocument& second = flat_document();
    Listener listener(first);
    Listener other(second);
    DocumentManager::instance().current_document(second.id());
    run_dab(first, {5.5, 6.5});
    run_dab(first, {8.5, 6.5});
    EXPECT_TRUE(listener.heard.empty());
    DocumentManager::instance().current_document(first.id());
    ASSERT_EQ(listener.heard.size(), 1u);
    EXPECT_EQ(listener.heard[0].cells, QRect(5, 6, 4, 1));
    EXPECT_TRUE(other.heard.empty());
    EXPECT_EQ(terrain::TerrainController::instance().changed_document(), housekeeping::DocumentId::null());
    DocumentManager::instance().current_document(second.id());
    DocumentManager::instance().current_document(first.id());
    EXPECT_EQ(listener.heard.size(), 1u) << "each change once";
}

TEST(PartialRefresh, WhoGoesHearsNoMore)
{
    const terrain::TerrainDocument& document = flat_document();
    auto listener = std::make_unique<Listener>(document);
    Listener stays(document);
    listener.reset();
    run_dab(document, {5.5, 6.5});
    EXPECT_EQ(stays.heard.size(), 1u);
}
