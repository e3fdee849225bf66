#include "BatchProcess.h"
#include "RasterFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

using namespace host_test;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::MatchesRegex;

TEST(TerrainBatch, PrintsTheProtocolOfEachRun)
{
    make_tiff(scratch("a.tif"), 3, 3, GDT_Float32, {5, 5, 5, 5, 2, 5, 5, 5, 5});
    const BatchResult result
        = run_script("fill-sinks\nclamp 0 4\nscale 0.5\nsmooth 1\nundo\nredo\n", {scratch("a.tif")});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.error, "");
    EXPECT_THAT(lines_with(result.out, "DO>"),
        ElementsAre("DO>\tFill sinks: 1 cell changed - Succeeded.",
            "DO>\tClamp: 0 to 4, 9 cells changed - Succeeded.",
            "DO>\tScale: factor 0.5, 9 cells changed - Succeeded.",
            "DO>\tSmooth: radius 1, 0 cells changed - Succeeded.",
            "DO>\tSmooth: radius 1, 0 cells changed - Succeeded."));
    EXPECT_THAT(lines_with(result.out, "UNDO>"),
        ElementsAre("UNDO>\tSmooth: radius 1, 0 cells changed - Succeeded."));
}

TEST(TerrainBatch, PrintsTheChildrenOfACleanUp)
{
    make_tiff(scratch("a.tif"), 1, 1, GDT_Float32, {5});
    const BatchResult result = run_script("clean-up\n", {scratch("a.tif")});
    EXPECT_EQ(result.code, 0);
    EXPECT_THAT(result.out,
        HasSubstr("DO>\tClean up - Succeeded.\n"
                  "\t* Clamp: -11000 to 9000, 0 cells changed - Succeeded.\n"
                  "\t* Fill sinks: 0 cells changed - Succeeded.\n"
                  "\t* Smooth: radius 1, 0 cells changed - Succeeded.\n"));
}

TEST(TerrainBatch, UndoTwoGivesBackTheChecksumOfTheFile)
{
    const BatchResult result = run_script(
        "info\nsmooth 2\nfill-sinks\ninfo\nundo 2\ninfo\nredo 2\ninfo\n", {make_terrain_file("a.tif")});
    EXPECT_EQ(result.code, 0);
    const auto sums = lines_with(result.out, "checksum: ");
    ASSERT_EQ(sums.size(), 4u);
    EXPECT_THAT(sums[0], MatchesRegex("checksum: [0-9a-f]{64}"));
    EXPECT_NE(sums[0], sums[1]);
    EXPECT_EQ(sums[2], sums[0]) << "undone";
    EXPECT_EQ(sums[3], sums[1]) << "redone";
}

TEST(TerrainBatch, EveryInstructionUndoesExactly)
{
    const std::string file = make_terrain_file("a.tif");
    for (const char* instruction : {"smooth 3", "fill-sinks", "clamp 100 200", "scale 0.3", "clean-up",
             "crop 2 17 1 12", "resample 0.5", "resample 3 average", "resample 1.7 nearest"}) {
        const std::string line = instruction;
        const BatchResult result = run_script("info\n" + line + "\ninfo\nundo\ninfo\nredo\ninfo\n", {file});
        EXPECT_EQ(result.code, 0);
        const auto sums = lines_with(result.out, "checksum: ");
        ASSERT_EQ(sums.size(), 4u);
        EXPECT_NE(sums[0], sums[1]) << instruction;
        EXPECT_EQ(sums[2], sums[0]) << instruction;
        EXPECT_EQ(sums[3], sums[1]) << instruction;
    }
}

TEST(TerrainBatch, UndoOfMoreStepsThanThereAreUndoesThoseAndSaysSo)
{
    const BatchResult result
        = run_script("smooth 1\nscale 2\nundo 5\nredo 3\nundo 2\nundo\n", {make_terrain_file("a.tif")});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(lines_with(result.out, "UNDO>").size(), 4u);
    EXPECT_THAT(lines_with(result.out, "undone"), ElementsAre("undone 2 of 5", "undone 0 of 1"));
    EXPECT_THAT(lines_with(result.out, "redone"), ElementsAre("redone 2 of 3"));
}

TEST(TerrainBatch, CropAndResampleChangeTheSizeAndThePlace)
{
    std::vector<double> geotransform = {440000, 30, 0, 5400000, 0, -30};
    make_tiff(scratch("a.tif"), 4, 2, GDT_Int16, {1, 2, 3, 4, 5, 6, 7, 8},
        [&](GDALDatasetH dataset, GDALRasterBandH) {
            GDALSetGeoTransform(dataset, geotransform.data());
            GDALSetProjection(dataset, "EPSG:32632");
        });
    const std::string out = scratch("out.tif");
    const BatchResult result = run_script(
        "crop 1 3 0 1\ninfo\nresample 0.5 nearest\ninfo\nresample 2\ninfo\nresample 3 average\nexport \""
            + out + "\"\nundo 4\ninfo\nredo 4\ninfo\n",
        {scratch("a.tif")});
    EXPECT_EQ(result.code, 0) << result.error;
    const std::vector<std::string> done
        = {"Crop: columns 1 to 3, rows 0 to 1, 4 x 2 cells became 3 x 2 - Succeeded.",
            "Resample: factor 0.5, nearest, 3 x 2 cells became 6 x 4 - Succeeded.",
            "Resample: factor 2, bilinear, 6 x 4 cells became 3 x 2 - Succeeded.",
            "Resample: factor 3, average, 3 x 2 cells became 1 x 1 - Succeeded."};
    std::vector<std::string> lines = lines_with(result.out, "DO>");
    ASSERT_EQ(lines.size(), 8u);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(lines[i], "DO>\t" + done[i]);
        EXPECT_EQ(lines[i + 4], "DO>\t" + done[i]) << "redone";
    }
    EXPECT_THAT(lines_with(result.out, "size: "),
        ElementsAre("size: 3 x 2 cells", "size: 6 x 4 cells", "size: 3 x 2 cells", "size: 4 x 2 cells",
            "size: 1 x 1 cells"));
    EXPECT_THAT(lines_with(result.out, "cell size: "),
        ElementsAre("cell size: 30 x 30 metre", "cell size: 15 x 15 metre", "cell size: 30 x 30 metre",
            "cell size: 30 x 30 metre", "cell size: 90 x 90 metre"));
    const BatchResult exported = run_script("info\n", {out});
    EXPECT_THAT(exported.out, HasSubstr("size: 1 x 1 cells\ncell size: 90 x 90 metre\n"));
    EXPECT_THAT(exported.out, HasSubstr("mean: 5\n"));
}

TEST(TerrainBatch, ANewCommandForgetsWhatWasUndone)
{
    const BatchResult result = run_script("smooth 1\nundo\nscale 2\nredo\n", {make_terrain_file("a.tif")});
    EXPECT_EQ(result.code, 0);
    EXPECT_THAT(result.out, HasSubstr("redone 0 of 1\n"));
}

TEST(TerrainBatch, OpensTheFilesOfTheCommandLineFirstAndWorksOnTheLastOne)
{
    make_tiff(scratch("a.tif"), 1, 1, GDT_Float32, {1});
    make_tiff(scratch("b.tif"), 2, 1, GDT_Float32, {1, 2});
    make_tiff(scratch("c d.tif"), 3, 1, GDT_Float32, {1, 2, 3});
    const BatchResult result = run_script(
        "info\nopen \"" + scratch("c d.tif") + "\"\ninfo\n", {scratch("a.tif"), scratch("b.tif")});
    EXPECT_EQ(result.code, 0);
    EXPECT_THAT(lines_with(result.out, "name: "),
        ElementsAre("name: " + scratch("b.tif"), "name: " + scratch("c d.tif")));
    EXPECT_THAT(lines_with(result.out, "size: "), ElementsAre("size: 2 x 1 cells", "size: 3 x 1 cells"));
}

TEST(TerrainBatch, ReadsTheScriptFromTheStandardInput)
{
    BatchProcess batch;
    batch.start({"--batch", "-", make_terrain_file("a.tif")});
    batch.type("smooth 1\n");
    EXPECT_TRUE(batch.wait_for("DO>\tSmooth")) << "a line is carried out before the next one comes";
    batch.type("info"); // the last line may lack its end
    EXPECT_EQ(batch.finish(), 0);
    EXPECT_THAT(batch.out(), HasSubstr("checksum: "));
    EXPECT_EQ(batch.error(), "");
}

TEST(TerrainBatch, PassesOverBlankLinesCommentsAndForeignLineEnds)
{
    const BatchResult result
        = run_script("\r\n# a comment\r\n   \nsmooth 1 # and one more\r\n\t\n", {make_terrain_file("a.tif")});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(lines_with(result.out, "DO>").size(), 1u);
}

TEST(TerrainBatch, AnEmptyScriptIsFine)
{
    const BatchResult result = run_script("");
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.error, "");
}

TEST(TerrainBatch, InfoDescribesTheRaster)
{
    std::vector<double> geotransform = {440000, 30, 0, 5400000, 0, -20};
    make_tiff(
        scratch("a.tif"), 2, 2, GDT_Int16, {-7, 10, 12, -1}, [&](GDALDatasetH dataset, GDALRasterBandH band) {
            GDALSetGeoTransform(dataset, geotransform.data());
            GDALSetProjection(dataset, "EPSG:32632");
            GDALSetRasterNoDataValue(band, -1);
            GDALSetRasterUnitType(band, "ft");
        });
    const BatchResult result = run_script("info\n", {scratch("a.tif")});
    EXPECT_EQ(result.code, 0);
    EXPECT_THAT(result.out,
        HasSubstr("name: " + scratch("a.tif")
            + "\n"
              "size: 2 x 2 cells\n"
              "cell size: 30 x 20 metre\n"
              "reference system: WGS 84 / UTM zone 32N (EPSG:32632)\n"
              "data type: Int16\n"
              "unit: feet\n"
              "range: -7 to 12\n"
              "mean: 5\n"
              "no-data: 1 cells\n"
              "checksum: "));
}

TEST(TerrainBatch, ARasterOfOneCellGoesThroughEverything)
{
    make_tiff(scratch("a.tif"), 1, 1, GDT_Byte, {7});
    const BatchResult result = run_script("info\nsmooth 3\nfill-sinks\nclamp 0 9\nscale 1\ncrop 0 0 0 "
                                          "0\nresample 10\nclean-up\nundo 7\nredo 7\ninfo\nexport \""
            + scratch("out.tif") + "\"\n",
        {scratch("a.tif")});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.error, "");
    const auto sums = lines_with(result.out, "checksum: ");
    EXPECT_EQ(sums[0], sums[1]);
}

TEST(TerrainBatch, ARasterWithoutAnyDataGoesThroughEverything)
{
    make_tiff(scratch("a.tif"), 2, 2, GDT_Float32, {-1, -1, -1, -1},
        [](GDALDatasetH, GDALRasterBandH band) { GDALSetRasterNoDataValue(band, -1); });
    const BatchResult result = run_script("info\nsmooth 3\nfill-sinks\nclamp 0 9\nscale 2\ncrop 0 1 0 "
                                          "1\nclean-up\nundo 6\nredo 6\ninfo\nexport \""
            + scratch("out.tif") + "\"\n",
        {scratch("a.tif")});
    EXPECT_EQ(result.code, 0);
    EXPECT_EQ(result.error, "");
    EXPECT_THAT(result.out, HasSubstr("range: none, all cells are without data\n"));
    EXPECT_THAT(result.out, HasSubstr("mean: none, all cells are without data\n"));
    EXPECT_THAT(result.out, HasSubstr("no-data: 4 cells\n"));
    const auto sums = lines_with(result.out, "checksum: ");
    EXPECT_EQ(sums[0], sums[1]);
}

TEST(TerrainBatch, EverythingThatHappenedStandsInTheErrorLog)
{
    const std::string file = make_terrain_file("a.tif");
    const BatchResult result
        = run_script("smooth 1\nundo\nclean-up\nexport \"" + scratch("out.tif") + "\"\nnonsense\n", {file});
    EXPECT_EQ(result.code, 1);
    EXPECT_THAT(result.log, HasSubstr("************ ERROR LOG OPENED ************ \n\nSYSTEM INFROMATION\n"));
    EXPECT_THAT(result.log, HasSubstr("Tarq Terrain"));
    const std::vector<std::string> entries
        = {"Opened \"" + file + "\" (Tarq Terrain ", "DO>\tSmooth: radius 1, ", "UNDO>\tSmooth: radius 1, ",
            "DO>\tClean up - Succeeded.\n\t* Clamp: ", "Exported \"" + scratch("out.tif") + "\"",
            "script.batch:5: there is no instruction \"nonsense\"",
            "************** END OF ERROR LOG ***************\n"};
    std::size_t position = 0;
    for (const std::string& entry : entries) {
        position = result.log.find(entry, position);
        ASSERT_NE(position, std::string::npos) << entry << " in " << result.log;
    }
}

TEST(TerrainBatch, SaysAtTheEndWhereTheErrorLogIs)
{
    BatchProcess batch;
    batch.start({"--batch", "-"});
    EXPECT_EQ(batch.finish(), 0);
    EXPECT_EQ(batch.out(), "error log: " + batch.log_file() + "\n");
    EXPECT_TRUE(std::filesystem::exists(batch.log_file()));
}

TEST(TerrainBatch, RunsTheDemonstration)
{
    BatchProcess sample;
    sample.start(TARQ_TERRAIN_SAMPLE, {scratch("sample.tif"), "--size", "64"});
    ASSERT_EQ(sample.finish(), 0) << sample.error();

    BatchProcess batch;
    batch.process().setWorkingDirectory(QString::fromStdString(make_directory("work")));
    batch.start({"--batch", DEMO_SCRIPT, scratch("sample.tif")});
    EXPECT_EQ(batch.finish(), 0) << batch.error();
    const auto sums = lines_with(batch.out(), "checksum: ");
    ASSERT_EQ(sums.size(), 5u);
    EXPECT_EQ(sums[2], sums[0]);
    EXPECT_EQ(sums[3], sums[1]);
    EXPECT_THAT(names_in(scratch("work")), ElementsAre("demo-result.tif"));

    const BatchResult result = run_script("info\n", {scratch("work/demo-result.tif")});
    EXPECT_THAT(lines_with(result.out, "checksum: "), ElementsAre(sums[4]));
}

TEST(TerrainSample, WritesTheSameFileForASeed)
{
    for (const char* name : {"a.tif", "b.tif"}) {
        BatchProcess sample;
        sample.start(TARQ_TERRAIN_SAMPLE, {"--seed", "5", "--size", "40", scratch(name)});
        EXPECT_EQ(sample.finish(), 0) << sample.error();
    }
    EXPECT_EQ(read_text(scratch("a.tif")), read_text(scratch("b.tif")));
}

TEST(TerrainSample, RefusesWhatMakesNoSense)
{
    const std::vector<std::vector<std::string>> wrong = {{}, {"--size", "10"}, {"a.tif", "--size"},
        {"a.tif", "--size", "0"}, {"a.tif", "--size", "10x"}, {"a.tif", "--size", "999999"},
        {"a.tif", "b.tif"}, {"a.tif", "--seed", "-1"}, {"a.tif", "--what"}};
    for (const auto& arguments : wrong) {
        BatchProcess sample;
        sample.start(TARQ_TERRAIN_SAMPLE, arguments);
        EXPECT_EQ(sample.finish(), 2);
        EXPECT_THAT(sample.error(), HasSubstr("Usage: tarq-terrain-sample "));
    }
    BatchProcess sample;
    sample.start(TARQ_TERRAIN_SAMPLE, {scratch("missing/a.tif"), "--size", "4"});
    EXPECT_EQ(sample.finish(), 1);
    EXPECT_THAT(sample.error(), HasSubstr("there is no directory"));
}
