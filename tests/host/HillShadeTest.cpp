#include "views/HillShade.h"
#include "CommandFixture.h"
#include "HeightsOf.h"
#include "RasterFiles.h"
#include "documents/Raster.h"
#include "io/ReferenceSystem.h"
#include "views/Footprint.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <set>

using namespace host_test;
using terrain::Footprint;
using terrain::HillShade;
using terrain::Raster;

namespace {

QImage picture_of(const Raster& raster)
{
    return HillShade(raster, Footprint(raster)).picture();
}

std::set<QRgb> colours_of(const QImage& picture)
{
    std::set<QRgb> colours;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            colours.insert(picture.pixel(x, y));
        }
    }
    return colours;
}

/// A ridge from the south-west to the north-east: the same heights on both sides.
double ridge(int column, int row)
{
    return 100 - std::abs(column + row - 20);
}

} // namespace

TEST(HillShade, FlatGroundIsUniform)
{
    const Raster raster = raster_of(7, 5, [](int, int) { return 320.5; });
    const QImage picture = picture_of(raster);
    EXPECT_EQ(picture.size(), QSize(7, 5));
    ASSERT_EQ(colours_of(picture).size(), 1u);
    EXPECT_EQ(qAlpha(picture.pixel(3, 2)), 255);
}

TEST(HillShade, SlopesTowardsTheNorthWestAreLit)
{
    const QImage picture = picture_of(raster_of(21, 21, &ridge));
    const QRgb north_west = picture.pixel(7, 7);
    const QRgb south_east = picture.pixel(13, 13);
    ASSERT_EQ(ridge(7, 7), ridge(13, 13)) << "the same height, so the same colour without light";
    EXPECT_GT(qGray(north_west), qGray(south_east) + 60);
}

TEST(HillShade, HeightsHaveColours)
{
    // Two terraces, each level: what differs between them is the height alone.
    const QImage picture = picture_of(raster_of(20, 5, [](int column, int) { return column < 10 ? 0 : 50; }));
    EXPECT_NE(picture.pixel(3, 2), picture.pixel(16, 2));
    const QColor low(picture.pixel(3, 2));
    EXPECT_GT(low.green(), low.red()) << "lowlands are green";
    EXPECT_GT(qGray(picture.pixel(16, 2)), 230) << "the highest ground is nearly white";
}

TEST(HillShade, TheReliefShowsWhateverTheUnit)
{
    const QImage metres = picture_of(raster_of(21, 21, &ridge));
    const QImage thousandths
        = picture_of(raster_of(21, 21, [](int column, int row) { return ridge(column, row) / 1000; }));
    EXPECT_NEAR(qGray(metres.pixel(7, 7)), qGray(thousandths.pixel(7, 7)), 2);
    EXPECT_NEAR(qGray(metres.pixel(13, 13)), qGray(thousandths.pixel(13, 13)), 2);
}

TEST(HillShade, CellsWithoutDataAreTransparentAndNothingElse)
{
    Raster raster = raster_of(9, 9, &ridge);
    raster.cells[raster.index(0, 0)] = terrain::no_data;
    raster.cells[raster.index(4, 4)] = terrain::no_data;
    const QImage picture = picture_of(raster);
    for (int y = 0; y < 9; ++y) {
        for (int x = 0; x < 9; ++x) {
            const bool hole = (x == 0 && y == 0) || (x == 4 && y == 4);
            EXPECT_EQ(qAlpha(picture.pixel(x, y)), hole ? 0 : 255) << x << ", " << y;
        }
    }
}

TEST(HillShade, OneCellIsDrawn)
{
    const QImage picture = picture_of(make_raster(1, 1, {42}));
    EXPECT_EQ(picture.size(), QSize(1, 1));
    EXPECT_EQ(qAlpha(picture.pixel(0, 0)), 255);
}

TEST(HillShade, OneRowAndOneColumnAreShaded)
{
    const auto hill = [](int column, int row) { return 10 - std::abs(column + row - 10); };
    const QImage row = picture_of(raster_of(21, 1, hill));
    EXPECT_EQ(row.size(), QSize(21, 1));
    EXPECT_GT(qGray(row.pixel(5, 0)), qGray(row.pixel(15, 0))) << "the western slope is lit";
    const QImage column = picture_of(raster_of(1, 21, hill));
    EXPECT_EQ(column.size(), QSize(1, 21));
    EXPECT_GT(qGray(column.pixel(0, 5)), qGray(column.pixel(0, 15))) << "the northern slope is lit";
}

TEST(HillShade, ARasterWithoutAnyDataIsTransparent)
{
    const Raster raster = raster_of(4, 3, [](int, int) { return terrain::no_data; });
    const HillShade shade(raster, Footprint(raster));
    EXPECT_FALSE(shade.has_heights());
    EXPECT_EQ(colours_of(shade.picture()), std::set<QRgb>{0});
}

TEST(HillShade, AnEmptyRasterGivesNoPicture)
{
    const Raster raster;
    const HillShade shade(raster, Footprint(raster));
    EXPECT_TRUE(shade.picture().isNull());
    EXPECT_FALSE(shade.has_heights());
}

TEST(HillShade, HugeHeightsKeepTheirRelief)
{
    const double huge = std::numeric_limits<double>::max();
    const Raster raster
        = raster_of(21, 21, [huge](int column, int row) { return (ridge(column, row) - 90) / 10 * huge; });
    const HillShade shade(raster, Footprint(raster));
    EXPECT_EQ(shade.highest(), huge);
    EXPECT_EQ(shade.picture().pixel(7, 7), picture_of(raster_of(21, 21, &ridge)).pixel(7, 7));
}

TEST(HillShade, KnowsTheRangeOfTheHeights)
{
    const Raster raster = make_raster(3, 1, {-7, terrain::no_data, 12.5});
    const HillShade shade(raster, Footprint(raster));
    EXPECT_TRUE(shade.has_heights());
    EXPECT_EQ(shade.lowest(), -7);
    EXPECT_EQ(shade.highest(), 12.5);
    EXPECT_EQ(shade.cells_per_pixel(), 1);
}

TEST(HillShade, LargeRastersAreDrawnSmaller)
{
    const Raster raster = raster_of(4001, 10, [](int column, int) { return column; });
    const HillShade shade(raster, Footprint(raster));
    EXPECT_EQ(shade.cells_per_pixel(), 3);
    EXPECT_EQ(shade.picture().size(), QSize(1334, 4));
    EXPECT_EQ(shade.highest(), 4000) << "not the mean of the last pixel";
}

TEST(HillShade, APixelIsTransparentOnlyIfNoneOfItsCellsHoldsAHeight)
{
    Raster raster = raster_of(2001, 4, [](int, int) { return terrain::no_data; });
    raster.cells[raster.index(5, 1)] = 7;
    const QImage picture = picture_of(raster);
    EXPECT_EQ(qAlpha(picture.pixel(2, 0)), 255);
    EXPECT_EQ(qAlpha(picture.pixel(3, 0)), 0);
    EXPECT_EQ(qAlpha(picture.pixel(2, 1)), 0);
}

TEST(HillShade, NorthIsAtTheTopHoweverTheFileIsStored)
{
    Raster upright = raster_of(21, 21, [](int column, int row) { return 2 * column + row * row; });
    upright.geotransform = {0, 30, 0, 630, 0, -30};
    Raster turned
        = raster_of(21, 21, [&upright](int column, int row) { return upright.cell(20 - column, 20 - row); });
    turned.geotransform = {630, -30, 0, 0, 0, 30};
    EXPECT_EQ(picture_of(turned), picture_of(upright));
}

TEST(HillShade, LightThatIsMadeInPartsHasNoSeams)
{
    // So many columns that a part has few rows, and the same with one part for all.
    const auto hill = [](int column, int row) { return std::sin(column / 9.0) * std::cos(row / 2.0); };
    Raster wide = raster_of(20001, 23, hill);
    wide.cells[wide.index(77, 9)] = terrain::no_data;
    const terrain::Shading shading{-1, 1, 0.4};
    const auto light = light_on(wide, shading, QSizeF(1, 1));
    for (const int first : {0, 70, 19990}) {
        Raster part = raster_of(11, 23, [&](int column, int row) { return wide.cell(first + column, row); });
        const auto expected = light_on(part, shading, QSizeF(1, 1));
        for (int row = 0; row < part.rows; ++row) {
            for (int column = 1; column < part.columns - 1; ++column) {
                ASSERT_EQ(light[wide.index(first + column, row)], expected[part.index(column, row)])
                    << first + column << ", " << row;
            }
        }
    }
}

TEST(Footprint, CellsWithoutAPlaceAreSquare)
{
    const Footprint footprint(make_raster(2, 2, {1, 2, 3, 4}));
    EXPECT_EQ(footprint.cell_width, footprint.cell_height);
    EXPECT_FALSE(footprint.in_metres);
}

TEST(Footprint, ProjectedCellsHaveTheirSize)
{
    Raster raster = make_raster(1, 1, {1});
    raster.geotransform = {440000, 30, 0, 5400000, 0, -20};
    raster.reference_system = terrain::reference_system_from_epsg(32632);
    const Footprint footprint(raster);
    EXPECT_TRUE(footprint.in_metres);
    EXPECT_FALSE(footprint.angular);
    EXPECT_EQ(footprint.cell_width, 30);
    EXPECT_EQ(footprint.cell_height, 20);
    EXPECT_FALSE(footprint.columns_run_west);
    EXPECT_FALSE(footprint.rows_run_north);
}

TEST(Footprint, FeetBecomeMetres)
{
    Raster raster = make_raster(1, 1, {1});
    raster.geotransform = {0, 100, 0, 0, 0, -100};
    raster.reference_system = terrain::reference_system_from_epsg(2225); // US survey feet
    EXPECT_NEAR(Footprint(raster).cell_width, 30.48006, 1e-5);
}

TEST(Footprint, DegreesAreNarrowerInTheNorth)
{
    Raster raster = make_raster(1, 2, {1, 2});
    raster.geotransform = {6, 1.0 / 120, 0, 60 + 1.0 / 120, 0, -1.0 / 120}; // around 60 degrees
    raster.reference_system = terrain::reference_system_from_epsg(4326);
    const Footprint footprint(raster);
    EXPECT_TRUE(footprint.in_metres);
    EXPECT_TRUE(footprint.angular);
    EXPECT_NEAR(footprint.cell_height, 926.6, 0.1);
    EXPECT_NEAR(footprint.cell_width, footprint.cell_height / 2, 0.5);
}

TEST(Footprint, ABrokenPlaceIsNone)
{
    Raster raster = make_raster(1, 1, {1});
    for (const double wrong : {0.0, std::numeric_limits<double>::infinity(), terrain::no_data}) {
        raster.geotransform = {0, wrong, 0, 0, 0, -30};
        EXPECT_EQ(Footprint(raster).cell_width, 1) << wrong;
        EXPECT_EQ(Footprint(raster).cell_height, 1) << wrong;
    }
}
