#include "io/ContourLines.h"
#include "CommandFixture.h"
#include "HeightsOf.h"
#include "documents/RoundStep.h"

#include <tarqa/housekeeping/HousekeepingException.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>

using namespace host_test;
using terrain::contour_interval;
using terrain::contour_lines;
using terrain::ContourLine;
using terrain::Raster;
using testing::DoubleNear;
using testing::ElementsAre;

namespace {

std::set<double> heights_of(const std::vector<ContourLine>& lines)
{
    std::set<double> heights;
    for (const ContourLine& line : lines) {
        heights.insert(line.height);
    }
    return heights;
}

bool is_closed(const ContourLine& line)
{
    return line.points.front() == line.points.back();
}

const double s_nearly = 1e-5; ///< GDAL moves lines a bit that would go through the middle of a cell
const double s_middle = 20.5; ///< of the cone, columns and rows

/// A cone of 41 x 41 cells, 99 high; it falls by 4.7 for each cell.
double cone(int column, int row)
{
    return 99 - 4.7 * std::hypot(column + 0.5 - s_middle, row + 0.5 - s_middle);
}

double plane(int column, int)
{
    return 10.0 * column;
}

} // namespace

TEST(ContourLines, OfAPlaneAreStraightAndStandForTheMiddlesOfCells)
{
    const auto lines = contour_lines(raster_of(6, 4, plane), 20); // 0 to 50
    EXPECT_THAT(heights_of(lines), testing::IsSupersetOf({20.0, 40.0}));
    for (const ContourLine& line : lines) {
        if (line.height > 0) {
            for (const QPointF& point : line.points) {
                EXPECT_NEAR(point.x(), line.height / 10 + 0.5, s_nearly);
            }
        }
    }
}

TEST(ContourLines, ReachFromEdgeToEdge)
{
    for (const ContourLine& line : contour_lines(raster_of(6, 4, plane), 20)) {
        const auto [low, high] = std::minmax_element(line.points.begin(), line.points.end(),
            [](const QPointF& one, const QPointF& other) { return one.y() < other.y(); });
        EXPECT_EQ(low->y(), 0) << line.height;
        EXPECT_EQ(high->y(), 4) << line.height;
    }
}

TEST(ContourLines, OfAConeAreCircles)
{
    const auto lines = contour_lines(raster_of(41, 41, cone), 25);
    std::vector<double> closed;
    for (const ContourLine& line : lines) {
        if (!is_closed(line)) {
            continue; // it is cut off by the edge
        }
        closed.push_back(line.height);
        for (const QPointF& point : line.points) {
            const double radius = std::hypot(point.x() - s_middle, point.y() - s_middle);
            EXPECT_NEAR(radius, (99 - line.height) / 4.7, 0.1) << line.height;
        }
    }
    std::sort(closed.begin(), closed.end());
    EXPECT_THAT(closed, ElementsAre(25, 50, 75)) << "one circle for each height";
}

TEST(ContourLines, EndWhereCellsHoldNoData)
{
    Raster raster = raster_of(9, 9, [](int, int row) { return row * 10.0; });
    for (int row = 0; row < 9; ++row) {
        raster.cells[raster.index(4, row)] = N;
    }
    const auto lines = contour_lines(raster, 20);
    ASSERT_FALSE(lines.empty());
    for (const ContourLine& line : lines) {
        for (const QPointF& point : line.points) {
            EXPECT_TRUE(point.x() <= 4 || point.x() >= 5) << line.height << " at " << point.x();
        }
    }
    EXPECT_EQ(
        std::count_if(lines.begin(), lines.end(), [](const auto& line) { return line.height == 40; }), 2)
        << "one on each side of the gap";
}

TEST(ContourLines, FlatGroundHasNone)
{
    EXPECT_TRUE(contour_lines(raster_of(5, 5, [](int, int) { return 12.5; }), 10).empty());
    EXPECT_TRUE(contour_lines(raster_of(5, 5, [](int, int) { return 20.0; }), 10).empty())
        << "also at the height of a line";
}

TEST(ContourLines, ARasterWithoutHeightsHasNone)
{
    EXPECT_TRUE(contour_lines(raster_of(3, 3, [](int, int) { return N; }), 10).empty());
    EXPECT_TRUE(contour_lines(Raster(), 10).empty());
}

TEST(ContourLines, ASingleCellHasNone)
{
    EXPECT_TRUE(contour_lines(make_raster(1, 1, {42}), 10).empty());
}

TEST(ContourLines, OneRowAndOneColumnAreCrossed)
{
    const auto across = contour_lines(raster_of(5, 1, plane), 25);
    ASSERT_EQ(heights_of(across).count(25), 1U);
    for (const ContourLine& line : across) {
        if (line.height == 25) {
            EXPECT_NEAR(line.points.front().x(), 3, s_nearly);
            EXPECT_EQ(std::abs(line.points.front().y() - line.points.back().y()), 1);
        }
    }
    const auto down = contour_lines(raster_of(1, 5, [](int, int row) { return 10.0 * row; }), 25);
    ASSERT_EQ(heights_of(down).count(25), 1U);
    for (const ContourLine& line : down) {
        if (line.height == 25) {
            EXPECT_NEAR(line.points.front().y(), 3, s_nearly);
        }
    }
}

TEST(ContourLines, LieAtMultiplesOfTheIntervalBelowZeroToo)
{
    const auto lines = contour_lines(raster_of(7, 3, [](int column, int) { return 10.0 * column - 35; }), 20);
    EXPECT_THAT(heights_of(lines), ElementsAre(-20, 0, 20));
}

TEST(ContourLines, AnIntervalBelowTheSmallestStepGivesSeveralLinesBetweenTwoCells)
{
    const auto lines = contour_lines(make_raster(2, 2, {0.5, 9.5, 0.5, 9.5}), 1);
    EXPECT_THAT(heights_of(lines), ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 9));
    for (const ContourLine& line : lines) {
        EXPECT_NEAR(line.points.front().x(), 0.5 + (line.height - 0.5) / 9, s_nearly);
    }
}

TEST(ContourLines, HugeAndTinyHeightsAreNoMatter)
{
    for (const double factor : {1e300, 1e9, 1e-9, 1e-300}) {
        const auto lines = contour_lines(
            raster_of(6, 4, [factor](int column, int) { return (1000 + 10.0 * column + 5) * factor; }),
            20 * factor);
        ASSERT_EQ(heights_of(lines).size(), 2U) << factor;
        EXPECT_THAT(*heights_of(lines).begin() / factor, DoubleNear(1020, 1e-9)) << factor;
        EXPECT_NEAR(
            lines.front().points.front().x(), (lines.front().height / factor - 1005) / 10 + 0.5, s_nearly)
            << factor;
    }
}

TEST(ContourLines, SmallDifferencesHighUpAreFound)
{
    const auto lines
        = contour_lines(raster_of(6, 4, [](int column, int) { return 1e9 + 0.01 * column + 0.005; }), 0.02);
    EXPECT_EQ(heights_of(lines).size(), 2U);
}

TEST(ContourLines, HaveALimit)
{
    const Raster raster = raster_of(2, 2, [](int column, int row) { return column == row ? 0.5 : 999.5; });
    EXPECT_EQ(heights_of(contour_lines(raster, 1)).size(), 999U);
    EXPECT_THROW(contour_lines(raster, 0.99), housekeeping::HousekeepingException);
    EXPECT_THROW(contour_lines(raster, 1e-300), housekeeping::HousekeepingException);
}

TEST(ContourLines, AnIntervalMustBePositive)
{
    const Raster raster = make_raster(2, 1, {1, 5});
    for (const double wrong : {0.0, -1.0, terrain::no_data}) {
        EXPECT_THROW(contour_lines(raster, wrong), housekeeping::HousekeepingException) << wrong;
    }
}

TEST(ContourInterval, IsRoundAndGivesAboutTenToTwentyHeights)
{
    EXPECT_EQ(contour_interval(0, 100), 10);
    EXPECT_EQ(contour_interval(0, 200), 20);
    EXPECT_EQ(contour_interval(0, 400), 20);
    EXPECT_EQ(contour_interval(0, 1000), 100);
    EXPECT_EQ(contour_interval(141, 547), 20);
    EXPECT_EQ(contour_interval(-430, 8848), 500);
    EXPECT_DOUBLE_EQ(contour_interval(0, 0.1), 0.01);
    EXPECT_DOUBLE_EQ(contour_interval(1e6, 1e6 + 3), 0.2);
}

TEST(ContourInterval, StaysWithinItsNumberOfHeights)
{
    for (double range = 1e-6; range < 1e9; range *= 1.07) {
        const double interval = contour_interval(0, range);
        EXPECT_GE(range / interval, 9.9) << range;
        EXPECT_LE(range / interval, 25.1) << range;
    }
}

TEST(ContourInterval, IsOneWithoutARange)
{
    EXPECT_EQ(contour_interval(5, 5), 1);
    EXPECT_EQ(contour_interval(terrain::no_data, terrain::no_data), 1);
    EXPECT_EQ(contour_interval(0, std::numeric_limits<double>::infinity()), 1);
    EXPECT_EQ(contour_interval(7, 3), 1);
}

TEST(ContourInterval, OfHugeHeightsIsANumber)
{
    const double huge = std::numeric_limits<double>::max();
    const double interval = contour_interval(-huge, huge);
    EXPECT_TRUE(std::isfinite(interval));
    EXPECT_GT(interval, huge / 25);
}

TEST(RoundStep, IsOneTwoOrFiveTimesAPowerOfTen)
{
    EXPECT_EQ(terrain::round_step(180), 100);
    EXPECT_EQ(terrain::round_step(200), 200);
    EXPECT_EQ(terrain::round_step(499), 200);
    EXPECT_EQ(terrain::round_step(5400), 5000);
    EXPECT_EQ(terrain::round_step(1000), 1000);
    EXPECT_DOUBLE_EQ(terrain::round_step(0.07), 0.05);
}

TEST(RoundStep, KnowsHowManyDecimalsItNeeds)
{
    EXPECT_EQ(terrain::decimals_of(500), 0);
    EXPECT_EQ(terrain::decimals_of(1), 0);
    EXPECT_EQ(terrain::decimals_of(0.5), 1);
    EXPECT_EQ(terrain::decimals_of(0.1), 1);
    EXPECT_EQ(terrain::decimals_of(0.02), 2);
}
