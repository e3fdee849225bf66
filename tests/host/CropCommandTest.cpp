#include "commands/CropCommand.h"
#include "CommandFixture.h"
#include "documents/TerrainDocument.h"
#include "documents/TerrainModel.h"
#include "support/LogCapture.h"

#include <gtest/gtest.h>

using namespace host_test;
using terrain::CellRange;
using terrain::CropCommand;
using terrain::Raster;
using terrain::TerrainDocument;

namespace {

const Raster& raster_of(const TerrainDocument& document)
{
    return document.terrain().raster();
}

/// 4 columns and 3 rows; a cell's height is 10 * row + column.
Raster counted_raster()
{
    return make_raster(4, 3, {0, 1, 2, 3, 10, 11, 12, 13, 20, 21, 22, 23});
}

boost::shared_ptr<CropCommand> crop(const TerrainDocument& document, const CellRange& range)
{
    auto sp_command = boost::make_shared<CropCommand>(document.id(), range);
    insert(sp_command);
    return sp_command;
}

/// Where a corner of a cell lies on the Earth.
std::pair<double, double> place(const Raster& raster, int column, int row)
{
    const std::array<double, 6>& g = *raster.geotransform;
    return {g[0] + column * g[1] + row * g[2], g[3] + column * g[4] + row * g[5]};
}

bool same(const std::optional<CellRange>& one, const CellRange& other)
{
    return one && one->first_column == other.first_column && one->last_column == other.last_column
        && one->first_row == other.first_row && one->last_row == other.last_row;
}

} // namespace

TEST(CropCommand, KeepsTheRangeWithItsLastColumnAndRow)
{
    TerrainDocument& document = make_document(counted_raster());
    const auto sp_command = crop(document, {1, 2, 1, 2});
    EXPECT_EQ(raster_of(document).columns, 2);
    EXPECT_EQ(raster_of(document).rows, 2);
    EXPECT_EQ(raster_of(document).cells, (std::vector<double>{11, 12, 21, 22}));
    EXPECT_EQ(sp_command->protocol("DO>", true),
        "DO>\tCrop: columns 1 to 2, rows 1 to 2, 4 x 3 cells became 2 x 2 - Succeeded.\n");
}

TEST(CropCommand, KeepsOneCellOfManyAndOneOfOne)
{
    TerrainDocument& document = make_document(counted_raster());
    crop(document, {3, 3, 2, 2});
    EXPECT_EQ(raster_of(document).cells, (std::vector<double>{23}));
    const auto sp_command = crop(document, {0, 0, 0, 0});
    EXPECT_EQ(raster_of(document).cells, (std::vector<double>{23}));
    EXPECT_EQ(sp_command->details().description(), "columns 0 to 0, rows 0 to 0, nothing changed");
}

TEST(CropCommand, KeepsOneColumnOrOneRow)
{
    TerrainDocument& column = make_document(counted_raster());
    crop(column, {2, 2, 0, 2});
    EXPECT_EQ(raster_of(column).cells, (std::vector<double>{2, 12, 22}));
    TerrainDocument& row = make_document(counted_raster());
    crop(row, {0, 3, 1, 1});
    EXPECT_EQ(raster_of(row).cells, (std::vector<double>{10, 11, 12, 13}));
}

TEST(CropCommand, TheWholeRangeChangesNothingAndHoldsNothing)
{
    TerrainDocument& document = make_document(mixed_raster(9, 7));
    const auto untouched = all_bits(document);
    const auto sp_command = crop(document, {0, 8, 0, 6});
    EXPECT_EQ(sp_command->failure(), "");
    EXPECT_EQ(all_bits(document), untouched);
    EXPECT_EQ(sp_command->undo_bytes(), 0u);
    EXPECT_EQ(sp_command->details().description(), "columns 0 to 8, rows 0 to 6, nothing changed");
    undo(document);
    EXPECT_EQ(all_bits(document), untouched);
    redo(document);
    EXPECT_EQ(all_bits(document), untouched);
}

TEST(CropCommand, ReversedAndOutlyingRangesFailAndChangeNothing)
{
    const std::vector<std::pair<CellRange, std::string>> bad = {
        {{2, 1, 0, 2}, "The first column is behind the last one"},
        {{0, 3, 2, 1}, "The first row is behind the last one"},
        {{0, 4, 0, 2}, "The raster has the columns 0 to 3"},
        {{-1, 3, 0, 2}, "The raster has the columns 0 to 3"},
        {{0, 3, 0, 3}, "The raster has the rows 0 to 2"},
        {{0, 3, -1, 2}, "The raster has the rows 0 to 2"},
        {{4, 4, 0, 0}, "The raster has the columns 0 to 3"},
        {{-2147483647, 2147483647, 0, 2}, "The raster has the columns 0 to 3"},
    };
    support::LogCapture log;
    TerrainDocument& document = make_document(counted_raster());
    const auto untouched = all_bits(document);
    for (const auto& [range, reason] : bad) {
        const auto sp_command = crop(document, range);
        EXPECT_EQ(sp_command->failure(), reason);
        EXPECT_EQ(all_bits(document), untouched);
        undo(document); // it is in the history all the same
        EXPECT_EQ(all_bits(document), untouched);
        EXPECT_TRUE(log.take(reason));
        log.take_all();
    }
}

TEST(CropCommand, ARasterWithoutCellsHasNothingToKeep)
{
    support::LogCapture log;
    TerrainDocument& document = make_document(Raster());
    EXPECT_EQ(crop(document, {0, 0, 0, 0})->failure(), "The raster has no cells");
    log.take_all();
}

TEST(CropCommand, WhatIsKeptStaysWhereItIsOnTheEarth)
{
    Raster raster = counted_raster();
    raster.geotransform = {440000, 30, 0, 5400000, 0, -20};
    TerrainDocument& document = make_document(raster);
    crop(document, {1, 3, 2, 2});
    EXPECT_EQ(*raster_of(document).geotransform, (std::array<double, 6>{440030, 30, 0, 5399960, 0, -20}));
}

TEST(CropCommand, SoItDoesInARotatedRaster)
{
    Raster raster = counted_raster();
    raster.geotransform = {100, 3, -4, 200, 4, 3};
    TerrainDocument& document = make_document(raster);
    crop(document, {1, 2, 2, 2});
    EXPECT_EQ(*raster_of(document).geotransform, (std::array<double, 6>{95, 3, -4, 210, 4, 3}));
    EXPECT_EQ(place(raster_of(document), 1, 0), place(raster, 2, 2));
}

TEST(CropCommand, ARasterWithoutAPlaceOnTheEarthStaysWithout)
{
    TerrainDocument& document = make_document(counted_raster());
    crop(document, {1, 2, 1, 2});
    EXPECT_FALSE(raster_of(document).geotransform);
}

TEST(CropCommand, EverythingElseStays)
{
    Raster raster = counted_raster();
    raster.reference_system = "LOCAL_CS[\"here\"]";
    raster.area_or_point = "Point";
    raster.unit = "ft";
    raster.data_type = "Int16";
    raster.file_no_data = -1;
    TerrainDocument& document = make_document(raster);
    const std::string title = document.title();
    const auto source = document.datasource();
    crop(document, {1, 2, 1, 2});
    EXPECT_EQ(raster_of(document).reference_system, raster.reference_system);
    EXPECT_EQ(raster_of(document).area_or_point, "Point");
    EXPECT_EQ(raster_of(document).unit, "ft");
    EXPECT_EQ(raster_of(document).data_type, "Int16");
    EXPECT_EQ(raster_of(document).file_no_data, -1);
    EXPECT_EQ(document.title(), title);
    EXPECT_EQ(document.datasource(), source);
}

TEST(CropCommand, CellsKeepTheirBits)
{
    const Raster raster = mixed_raster(11, 8);
    TerrainDocument& document = make_document(raster);
    crop(document, {2, 9, 1, 6});
    std::vector<double> expected;
    for (int row = 1; row <= 6; ++row) {
        for (int column = 2; column <= 9; ++column) {
            expected.push_back(raster.cell(column, row));
        }
    }
    EXPECT_EQ(bits(document), bits(expected));
}

TEST(CropCommand, UndoRedoAndCancelGiveExactlyTheSameRaster)
{
    Raster raster = mixed_raster(23, 17);
    raster.geotransform = {1e7 / 3, 0.1, -0.0, 47, 1e-9, -1.0 / 7};
    expect_exact_history(raster, [](const TerrainDocument& document) {
        return boost::make_shared<CropCommand>(document.id(), CellRange{3, 20, 2, 16});
    });
}

TEST(CropCommand, ACropToOneCellCanBeCancelledToo)
{
    expect_exact_history(mixed_raster(5, 5), [](const TerrainDocument& document) {
        return boost::make_shared<CropCommand>(document.id(), CellRange{4, 4, 0, 0});
    });
}

TEST(CropCommand, HoldsTheOldRasterOnlyWhileItIsDone)
{
    TerrainDocument& document = make_document(mixed_raster(40, 30));
    const auto sp_command = crop(document, {0, 9, 0, 9});
    EXPECT_EQ(sp_command->undo_bytes(), 1200 * sizeof(double));
    undo(document);
    EXPECT_EQ(sp_command->undo_bytes(), 0u);
    redo(document);
    EXPECT_EQ(sp_command->undo_bytes(), 1200 * sizeof(double));
}

TEST(CropCommand, CropsInARowAreUndoneOneByOne)
{
    TerrainDocument& document = make_document(mixed_raster(9, 9));
    const auto first = all_bits(document);
    crop(document, {1, 8, 1, 8});
    const auto second = all_bits(document);
    crop(document, {1, 3, 1, 4});
    EXPECT_EQ(document.document_history().undoSize(), 2u);
    undo(document);
    EXPECT_EQ(all_bits(document), second);
    undo(document);
    EXPECT_EQ(all_bits(document), first);
}

// The range of the data

TEST(CellRange, OfTheDataLeavesOutTheBorderWithout)
{
    EXPECT_TRUE(same(range_of_data(make_raster(4, 3, {N, N, N, N, N, 5, N, 6, N, N, N, N})), {1, 3, 1, 1}));
    EXPECT_TRUE(same(range_of_data(make_raster(3, 3, {N, 1, N, 2, N, N, N, N, 3})), {0, 2, 0, 2}))
        << "each side has its cell";
    EXPECT_TRUE(same(range_of_data(make_raster(3, 1, {N, N, -0.0})), {2, 2, 0, 0}));
}

TEST(CellRange, OfTheDataOfAFullRasterIsAllOfIt)
{
    EXPECT_TRUE(same(range_of_data(counted_raster()), {0, 3, 0, 2}));
    EXPECT_TRUE(same(range_of_data(make_raster(1, 1, {7})), {0, 0, 0, 0}));
}

TEST(CellRange, WithoutAnyDataThereIsNone)
{
    EXPECT_FALSE(range_of_data(make_raster(2, 2, {N, N, N, N})));
    EXPECT_FALSE(range_of_data(Raster()));
}
