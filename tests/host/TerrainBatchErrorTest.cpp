#include "BatchProcess.h"
#include "BusyHook.h"
#include "RasterFiles.h"
#include "batch/Batch.h"
#include "support/LogCapture.h"

#include <tarqa/housekeeping/ErrorHandler.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

using namespace host_test;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

std::string script_position(int line)
{
    return scratch("script.batch") + ":" + std::to_string(line) + ": ";
}

/// One line, with the position of the script's line in front.
void expect_one_line(const std::string& error, int line, const std::string& text)
{
    EXPECT_THAT(error, StartsWith(script_position(line)));
    EXPECT_THAT(error, HasSubstr(text));
    EXPECT_EQ(std::count(error.begin(), error.end(), '\n'), 1) << error;
}

} // namespace

TEST(TerrainBatch, HelpIsPrintedOnTheStandardOutput)
{
    BatchProcess batch;
    batch.start({"--help"});
    EXPECT_EQ(batch.finish(), 0);
    EXPECT_THAT(batch.out(), StartsWith("Usage: tarq-terrain [FILE...]\n"));
    EXPECT_EQ(batch.error(), "");
    EXPECT_EQ(batch.log(), "") << "asking for help leaves no log behind";
}

TEST(TerrainBatch, VersionIsPrintedOnTheStandardOutput)
{
    BatchProcess batch;
    batch.start({"--version"});
    EXPECT_EQ(batch.finish(), 0);
    EXPECT_THAT(batch.out(), testing::MatchesRegex("Tarq Terrain [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

TEST(TerrainBatch, WrongUsageIsTwo)
{
    const std::vector<std::vector<std::string>> wrong
        = {{"--batch"}, {"--tour"}, {"--what"}, {"--help", "x"}, {"script", "--batch"}};
    for (const auto& arguments : wrong) {
        BatchProcess batch;
        batch.start(arguments);
        EXPECT_EQ(batch.finish(), 2);
        EXPECT_EQ(batch.out(), "");
        EXPECT_THAT(batch.error(), StartsWith("Usage: tarq-terrain "));
    }
}

TEST(TerrainBatch, ABadLineIsReportedWithItsNumber)
{
    const std::string file = make_terrain_file("a.tif");
    const std::vector<std::pair<std::string, std::string>> bad = {
        {"nonsense", "there is no instruction \"nonsense\""},
        {"Smooth 2", "there is no instruction \"Smooth\""},
        {"smooth", "\"smooth\" has too few arguments"},
        {"smooth 2 3", "\"smooth\" has too many arguments"},
        {"smooth x", "\"x\" is not a whole number from 1 on"},
        {"smooth 0", "\"0\" is not a whole number from 1 on"},
        {"smooth 1.5", "\"1.5\" is not a whole number from 1 on"},
        {"fill-sinks 1", "\"fill-sinks\" has too many arguments"},
        {"clamp 1", "\"clamp\" has too few arguments"},
        {"clamp 1 2m", "\"2m\" is not a number"},
        {"clamp nan 2", "\"nan\" is not a number"},
        {"scale inf", "\"inf\" is not a number"},
        {"scale 1,5", "\"1,5\" is not a number"},
        {"crop 0 1 0", "\"crop\" has too few arguments"},
        {"crop 0 1 0 1 0", "\"crop\" has too many arguments"},
        {"crop -1 1 0 1", "\"-1\" is not a whole number from 0 on"},
        {"crop 0 1.0 0 1", "\"1.0\" is not a whole number from 0 on"},
        {"resample", "\"resample\" has too few arguments"},
        {"resample 2 bilinear twice", "\"resample\" has too many arguments"},
        {"resample x", "\"x\" is not a number"},
        {"resample 2 cubic", "\"cubic\" is not \"nearest\", \"bilinear\" or \"average\""},
        {"clean-up now", "\"clean-up\" has too many arguments"},
        {"undo 0", "\"0\" is not a whole number from 1 on"},
        {"undo -1", "\"-1\" is not a whole number from 1 on"},
        {"redo 1 2", "\"redo\" has too many arguments"},
        {"info all", "\"info\" has too many arguments"},
        {"open", "\"open\" has too few arguments"},
        {"open \"\"", "there is no such file"},
        {"open \"a", "a double quote is not closed"},
        {"export", "\"export\" has too few arguments"},
        {"export a.png",
            "the name of an exported file must end in one of \".tif\" (GeoTIFF), \".asc\" (ASCII grid), "
            "\".gpkg\" (Contour lines), \".ply\" (Triangulation as PLY), \".obj\" (Triangulation as OBJ), "
            "\".off\" (Triangulation as OFF), \".stl\" (Triangulation as STL)"},
        {"export a.tif 10", "only contour lines have an interval"},
        {"export a.gpkg 0", "the interval between contour lines must be above 0"},
        {"export a.gpkg ten", "\"ten\" is not a number"},
    };
    for (const auto& line : bad) {
        SCOPED_TRACE(line.first);
        const BatchResult result = run_script("# first\nscale 1\n" + line.first + "\nscale 3\n", {file});
        EXPECT_EQ(result.code, 1);
        expect_one_line(result.error, 3, line.second);
        EXPECT_EQ(lines_with(result.out, "DO>").size(), 1u) << "nothing after the bad line is carried out";
        EXPECT_THAT(result.log, HasSubstr(line.second));
    }
}

TEST(TerrainBatch, ABadLineOfTheStandardInputIsReportedWithItsNumber)
{
    BatchProcess batch;
    batch.start({"--batch", "-"});
    batch.type("\n\nnonsense\n");
    EXPECT_EQ(batch.finish(), 1);
    EXPECT_EQ(batch.error(), "-:3: there is no instruction \"nonsense\"\n");
}

TEST(TerrainBatch, AnInstructionWithoutARasterIsRefused)
{
    for (const char* line : {"smooth 1", "fill-sinks", "clamp 0 1", "scale 1", "crop 0 0 0 0", "resample 2",
             "clean-up", "undo", "redo", "info", "export a.tif"}) {
        const BatchResult result = run_script(line);
        EXPECT_EQ(result.code, 1);
        expect_one_line(result.error, 1, "no raster is open");
    }
}

TEST(TerrainBatch, AMissingScriptIsReported)
{
    for (const std::string& script : {scratch("missing.batch"), make_directory("directory")}) {
        BatchProcess batch;
        batch.start({"--batch", script});
        EXPECT_EQ(batch.finish(), 1);
        EXPECT_EQ(batch.error(), "tarq-terrain: Cannot read the script \"" + script + "\"\n");
    }
}

TEST(TerrainBatch, AMissingFileOfTheCommandLineIsReportedAndNothingIsDone)
{
    const BatchResult result = run_script("info\n", {make_terrain_file("a.tif"), scratch("missing.tif")});
    EXPECT_EQ(result.code, 1);
    EXPECT_EQ(result.error,
        "tarq-terrain: Cannot read \"" + scratch("missing.tif") + "\": there is no such file\n");
    EXPECT_THAT(result.out, StartsWith("error log: "));
}

TEST(TerrainBatch, FilesThatAreNoRasterOfHeightsAreReportedWithTheLine)
{
    write_text(scratch("empty.tif"), "");
    write_text(scratch("text.tif"), "Dear reader\n");
    make_tiff(scratch("cut.tif"), 200, 200, GDT_Float32, std::vector<double>(40000, 1.5));
    cut_file(scratch("cut.tif"), 90000);
    make_tiff(scratch("huge.tif"), 1000000, 1000000, GDT_Float32, {}, nullptr,
        {"SPARSE_OK=YES", "BIGTIFF=YES", "TILED=YES", "BLOCKXSIZE=16384", "BLOCKYSIZE=16384"});
    make_tiff(scratch("complex.tif"), 2, 2, GDT_CFloat32, {});
    make_tiff(scratch("palette.tif"), 2, 1, GDT_Byte, {0, 1}, [](GDALDatasetH, GDALRasterBandH band) {
        const GDALColorTableH table = GDALCreateColorTable(GPI_RGB);
        const GDALColorEntry green = {0, 200, 0, 255};
        GDALSetColorEntry(table, 1, &green);
        GDALSetRasterColorTable(band, table);
        GDALDestroyColorTable(table);
    });
    write_text(scratch("vector.geojson"), R"({"type": "Point", "coordinates": [6, 49]})");
    const std::vector<std::pair<std::string, std::string>> broken = {
        {"missing.tif", "there is no such file"},
        {"empty.tif", "the file is empty"},
        {"text.tif", "not recognized"},
        {"cut.tif", "the file is broken or cut short"},
        {"huge.tif", "GB of memory"},
        {"complex.tif", "complex numbers"},
        {"palette.tif", "categories"},
        {"vector.geojson", "vector data"},
    };
    for (const auto& file : broken) {
        SCOPED_TRACE(file.first);
        const BatchResult result = run_script("\nopen \"" + scratch(file.first) + "\"\n");
        EXPECT_EQ(result.code, 1);
        expect_one_line(result.error, 2, "Cannot read \"" + scratch(file.first) + "\": ");
        EXPECT_THAT(result.error, HasSubstr(file.second));
        EXPECT_THAT(result.log, HasSubstr(file.second));
    }
}

TEST(TerrainBatch, ACropOrAFactorThatTheRasterDoesNotHaveEndsTheScript)
{
    const std::string file = make_terrain_file("a.tif");
    const std::vector<std::pair<std::string, std::string>> bad = {
        {"crop 0 20 0 14", "The raster has the columns 0 to 19"},
        {"crop 5 4 0 14", "The first column is behind the last one"},
        {"resample 0.05", "The factor must be from 0.1 to 10"},
        {"resample 0.5 average", "Averages are for larger cells: the factor must not be below 1"},
    };
    for (const auto& [line, reason] : bad) {
        const BatchResult result = run_script(line + "\ninfo\n", {file});
        EXPECT_EQ(result.code, 1);
        expect_one_line(result.error, 1, reason);
        EXPECT_THAT(lines_with(result.out, "checksum"), ElementsAre());
    }
}

TEST(TerrainBatch, AFailedCommandEndsTheScript)
{
    const BatchResult result = run_script("scale 1e300\nscale 1e300\ninfo\n", {make_terrain_file("a.tif")});
    EXPECT_EQ(result.code, 1);
    expect_one_line(result.error, 2, "is too large for a number");
    EXPECT_THAT(lines_with(result.out, "DO>\tScale: factor 1e+300 - Failed."), testing::SizeIs(1));
    EXPECT_THAT(lines_with(result.out, "checksum"), ElementsAre());
}

TEST(TerrainBatch, CrossedBoundsAreAFailedCommand)
{
    const BatchResult result = run_script("clamp 5 4\n", {make_terrain_file("a.tif")});
    EXPECT_EQ(result.code, 1);
    expect_one_line(result.error, 1, "The lower bound is above the upper one");
}

TEST(TerrainBatch, AFatalErrorInsideACommandEndsTheScript)
{
    support::LogCapture log;
    write_text(scratch("script.batch"), "smooth 1\nsmooth 2\n");
    testing::internal::CaptureStderr(); // of the fatal error itself
    std::ostringstream out;
    std::ostringstream error;
    terrain::Batch batch(out, error, nullptr);
    const BusyHook hook(
        [] { housekeeping::ErrorHandler::instance().fatal_error(std::string("the sky has fallen")); });
    const int code = batch.run(scratch("script.batch"), {make_terrain_file("a.tif")});
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("the sky has fallen"));
    EXPECT_EQ(code, terrain::Batch::Failed);
    expect_one_line(error.str(), 1, "a fatal error has ended the batch; see the error log");
    EXPECT_THAT(log.text(), HasSubstr("the sky has fallen"));
    log.take_all();
}
