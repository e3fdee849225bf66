#include "BatchProcess.h"
#include "RasterFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace host_test;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace {

/// Level ground with a top in the middle.
std::string make_hill()
{
    make_tiff(scratch("hill.tif"), 3, 3, GDT_Float32, {0, 0, 0, 0, 10, 0, 0, 0, 0});
    return scratch("hill.tif");
}

} // namespace

TEST(TerrainBatchTriangulate, InfoTellsOfTheTriangulationWhileThereIsOne)
{
    const BatchResult result = run_script(
        "info\ntriangulate 20\ninfo\ntriangulate 0.5\ninfo\nundo\ninfo\nscale 2\ninfo\n", {make_hill()});
    EXPECT_EQ(result.code, 0) << result.error;
    EXPECT_THAT(lines_with(result.out, "triangulation: "),
        ElementsAre("triangulation: 4 vertices, 2 triangles, tolerance 20",
            "triangulation: 5 vertices, 4 triangles, tolerance 0.5",
            "triangulation: 4 vertices, 2 triangles, tolerance 20"));
    EXPECT_THAT(result.out, HasSubstr("DO>\tTriangulate: tolerance 0.5 metres, 4 triangles - Succeeded.\n"));
    const auto sums = lines_with(result.out, "checksum: ");
    ASSERT_EQ(sums.size(), 5u);
    EXPECT_EQ(sums[0], sums[3]) << "the cells stay as they are";
}

TEST(TerrainBatchTriangulate, ExportsMeshFiles)
{
    const std::string directory = make_directory("out");
    std::string script = "triangulate 1\n";
    for (const char* const extension : {"ply", "obj", "off", "STL"}) {
        script += "export \"" + directory + "/a." + extension + "\"\n";
    }
    const BatchResult result = run_script(script, {make_hill()});
    EXPECT_EQ(result.code, 0) << result.error;
    EXPECT_THAT(names_in(directory), ElementsAre("a.STL", "a.obj", "a.off", "a.ply"));
    EXPECT_THAT(read_text(directory + "/a.off"), StartsWith("OFF\n"));
    EXPECT_THAT(result.log, HasSubstr("Exported \"" + directory + "/a.ply\""));
}

TEST(TerrainBatchTriangulate, WithoutATriangulationAnExportFails)
{
    const std::string directory = make_directory("out");
    const BatchResult result = run_script("export \"" + directory + "/a.ply\"\n", {make_hill()});
    EXPECT_EQ(result.code, 1);
    EXPECT_THAT(
        result.error, HasSubstr(":1: Cannot write \"" + directory + "/a.ply\": there is no triangulation"));
    EXPECT_THAT(names_in(directory), IsEmpty());
}

TEST(TerrainBatchTriangulate, WrongLinesSayWhy)
{
    const std::pair<const char*, const char*> bad[]
        = {{"triangulate", "\"triangulate\" has too few arguments"},
            {"triangulate 1 2", "\"triangulate\" has too many arguments"},
            {"triangulate five", "\"five\" is not a number"},
            {"triangulate 0", "The tolerance must be a number above 0"},
            {"triangulate -3", "The tolerance must be a number above 0"}};
    for (const auto& [line, reason] : bad) {
        const BatchResult result = run_script(std::string(line) + "\ninfo\n", {make_hill()});
        EXPECT_EQ(result.code, 1) << line;
        EXPECT_THAT(result.error, HasSubstr(reason));
        EXPECT_THAT(result.out, Not(HasSubstr("triangulation: ")));
    }
}
