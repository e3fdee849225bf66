#include "io/RasterWriter.h"
#include "CommandFixture.h"
#include "FileSizeLimit.h"
#include "RasterFiles.h"
#include "io/RasterReader.h"
#include "io/ReferenceSystem.h"
#include "support/LogCapture.h"

#include <tarqa/housekeeping/InvalidPath.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include <sys/stat.h>

using namespace host_test;
using terrain::Raster;
using terrain::read_raster;
using terrain::write_raster;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

namespace fs = std::filesystem;

std::string refusal(const Raster& raster, const std::string& path)
{
    testing::internal::CaptureStderr();
    std::string message = "(no refusal)";
    try {
        write_raster(raster, path);
    } catch (const tarqa::housekeeping::InvalidPath& exception) {
        message = exception.what();
        EXPECT_EQ(exception.path(), path);
        EXPECT_THAT(message, HasSubstr("Cannot write \"" + path + "\": "));
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    return message;
}

Raster written(const Raster& raster)
{
    write_raster(raster, scratch("out.tif"));
    return read_raster(scratch("out.tif"));
}

} // namespace

TEST(RasterWriter, WritesWhatTheReaderReads)
{
    Raster raster = mixed_raster(40, 30);
    raster.geotransform = {440000, 30, 1, 5400000, 2, -30};
    raster.reference_system = terrain::reference_system_from_epsg(32632);
    raster.unit = "ft";
    raster.area_or_point = "Point";
    raster.file_no_data = -9999;
    const Raster copy = written(raster);
    EXPECT_EQ(copy.columns, 40);
    EXPECT_EQ(copy.rows, 30);
    EXPECT_EQ(bits(copy.cells), bits(raster.cells));
    EXPECT_EQ(copy.geotransform, raster.geotransform);
    EXPECT_EQ(terrain::reference_system_name(copy.reference_system), "WGS 84 / UTM zone 32N (EPSG:32632)");
    EXPECT_EQ(copy.unit, "ft");
    EXPECT_EQ(copy.area_or_point, "Point");
    EXPECT_EQ(copy.file_no_data, -9999);
}

TEST(RasterWriter, WritesTiledFilesOfLargeRasters)
{
    const Raster raster = mixed_raster(700, 300);
    EXPECT_EQ(bits(written(raster).cells), bits(raster.cells));
    const GDALDatasetH dataset = GDALOpen(scratch("out.tif").c_str(), GA_ReadOnly);
    int columns = 0;
    int rows = 0;
    GDALGetBlockSize(GDALGetRasterBand(dataset, 1), &columns, &rows);
    EXPECT_EQ(columns, 256);
    EXPECT_EQ(rows, 256);
    EXPECT_STREQ(GDALGetMetadataItem(dataset, "COMPRESSION", "IMAGE_STRUCTURE"), "DEFLATE");
    GDALClose(dataset);
}

TEST(RasterWriter, UsesThirtyTwoBitsWhenTheyAreEnough)
{
    EXPECT_EQ(written(make_raster(2, 1, {0.5, 1000})).data_type, "Float32");
    EXPECT_EQ(written(make_raster(2, 1, {0.1, 1000})).data_type, "Float64");
    EXPECT_EQ(written(make_raster(2, 1, {1e300, 1000})).data_type, "Float64");
    EXPECT_EQ(written(make_raster(2, 1, {N, 1000})).data_type, "Float32");
}

TEST(RasterWriter, MarksCellsWithoutDataByNanUnlessTheRasterHasANumber)
{
    const Raster unmarked = written(make_raster(2, 1, {N, 5}));
    EXPECT_EQ(bits(unmarked.cells), bits({N, 5}));
    ASSERT_TRUE(unmarked.file_no_data);
    EXPECT_TRUE(std::isnan(*unmarked.file_no_data));
    EXPECT_FALSE(written(make_raster(2, 1, {4, 5})).file_no_data);
}

TEST(RasterWriter, NeverMarksAHeightAsWithoutData)
{
    Raster raster = make_raster(3, 1, {-1, N, 5});
    raster.file_no_data = -1; // and after some command there is such a height
    EXPECT_EQ(bits(written(raster).cells), bits({-1, N, 5}));
}

TEST(RasterWriter, UsesNanWhenTheNumberDoesNotFitTheType)
{
    Raster raster = make_raster(2, 1, {N, 5});
    raster.file_no_data = -1.7976931348623157e308;
    const Raster copy = written(raster);
    EXPECT_EQ(copy.data_type, "Float32");
    EXPECT_EQ(bits(copy.cells), bits({N, 5}));
}

TEST(RasterWriter, WritesOneCellAndNoDataAtAll)
{
    EXPECT_EQ(written(make_raster(1, 1, {3.5})).cells, std::vector<double>{3.5});
    EXPECT_EQ(bits(written(make_raster(2, 1, {N, N})).cells), bits({N, N}));
}

TEST(RasterWriter, ReplacesAnExistingFileAndWhatBelongsToIt)
{
    const std::string directory = make_directory("out");
    write_text(directory + "/a.tif", "old");
    write_text(directory + "/a.tif.aux.xml", "<PAMDataset/>");
    write_text(directory + "/a.tif.ovr", "old overviews");
    ASSERT_EQ(chmod((directory + "/a.tif").c_str(), 0640), 0);
    write_raster(make_raster(2, 1, {1, 2}), directory + "/a.tif");
    EXPECT_EQ(read_raster(directory + "/a.tif").cells, (std::vector<double>{1, 2}));
    EXPECT_THAT(names_in(directory), ElementsAre("a.tif"));
    EXPECT_EQ(fs::status(directory + "/a.tif").permissions(), fs::perms(0640));
}

TEST(RasterWriter, WritesThroughASymbolicLink)
{
    const std::string directory = make_directory("out");
    write_text(directory + "/target.tif", "old");
    fs::create_symlink(directory + "/target.tif", directory + "/link.tif");
    write_raster(make_raster(2, 1, {1, 2}), directory + "/link.tif");
    EXPECT_TRUE(fs::is_symlink(directory + "/link.tif"));
    EXPECT_EQ(read_raster(directory + "/target.tif").cells, (std::vector<double>{1, 2}));
}

TEST(RasterWriter, WritesIntoTheWorkingDirectory)
{
    fs::current_path(make_directory("out"));
    write_raster(make_raster(2, 1, {1, 2}), "a.tif");
    EXPECT_EQ(read_raster("a.tif").cells, (std::vector<double>{1, 2}));
}

TEST(RasterWriter, RefusesADirectory)
{
    const std::string directory = make_directory("out.tif");
    EXPECT_THAT(refusal(make_raster(1, 1, {1}), directory), HasSubstr("it is a directory"));
    EXPECT_THAT(names_in(directory), ElementsAre());
}

TEST(RasterWriter, RefusesAMissingDirectory)
{
    EXPECT_THAT(refusal(make_raster(1, 1, {1}), scratch("missing/a.tif")),
        HasSubstr("there is no directory \"" + scratch("missing") + "\""));
    write_text(scratch("file"), "x");
    EXPECT_THAT(refusal(make_raster(1, 1, {1}), scratch("file/a.tif")), HasSubstr("there is no directory"));
}

TEST(RasterWriter, RefusesADirectoryThatNobodyMayWriteTo)
{
    EXPECT_NE(refusal(make_raster(1, 1, {1}), "/proc/a.tif"), "(no refusal)");
}

TEST(RasterWriter, RefusesWhatIsNoRegularFile)
{
    EXPECT_THAT(refusal(make_raster(1, 1, {1}), "/dev/full"), HasSubstr("it is not a regular file"));
}

TEST(RasterWriter, AFullDiskLeavesTheOldFileAlone)
{
    const std::string directory = make_directory("out");
    write_text(directory + "/a.tif", "the old file");
    const Raster raster = mixed_raster(500, 500);
    std::string message;
    {
        const FileSizeLimit limit(20000);
        message = refusal(raster, directory + "/a.tif");
    }
    EXPECT_NE(message, "(no refusal)");
    EXPECT_EQ(read_text(directory + "/a.tif"), "the old file");
    EXPECT_THAT(names_in(directory), ElementsAre("a.tif"));
}

TEST(RasterWriter, NoticesADiskThatFillsUpWithTheLastBytes)
{
    const std::string directory = make_directory("out");
    const Raster raster = mixed_raster(100, 100);
    write_raster(raster, directory + "/a.tif");
    const auto size = fs::file_size(directory + "/a.tif");
    for (const auto missing : {1u, 10u, 500u}) {
        const FileSizeLimit limit(size - missing);
        EXPECT_NE(refusal(raster, directory + "/b.tif"), "(no refusal)") << missing;
    }
    EXPECT_THAT(names_in(directory), ElementsAre("a.tif"));
}

TEST(RasterWriter, CanBeStopped)
{
    const std::string directory = make_directory("out");
    write_text(directory + "/a.tif", "the old file");
    for (const double stop : {0.0, 0.5, 0.9}) {
        EXPECT_THROW(write_raster(mixed_raster(20, 2000), directory + "/a.tif",
                         [stop](double share) { return share < stop; }),
            terrain::FileCancelled)
            << stop;
    }
    EXPECT_EQ(read_text(directory + "/a.tif"), "the old file");
    EXPECT_THAT(names_in(directory), ElementsAre("a.tif"));
}

TEST(RasterWriter, WritesFilesOfAnyName)
{
    const std::string directory = make_directory("out");
    const std::vector<std::string> names = {"with blank.tif", "h\u00f6he \u5c71.tif", "100%1 %s.tif",
        "-a.tif", "a:b.tif", std::string(251, 'x') + ".tif"};
    for (const std::string& name : names) {
        write_raster(make_raster(2, 1, {1, 2}), directory + "/" + name);
        EXPECT_EQ(read_raster(directory + "/" + name).cells, (std::vector<double>{1, 2})) << name;
    }
    EXPECT_EQ(names_in(directory).size(), names.size());
    const std::string too_long = directory + "/" + std::string(252, 'x') + ".tif";
    EXPECT_THAT(refusal(make_raster(1, 1, {1}), too_long), HasSubstr("too long"));
}
