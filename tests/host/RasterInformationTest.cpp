#include "documents/RasterInformation.h"

#include <tarqa/housekeeping/AbstractDataInformationFactory.h>
#include <tarqa/housekeeping/DataSource.h>

#include <boost/make_shared.hpp>

#include <gtest/gtest.h>

#include <sstream>

namespace housekeeping = tarqa::housekeeping;
using housekeeping::DataSource;
using terrain::RasterInformation;

namespace {

int band_of(const DataSource& source)
{
    return dynamic_cast<const RasterInformation&>(*source.data_information()).band();
}

} // namespace

TEST(RasterInformation, IsRegisteredAsRaster)
{
    const auto sp_information = housekeeping::AbstractDataInformationFactory::create("raster");
    EXPECT_EQ(sp_information->key(), "raster");
    EXPECT_EQ(dynamic_cast<const RasterInformation&>(*sp_information).band(), 1);
}

TEST(RasterInformation, GoesThroughADataSourcesList)
{
    const DataSource source(std::string("file:///a.tif"), boost::make_shared<RasterInformation>(3));
    EXPECT_EQ(source.info(), (QStringList{"file:///a.tif", "raster", "elevation", "metres", "3"}));
    DataSource copy;
    copy.info(source.info());
    EXPECT_EQ(band_of(copy), 3);
}

TEST(RasterInformation, GoesThroughADataSourcesText)
{
    const DataSource source(std::string("file:///a.tif"), boost::make_shared<RasterInformation>(3));
    std::stringstream text;
    text << source;
    EXPECT_EQ(text.str(), "file:///a.tif\nraster\n3\n");
    DataSource copy;
    text >> copy;
    EXPECT_EQ(copy.url(), "file:///a.tif");
    EXPECT_EQ(band_of(copy), 3);
}

TEST(RasterInformation, KeepsItsBandWhenTheSettingIsMissingOrWrong)
{
    RasterInformation information(2);
    information.info({"a", "b"}, 4);
    EXPECT_EQ(information.band(), 2);
    for (const char* wrong : {"", "x", "0", "-1", "1.5"}) {
        information.info({wrong}, 0);
        EXPECT_EQ(information.band(), 2) << wrong;
    }
    information.info({"skipped", "5"}, 1);
    EXPECT_EQ(information.band(), 5);
}
