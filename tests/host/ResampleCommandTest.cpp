#include "commands/ResampleCommand.h"
#include "CommandFixture.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "io/RasterMemory.h"
#include "support/LogCapture.h"

#include <gtest/gtest.h>

#include <cfloat>

using namespace host_test;
using terrain::Raster;
using terrain::ResampleCommand;
using terrain::Resampling;
using terrain::TerrainDocument;

namespace {

const Resampling s_methods[] = {Resampling::Nearest, Resampling::Bilinear, Resampling::Average};

const Raster& raster_of(const TerrainDocument& document)
{
    return document.terrain().raster();
}

/// What a raster becomes.
Raster resampled(const Raster& raster, double factor, Resampling method)
{
    TerrainDocument& document = make_document(raster);
    const auto sp_command = boost::make_shared<ResampleCommand>(document.id(), factor, method);
    insert(sp_command);
    EXPECT_EQ(sp_command->failure(), "");
    return raster_of(document);
}

void expect_cells(const Raster& raster, int columns, int rows, const std::vector<double>& cells)
{
    EXPECT_EQ(raster.columns, columns);
    EXPECT_EQ(raster.rows, rows);
    EXPECT_EQ(bits(raster.cells), bits(cells));
}

std::string failure(const Raster& raster, double factor, Resampling method)
{
    support::LogCapture log;
    TerrainDocument& document = make_document(raster);
    const auto untouched = all_bits(document);
    const auto sp_command = boost::make_shared<ResampleCommand>(document.id(), factor, method);
    insert(sp_command);
    EXPECT_EQ(all_bits(document), untouched);
    undo(document);
    EXPECT_EQ(all_bits(document), untouched);
    EXPECT_TRUE(log.take(sp_command->failure()));
    log.take_all();
    return sp_command->failure();
}

} // namespace

// --- how many cells

TEST(ResampleCommand, TheCellsCoverAllOfTheRaster)
{
    EXPECT_EQ(ResampleCommand::resampled(10, 2), 5);
    EXPECT_EQ(ResampleCommand::resampled(11, 2), 6) << "the last one reaches beyond";
    EXPECT_EQ(ResampleCommand::resampled(10, 3), 4);
    EXPECT_EQ(ResampleCommand::resampled(10, 0.3), 34);
    EXPECT_EQ(ResampleCommand::resampled(1, 10), 1);
    EXPECT_EQ(ResampleCommand::resampled(3, 10), 1);
    EXPECT_EQ(ResampleCommand::resampled(7, 0.1), 70);
}

TEST(ResampleCommand, RoundingMakesNoCellOfItsOwn)
{
    EXPECT_EQ(ResampleCommand::resampled(7, 0.7), 10) << "7 / 0.7 is a little more than 10";
    for (int size = 1; size < 2000; ++size) {
        EXPECT_EQ(ResampleCommand::resampled(size, 0.1), size * 10LL);
        EXPECT_EQ(ResampleCommand::resampled(size, 1.0 / 3), size * 3LL);
        EXPECT_EQ(ResampleCommand::resampled(size * 3, 0.3), size * 10LL);
    }
}

// --- nearest

TEST(ResampleCommand, NearestTakesTheCellAtTheCentre)
{
    expect_cells(resampled(make_raster(3, 1, {1, 2, 3}), 3, Resampling::Nearest), 1, 1, {2});
    expect_cells(
        resampled(make_raster(2, 1, {1, 2}), 0.5, Resampling::Nearest), 4, 2, {1, 1, 2, 2, 1, 1, 2, 2});
    expect_cells(resampled(make_raster(4, 1, {1, 2, 3, 4}), 2, Resampling::Nearest), 2, 1, {2, 4});
}

TEST(ResampleCommand, NearestTakesTheOutermostCellsWhereACentreLiesBeyondThem)
{
    // The last cell begins at 10 of 11 columns, and its centre is at 15.
    std::vector<double> cells;
    for (int i = 0; i < 11; ++i) {
        cells.push_back(i);
    }
    expect_cells(resampled(make_raster(11, 1, cells), 10, Resampling::Nearest), 2, 1, {5, 10});
    expect_cells(resampled(make_raster(1, 11, cells), 10, Resampling::Nearest), 1, 2, {5, 10});
}

TEST(ResampleCommand, NearestKeepsTheBitsOfHeights)
{
    const Raster raster = mixed_raster(13, 9);
    const Raster finer = resampled(raster, 0.1, Resampling::Nearest);
    ASSERT_EQ(finer.columns, 130);
    ASSERT_EQ(finer.rows, 90);
    std::vector<double> expected;
    for (int row = 0; row < 90; ++row) {
        for (int column = 0; column < 130; ++column) {
            expected.push_back(raster.cell(column / 10, row / 10));
        }
    }
    EXPECT_EQ(bits(finer.cells), bits(expected));
    expect_cells(resampled(finer, 10, Resampling::Nearest), 13, 9, raster.cells);
}

TEST(ResampleCommand, NearestMakesNoFractionsOfIntegers)
{
    Raster raster = make_raster(3, 3, {1, -2, 3, 40, 5, 6, 7, 8, 32767});
    raster.data_type = "Int16";
    const Raster made = resampled(raster, 0.7, Resampling::Nearest);
    EXPECT_EQ(made.columns, 5);
    EXPECT_EQ(made.data_type, "Int16");
    for (const double cell : made.cells) {
        EXPECT_NE(std::find(raster.cells.begin(), raster.cells.end(), cell), raster.cells.end()) << cell;
    }
}

// --- bilinear

TEST(ResampleCommand, BilinearDrawsLinesBetweenCentres)
{
    expect_cells(resampled(make_raster(2, 1, {0, 10}), 0.5, Resampling::Bilinear), 4, 2,
        {0, 2.5, 7.5, 10, 0, 2.5, 7.5, 10});
    // Across and down.
    expect_cells(resampled(make_raster(2, 2, {0, 16, 32, 64}), 0.5, Resampling::Bilinear), 4, 4,
        {0, 4, 12, 16, 8, 13, 23, 28, 24, 31, 45, 52, 32, 40, 56, 64});
}

TEST(ResampleCommand, BilinearTakesTheMeanOfFourWhereACentreLiesBetweenThem)
{
    expect_cells(resampled(make_raster(2, 2, {1, 2, 3, 10}), 2, Resampling::Bilinear), 1, 1, {4});
}

TEST(ResampleCommand, BilinearTakesTheVeryHeightWhereCentresMeet)
{
    expect_cells(
        resampled(make_raster(3, 3, {9, 9, 9, 9, 0.1, 9, 9, 9, 9}), 3, Resampling::Bilinear), 1, 1, {0.1});
}

TEST(ResampleCommand, BilinearIsLevelBeyondTheOutermostCentres)
{
    expect_cells(
        resampled(make_raster(1, 1, {0.1}), 0.25, Resampling::Bilinear), 4, 4, std::vector<double>(16, 0.1));
    // 3 columns and a half of them: the last centre is at 5 of 5 columns.
    expect_cells(resampled(make_raster(5, 1, {1, 2, 3, 4, 5}), 3.5, Resampling::Bilinear), 2, 1, {2.25, 5});
}

TEST(ResampleCommand, BilinearOnASlopeGivesTheSlope)
{
    std::vector<double> cells;
    for (int row = 0; row < 30; ++row) {
        for (int column = 0; column < 40; ++column) {
            cells.push_back(3 * (column + 0.5) - 2 * (row + 0.5));
        }
    }
    const Raster slope = make_raster(40, 30, cells);
    for (const double factor : {0.1, 0.3, 0.9, 1.1, 1.7}) {
        const Raster made = resampled(slope, factor, Resampling::Bilinear);
        for (int row = 0; row < made.rows; ++row) {
            for (int column = 0; column < made.columns; ++column) {
                const double x = (column + 0.5) * factor;
                const double y = (row + 0.5) * factor;
                if (x > 0.5 && x < 39.5 && y > 0.5 && y < 29.5) {
                    ASSERT_NEAR(made.cell(column, row), 3 * x - 2 * y, 1e-9) << factor;
                }
            }
        }
    }
}

// --- average

TEST(ResampleCommand, AverageIsTheMeanOfTheCellsThatAreCovered)
{
    expect_cells(
        resampled(make_raster(4, 2, {1, 2, 5, 5, 3, 6, 5, 5}), 2, Resampling::Average), 2, 1, {3, 5});
}

TEST(ResampleCommand, AverageWeighsCellsByThePartThatIsCovered)
{
    // 0 to 1.5: the first cell and half of the second; 1.5 to 3: the rest.
    expect_cells(resampled(make_raster(3, 1, {6, 0, 3}), 1.5, Resampling::Average), 2, 1, {4, 2});
}

TEST(ResampleCommand, TheLastAverageIsOverWhatThereIsOfTheRaster)
{
    expect_cells(resampled(make_raster(3, 1, {1, 3, 7}), 2, Resampling::Average), 2, 1, {2, 7});
    expect_cells(resampled(make_raster(3, 3, {1, 3, 7, 1, 3, 8, 10, 20, 30}), 2, Resampling::Average), 2, 2,
        {2, 7.5, 15, 30});
    expect_cells(resampled(make_raster(1, 1, {0.1}), 10, Resampling::Average), 1, 1, {0.1});
}

TEST(ResampleCommand, LevelGroundStaysExactlyLevel)
{
    const std::vector<double> level(31 * 29, 0.1);
    for (const Resampling method : s_methods) {
        for (const double factor : {1.1, 2.0, 3.0, 3.3, 7.0, 10.0}) {
            for (const double cell : resampled(make_raster(31, 29, level), factor, method).cells) {
                ASSERT_EQ(cell, 0.1);
            }
        }
    }
}

// --- cells without data

TEST(ResampleCommand, MeansLeaveOutCellsWithoutData)
{
    expect_cells(resampled(make_raster(2, 2, {1, N, 4, N}), 2, Resampling::Average), 1, 1, {2.5});
    expect_cells(resampled(make_raster(2, 2, {1, N, 4, N}), 2, Resampling::Bilinear), 1, 1, {2.5});
    expect_cells(resampled(make_raster(2, 2, {N, N, N, 4}), 2, Resampling::Average), 1, 1, {4});
    expect_cells(resampled(make_raster(2, 2, {4, N, N, N}), 2, Resampling::Bilinear), 1, 1, {4});
}

TEST(ResampleCommand, GapsKeepTheirOutlinesInSmallerCells)
{
    for (const Resampling method : {Resampling::Nearest, Resampling::Bilinear}) {
        for (const double factor : {0.1, 0.25, 0.5}) {
            const Raster made = resampled(make_raster(3, 3, {1, 2, 3, 4, N, 6, 7, 8, 9}), factor, method);
            for (int row = 0; row < made.rows; ++row) {
                for (int column = 0; column < made.columns; ++column) {
                    const bool is_inside = static_cast<int>((column + 0.5) * factor) == 1
                        && static_cast<int>((row + 0.5) * factor) == 1;
                    ASSERT_EQ(terrain::is_no_data(made.cell(column, row)), is_inside)
                        << factor << ": " << column << ", " << row;
                }
            }
        }
    }
}

TEST(ResampleCommand, AtAGapBilinearGoesOnWithTheHeightBesideIt)
{
    expect_cells(resampled(make_raster(3, 1, {2, 4, N}), 0.5, Resampling::Bilinear), 6, 2,
        {2, 2.5, 3.5, 4, N, N, 2, 2.5, 3.5, 4, N, N});
}

TEST(ResampleCommand, WithoutAnyDataThereIsNoneAfterwards)
{
    for (const Resampling method : s_methods) {
        expect_cells(resampled(make_raster(2, 2, {N, N, N, N}), 1.5, method), 2, 2, {N, N, N, N});
        expect_cells(resampled(make_raster(1, 1, {N}), 10, method), 1, 1, {N});
    }
}

TEST(ResampleCommand, ASliverOfRoundingBringsNoData)
{
    // Cells of 0.3 and 0.7 and so on begin a little beside whole columns.
    for (const double factor : {1.1, 1.3, 1.7, 2.3, 2.9}) {
        std::vector<double> cells(300, N);
        std::fill(cells.begin(), cells.begin() + 100, 5.0);
        const Raster made = resampled(make_raster(300, 1, cells), factor, Resampling::Average);
        for (int column = 0; column < made.columns; ++column) {
            const bool reaches_data = column * factor < 100 - 1e-6;
            EXPECT_EQ(!terrain::is_no_data(made.cell(column, 0)), reaches_data) << factor << ", " << column;
        }
    }
}

// --- the place on the Earth

TEST(ResampleCommand, TheUpperLeftCornerStaysAndCellsGrow)
{
    Raster raster = make_raster(4, 4, std::vector<double>(16, 1));
    raster.geotransform = {440000, 30, 0, 5400000, 0, -20};
    EXPECT_EQ(*resampled(raster, 2, Resampling::Average).geotransform,
        (std::array<double, 6>{440000, 60, 0, 5400000, 0, -40}));
    EXPECT_EQ(*resampled(raster, 0.5, Resampling::Nearest).geotransform,
        (std::array<double, 6>{440000, 15, 0, 5400000, 0, -10}));
}

TEST(ResampleCommand, ARotatedRasterKeepsItsDirections)
{
    Raster raster = make_raster(4, 4, std::vector<double>(16, 1));
    raster.geotransform = {100, 3, -4, 200, 4, 3};
    EXPECT_EQ(*resampled(raster, 2, Resampling::Bilinear).geotransform,
        (std::array<double, 6>{100, 6, -8, 200, 8, 6}));
}

TEST(ResampleCommand, ARasterWithoutAPlaceOnTheEarthStaysWithout)
{
    EXPECT_FALSE(resampled(make_raster(2, 1, {1, 2}), 2, Resampling::Nearest).geotransform);
}

TEST(ResampleCommand, EverythingElseStays)
{
    Raster raster = make_raster(2, 1, {1, 2});
    raster.reference_system = "LOCAL_CS[\"here\"]";
    raster.area_or_point = "Point";
    raster.unit = "ft";
    raster.data_type = "Int16";
    raster.file_no_data = -1;
    TerrainDocument& document = make_document(raster);
    const std::string title = document.title();
    const auto source = document.datasource();
    insert(boost::make_shared<ResampleCommand>(document.id(), 2, Resampling::Average));
    EXPECT_EQ(raster_of(document).reference_system, raster.reference_system);
    EXPECT_EQ(raster_of(document).area_or_point, "Point");
    EXPECT_EQ(raster_of(document).unit, "ft");
    EXPECT_EQ(raster_of(document).data_type, "Int16");
    EXPECT_EQ(raster_of(document).file_no_data, -1);
    EXPECT_EQ(document.title(), title);
    EXPECT_EQ(document.datasource(), source);
}

// --- runs

TEST(ResampleCommand, TellsWhatItDid)
{
    TerrainDocument& document = make_document(mixed_raster(20, 15));
    const auto sp_command = boost::make_shared<ResampleCommand>(document.id(), 0.3, Resampling::Bilinear);
    insert(sp_command);
    EXPECT_EQ(sp_command->protocol("DO>", true),
        "DO>\tResample: factor 0.3, bilinear, 20 x 15 cells became 67 x 50 - Succeeded.\n");
}

TEST(ResampleCommand, AFactorOfOneChangesNothingAndHoldsNothing)
{
    for (const Resampling method : s_methods) {
        TerrainDocument& document = make_document(mixed_raster(9, 7));
        const auto untouched = all_bits(document);
        const auto sp_command = boost::make_shared<ResampleCommand>(document.id(), 1, method);
        insert(sp_command);
        EXPECT_EQ(sp_command->failure(), "");
        EXPECT_EQ(all_bits(document), untouched);
        EXPECT_EQ(sp_command->undo_bytes(), 0u);
        undo(document);
        EXPECT_EQ(all_bits(document), untouched);
    }
}

TEST(ResampleCommand, FactorsBeyondTheBoundsFail)
{
    const Raster raster = make_raster(2, 1, {1, 2});
    const double nothing = std::numeric_limits<double>::quiet_NaN();
    for (const double factor : {0.0999, 10.001, 0.0, -2.0, nothing, HUGE_VAL}) {
        EXPECT_EQ(failure(raster, factor, Resampling::Nearest), "The factor must be from 0.1 to 10");
    }
}

TEST(ResampleCommand, AveragesOfSmallerCellsFail)
{
    EXPECT_EQ(failure(make_raster(2, 1, {1, 2}), 0.9, Resampling::Average),
        "Averages are for larger cells: the factor must not be below 1");
}

TEST(ResampleCommand, AResultThatIsTooLargeFailsAtOnce)
{
    terrain::memory_limit(1e15); // whatever this machine has
    EXPECT_EQ(ResampleCommand::objection(2000, 1000, 0.1, Resampling::Nearest), "") << "200 million";
    EXPECT_EQ(ResampleCommand::objection(5000, 500, 0.1, Resampling::Nearest), "")
        << "just as many as can be";
    EXPECT_EQ(failure(make_raster(2501, 1000, std::vector<double>(2501000, 1)), 0.1, Resampling::Nearest),
        "The result would have 25010 x 10000 cells; more than 250 million are not possible");
    EXPECT_NE(ResampleCommand::objection(2147483647, 2147483647, 0.1, Resampling::Nearest), "");
    EXPECT_EQ(ResampleCommand::objection(30000, 30000, 1.1, Resampling::Nearest), "")
        << "what is there already can get smaller";
}

TEST(ResampleCommand, AResultThatTheMemoryHasNoRoomForFailsAtOnce)
{
    terrain::memory_limit(terrain::memory_needed(1000, 1000));
    EXPECT_EQ(ResampleCommand::objection(100, 100, 0.1, Resampling::Nearest), "");
    EXPECT_NE(failure(make_raster(101, 100, std::vector<double>(10100, 1)), 0.1, Resampling::Nearest)
                  .find("The result would have 1010 x 1000 cells and need 0.04"),
        std::string::npos);
    EXPECT_EQ(ResampleCommand::objection(2000, 2000, 1.1, Resampling::Nearest), "")
        << "what is there already can get smaller";
    terrain::memory_limit(0);
}

TEST(ResampleCommand, ARasterWithoutCellsHasNothingToResample)
{
    EXPECT_EQ(failure(Raster(), 2, Resampling::Nearest), "The raster has no cells");
}

TEST(ResampleCommand, DifferencesThatAreTooLargeForANumberFail)
{
    EXPECT_EQ(failure(make_raster(2, 1, {-DBL_MAX, DBL_MAX}), 2, Resampling::Average),
        "The result in column 0 and row 0 is too large for a number");
    expect_cells(resampled(make_raster(3, 1, {0, -DBL_MAX, DBL_MAX}), 3, Resampling::Average), 1, 1, {0});
}

TEST(ResampleCommand, UndoRedoAndCancelGiveExactlyTheSameRaster)
{
    Raster raster = mixed_raster(23, 17);
    raster.geotransform = {1e7 / 3, 0.1, -0.0, 47, 1e-9, -1.0 / 7};
    const std::vector<std::pair<double, Resampling>> ways
        = {{0.1, Resampling::Nearest}, {1.3, Resampling::Nearest}, {0.3, Resampling::Bilinear},
            {1.0 / 3, Resampling::Bilinear}, {2.5, Resampling::Bilinear}, {1.01, Resampling::Average},
            {4, Resampling::Average}, {10, Resampling::Average}};
    for (const auto& [factor, method] : ways) {
        SCOPED_TRACE(factor);
        expect_exact_history(raster, [way = std::make_pair(factor, method)](const TerrainDocument& document) {
            return boost::make_shared<ResampleCommand>(document.id(), way.first, way.second);
        });
    }
}

TEST(ResampleCommand, HoldsTheOldRasterOnlyWhileItIsDone)
{
    TerrainDocument& document = make_document(mixed_raster(40, 30));
    const auto sp_command = boost::make_shared<ResampleCommand>(document.id(), 2, Resampling::Average);
    insert(sp_command);
    EXPECT_EQ(sp_command->undo_bytes(), 1200 * sizeof(double));
    undo(document);
    EXPECT_EQ(sp_command->undo_bytes(), 0u);
}
