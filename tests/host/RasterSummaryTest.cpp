#include "documents/RasterSummary.h"
#include "CommandFixture.h"

#include <gtest/gtest.h>

#include <limits>

using namespace host_test;
using terrain::checksum;
using terrain::RasterSummary;

TEST(RasterSummary, GivesRangeMeanAndCounts)
{
    const RasterSummary summary({4, N, -2, 7, N});
    EXPECT_EQ(summary.valid, 3u);
    EXPECT_EQ(summary.without_data, 2u);
    EXPECT_EQ(summary.minimum, -2);
    EXPECT_EQ(summary.maximum, 7);
    EXPECT_DOUBLE_EQ(summary.mean, 3);
}

TEST(RasterSummary, WithoutDataOnlyTheCountsMeanSomething)
{
    const RasterSummary summary({N, N});
    EXPECT_EQ(summary.valid, 0u);
    EXPECT_EQ(summary.without_data, 2u);
}

TEST(RasterSummary, MeanOfHugeHeightsDoesNotOverflow)
{
    const double huge = std::numeric_limits<double>::max();
    EXPECT_DOUBLE_EQ(RasterSummary({huge, huge, huge}).mean, huge);
    EXPECT_EQ(RasterSummary({huge, -huge}).mean, 0);
}

TEST(RasterChecksum, IsTheSha256OfSizeAndCells)
{
    // printf '\1\0\0\0\0\0\0\0\2\0\0\0\0\0\0\0\0\0\0\0\0\0\360\77\0\0\0\0\0\0\370\177' | sha256sum
    EXPECT_EQ(checksum(make_raster(1, 2, {1, N})),
        "f9d225c7190df4c32eb55aae4cdc2970e2930ff0b725886656410e42ae63de66");
}

TEST(RasterChecksum, DependsOnEveryCellAndOnTheSize)
{
    const std::string original = checksum(make_raster(2, 2, {1, 2, 3, N}));
    EXPECT_EQ(original.size(), 64u);
    EXPECT_EQ(original, checksum(make_raster(2, 2, {1, 2, 3, N})));
    EXPECT_NE(original, checksum(make_raster(4, 1, {1, 2, 3, N})));
    EXPECT_NE(original, checksum(make_raster(1, 4, {1, 2, 3, N})));
    EXPECT_NE(original, checksum(make_raster(2, 2, {1, 2, std::nextafter(3, 4), N})));
    EXPECT_NE(original, checksum(make_raster(2, 2, {1, 2, N, 3})));
}

TEST(RasterChecksum, TellsTheTwoZerosApartButNoNans)
{
    EXPECT_NE(checksum(make_raster(1, 1, {0.0})), checksum(make_raster(1, 1, {-0.0})));
    EXPECT_EQ(checksum(make_raster(1, 1, {N})), checksum(make_raster(1, 1, {-N})));
    EXPECT_EQ(checksum(make_raster(1, 1, {N})), checksum(make_raster(1, 1, {std::nan("7")})));
}
