#include "commands/FlattenCommand.h"
#include "CommandFixture.h"
#include "HeightsOf.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "support/LogCapture.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace host_test;
using terrain::FlattenCommand;
using terrain::TerrainDocument;

namespace {

const FlattenCommand::Polygon s_square = {{1, 1}, {4, 1}, {4, 4}, {1, 4}};

terrain::Raster numbered(int columns, int rows)
{
    return raster_of(columns, rows, [columns](int column, int row) { return 1.0 * row * columns + column; });
}

boost::shared_ptr<FlattenCommand> flatten(const TerrainDocument& document,
    const FlattenCommand::Polygon& polygon, const std::optional<double>& height = {})
{
    return boost::make_shared<FlattenCommand>(document.id(), polygon, height);
}

/// Which cells a command gives the height 777.
std::vector<std::string> flattened(int columns, int rows, const FlattenCommand::Polygon& polygon)
{
    TerrainDocument& document = make_document(numbered(columns, rows));
    insert(flatten(document, polygon, 777));
    std::vector<std::string> lines;
    for (int row = 0; row < rows; ++row) {
        lines.emplace_back();
        for (int column = 0; column < columns; ++column) {
            lines.back() += document.terrain().raster().cell(column, row) == 777 ? '#' : '.';
        }
    }
    return lines;
}

void expect_failure(const FlattenCommand::Polygon& polygon, double height, const std::string& failure,
    const terrain::Raster& raster = numbered(5, 5))
{
    support::LogCapture log;
    TerrainDocument& document = make_document(raster);
    const auto untouched = bits(document);
    const auto sp_command = flatten(document, polygon, height);
    insert(sp_command);
    EXPECT_EQ(sp_command->failure(), failure);
    EXPECT_EQ(bits(document), untouched);
    undo(document);
    EXPECT_EQ(bits(document), untouched);
    EXPECT_TRUE(log.take(failure));
    log.take_all();
}

} // namespace

TEST(FlattenCommand, GivesTheCellsWhoseCentresAreInsideOneHeight)
{
    EXPECT_EQ(
        flattened(5, 5, s_square), (std::vector<std::string>{".....", ".###.", ".###.", ".###.", "....."}));
    EXPECT_EQ(flattened(5, 5, {{1.6, 1.4}, {3.6, 1.4}, {3.6, 3.4}, {1.6, 3.4}}),
        (std::vector<std::string>{".....", "..##.", "..##.", ".....", "....."}));
    EXPECT_EQ(flattened(5, 3, {{-9, -9}, {20, -9}, {20, 20}, {-9, 20}}),
        (std::vector<std::string>{"#####", "#####", "#####"}));
}

TEST(FlattenCommand, ALinePassingThroughCentresCountsOnOneSideOnly)
{
    // Two squares with a common side through centres share no cell, and leave none out.
    const auto left = flattened(6, 4, {{0, 0}, {2.5, 0}, {2.5, 4}, {0, 4}});
    const auto right = flattened(6, 4, {{2.5, 0}, {6, 0}, {6, 4}, {2.5, 4}});
    for (std::size_t row = 0; row < 4; ++row) {
        for (std::size_t column = 0; column < 6; ++column) {
            EXPECT_NE(left[row][column], right[row][column]);
        }
    }
}

TEST(FlattenCommand, LeavesOutWhatAPolygonGoesRoundTwice)
{
    const FlattenCommand::Polygon twice
        = {{0, 0}, {7, 0}, {7, 7}, {0, 7}, {0, 0}, {2, 2}, {5, 2}, {5, 5}, {2, 5}, {2, 2}};
    EXPECT_EQ(flattened(7, 7, twice),
        (std::vector<std::string>{
            "#######", "#######", "##...##", "##...##", "##...##", "#######", "#######"}));
    EXPECT_EQ(flattened(6, 3, {{0, 0}, {6, 3}, {6, 0}, {0, 3}}),
        (std::vector<std::string>{"#....#", "######", "#....#"}));
}

TEST(FlattenCommand, TakesTheMeanWithoutAHeight)
{
    terrain::Raster raster = numbered(5, 5);
    raster.cells[12] = N; // in the middle
    EXPECT_EQ(FlattenCommand::mean_inside(raster, s_square), 12);
    TerrainDocument& document = make_document(raster);
    const auto sp_command = flatten(document, s_square);
    insert(sp_command);
    EXPECT_EQ(document.terrain().raster().cell(1, 1), 12);
    EXPECT_TRUE(terrain::is_no_data(document.terrain().raster().cell(2, 2)));
    EXPECT_EQ(sp_command->details().description(), "mean height, 4 corners, 8 cells changed");
}

TEST(FlattenCommand, TellsTheHeight)
{
    TerrainDocument& document = make_document(numbered(5, 5));
    const auto sp_command = flatten(document, s_square, -2.5);
    insert(sp_command);
    EXPECT_EQ(sp_command->name(), "Flatten");
    EXPECT_EQ(sp_command->details().description(), "height -2.5, 4 corners, 9 cells changed");
}

TEST(FlattenCommand, MeanOfHugeHeightsDoesNotOverflow)
{
    const terrain::Raster raster = raster_of(5, 5, [](int, int) { return 1.5e308; });
    const auto mean = FlattenCommand::mean_inside(raster, s_square);
    ASSERT_TRUE(mean);
    EXPECT_DOUBLE_EQ(*mean, 1.5e308);
}

TEST(FlattenCommand, FailsWithoutAnInside)
{
    const double not_a_number = std::numeric_limits<double>::quiet_NaN();
    const std::string on_a_line = "A polygon needs three corners that are not on a line";
    expect_failure({}, 1, on_a_line);
    expect_failure({{1, 1}}, 1, on_a_line);
    expect_failure({{1, 1}, {3, 3}, {1, 1}}, 1, on_a_line);
    expect_failure({{1, 1}, {2, 2}, {4, 4}}, 1, on_a_line);
    expect_failure({{1, 1}, {4, 1}, {not_a_number, 4}}, 1, "A corner of the polygon is not a number");
    expect_failure({{1, 1}, {4, 1}, {4, HUGE_VAL}}, 1, "A corner of the polygon is not a number");
    expect_failure(s_square, not_a_number, "The height is not a number");
    expect_failure({{10, 10}, {14, 10}, {14, 14}}, 1, "No cell lies in the polygon");
    expect_failure({{1, 1}, {1.2, 1}, {1.2, 1.2}}, 1, "No cell lies in the polygon");
    expect_failure(
        s_square, 1, "No cell with data lies in the polygon", raster_of(5, 5, [](int, int) { return N; }));
    expect_failure(s_square, 1, "No cell lies in the polygon", make_raster(0, 0, {}));
}

TEST(FlattenCommand, MeanOfNothingIsNothing)
{
    EXPECT_FALSE(FlattenCommand::mean_inside(numbered(5, 5), {{1, 1}, {2, 2}}));
    EXPECT_FALSE(FlattenCommand::mean_inside(numbered(5, 5), {{10, 10}, {14, 10}, {14, 14}}));
    EXPECT_FALSE(FlattenCommand::mean_inside(make_raster(0, 0, {}), s_square));
}

TEST(FlattenCommand, UndoRedoAndCancelGiveExactlyTheSameCells)
{
    const FlattenCommand::Polygon star = {{2, 2}, {25, 10}, {3, 18}, {15, -4}, {20, 30}};
    expect_exact_history(
        mixed_raster(33, 27), [&](const TerrainDocument& document) { return flatten(document, star, 12.5); });
    expect_exact_history(
        mixed_raster(33, 27), [&](const TerrainDocument& document) { return flatten(document, star); });
}

TEST(FlattenCommand, CornersFarAwayAreNoHarm)
{
    EXPECT_EQ(flattened(3, 2, {{-1e300, -1e300}, {1e300, -1e300}, {1e300, 1e300}, {-1e300, 1e300}}),
        (std::vector<std::string>{"###", "###"}));
}
