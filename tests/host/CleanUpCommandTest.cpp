#include "commands/CleanUpCommand.h"
#include "CommandFixture.h"
#include "commands/RasterCommand.h"
#include "documents/RasterInformation.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "support/LogCapture.h"

#include <tarqa/housekeeping/DataSource.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

using namespace host_test;
using housekeeping::DataSource;
using terrain::CleanUpCommand;
using terrain::TerrainDocument;

namespace {

/// A terrain that all three children change, some cells more than once.
terrain::Raster wild_raster()
{
    terrain::Raster raster = mixed_raster(23, 17);
    for (std::size_t i = 0; i < raster.cells.size(); i += 5) {
        raster.cells[i] *= 100;
    }
    return raster;
}

void units(TerrainDocument& document, DataSource::Units units)
{
    document.datasource(boost::make_shared<DataSource>(
        std::string("file:///a.tif"), boost::make_shared<terrain::RasterInformation>()));
    document.datasource()->z_units(units);
}

} // namespace

TEST(CleanUpCommand, ClampsFillsAndSmooths)
{
    TerrainDocument& document = make_document(make_raster(3, 3, {9, 9, 9, 9, 0, 9, 9, 9, 99999}));
    const auto sp_command = boost::make_shared<CleanUpCommand>(document.id());
    insert(sp_command);
    const double corner = (3 * 9.0 + 9000) / 4;
    EXPECT_EQ(document.terrain().raster().cell(0, 0), 9);
    EXPECT_DOUBLE_EQ(document.terrain().raster().cell(2, 2), corner);
    EXPECT_EQ(sp_command->protocol("DO>", true),
        "DO>\tClean up - Succeeded.\n"
        "\t* Clamp: -11000 to 9000, 1 cell changed - Succeeded.\n"
        "\t* Fill sinks: 1 cell changed - Succeeded.\n"
        "\t* Smooth: radius 1, 4 cells changed - Succeeded.\n");
}

TEST(CleanUpCommand, IsOneStepInTheHistory)
{
    TerrainDocument& document = make_document(wild_raster());
    const auto untouched = bits(document);
    insert(boost::make_shared<CleanUpCommand>(document.id()));
    EXPECT_NE(bits(document), untouched);
    EXPECT_EQ(document.document_history().undoSize(), 1u);
    undo(document);
    EXPECT_EQ(bits(document), untouched);
}

TEST(CleanUpCommand, UndoRedoAndCancelGiveExactlyTheSameCells)
{
    expect_exact_history(wild_raster(),
        [](const TerrainDocument& document) { return boost::make_shared<CleanUpCommand>(document.id()); });
}

TEST(CleanUpCommand, CancelDuringTheLastChildRollsBackTheOthersToo)
{
    TerrainDocument& document = make_document(wild_raster());
    const auto untouched = bits(document);
    const auto sp_command = boost::make_shared<CleanUpCommand>(document.id());
    RecordingProgress progress;
    progress.on_report = [&](unsigned int percentage) {
        if (percentage >= 80) {
            EXPECT_TRUE(sp_command->commands()[0].second);
            EXPECT_TRUE(sp_command->commands()[1].second);
            sp_command->request_cancel();
        }
    };
    sp_command->setProgress(&progress);
    insert(sp_command);
    EXPECT_EQ(bits(document), untouched);
    EXPECT_LT(progress.percentages.back(), 100u);
}

TEST(CleanUpCommand, ReportsTheProgressOfTheWhole)
{
    TerrainDocument& document = make_document(wild_raster());
    const auto sp_command = boost::make_shared<CleanUpCommand>(document.id());
    RecordingProgress progress;
    sp_command->setProgress(&progress);
    insert(sp_command);
    EXPECT_EQ(progress.runs, (std::vector<std::string>{"open 0", "close"}));
    EXPECT_EQ(progress.percentages.front(), 0u);
    EXPECT_EQ(progress.percentages.back(), 100u);
    EXPECT_TRUE(std::is_sorted(progress.percentages.begin(), progress.percentages.end()));
    for (const unsigned int end_of_child : {33u, 66u}) {
        EXPECT_THAT(progress.percentages, testing::Contains(end_of_child));
    }
}

TEST(CleanUpCommand, BoundsAreInTheUnitOfTheHeights)
{
    TerrainDocument& document = make_document(make_raster(1, 1, {0}));
    EXPECT_EQ(terrain::possible_heights(document.id()), std::make_pair(-11000.0, 9000.0));
    const std::vector<std::pair<DataSource::Units, double>> metres
        = {{DataSource::Metres, 1}, {DataSource::Decimetres, 0.1}, {DataSource::Kilometres, 1000},
            {DataSource::Inches, 0.0254}, {DataSource::Feet, 0.3048}, {DataSource::Miles, 1609.344}};
    for (const auto& unit : metres) {
        units(document, unit.first);
        const auto heights = terrain::possible_heights(document.id());
        EXPECT_DOUBLE_EQ(heights.first * unit.second, -11000) << unit.first;
        EXPECT_DOUBLE_EQ(heights.second * unit.second, 9000) << unit.first;
    }
}

TEST(CleanUpCommand, LeavesTimesUnclamped)
{
    TerrainDocument& document = make_document(make_raster(1, 1, {99999}));
    units(document, DataSource::Milliseconds);
    const auto sp_command = boost::make_shared<CleanUpCommand>(document.id());
    EXPECT_EQ(sp_command->size(), 2u);
    insert(sp_command);
    EXPECT_EQ(document.terrain().raster().cells, std::vector<double>{99999});
}

TEST(CleanUpCommand, TellsTheFailureOfAChildThatWasPassedOver)
{
    support::LogCapture log;
    const double huge = 1.7e308;
    TerrainDocument& document = make_document(make_raster(4, 1, {huge, huge, huge, 1}));
    units(document, DataSource::Seconds); // so that nothing clamps the heights
    const auto sp_command = boost::make_shared<CleanUpCommand>(document.id());
    const auto untouched = bits(document);
    insert(sp_command);
    EXPECT_EQ(terrain::failure_of(*sp_command), "The result in column 0 and row 0 is too large for a number");
    EXPECT_EQ(bits(document), untouched);
    log.take_all();
}
