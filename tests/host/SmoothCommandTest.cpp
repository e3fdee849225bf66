#include "commands/SmoothCommand.h"
#include "CommandFixture.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "support/LogCapture.h"

#include <gtest/gtest.h>

#include <climits>

using namespace host_test;
using terrain::Raster;
using terrain::SmoothCommand;
using terrain::TerrainDocument;

namespace {

double window_mean(const Raster& raster, int column, int row, int radius)
{
    double sum = 0;
    int count = 0;
    for (int y = std::max(0, row - radius); y <= std::min(raster.rows - 1, row + radius); ++y) {
        for (int x = std::max(0, column - radius); x <= std::min(raster.columns - 1, column + radius); ++x) {
            if (!terrain::is_no_data(raster.cell(x, y))) {
                sum += raster.cell(x, y);
                ++count;
            }
        }
    }
    return sum / count;
}

void expect_window_means(const Raster& before, int radius)
{
    TerrainDocument& document = make_document(before);
    insert(boost::make_shared<SmoothCommand>(document.id(), radius));
    const Raster& after = document.terrain().raster();
    for (int row = 0; row < before.rows; ++row) {
        for (int column = 0; column < before.columns; ++column) {
            if (terrain::is_no_data(before.cell(column, row))) {
                EXPECT_TRUE(terrain::is_no_data(after.cell(column, row))) << column << ", " << row;
            } else {
                const double mean = window_mean(before, column, row, std::min(radius, 1000));
                EXPECT_NEAR(after.cell(column, row), mean, 1e-9) << column << ", " << row;
            }
        }
    }
}

} // namespace

TEST(SmoothCommand, GivesTheMeanOfTheWindow)
{
    TerrainDocument& document = make_document(make_raster(3, 3, {1, 2, 3, 4, 5, 6, 7, 8, 18}));
    insert(boost::make_shared<SmoothCommand>(document.id(), 1));
    EXPECT_EQ(document.terrain().raster().cells, (std::vector<double>{3, 3.5, 4, 4.5, 6, 7, 6, 8, 9.25}));
}

TEST(SmoothCommand, CellsWithoutDataStaySoAndCountForNothing)
{
    TerrainDocument& document = make_document(make_raster(3, 1, {2, N, 6}));
    insert(boost::make_shared<SmoothCommand>(document.id(), 2));
    EXPECT_EQ(bits(document), bits({4, N, 4}));
}

TEST(SmoothCommand, EqualsTheMeanOverAllCellsOfEachWindow)
{
    for (const int radius : {1, 2, 3, 5, 8, 16, 17, 22, 23, 40}) {
        SCOPED_TRACE(radius);
        expect_window_means(mixed_raster(23, 17), radius);
    }
    expect_window_means(mixed_raster(1, 30), 2);
    expect_window_means(mixed_raster(30, 1), 2);
}

TEST(SmoothCommand, AHugeRadiusIsTheWholeRaster)
{
    expect_window_means(mixed_raster(13, 9), INT_MAX);
}

TEST(SmoothCommand, AMountainBeyondTheWindowLeavesNoTrace)
{
    std::vector<double> cells(20, 0.25);
    cells[3] = 1e20;
    TerrainDocument& document = make_document(make_raster(10, 2, cells));
    insert(boost::make_shared<SmoothCommand>(document.id(), 1));
    for (int column = 5; column < 10; ++column) {
        EXPECT_EQ(document.terrain().raster().cell(column, 0), 0.25);
        EXPECT_EQ(document.terrain().raster().cell(column, 1), 0.25);
    }
}

TEST(SmoothCommand, OneCellStaysAsItIs)
{
    TerrainDocument& document = make_document(make_raster(1, 1, {7.5}));
    const auto sp_command = boost::make_shared<SmoothCommand>(document.id(), 3);
    insert(sp_command);
    EXPECT_EQ(document.terrain().raster().cells, std::vector<double>{7.5});
    EXPECT_EQ(sp_command->details().description(), "radius 3, 0 cells changed");
}

TEST(SmoothCommand, NothingButCellsWithoutDataStaysAsItIs)
{
    TerrainDocument& document = make_document(make_raster(2, 2, {N, N, N, N}));
    insert(boost::make_shared<SmoothCommand>(document.id(), 1));
    EXPECT_EQ(bits(document), bits({N, N, N, N}));
}

TEST(SmoothCommand, TellsRadiusAndChangedCells)
{
    TerrainDocument& document = make_document(make_raster(3, 1, {0, 3, 0}));
    const auto sp_command = boost::make_shared<SmoothCommand>(document.id(), 1);
    insert(sp_command);
    EXPECT_EQ(sp_command->name(), "Smooth");
    EXPECT_EQ(sp_command->details().description(), "radius 1, 3 cells changed");
}

TEST(SmoothCommand, FailsForARadiusBelowOne)
{
    support::LogCapture log;
    TerrainDocument& document = make_document(make_raster(2, 1, {1, 2}));
    const auto sp_command = boost::make_shared<SmoothCommand>(document.id(), 0);
    insert(sp_command);
    EXPECT_EQ(sp_command->failure(), "The radius must be at least 1");
    EXPECT_EQ(document.terrain().raster().cells, (std::vector<double>{1, 2}));
    EXPECT_TRUE(log.take("The radius must be at least 1"));
    log.take_all();
}

TEST(SmoothCommand, UndoRedoAndCancelGiveExactlyTheSameCells)
{
    expect_exact_history(mixed_raster(23, 17),
        [](const TerrainDocument& document) { return boost::make_shared<SmoothCommand>(document.id(), 2); });
}
