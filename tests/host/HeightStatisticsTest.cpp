#include "panels/HeightStatistics.h"
#include "CommandFixture.h"
#include "panels/StatisticsRun.h"
#include "support/App.h"
#include "support/MessageSpy.h"

#include <QtTest/QSignalSpy>

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <random>

using namespace host_test;
using terrain::height_statistics;
using terrain::HeightStatistics;
using testing::ElementsAre;

namespace {

HeightStatistics statistics_of(const std::vector<double>& cells)
{
    const std::atomic<bool> cancelled{false};
    return height_statistics(cells, cancelled).value();
}

std::size_t sum(const std::vector<std::size_t>& bars)
{
    return std::accumulate(bars.begin(), bars.end(), std::size_t(0));
}

double right_edge(const HeightStatistics& statistics)
{
    return statistics.first_edge + static_cast<double>(statistics.bars.size()) * statistics.bar_width;
}

} // namespace

TEST(HeightStatistics, TellsTheFiguresOfAFewHeights)
{
    const HeightStatistics found = statistics_of({2, 4, N, 4, 4, 5, 5, N, 7, 9});
    EXPECT_EQ(found.cells, 10u);
    EXPECT_EQ(found.without_data, 2u);
    EXPECT_EQ(found.heights(), 8u);
    EXPECT_EQ(found.lowest, 2);
    EXPECT_EQ(found.highest, 9);
    EXPECT_DOUBLE_EQ(found.mean, 5);
    EXPECT_DOUBLE_EQ(found.median, 4.5);
    EXPECT_DOUBLE_EQ(found.deviation, 2);
}

TEST(HeightStatistics, OfNothingAreNone)
{
    EXPECT_EQ(statistics_of({}).cells, 0u);
    const HeightStatistics found = statistics_of({N, N});
    EXPECT_EQ(found.cells, 2u);
    EXPECT_EQ(found.heights(), 0u);
    EXPECT_TRUE(found.bars.empty());
}

TEST(HeightStatistics, OfOneCellAreThatCell)
{
    const HeightStatistics found = statistics_of({-3.25});
    EXPECT_EQ(found.mean, -3.25);
    EXPECT_EQ(found.median, -3.25);
    EXPECT_EQ(found.deviation, 0);
    EXPECT_THAT(found.bars, ElementsAre(1u));
    EXPECT_LT(found.first_edge, -3.25);
    EXPECT_GT(right_edge(found), -3.25);
}

TEST(HeightStatistics, OfAFlatRasterHaveNoDeviation)
{
    for (const double height : {0.0, 812.1, -1e300, 1e-300}) {
        const HeightStatistics found = statistics_of(std::vector<double>(1000, height));
        EXPECT_EQ(found.mean, height);
        EXPECT_EQ(found.median, height);
        EXPECT_EQ(found.deviation, 0);
        EXPECT_THAT(found.bars, ElementsAre(1000u));
        EXPECT_GT(found.bar_width, 0);
    }
}

TEST(HeightStatistics, KeepTheirDigitsFarFromZero)
{
    // The squares of such heights have no digits left for the differences.
    const HeightStatistics found = statistics_of({1e9 + 4, 1e9 + 7, 1e9 + 13, 1e9 + 16});
    EXPECT_DOUBLE_EQ(found.mean, 1e9 + 10);
    EXPECT_DOUBLE_EQ(found.deviation, std::sqrt(22.5));
    EXPECT_DOUBLE_EQ(found.median, 1e9 + 10);
}

TEST(HeightStatistics, TakeHugeAndTinyHeights)
{
    const double huge = std::numeric_limits<double>::max();
    const HeightStatistics of_huge = statistics_of({-huge, huge, huge, -huge});
    EXPECT_EQ(of_huge.mean, 0);
    EXPECT_EQ(of_huge.median, 0);
    EXPECT_DOUBLE_EQ(of_huge.deviation, huge);
    EXPECT_EQ(sum(of_huge.bars), 4u);
    EXPECT_EQ(of_huge.bars.front(), 2u);
    EXPECT_EQ(of_huge.bars.back(), 2u);

    const double tiny = std::numeric_limits<double>::denorm_min();
    const HeightStatistics of_tiny = statistics_of({tiny, tiny, 3 * tiny});
    EXPECT_EQ(of_tiny.median, tiny);
    EXPECT_GE(of_tiny.mean, tiny);
    EXPECT_LE(of_tiny.mean, 3 * tiny);
    EXPECT_EQ(sum(of_tiny.bars), 3u);
}

TEST(HeightStatistics, MedianIsExactHoweverTheHeightsLie)
{
    std::mt19937_64 engine(3);
    for (const std::size_t count : {1000u, 1001u, 70000u}) {
        std::vector<double> cells(count);
        for (double& cell : cells) {
            cell = std::exp(static_cast<double>(engine() % 100000) / 5000) - 20;
        }
        cells[7] = 1e12; // nearly all others in one class
        std::vector<double> sorted = cells;
        std::sort(sorted.begin(), sorted.end());
        const double expected = (sorted[(count - 1) / 2] + sorted[count / 2]) / 2;
        EXPECT_EQ(statistics_of(cells).median, expected) << count;
    }
}

TEST(HeightStatistics, BarsHaveRoundEdgesAndCountEachHeightOnce)
{
    std::vector<double> cells;
    for (int height = 103; height <= 297; ++height) {
        cells.push_back(height);
    }
    const HeightStatistics found = statistics_of(cells);
    EXPECT_EQ(found.bar_width, 5);
    EXPECT_EQ(found.first_edge, 100);
    ASSERT_EQ(found.bars.size(), 40u);
    EXPECT_EQ(found.bars.front(), 2u) << "103 and 104";
    EXPECT_EQ(found.bars[1], 5u) << "105 to 109";
    EXPECT_EQ(found.bars.back(), 3u) << "295 to 297";
    EXPECT_EQ(sum(found.bars), cells.size());
}

TEST(HeightStatistics, BarsReachAroundAllHeights)
{
    std::mt19937_64 engine(5);
    for (const double extent : {1e-9, 0.3, 7.0, 12345.0, 1e15}) {
        std::vector<double> cells;
        for (int i = 0; i < 500; ++i) {
            cells.push_back(-extent / 3 + extent * static_cast<double>(engine() % 1000) / 1000);
        }
        const HeightStatistics found = statistics_of(cells);
        EXPECT_GE(found.bars.size(), 15u) << extent;
        EXPECT_LE(found.bars.size(), 52u) << extent;
        EXPECT_LE(found.first_edge, found.lowest) << extent;
        EXPECT_GE(right_edge(found), found.highest) << extent;
        EXPECT_EQ(sum(found.bars), cells.size()) << extent;
    }
}

TEST(HeightStatistics, AreNoneWhenCancelled)
{
    const std::atomic<bool> cancelled{true};
    EXPECT_FALSE(height_statistics({1, 2, 3}, cancelled).has_value());
}

// In a thread of their own

namespace {

class StatisticsRunTest : public testing::Test
{
protected:
    support::App application;
    terrain::StatisticsRun run;
    QSignalSpy finished{&run, &terrain::StatisticsRun::finished};
    const std::vector<double> few = {1, 2, 3};
    const std::vector<double> many = std::vector<double>(4000000, 5.0);
};

} // namespace

TEST_F(StatisticsRunTest, DeliversItsResultToTheMainThread)
{
    HeightStatistics result;
    QObject::connect(&run, &terrain::StatisticsRun::finished, &run, [&](const HeightStatistics& found) {
        EXPECT_EQ(QThread::currentThread(), qApp->thread());
        result = found;
    });
    run.start(few);
    EXPECT_TRUE(run.is_running());
    ASSERT_TRUE(support::wait_until([this] { return finished.count() == 1; }));
    EXPECT_FALSE(run.is_running());
    EXPECT_EQ(result.mean, 2);
}

TEST_F(StatisticsRunTest, NothingComesAfterItWasStopped)
{
    {
        const std::vector<double> cells = many;
        run.start(cells);
        run.stop();
        EXPECT_FALSE(run.is_running());
    } // and nobody reads the cells any more
    QCoreApplication::processEvents();
    EXPECT_EQ(finished.count(), 0);
}

TEST_F(StatisticsRunTest, AResultThatIsOnItsWayIsDroppedToo)
{
    run.start(few);
    QThread::msleep(50); // enough for the other thread, and if not, it is the case above
    run.stop();
    QCoreApplication::processEvents();
    EXPECT_EQ(finished.count(), 0);
}

TEST_F(StatisticsRunTest, OnlyTheLastOfTwoRunsCounts)
{
    double mean = 0;
    QObject::connect(&run, &terrain::StatisticsRun::finished, &run,
        [&mean](const HeightStatistics& found) { mean = found.mean; });
    run.start(many);
    run.start(few);
    ASSERT_TRUE(support::wait_until([this] { return !run.is_running(); }));
    QCoreApplication::processEvents();
    EXPECT_EQ(finished.count(), 1);
    EXPECT_EQ(mean, 2);
    EXPECT_EQ(run.started(), 2);
}
