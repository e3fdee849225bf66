#include "commands/TriangulateCommand.h"
#include "CommandFixture.h"
#include "HeightsOf.h"
#include "MeshCheck.h"
#include "commands/CleanUpCommand.h"
#include "commands/CropCommand.h"
#include "commands/SmoothCommand.h"
#include "commands/Triangulation.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "io/RasterMemory.h"
#include "sample/FractalTerrain.h"
#include "support/LogCapture.h"

#include <tarqa/housekeeping/DataSource.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <limits>
#include <random>

using namespace host_test;
using terrain::Mesh;
using terrain::Raster;
using terrain::TerrainDocument;
using terrain::triangulate;
using terrain::TriangulateCommand;
using terrain::Triangulated;

namespace {

typedef boost::shared_ptr<const Mesh> MeshPointer;

const std::size_t s_many = 1000000; ///< vertices

Triangulated triangulated(const Raster& raster, double tolerance)
{
    return triangulate(raster, tolerance, s_many, [](double) {});
}

/// Triangulates, and expects that everything is as it should be.
Mesh good_mesh(const Raster& raster, double tolerance)
{
    const Triangulated made = triangulated(raster, tolerance);
    EXPECT_EQ(made.mesh.tolerance, tolerance);
    expect_good_mesh(raster, made.mesh);
    const auto with_data = std::count_if(
        raster.cells.begin(), raster.cells.end(), [](double cell) { return !std::isnan(cell); });
    EXPECT_EQ(made.left_out, static_cast<std::size_t>(with_data) - cells_in_data_area(raster));
    return made.mesh;
}

bool same(const Mesh& one, const Mesh& other)
{
    const auto same_vertex = [](const Mesh::Vertex& a, const Mesh::Vertex& b) {
        return a.column == b.column && a.row == b.row && a.height == b.height;
    };
    return one.tolerance == other.tolerance && one.triangles == other.triangles
        && std::equal(one.vertices.begin(), one.vertices.end(), other.vertices.begin(), other.vertices.end(),
            same_vertex);
}

double hills(int column, int row)
{
    return 100 * std::sin(column / 9.0) * std::cos(row / 7.0) + column;
}

boost::shared_ptr<TriangulateCommand> run(const TerrainDocument& document, double tolerance)
{
    const auto sp_command = boost::make_shared<TriangulateCommand>(document.id(), tolerance);
    insert(sp_command);
    return sp_command;
}

MeshPointer mesh_of(const TerrainDocument& document)
{
    return document.terrain().mesh();
}

} // namespace

// --- the surface

TEST(Triangulation, LevelGroundHasTwoTriangles)
{
    EXPECT_EQ(good_mesh(raster_of(50, 30, [](int, int) { return -7.5; }), 1e-9).triangles.size(), 2u);
    EXPECT_EQ(good_mesh(make_raster(2, 2, {1, 1, 1, 1}), 0.1).triangles.size(), 2u);
}

TEST(Triangulation, SoDoesASlope)
{
    const Raster slope
        = raster_of(200, 70, [](int column, int row) { return 0.1 * column - 0.7 * row + 1000; });
    EXPECT_EQ(good_mesh(slope, 1e-6).triangles.size(), 2u);
}

TEST(Triangulation, APyramidHasFourTriangles)
{
    const Raster pyramid = raster_of(41, 41,
        [](int column, int row) { return 20.0 - std::max(std::abs(column - 20), std::abs(row - 20)); });
    const Mesh mesh = good_mesh(pyramid, 0.01);
    EXPECT_EQ(mesh.triangles.size(), 4u);
    EXPECT_EQ(mesh.vertices.size(), 5u);
}

TEST(Triangulation, TakesInTheWorstCellFirst)
{
    Raster raster = raster_of(11, 11, [](int, int) { return 0; });
    raster.cells[raster.index(3, 4)] = 10;
    raster.cells[raster.index(7, 2)] = -11;
    const Mesh mesh = good_mesh(raster, 0.5);
    EXPECT_EQ(mesh.vertices.at(4).height, -11) << "the first behind the four corners";
    EXPECT_EQ(mesh.vertices.at(5).height, 10);
}

TEST(Triangulation, StaysWithinTheToleranceOnAllKindsOfGround)
{
    const Raster cone
        = raster_of(61, 47, [](int column, int row) { return -3 * std::hypot(column - 33, row - 20); });
    const Raster steps
        = raster_of(40, 40, [](int column, int row) { return column > 20 && row > 11 ? 100 : 0; });
    for (const Raster& raster : {cone, steps, raster_of(70, 50, hills), terrain::fractal_terrain(96, 3)}) {
        for (const double tolerance : {200.0, 20.0, 5.0, 1.0, 0.01}) {
            SCOPED_TRACE(tolerance);
            good_mesh(raster, tolerance);
        }
    }
}

TEST(Triangulation, ALargerToleranceMakesFewerTriangles)
{
    const Raster raster = terrain::fractal_terrain(128, 5);
    std::size_t last = s_many;
    for (const double tolerance : {1.0, 4.0, 16.0, 64.0}) {
        const std::size_t count = good_mesh(raster, tolerance).triangles.size();
        EXPECT_LT(count, last);
        last = count;
    }
    EXPECT_LT(last, 400u);
}

TEST(Triangulation, ATinyToleranceTakesAllCellsIn)
{
    std::mt19937 engine(4);
    const Raster noise = raster_of(30, 20, [&](int, int) { return static_cast<double>(engine() % 1000); });
    const Mesh mesh = good_mesh(noise, 1e-12);
    EXPECT_EQ(mesh.vertices.size(), 600u);
    EXPECT_EQ(mesh.triangles.size(), 2u * 29 * 19);
}

TEST(Triangulation, HeightsWhoseDifferencesAreNoNumbersAreTakenInToo)
{
    const Raster raster
        = raster_of(5, 4, [](int column, int row) { return (column + row) % 2 ? DBL_MAX : -DBL_MAX; });
    EXPECT_EQ(triangulated(raster, 1).mesh.vertices.size(), 20u);
}

TEST(Triangulation, TheSameRasterGivesTheSameMesh)
{
    const Raster raster = terrain::fractal_terrain(150, 1);
    const Mesh first = triangulated(raster, 3).mesh;
    EXPECT_TRUE(same(triangulated(raster, 3).mesh, first));
    const Raster copy = raster;
    EXPECT_TRUE(same(triangulated(copy, 3).mesh, first));
    EXPECT_FALSE(same(triangulated(raster, 4).mesh, first));
}

// --- cells without data

TEST(Triangulation, LeavesHolesOpen)
{
    const auto with_hole = [](int column, int row) {
        return column > 10 && column < 18 && row > 5 && row < 9 ? N : hills(column, row);
    };
    good_mesh(raster_of(40, 30, with_hole), 2);
    const Mesh level = good_mesh(
        raster_of(
            40, 30, [&](int column, int row) { return terrain::is_no_data(with_hole(column, row)) ? N : 5; }),
        0.1);
    EXPECT_EQ(level.vertices.size(), 12u) << "of level ground only the corners are needed";
}

TEST(Triangulation, LeavesSingleGapsOpen)
{
    Raster raster = raster_of(30, 20, hills);
    for (const auto& [column, row] :
        {std::pair(0, 0), {15, 10}, {16, 10}, {29, 7}, {3, 19}, {20, 5}, {21, 6}}) {
        raster.cells[raster.index(column, row)] = N;
    }
    good_mesh(raster, 3);
}

TEST(Triangulation, FollowsARaggedRim)
{
    const Raster country = raster_of(90, 80, [](int column, int row) {
        const double angle = std::atan2(row - 40.0, column - 45.0);
        const double reach = 30 + 6 * std::sin(5 * angle) + 3 * std::sin(17 * angle);
        return std::hypot(column - 45, row - 40) > reach ? N : hills(column, row);
    });
    for (const double tolerance : {100.0, 3.0}) {
        good_mesh(country, tolerance);
    }
}

TEST(Triangulation, IslandsHaveSurfacesOfTheirOwn)
{
    const Raster islands = raster_of(60, 40,
        [](int column, int row) { return (column % 13 < 9 && row % 11 < 6) ? hills(column, row) : N; });
    good_mesh(islands, 1);
    good_mesh(islands, 1000);
}

TEST(Triangulation, ASlantedRimIsOneEdgeOnLevelGround)
{
    const Raster half = raster_of(30, 30, [](int column, int row) { return column + row > 29 ? N : 4; });
    EXPECT_EQ(good_mesh(half, 1).triangles.size(), 1u);
}

TEST(Triangulation, CellsThatSpanNothingAreLeftOut)
{
    Raster raster = raster_of(20, 20, [](int column, int row) { return column < 8 && row < 8 ? 3 : N; });
    raster.cells[raster.index(15, 15)] = 1;
    raster.cells[raster.index(8, 4)] = 2; // beside a square, with a half on each side of it
    for (int row = 10; row < 19; ++row) {
        raster.cells[raster.index(4, row)] = 6;
    }
    raster.cells[raster.index(16, 16)] = 1; // touches its neighbour at a corner
    EXPECT_EQ(triangulated(raster, 1).left_out, 11u);
    good_mesh(raster, 1);
}

TEST(Triangulation, EveryPatternOfGapsIsDealtWith)
{
    std::mt19937 engine(12);
    for (int round = 0; round < 400; ++round) {
        SCOPED_TRACE(round);
        const unsigned int part_without = engine() % 10;
        const int columns = 2 + static_cast<int>(engine() % 14);
        const int rows = 2 + static_cast<int>(engine() % 14);
        const Raster raster = raster_of(columns, rows,
            [&](int, int) { return engine() % 10 < part_without ? N : static_cast<double>(engine() % 100); });
        if (data_area(raster) == 0) {
            EXPECT_THROW(triangulated(raster, 1), terrain::TriangulationFailure);
            continue;
        }
        good_mesh(raster, 1 + engine() % 60);
    }
}

TEST(Triangulation, WithoutAreaThereIsNone)
{
    const Raster none[] = {Raster(), make_raster(1, 1, {1}), make_raster(5, 1, {1, 2, 3, 4, 5}),
        make_raster(1, 5, {1, 2, 3, 4, 5}), make_raster(2, 2, {N, N, N, N}), make_raster(2, 2, {1, N, N, 1}),
        make_raster(3, 3, {1, 1, 1, N, N, N, 1, 1, 1})};
    for (const Raster& raster : none) {
        EXPECT_THROW(triangulated(raster, 1), terrain::TriangulationFailure);
    }
    good_mesh(make_raster(2, 2, {1, 2, N, 1}), 1);
}

TEST(Triangulation, MoreVerticesThanThereIsRoomForAreAFailure)
{
    const Raster raster = raster_of(40, 30, hills);
    EXPECT_NO_THROW(triangulate(raster, 1e6, 4, [](double) {}));
    EXPECT_THROW(triangulate(raster, 1e6, 3, [](double) {}), terrain::TriangulationFailure);
    EXPECT_THROW(triangulate(raster, 0.1, 100, [](double) {}), terrain::TriangulationFailure);
}

TEST(Triangulation, TellsHowFarItIsAndCanBeEndedThere)
{
    const Raster raster = raster_of(500, 400, hills);
    std::vector<double> shares;
    triangulate(raster, 4, s_many, [&](double share) { shares.push_back(share); });
    ASSERT_GT(shares.size(), 5u);
    EXPECT_EQ(shares.front(), 0);
    EXPECT_EQ(shares.back(), 1);
    EXPECT_TRUE(std::is_sorted(shares.begin(), shares.end()));
    EXPECT_GT(shares[shares.size() - 2], 0.5);
    for (std::size_t at = 1; at <= shares.size(); ++at) {
        std::size_t told = 0;
        const auto end = [&](double) {
            if (++told == at) {
                throw at;
            }
        };
        EXPECT_THROW(triangulate(raster, 4, s_many, end), std::size_t);
        EXPECT_EQ(told, at);
    }
}

// --- the command

TEST(TriangulateCommand, GivesTheDocumentAMeshAndLeavesTheHeights)
{
    TerrainDocument& document = make_document(raster_of(40, 30, hills));
    const auto untouched = all_bits(document);
    const auto sp_command = run(document, 4);
    ASSERT_TRUE(mesh_of(document));
    expect_good_mesh(document.terrain().raster(), *mesh_of(document));
    EXPECT_EQ(all_bits(document), untouched);
    EXPECT_EQ(sp_command->failure(), "");
}

TEST(TriangulateCommand, TellsWhatCameOut)
{
    Raster level = make_raster(3, 2, {5, 5, 5, 5, 5, 5});
    TerrainDocument& plain = make_document(level);
    EXPECT_EQ(run(plain, 0.25)->protocol("DO>", true),
        "DO>\tTriangulate: tolerance 0.25, 2 triangles - Succeeded.\n");
    level = make_raster(5, 2, {5, 5, N, 5, N, 5, 5, N, N, 5});
    TerrainDocument& ragged = make_document(level);
    const auto sp_source = boost::make_shared<housekeeping::DataSource>();
    sp_source->z_units(housekeeping::DataSource::Feet);
    ragged.datasource(sp_source);
    EXPECT_EQ(run(ragged, 12)->details().description(), "tolerance 12 feet, 2 triangles, cells left out: 2");
}

TEST(TriangulateCommand, ToleranceMustBeANumberAboveZero)
{
    support::LogCapture log;
    TerrainDocument& document = make_document(raster_of(10, 10, hills));
    run(document, 5);
    const MeshPointer sp_before = mesh_of(document);
    for (const double tolerance :
        {0.0, -0.0, -1.0, std::numeric_limits<double>::quiet_NaN(), HUGE_VAL, -HUGE_VAL}) {
        const auto sp_command = run(document, tolerance);
        EXPECT_EQ(sp_command->failure(), "The tolerance must be a number above 0");
        EXPECT_EQ(mesh_of(document), sp_before);
        undo(document);
        EXPECT_EQ(mesh_of(document), sp_before);
    }
    log.take_all();
}

TEST(TriangulateCommand, ARasterWithoutAreaFails)
{
    support::LogCapture log;
    for (const Raster& raster : {Raster(), make_raster(1, 1, {1}), make_raster(4, 1, {1, 2, 3, 4})}) {
        TerrainDocument& document = make_document(raster);
        EXPECT_EQ(run(document, 1)->failure(),
            "Triangles need three cells with data beside and below each other; there are none");
        EXPECT_FALSE(mesh_of(document));
    }
    log.take_all();
}

TEST(TriangulateCommand, MoreThanTheMemoryHasRoomForFails)
{
    support::LogCapture log;
    TerrainDocument& document = make_document(raster_of(60, 60, hills));
    terrain::memory_limit(terrain::memory_needed(60, 60) + 50.5 * terrain::bytes_per_vertex);
    EXPECT_EQ(run(document, 0.1)->failure(),
        "There is not enough memory for more than 50 vertices. With a larger tolerance there are fewer");
    EXPECT_FALSE(mesh_of(document));
    terrain::memory_limit(terrain::memory_needed(60, 60) / 2);
    EXPECT_NE(run(document, 0.1)->failure(), "");
    terrain::memory_limit(0);
    EXPECT_EQ(run(document, 0.1)->failure(), "");
    log.take_all();
}

TEST(TriangulateCommand, UndoBringsTheVeryMeshOfBeforeBackAndRedoMakesAnEqualOne)
{
    TerrainDocument& document = make_document(terrain::fractal_terrain(80, 2));
    run(document, 20);
    MeshPointer sp_first = mesh_of(document);
    run(document, 5);
    const MeshPointer sp_second = mesh_of(document);
    EXPECT_FALSE(same(*sp_first, *sp_second));
    for (int round = 0; round < 2; ++round) {
        undo(document);
        EXPECT_EQ(mesh_of(document), sp_first);
        undo(document);
        EXPECT_FALSE(mesh_of(document));
        redo(document);
        ASSERT_TRUE(mesh_of(document));
        EXPECT_TRUE(same(*mesh_of(document), *sp_first));
        sp_first = mesh_of(document);
        redo(document);
        ASSERT_TRUE(mesh_of(document));
        EXPECT_TRUE(same(*mesh_of(document), *sp_second));
    }
}

TEST(TriangulateCommand, HoldsTheMeshOfBeforeOnlyWhileItIsDone)
{
    TerrainDocument& document = make_document(raster_of(50, 50, hills));
    const auto sp_first = run(document, 5);
    EXPECT_EQ(sp_first->undo_bytes(), 0u);
    const std::size_t bytes = mesh_of(document)->vertices.size() * sizeof(Mesh::Vertex)
        + mesh_of(document)->triangles.size() * 3 * sizeof(std::uint32_t);
    const auto sp_second = run(document, 2);
    EXPECT_EQ(sp_second->undo_bytes(), bytes);
    undo(document);
    EXPECT_EQ(sp_second->undo_bytes(), 0u);
    const auto sp_crop
        = boost::make_shared<terrain::CropCommand>(document.id(), terrain::CellRange{0, 9, 0, 9});
    insert(sp_crop);
    EXPECT_EQ(sp_crop->undo_bytes(), bytes + 2500 * sizeof(double));
}

TEST(TriangulateCommand, OtherCommandsTakeTheMeshAwayAndTheirUndoBringsItBack)
{
    TerrainDocument& document = make_document(raster_of(50, 40, hills));
    run(document, 2);
    const MeshPointer sp_mesh = mesh_of(document);
    insert(boost::make_shared<terrain::SmoothCommand>(document.id(), 2));
    EXPECT_FALSE(mesh_of(document));
    insert(boost::make_shared<terrain::CropCommand>(document.id(), terrain::CellRange{5, 30, 5, 30}));
    EXPECT_FALSE(mesh_of(document));
    run(document, 3);
    const MeshPointer sp_of_part = mesh_of(document);
    EXPECT_TRUE(sp_of_part);
    insert(boost::make_shared<terrain::CropCommand>(document.id(), terrain::CellRange{0, 10, 0, 10}));
    EXPECT_FALSE(mesh_of(document));
    undo(document);
    EXPECT_EQ(mesh_of(document), sp_of_part);
    undo(document);
    EXPECT_FALSE(mesh_of(document));
    undo(document);
    undo(document);
    EXPECT_EQ(mesh_of(document), sp_mesh);
    redo(document);
    EXPECT_FALSE(mesh_of(document));
    undo(document);
    EXPECT_EQ(mesh_of(document), sp_mesh);
}

TEST(TriangulateCommand, SoDoesACommandOfSeveralWhetherItEndsOrNot)
{
    TerrainDocument& document = make_document(mixed_raster(30, 30));
    run(document, 50);
    const MeshPointer sp_mesh = mesh_of(document);
    const auto sp_command = boost::make_shared<terrain::CleanUpCommand>(document.id());
    RecordingProgress progress;
    sp_command->setProgress(&progress);
    insert(sp_command);
    EXPECT_FALSE(mesh_of(document));
    undo(document);
    EXPECT_EQ(mesh_of(document), sp_mesh);
    const std::size_t reports = progress.percentages.size();
    for (std::size_t at = 1; at < reports; ++at) {
        std::size_t report = 0;
        progress.on_report = [&](unsigned int) {
            if (++report == at) {
                sp_command->request_cancel();
            }
        };
        redo(document);
        EXPECT_EQ(mesh_of(document), sp_mesh) << "cancelled at report " << at;
        undo(document);
        EXPECT_EQ(mesh_of(document), sp_mesh);
    }
}

TEST(TriangulateCommand, CancelledAtAnyReportItHasChangedNothing)
{
    TerrainDocument& document = make_document(raster_of(500, 400, hills));
    run(document, 90);
    const MeshPointer sp_before = mesh_of(document);
    const auto untouched = all_bits(document);
    RecordingProgress progress;
    const auto sp_command = boost::make_shared<TriangulateCommand>(document.id(), 4);
    sp_command->setProgress(&progress);
    insert(sp_command);
    const MeshPointer sp_after = mesh_of(document);
    EXPECT_EQ(progress.percentages.front(), 0u);
    EXPECT_EQ(progress.percentages.back(), 100u);
    EXPECT_TRUE(std::is_sorted(progress.percentages.begin(), progress.percentages.end()));
    undo(document);
    const std::size_t reports = progress.percentages.size();
    ASSERT_GT(reports, 5u);
    for (std::size_t at = 1; at < reports; ++at) {
        std::size_t report = 0;
        progress.on_report = [&](unsigned int) {
            if (++report == at) {
                sp_command->request_cancel();
            }
        };
        redo(document);
        ASSERT_EQ(mesh_of(document), sp_before) << "cancelled at report " << at;
        undo(document); // the history does not know that it was rolled back
        ASSERT_EQ(mesh_of(document), sp_before);
    }
    EXPECT_EQ(all_bits(document), untouched);
    progress.on_report = nullptr;
    redo(document);
    ASSERT_TRUE(mesh_of(document));
    EXPECT_TRUE(same(*mesh_of(document), *sp_after));
}
