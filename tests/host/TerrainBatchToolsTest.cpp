#include "BatchProcess.h"
#include "RasterFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace host_test;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

/// A raster of 5 x 5 cells with the heights 0 to 24.
std::string numbered_file()
{
    const std::string path = scratch("numbers.tif");
    std::vector<double> cells;
    for (int i = 0; i < 25; ++i) {
        cells.push_back(i);
    }
    make_tiff(path, 5, 5, GDT_Float32, cells);
    return path;
}

void expect_error(const std::string& script, const std::string& text)
{
    const BatchResult result = run_script(script, {numbered_file()});
    EXPECT_EQ(result.code, 1) << script;
    EXPECT_THAT(result.error, HasSubstr(text)) << script;
}

} // namespace

TEST(TerrainBatchTools, DabsRaiseAndLowerAndMerge)
{
    const BatchResult result = run_script(
        "raise 2.5 2.5 1.5 10\nraise 0.5 0.5 1.5 10\nlower 2.5 2.5 1 2\nundo 2\ninfo\n", {numbered_file()});
    EXPECT_EQ(result.code, 0) << result.error;
    EXPECT_THAT(lines_with(result.out, "DO>"),
        ElementsAre("DO>\tRaise: radius 1.5, height 10 metres; 1 stroke, 9 cells changed - Succeeded.",
            "DO>\tRaise: radius 1.5, height 10 metres; 1 stroke, 4 cells changed - Succeeded.",
            "DO>\tLower: radius 1, height 2 metres; 1 stroke, 1 cell changed - Succeeded."));
    EXPECT_THAT(lines_with(result.out, "UNDO>"),
        ElementsAre("UNDO>\tLower: radius 1, height 2 metres; 1 stroke, 1 cell changed - Succeeded.",
            "UNDO>\tRaise: radius 1.5, height 10 metres; 2 strokes, 12 cells changed - Succeeded."));
    EXPECT_THAT(result.out, HasSubstr("range: 0 to 24"));
    EXPECT_THAT(result.out, HasSubstr("mean: 12\n"));
}

TEST(TerrainBatchTools, PolygonsAreFlattened)
{
    const BatchResult result = run_script(
        "flatten 7.5 1 1 4 1 4 4 1 4\nundo\nflatten mean 0 0 5 0 5 5 0 5\ninfo\n", {numbered_file()});
    EXPECT_EQ(result.code, 0) << result.error;
    EXPECT_THAT(lines_with(result.out, "DO>"),
        ElementsAre("DO>\tFlatten: height 7.5 metres, 4 corners, 9 cells changed - Succeeded.",
            "DO>\tFlatten: mean height, 4 corners, 24 cells changed - Succeeded."));
    EXPECT_THAT(result.out, HasSubstr("range: 12 to 12"));
}

TEST(TerrainBatchTools, WhatMakesNoSenseIsTold)
{
    expect_error("raise 1 1 2\n", "too few");
    expect_error("raise 1 1 2 3 4\n", "too many");
    expect_error("raise a 1 2 3\n", "\"a\"");
    expect_error("raise 1 1 0.1 3\n", "The radius must be from 0.5 to 500 cells");
    expect_error("lower 1 1 2 0\n", "The height of the brush must be above 0");
    expect_error("flatten 5 1 1 4 1 4\n", "too few");
    expect_error("flatten 5 1 1 4 1 4 4 1\n", "the last corner has no row");
    expect_error("flatten median 1 1 4 1 4 4\n", "\"median\"");
    expect_error("flatten 5 1 1 2 2 3 3\n", "A polygon needs three corners that are not on a line");
    expect_error("flatten 5 11 11 12 11 12 12\n", "No cell lies in the polygon");
}
