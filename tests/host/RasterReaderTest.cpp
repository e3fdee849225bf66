#include "io/RasterReader.h"
#include "CommandFixture.h"
#include "RasterFiles.h"
#include "io/RasterMemory.h"
#include "io/ReferenceSystem.h"
#include "support/LogCapture.h"

#include <tarqa/housekeeping/InvalidPath.h>

#include <cpl_string.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <limits>

#include <sys/stat.h>

using namespace host_test;
using terrain::Raster;
using terrain::RasterFile;
using terrain::read_raster;
using testing::HasSubstr;

namespace {

/// What read_raster() says about a file that it refuses; nothing may go to the standard error stream.
std::string refusal(const std::string& path, int band = 1)
{
    testing::internal::CaptureStderr();
    std::string message = "(no refusal)";
    try {
        read_raster(path, band);
    } catch (const tarqa::housekeeping::InvalidPath& exception) {
        message = exception.what();
        EXPECT_EQ(exception.path(), path);
        EXPECT_THAT(message, HasSubstr("Cannot read \"" + path + "\": "));
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    return message;
}

} // namespace

TEST(RasterReader, ReadsCellsRowByRow)
{
    make_tiff(scratch("a.tif"), 3, 2, GDT_Int16, {1, 2, 3, -4, 5, 6});
    const Raster raster = read_raster(scratch("a.tif"));
    EXPECT_EQ(raster.columns, 3);
    EXPECT_EQ(raster.rows, 2);
    EXPECT_EQ(raster.cells, (std::vector<double>{1, 2, 3, -4, 5, 6}));
    EXPECT_EQ(raster.data_type, "Int16");
    EXPECT_FALSE(raster.geotransform);
    EXPECT_FALSE(raster.file_no_data);
    EXPECT_EQ(raster.unit, "");
    EXPECT_EQ(raster.reference_system, "");
}

TEST(RasterReader, KeepsGeotransformReferenceSystemAndUnit)
{
    std::array<double, 6> geotransform = {440000, 30, 1, 5400000, 2, -30};
    const std::string wkt = terrain::reference_system_from_epsg(32632);
    make_tiff(scratch("a.tif"), 1, 1, GDT_Float32, {5}, [&](GDALDatasetH dataset, GDALRasterBandH band) {
        GDALSetGeoTransform(dataset, geotransform.data());
        GDALSetProjection(dataset, wkt.c_str());
        GDALSetRasterUnitType(band, "ft");
    });
    const Raster raster = read_raster(scratch("a.tif"));
    EXPECT_EQ(raster.geotransform, geotransform);
    EXPECT_EQ(terrain::reference_system_name(raster.reference_system), "WGS 84 / UTM zone 32N (EPSG:32632)");
    EXPECT_EQ(raster.unit, "ft");
}

TEST(RasterReader, TheNoDataNumberIsNoHeight)
{
    make_tiff(scratch("a.tif"), 3, 1, GDT_Int16, {-1, 7, -1},
        [](GDALDatasetH, GDALRasterBandH band) { GDALSetRasterNoDataValue(band, -1); });
    const Raster raster = read_raster(scratch("a.tif"));
    EXPECT_EQ(bits(raster.cells), bits({N, 7, N}));
    EXPECT_EQ(raster.file_no_data, -1);
}

TEST(RasterReader, CellsThatAMaskHidesAreWithoutData)
{
    CPLSetConfigOption("GDAL_TIFF_INTERNAL_MASK", "YES");
    make_tiff(scratch("a.tif"), 3, 1, GDT_Float32, {4, 5, 6}, [](GDALDatasetH dataset, GDALRasterBandH band) {
        GDALCreateDatasetMaskBand(dataset, GMF_PER_DATASET);
        std::vector<unsigned char> mask = {255, 0, 255};
        EXPECT_EQ(
            GDALRasterIO(GDALGetMaskBand(band), GF_Write, 0, 0, 3, 1, mask.data(), 3, 1, GDT_Byte, 0, 0),
            CE_None);
    });
    EXPECT_EQ(bits(read_raster(scratch("a.tif")).cells), bits({4, N, 6}));
}

TEST(RasterReader, TransparentCellsAreWithoutData)
{
    make_tiff(
        scratch("a.tif"), 3, 1, GDT_Byte, {4, 5, 6},
        [](GDALDatasetH dataset, GDALRasterBandH) {
            std::vector<unsigned char> alpha = {255, 0, 1};
            EXPECT_EQ(GDALRasterIO(GDALGetRasterBand(dataset, 2), GF_Write, 0, 0, 3, 1, alpha.data(), 3, 1,
                          GDT_Byte, 0, 0),
                CE_None);
        },
        {"ALPHA=YES"}, 2);
    EXPECT_EQ(bits(read_raster(scratch("a.tif")).cells), bits({4, N, 6}));
}

TEST(RasterReader, CellsThatAreNotFiniteAreWithoutData)
{
    const double infinity = std::numeric_limits<double>::infinity();
    make_tiff(scratch("a.tif"), 4, 1, GDT_Float64, {infinity, 1, -infinity, -N});
    EXPECT_EQ(bits(read_raster(scratch("a.tif")).cells), bits({N, 1, N, N}));
}

TEST(RasterReader, KeepsBothZeros)
{
    make_tiff(scratch("a.tif"), 2, 1, GDT_Float32, {0.0, -0.0});
    EXPECT_EQ(bits(read_raster(scratch("a.tif")).cells), bits({0.0, -0.0}));
}

TEST(RasterReader, AppliesScaleAndOffset)
{
    make_tiff(scratch("a.tif"), 3, 1, GDT_Int16, {10, 30, -32768}, [](GDALDatasetH, GDALRasterBandH band) {
        GDALSetRasterScale(band, 0.5);
        GDALSetRasterOffset(band, 100);
        GDALSetRasterNoDataValue(band, -32768);
    });
    EXPECT_EQ(bits(read_raster(scratch("a.tif")).cells), bits({105, 115, N}));
}

TEST(RasterReader, ReadsEveryTypeOfNumber)
{
    for (const GDALDataType type : {GDT_Byte, GDT_UInt16, GDT_Int16, GDT_UInt32, GDT_Int32, GDT_Float32,
             GDT_Float64, GDT_UInt64, GDT_Int64}) {
        SCOPED_TRACE(GDALGetDataTypeName(type));
        make_tiff(scratch("a.tif"), 2, 1, type, {7, 200});
        EXPECT_EQ(read_raster(scratch("a.tif")).cells, (std::vector<double>{7, 200}));
    }
}

TEST(RasterReader, ReadsTheBandThatItIsTold)
{
    make_tiff(
        scratch("a.tif"), 1, 1, GDT_Float32, {1},
        [](GDALDatasetH dataset, GDALRasterBandH) {
            EXPECT_EQ(GDALFillRaster(GDALGetRasterBand(dataset, 2), 2, 0), CE_None);
        },
        {}, 2);
    EXPECT_EQ(read_raster(scratch("a.tif"), 1).cells, std::vector<double>{1});
    EXPECT_EQ(read_raster(scratch("a.tif"), 2).cells, std::vector<double>{2});
    EXPECT_THAT(refusal(scratch("a.tif"), 3), HasSubstr("it has no band 3"));
    EXPECT_THAT(refusal(scratch("a.tif"), 0), HasSubstr("it has no band 0"));
}

TEST(RasterReader, ReadsARasterOfOneCell)
{
    make_tiff(scratch("a.tif"), 1, 1, GDT_Float32, {3.5});
    EXPECT_EQ(read_raster(scratch("a.tif")).cells, std::vector<double>{3.5});
}

TEST(RasterReader, ReadsARasterWithoutAnyData)
{
    make_tiff(scratch("a.tif"), 2, 1, GDT_Float32, {-1, -1},
        [](GDALDatasetH, GDALRasterBandH band) { GDALSetRasterNoDataValue(band, -1); });
    EXPECT_EQ(bits(read_raster(scratch("a.tif")).cells), bits({N, N}));
}

TEST(RasterReader, ReadsFormatsOtherThanTiff)
{
    write_text(scratch("a.asc"),
        "ncols 2\nnrows 2\nxllcorner 10\nyllcorner 20\ncellsize 5\nNODATA_value -9\n1 2\n-9 4\n");
    const Raster raster = read_raster(scratch("a.asc"));
    EXPECT_EQ(bits(raster.cells), bits({1, 2, N, 4}));
    EXPECT_EQ(raster.geotransform, (std::array<double, 6>{10, 5, 0, 30, 0, -5}));
}

TEST(RasterReader, RefusesAMissingFile)
{
    EXPECT_THAT(refusal(scratch("missing.tif")), HasSubstr("there is no such file"));
    EXPECT_THAT(refusal(scratch("no/such/directory.tif")), HasSubstr("there is no such file"));
}

TEST(RasterReader, RefusesAnEmptyFile)
{
    write_text(scratch("empty.tif"), "");
    EXPECT_THAT(refusal(scratch("empty.tif")), HasSubstr("the file is empty"));
}

TEST(RasterReader, RefusesAFileThatIsNoRaster)
{
    write_text(scratch("text.tif"), "Dear reader, this is a letter.\n");
    EXPECT_THAT(refusal(scratch("text.tif")), HasSubstr("not recognized"));
    write_text(scratch("noise.tif"), std::string("II*\0garbage garbage", 19));
    EXPECT_NE(refusal(scratch("noise.tif")), "(no refusal)");
}

TEST(RasterReader, RefusesATruncatedFile)
{
    support::LogCapture log;
    make_tiff(scratch("a.tif"), 200, 200, GDT_Float32, std::vector<double>(40000, 1.5));
    const auto size = std::filesystem::file_size(scratch("a.tif"));
    cut_file(scratch("a.tif"), size / 2);
    EXPECT_THAT(refusal(scratch("a.tif")), HasSubstr("the file is broken or cut short: "));
    cut_file(scratch("a.tif"), 100);
    EXPECT_NE(refusal(scratch("a.tif")), "(no refusal)");
    cut_file(scratch("a.tif"), 5);
    EXPECT_NE(refusal(scratch("a.tif")), "(no refusal)");
    log.take_all(); // GDAL's warnings
}

TEST(RasterReader, RefusesADamagedFile)
{
    support::LogCapture log;
    make_tiff(scratch("a.tif"), 100, 100, GDT_Float32, std::vector<double>(10000, 1.5), nullptr,
        {"COMPRESS=DEFLATE"});
    std::string bytes = read_text(scratch("a.tif"));
    bytes.replace(bytes.size() - 60, 40, std::string(40, 'x'));
    write_text(scratch("a.tif"), bytes);
    EXPECT_THAT(refusal(scratch("a.tif")), HasSubstr("the file is broken or cut short: "));
    log.take_all();
}

TEST(RasterReader, RefusesAHugeHeader)
{
    make_tiff(scratch("huge.tif"), 1000000, 1000000, GDT_Float32, {}, nullptr,
        {"SPARSE_OK=YES", "BIGTIFF=YES", "TILED=YES", "BLOCKXSIZE=16384", "BLOCKYSIZE=16384"});
    EXPECT_LT(std::filesystem::file_size(scratch("huge.tif")), 1000000u);
    EXPECT_THAT(
        refusal(scratch("huge.tif")), HasSubstr("its 1000000 x 1000000 cells need 24000.1 GB of memory"));
}

TEST(RasterReader, RefusesTheLargestHeaderThereIs)
{
    write_text(scratch("huge.vrt"),
        "<VRTDataset rasterXSize=\"2147483647\" rasterYSize=\"2147483647\">"
        "<VRTRasterBand dataType=\"Byte\" band=\"1\"/></VRTDataset>");
    EXPECT_THAT(refusal(scratch("huge.vrt")), HasSubstr("its 2147483647 x 2147483647 cells need "));
}

TEST(RasterReader, RefusesVectorData)
{
    write_text(scratch("a.geojson"),
        R"({"type": "Feature", "properties": {}, "geometry": {"type": "Point", "coordinates": [6, 49]}})");
    EXPECT_THAT(refusal(scratch("a.geojson")), HasSubstr("it holds vector data, no raster"));
}

TEST(RasterReader, RefusesComplexNumbers)
{
    for (const GDALDataType type : {GDT_CInt16, GDT_CFloat32, GDT_CFloat64}) {
        make_tiff(scratch("a.tif"), 2, 2, type, {});
        EXPECT_THAT(refusal(scratch("a.tif")), HasSubstr("its band 1 holds complex numbers, no heights"));
    }
}

TEST(RasterReader, RefusesAPalette)
{
    make_tiff(scratch("a.tif"), 2, 1, GDT_Byte, {0, 1}, [](GDALDatasetH, GDALRasterBandH band) {
        const GDALColorTableH table = GDALCreateColorTable(GPI_RGB);
        const GDALColorEntry green = {0, 200, 0, 255};
        GDALSetColorEntry(table, 1, &green);
        GDALSetRasterColorTable(band, table);
        GDALDestroyColorTable(table);
    });
    EXPECT_THAT(refusal(scratch("a.tif")), HasSubstr("its band 1 holds categories, no heights"));
}

TEST(RasterReader, RefusesNamedCategories)
{
    write_text(scratch("a.vrt"),
        "<VRTDataset rasterXSize=\"2\" rasterYSize=\"2\"><VRTRasterBand dataType=\"Byte\" band=\"1\">"
        "<CategoryNames><Category>sea</Category><Category>land</Category></CategoryNames>"
        "</VRTRasterBand></VRTDataset>");
    EXPECT_THAT(refusal(scratch("a.vrt")), HasSubstr("its band 1 holds categories, no heights"));
}

TEST(RasterReader, NamesTheRastersOfAFileThatHoldsSeveral)
{
    std::array<double, 6> geotransform = {10, 1, 0, 50, 0, -1};
    make_tiff(scratch("a.tif"), 2, 1, GDT_Float32, {1, 2},
        [&](GDALDatasetH dataset, GDALRasterBandH) { GDALSetGeoTransform(dataset, geotransform.data()); });
    const GDALDatasetH source = GDALOpen(scratch("a.tif").c_str(), GA_ReadOnly);
    const GDALDriverH driver = GDALGetDriverByName("GPKG");
    for (const char* table : {"one", "two"}) {
        CPLStringList options;
        options.SetNameValue("RASTER_TABLE", table);
        options.SetNameValue("APPEND_SUBDATASET", table == std::string("two") ? "YES" : "NO");
        const GDALDatasetH copy = GDALCreateCopy(
            driver, scratch("a.gpkg").c_str(), source, TRUE, options.List(), nullptr, nullptr);
        ASSERT_TRUE(copy);
        GDALClose(copy);
    }
    GDALClose(source);

    const std::string message = refusal(scratch("a.gpkg"));
    EXPECT_THAT(message, HasSubstr("it holds several rasters; open one of them:\n  GPKG:"));
    const std::string name = "GPKG:" + scratch("a.gpkg") + ":two";
    EXPECT_THAT(message, HasSubstr("\n  " + name));
    EXPECT_GE(read_raster(name).columns, 2);
}

TEST(RasterReader, RefusesWhatIsNoRegularFile)
{
    ASSERT_EQ(mkfifo(scratch("pipe.tif").c_str(), 0600), 0);
    EXPECT_THAT(refusal(scratch("pipe.tif")), HasSubstr("it is not a regular file"));
    EXPECT_THAT(refusal("/dev/null"), HasSubstr("it is not a regular file"));
    EXPECT_NE(refusal(make_directory("directory.tif")), "(no refusal)");
}

TEST(RasterReader, PutsGdalsWarningsIntoTheErrorLog)
{
    support::LogCapture log;
    make_tiff(scratch("a.tif"), 2, 2, GDT_Int16, {1, 2, 3, 4});
    std::string bytes = read_text(scratch("a.tif"));
    // The entries of a TIFF's directory are to be in order; here the first two are not.
    const std::size_t entry = static_cast<unsigned char>(bytes[4]) + 2;
    const std::size_t length = 12;
    std::swap_ranges(bytes.begin() + entry, bytes.begin() + entry + length, bytes.begin() + entry + length);
    write_text(scratch("a.tif"), bytes);
    testing::internal::CaptureStderr();
    EXPECT_EQ(read_raster(scratch("a.tif")).cells, (std::vector<double>{1, 2, 3, 4}));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_TRUE(log.take("GDAL: "));
    log.take_all(); // GDAL says it twice, in two ways
}

// --- overviews

namespace {

/// Lets a raster take no more memory than one of so many cells, while it lives.
class MemoryForCells
{
public:
    explicit MemoryForCells(int columns, int rows)
    {
        terrain::memory_limit(terrain::memory_needed(columns, rows));
    }
    ~MemoryForCells() { terrain::memory_limit(0); }
    MemoryForCells(const MemoryForCells&) = delete;
    MemoryForCells& operator=(const MemoryForCells&) = delete;
};

} // namespace

TEST(RasterReader, TellsHowMuchSmallerATooLargeRasterMustBe)
{
    make_tiff(scratch("a.tif"), 40, 20, GDT_Float32, {});
    const MemoryForCells limit(10, 5);
    try {
        read_raster(scratch("a.tif"));
        ADD_FAILURE() << "it was read";
    } catch (const terrain::RasterTooLarge& refusal) {
        EXPECT_EQ(refusal.reduction(), 4);
        EXPECT_THAT(refusal.what(), HasSubstr("its 40 x 20 cells need 0.000 GB of memory"));
    }
    EXPECT_EQ(RasterFile(scratch("a.tif")).read(nullptr, 4).columns, 10);
}

TEST(RasterReader, ReadsARasterThatJustFits)
{
    make_tiff(scratch("a.tif"), 40, 20, GDT_Float32, {});
    const MemoryForCells limit(40, 20);
    EXPECT_EQ(read_raster(scratch("a.tif")).columns, 40);
}

TEST(RasterReader, ReadsAnOverviewThatLiesWhereTheRasterDoes)
{
    std::vector<double> cells;
    for (int i = 0; i < 10 * 7; ++i) {
        cells.push_back(i % 10 < 5 ? 100 : -1);
    }
    make_tiff(scratch("a.tif"), 10, 7, GDT_Float32, cells, [](GDALDatasetH dataset, GDALRasterBandH band) {
        std::array<double, 6> place = {1000, 10, 0, 2000, 0, -10};
        GDALSetGeoTransform(dataset, place.data());
        GDALSetRasterNoDataValue(band, -1);
    });
    const Raster raster = RasterFile(scratch("a.tif")).read(nullptr, 2);
    EXPECT_EQ(raster.columns, 5);
    EXPECT_EQ(raster.rows, 4);
    ASSERT_TRUE(raster.geotransform);
    EXPECT_DOUBLE_EQ((*raster.geotransform)[1] * raster.columns, 100);
    EXPECT_DOUBLE_EQ((*raster.geotransform)[5] * raster.rows, -70);
    EXPECT_EQ(raster.cell(0, 0), 100);
    EXPECT_EQ(raster.cell(1, 3), 100);
    EXPECT_TRUE(terrain::is_no_data(raster.cell(4, 3)));
}

TEST(RasterReader, AnOverviewIsAtLeastOneCell)
{
    make_tiff(scratch("a.tif"), 3, 2, GDT_Float32, {7, 7, 7, 7, 7, 7});
    EXPECT_EQ(RasterFile(scratch("a.tif")).read(nullptr, 1000).cells, std::vector<double>{7});
}

// --- what else a file is

TEST(RasterReader, KnowsWhichFilesHoldNoMoreThanItReads)
{
    make_tiff(scratch("a.tif"), 2, 1, GDT_Float32, {3, 4});
    EXPECT_TRUE(RasterFile(scratch("a.tif")).is_plain_geotiff());
    EXPECT_FALSE(RasterFile("GTIFF_DIR:1:" + scratch("a.tif")).is_plain_geotiff()) << "a part of a file";
    make_tiff(scratch("two.tif"), 2, 1, GDT_Float32, {3, 4}, nullptr, {}, 2);
    EXPECT_FALSE(RasterFile(scratch("two.tif")).is_plain_geotiff());
    write_text(scratch("a.asc"), "ncols 2\nnrows 1\nxllcorner 10\nyllcorner 20\ncellsize 5\n1 2\n");
    EXPECT_FALSE(RasterFile(scratch("a.asc")).is_plain_geotiff());
    make_tiff(scratch("points.tif"), 2, 1, GDT_Float32, {3, 4}, [](GDALDatasetH dataset, GDALRasterBandH) {
        GDAL_GCP point = {};
        point.pszId = const_cast<char*>("1");
        point.pszInfo = const_cast<char*>("");
        GDALSetGCPs(dataset, 1, &point, "");
    });
    EXPECT_FALSE(RasterFile(scratch("points.tif")).is_plain_geotiff()) << "its place is told by points";
}

TEST(RasterReader, CanBeStopped)
{
    make_tiff(scratch("a.tif"), 4, 200, GDT_Float32, {});
    double last = -1;
    EXPECT_THROW(RasterFile(scratch("a.tif")).read([&last](double share) {
        EXPECT_GT(share, last);
        last = share;
        return share < 0.5;
    }),
        terrain::FileCancelled);
    EXPECT_GE(last, 0.5);
}

TEST(RasterReader, ReadsAllDigitsOfAnAsciiGrid)
{
    write_text(scratch("a.asc"),
        "ncols 2\nnrows 1\nxllcorner 10\nyllcorner 20\ncellsize 5\n0.12345678901234567 1234567.891\n");
    EXPECT_EQ(read_raster(scratch("a.asc")).cells, (std::vector<double>{0.12345678901234567, 1234567.891}));
}

TEST(RasterReader, ReadsFilesOfAnyName)
{
    for (const char* const name :
        {"with blank.tif", "h\u00f6he \u5c71.tif", "100%1 %s.tif", "-a.tif", "#a?b&c.tif", "'q\"uote.tif"}) {
        make_tiff(scratch(name), 2, 1, GDT_Float32, {3, 4});
        EXPECT_EQ(read_raster(scratch(name)).cells, (std::vector<double>{3, 4})) << name;
    }
    const std::string refused = refusal(scratch("100%1 %2 %s.tif"));
    EXPECT_THAT(
        refused, HasSubstr("Cannot read \"" + scratch("100%1 %2 %s.tif") + "\": there is no such file"));
    EXPECT_THAT(refusal(scratch(std::string(300, 'x'))), HasSubstr("too long"));
}

TEST(RasterReader, FollowsSymbolicLinks)
{
    make_tiff(scratch("a.tif"), 2, 1, GDT_Float32, {3, 4});
    std::filesystem::create_symlink(scratch("a.tif"), scratch("link.tif"));
    EXPECT_EQ(read_raster(scratch("link.tif")).cells, (std::vector<double>{3, 4}));
    std::filesystem::create_symlink(scratch("gone.tif"), scratch("dangling.tif"));
    EXPECT_THAT(refusal(scratch("dangling.tif")), HasSubstr("there is no such file"));
    std::filesystem::create_symlink(scratch("loop.tif"), scratch("loop.tif"));
    EXPECT_NE(refusal(scratch("loop.tif")), "(no refusal)");
}

TEST(RasterReader, RefusesADirectoryThatIsNoRaster)
{
    EXPECT_NE(refusal(make_directory("folder")), "(no refusal)");
    EXPECT_NE(refusal(make_directory("folder.tif")), "(no refusal)");
}

TEST(RasterReader, LargeNumbersForNoDataAreNoHeights)
{
    for (const double marker : {-3.4028234663852886e38, 3.4028234663852886e38, 1e38}) {
        make_tiff(scratch("a.tif"), 2, 1, GDT_Float32, {marker, 4},
            [marker](GDALDatasetH, GDALRasterBandH band) { GDALSetRasterNoDataValue(band, marker); });
        EXPECT_EQ(bits(read_raster(scratch("a.tif")).cells), bits({N, 4})) << marker;
    }
}
