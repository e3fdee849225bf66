#include "panels/HeightProfile.h"
#include "CommandFixture.h"
#include "panels/ProfilePlot.h"
#include "support/App.h"

#include <cpl_conv.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <ogr_srs_api.h>

#include <qwt_plot_curve.h>
#include <qwt_plot_marker.h>

#include <cmath>

using namespace host_test;
using terrain::CellPlace;
using terrain::DistanceUnit;
using terrain::HeightProfile;
using terrain::ProfilePlot;
using testing::ElementsAre;

namespace {

constexpr auto row = HeightProfile::Direction::Row;
constexpr auto column = HeightProfile::Direction::Column;

std::vector<double> distances(const HeightProfile& profile)
{
    std::vector<double> found;
    for (const QPointF& point : profile.points) {
        found.push_back(point.x());
    }
    return found;
}

std::vector<double> heights(const HeightProfile& profile)
{
    std::vector<double> found;
    for (const QPointF& point : profile.points) {
        found.push_back(point.y());
    }
    return found;
}

/// Three columns and two rows in UTM zone 32.
terrain::Raster raster_in_metres(double width, double height)
{
    terrain::Raster raster = make_raster(3, 2, {1, 2, 3, 4, 5, 6});
    raster.geotransform = {440000, width, 0, 5400000, 0, height};
    OGRSpatialReferenceH system = OSRNewSpatialReference(nullptr);
    OSRImportFromEPSG(system, 32632);
    char* p_text = nullptr;
    OSRExportToWkt(system, &p_text);
    raster.reference_system = p_text;
    CPLFree(p_text);
    OSRDestroySpatialReference(system);
    return raster;
}

} // namespace

TEST(HeightProfile, GoesAlongARowOrAColumn)
{
    const terrain::Raster raster = make_raster(3, 2, {1, 2, 3, 4, 5, 6});
    const HeightProfile along_row(raster, {1, 1}, row);
    EXPECT_THAT(heights(along_row), ElementsAre(4, 5, 6));
    EXPECT_THAT(distances(along_row), ElementsAre(0, 1, 2));
    EXPECT_EQ(along_row.unit, DistanceUnit::Cells);
    EXPECT_EQ(along_row.here, QPointF(1, 5));
    EXPECT_EQ(along_row.lowest, 4);
    EXPECT_EQ(along_row.highest, 6);
    const HeightProfile along_column(raster, {2, 0}, column);
    EXPECT_THAT(heights(along_column), ElementsAre(3, 6));
    EXPECT_EQ(along_column.here, QPointF(0, 3));
}

TEST(HeightProfile, TellsDistancesOnTheEarth)
{
    const HeightProfile in_metres(raster_in_metres(30, -20), {0, 0}, column);
    EXPECT_EQ(in_metres.unit, DistanceUnit::Metres);
    EXPECT_THAT(distances(in_metres), ElementsAre(0, 20));
    const HeightProfile in_kilometres(raster_in_metres(30000, -20), {0, 0}, row);
    EXPECT_EQ(in_kilometres.unit, DistanceUnit::Kilometres);
    EXPECT_THAT(distances(in_kilometres), ElementsAre(0, 30, 60));
}

TEST(HeightProfile, RunsAsTheMapDoes)
{
    const terrain::Raster raster = raster_in_metres(-30, 20); // from the east, and from the south
    const HeightProfile along_row(raster, {0, 0}, row);
    EXPECT_THAT(heights(along_row), ElementsAre(3, 2, 1));
    EXPECT_EQ(along_row.here, QPointF(60, 1));
    EXPECT_THAT(heights(HeightProfile(raster, {0, 0}, column)), ElementsAre(4, 1));
}

TEST(HeightProfile, KnowsWhenThereIsNoHeight)
{
    const HeightProfile profile(make_raster(2, 2, {1, 2, N, N}), {0, 1}, row);
    EXPECT_FALSE(profile.has_heights);
    EXPECT_EQ(profile.points.size(), 2);
}

// The plot

TEST(ProfilePlot, HasThePointsAndTheLineAndSaysInWhat)
{
    const support::App application;
    ProfilePlot plot;
    ASSERT_TRUE(plot.show_profile(HeightProfile(make_raster(3, 1, {7, N, 9}), {2, 0}, row), "feet"));
    ASSERT_EQ(plot.curve().dataSize(), 3u);
    EXPECT_EQ(plot.curve().sample(0), QPointF(0, 7));
    EXPECT_TRUE(std::isnan(plot.curve().sample(1).y()));
    EXPECT_EQ(plot.marker().xValue(), 2);
    EXPECT_EQ(plot.axisTitle(QwtPlot::xBottom).text(), "Distance (cells)");
    EXPECT_EQ(plot.axisTitle(QwtPlot::yLeft).text(), "Height (feet)");
    EXPECT_EQ(plot.axisInterval(QwtPlot::xBottom), QwtInterval(0, 2));
    EXPECT_LT(plot.axisInterval(QwtPlot::yLeft).minValue(), 7);
    EXPECT_GT(plot.axisInterval(QwtPlot::yLeft).maxValue(), 9);
    plot.clear();
    EXPECT_EQ(plot.curve().dataSize(), 0u);
}

TEST(ProfilePlot, DrawsNothingWhereNoHeightIs)
{
    const support::App application;
    ProfilePlot plot;
    plot.resize(300, 200);
    plot.show();
    const auto is_filled_at = [&plot](double x) { // below the curve
        const QImage picture = plot.canvas()->grab().toImage();
        const int across = static_cast<int>(plot.canvasMap(QwtPlot::xBottom).transform(x));
        return picture.pixelColor(across, picture.height() - 5) != plot.canvasBackground().color();
    };
    ASSERT_TRUE(
        plot.show_profile(HeightProfile(make_raster(9, 1, {5, 5, 5, N, N, N, 5, 5, 5}), {8, 0}, row), ""));
    EXPECT_TRUE(is_filled_at(1.5));
    EXPECT_FALSE(is_filled_at(3.5));
    EXPECT_TRUE(is_filled_at(6.5));
}

TEST(ProfilePlot, TakesFlatSingleAndExtremeHeights)
{
    const support::App application;
    ProfilePlot plot;
    plot.resize(300, 200);
    plot.show();
    const auto takes = [&plot](const std::vector<double>& cells) {
        const auto count = static_cast<int>(cells.size());
        const bool is_drawn = plot.show_profile(HeightProfile(make_raster(count, 1, cells), {0, 0}, row), "");
        plot.grab();
        return is_drawn;
    };
    EXPECT_TRUE(takes({5}));
    EXPECT_TRUE(takes({5, 5, 5}));
    EXPECT_TRUE(takes({0, 0}));
    EXPECT_TRUE(takes({1e50, -1e50}));
    EXPECT_TRUE(takes({1e-50, 2e-50}));
    EXPECT_FALSE(takes({1e308, -1e308})) << "no axis has such numbers";
    EXPECT_FALSE(takes({1e-320, 2e-320}));
    EXPECT_FALSE(takes({N, N}));
    EXPECT_EQ(plot.curve().dataSize(), 0u);
}

TEST(ProfilePlot, TellsTheUnitWhereThereIsNoRoomForMore)
{
    const support::App application;
    ProfilePlot plot;
    plot.show();
    plot.show_profile(HeightProfile(make_raster(3, 1, {7, 8, 9}), {2, 0}, row), "feet");
    plot.resize(500, 300);
    EXPECT_EQ(plot.axisTitle(QwtPlot::xBottom).text(), "Distance (cells)");
    plot.resize(130, 110);
    EXPECT_EQ(plot.axisTitle(QwtPlot::xBottom).text(), "cells");
    EXPECT_EQ(plot.axisTitle(QwtPlot::yLeft).text(), "feet");
}
