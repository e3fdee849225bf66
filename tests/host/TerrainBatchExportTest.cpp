#include "BatchProcess.h"
#include "RasterFiles.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace host_test;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

BatchResult export_to(const std::string& path)
{
    return run_script("smooth 1\ninfo\nexport \"" + path + "\"\n", {make_terrain_file("a.tif")});
}

} // namespace

TEST(TerrainBatchExport, WritesWhatInfoDescribes)
{
    for (const char* name : {"out.tif", "out.TIFF"}) {
        const BatchResult result = export_to(scratch(name));
        EXPECT_EQ(result.code, 0) << result.error;
        const BatchResult again = run_script("info\n", {scratch(name)});
        EXPECT_EQ(lines_with(again.out, "checksum: "), lines_with(result.out, "checksum: "));
    }
}

TEST(TerrainBatchExport, WritesAnAsciiGridWithTheSameCells)
{
    const BatchResult result = export_to(scratch("out.asc"));
    EXPECT_EQ(result.code, 0) << result.error;
    const BatchResult again = run_script("info\n", {scratch("out.asc")});
    EXPECT_EQ(lines_with(again.out, "checksum: "), lines_with(result.out, "checksum: "));
}

TEST(TerrainBatchExport, WritesContourLinesAtAnInterval)
{
    const std::string directory = make_directory("out");
    const BatchResult result
        = run_script("export " + directory + "/usual.gpkg\nexport " + directory + "/own.gpkg 100\n",
            {make_terrain_file("a.tif")});
    EXPECT_EQ(result.code, 0) << result.error;
    EXPECT_THAT(names_in(directory), ElementsAre("own.gpkg", "usual.gpkg"));
    EXPECT_THAT(result.log, HasSubstr("Exported \"" + directory + "/own.gpkg\""));
}

TEST(TerrainBatchExport, MayReplaceTheFileThatIsOpen)
{
    const std::string file = make_terrain_file("a.tif");
    const BatchResult result = run_script("scale 2\ninfo\nexport \"" + file + "\"\nundo\n", {file});
    EXPECT_EQ(result.code, 0) << result.error;
    const BatchResult again = run_script("info\n", {file});
    EXPECT_EQ(lines_with(again.out, "checksum: "), lines_with(result.out, "checksum: "));
}

TEST(TerrainBatchExport, AFailureIsReportedWithTheLineAndLeavesNothingBehind)
{
    const std::string directory = make_directory("out");
    std::filesystem::create_directory(directory + "/taken.tif");
    const std::vector<std::pair<std::string, std::string>> bad = {
        {directory + "/taken.tif", "it is a directory"},
        {directory + "/missing/out.tif", "there is no directory"},
        {"/proc/out.tif", "Cannot write"},
    };
    for (const auto& target : bad) {
        SCOPED_TRACE(target.first);
        const BatchResult result = export_to(target.first);
        EXPECT_EQ(result.code, 1);
        EXPECT_THAT(result.error, HasSubstr("script.batch:3: Cannot write \"" + target.first + "\": "));
        EXPECT_THAT(result.error, HasSubstr(target.second));
        EXPECT_THAT(result.log, HasSubstr("Cannot write \"" + target.first + "\": "));
    }
    EXPECT_THAT(names_in(directory), ElementsAre("taken.tif"));
    EXPECT_THAT(names_in(directory + "/taken.tif"), ElementsAre());
}

TEST(TerrainBatchExport, AFullDiskIsReportedAndLeavesTheOldFileAlone)
{
    BatchProcess sample;
    sample.start(TARQ_TERRAIN_SAMPLE, {scratch("a.tif"), "--size", "300"});
    ASSERT_EQ(sample.finish(), 0) << sample.error();
    const std::string directory = make_directory("out");
    write_text(directory + "/out.tif", "the old file");
    write_text(scratch("script.batch"), "smooth 1\nexport \"" + directory + "/out.tif\"\n");

    BatchProcess batch; // whose files may have 64 blocks of 512 bytes
    batch.start("/bin/sh",
        {"-c", "ulimit -f 64; exec \"$0\" --batch \"$1\" \"$2\"", TARQ_TERRAIN, scratch("script.batch"),
            scratch("a.tif")});
    EXPECT_EQ(batch.finish(), 1);
    EXPECT_THAT(batch.error(), HasSubstr("script.batch:2: Cannot write \"" + directory + "/out.tif\": "));
    EXPECT_EQ(read_text(directory + "/out.tif"), "the old file");
    EXPECT_THAT(names_in(directory), ElementsAre("out.tif"));
}

TEST(TerrainBatch, AStandardOutputThatCannotBeWrittenIsAFailureAtTheEnd)
{
    write_text(scratch("script.batch"), "info\nexport \"" + scratch("out.tif") + "\"\n");
    BatchProcess batch;
    batch.process().setStandardOutputFile("/dev/full");
    batch.start({"--batch", scratch("script.batch"), make_terrain_file("a.tif")});
    EXPECT_EQ(batch.finish(), 1);
    EXPECT_EQ(batch.error(), "tarq-terrain: the standard output cannot be written\n");
    EXPECT_TRUE(std::filesystem::exists(scratch("out.tif"))) << "the work itself was done";
}

TEST(TerrainBatch, AReaderThatGoesAwayIsAFailureAtTheEnd)
{
    ASSERT_EQ(mkfifo(scratch("pipe").c_str(), 0600), 0);
    const int reader = open(scratch("pipe").c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    BatchProcess batch;
    batch.process().setStandardOutputFile(QString::fromStdString(scratch("pipe")));
    batch.start({"--batch", "-", make_terrain_file("a.tif")});
    close(reader);
    batch.type("info\nexport \"" + scratch("out.tif") + "\"\n");
    EXPECT_EQ(batch.finish(), 1);
    EXPECT_EQ(batch.error(), "tarq-terrain: the standard output cannot be written\n");
    EXPECT_TRUE(std::filesystem::exists(scratch("out.tif")));
}
