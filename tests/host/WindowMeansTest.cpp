#include "commands/WindowMeans.h"
#include "CommandFixture.h"
#include "commands/RunningSum.h"
#include "parallel/Workers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <numeric>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>

using namespace host_test;
using terrain::no_data;
using terrain::Raster;
using terrain::RunningSum;
using terrain::Workers;

namespace {

void move(RunningSum& window, double height, int sign)
{
    if (!terrain::is_no_data(height)) {
        sign > 0 ? window.enter(height, 1) : window.leave(height, 1);
    }
}

/// The parts of a row that lie in the windows of its cells, one after the other.
std::vector<RunningSum> parts_of(const Raster& raster, int row, int radius)
{
    std::vector<RunningSum> parts;
    RunningSum window;
    for (int column = -radius; column < raster.columns; ++column) {
        if (column + radius < raster.columns) {
            move(window, raster.cell(column + radius, row), 1);
        }
        if (column - radius - 1 >= 0) {
            move(window, raster.cell(column - radius - 1, row), -1);
        }
        if (column >= 0) {
            parts.push_back(window);
        }
    }
    return parts;
}

/// One cell after the other, from the first one on, in this thread: what the means are to be.
std::vector<double> means_one_by_one(const Raster& raster, int radius)
{
    std::vector<double> cells(raster.cells.size(), no_data);
    std::vector<RunningSum> windows(static_cast<std::size_t>(raster.columns));
    const auto enter = [&](int row) {
        const auto parts = parts_of(raster, row, radius);
        for (std::size_t i = 0; i < windows.size(); ++i) {
            windows[i].enter(parts[i].sum(), parts[i].count());
        }
    };
    const auto leave = [&](int row) {
        const auto parts = parts_of(raster, row, radius);
        for (std::size_t i = 0; i < windows.size(); ++i) {
            windows[i].leave(parts[i].sum(), parts[i].count());
        }
    };
    for (int row = 0; row < std::min(radius, raster.rows); ++row) {
        enter(row);
    }
    for (int row = 0; row < raster.rows; ++row) {
        if (row > radius) {
            leave(row - radius - 1);
        }
        if (row + radius < raster.rows) {
            enter(row + radius);
        }
        for (int column = 0; column < raster.columns; ++column) {
            const RunningSum& window = windows[static_cast<std::size_t>(column)];
            if (!terrain::is_no_data(raster.cell(column, row))) {
                cells[raster.index(column, row)] = window.sum() / window.count();
            }
        }
    }
    return cells;
}

std::vector<int> all_rows(const Raster& raster)
{
    std::vector<int> rows(static_cast<std::size_t>(raster.rows));
    std::iota(rows.begin(), rows.end(), 0);
    return rows;
}

/// How many of the means are further from those one by one than @p tolerance, in parts of them.
int count_wrong(const std::vector<double>& means, const Raster& raster, int radius, double tolerance)
{
    const auto expected = means_one_by_one(raster, std::min(radius, std::max(raster.columns, raster.rows)));
    int wrong = 0;
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const bool right = terrain::is_no_data(expected[i])
            ? terrain::is_no_data(means[i])
            : std::abs(means[i] - expected[i]) <= tolerance * (std::abs(expected[i]) + 1);
        wrong += right ? 0 : 1;
    }
    return wrong;
}

/// The same bits with any number of threads, all rows told of once and in order, and the right means.
void expect_the_same(const Raster& raster, int radius)
{
    SCOPED_TRACE(std::to_string(raster.columns) + " x " + std::to_string(raster.rows) + ", radius "
        + std::to_string(radius));
    Workers alone(1);
    const auto expected = window_means(raster, radius, alone, [](int) {});
    ASSERT_EQ(expected.size(), raster.cells.size());
    EXPECT_EQ(count_wrong(expected, raster, radius, 1e-12), 0);
    for (const int threads : {1, 2, 3, 7}) {
        Workers workers(threads);
        std::vector<int> rows;
        const auto cells = window_means(raster, radius, workers, [&rows](int row) { rows.push_back(row); });
        EXPECT_TRUE(bits(cells) == bits(expected)) << threads << " threads";
        EXPECT_EQ(rows, all_rows(raster)) << threads << " threads";
    }
}

/// Heights of all kinds in every cell.
Raster full_raster(int columns, int rows)
{
    Raster raster = mixed_raster(columns, rows);
    for (double& cell : raster.cells) {
        cell = terrain::is_no_data(cell) ? 0.7 : cell;
    }
    return raster;
}

/// The mean of one window, added up by itself with more digits than the means have.
long double mean_of(const Raster& raster, int centre_column, int centre_row, int radius)
{
    long double sum = 0;
    int count = 0;
    for (int row = std::max(0, centre_row - radius); row <= std::min(raster.rows - 1, centre_row + radius);
         ++row) {
        for (int column = std::max(0, centre_column - radius);
             column <= std::min(raster.columns - 1, centre_column + radius); ++column) {
            if (!terrain::is_no_data(raster.cell(column, row))) {
                sum += raster.cell(column, row);
                ++count;
            }
        }
    }
    return sum / count;
}

/// @param raster not by reference: one of its heights is raised
void expect_windows_added_up(Raster raster)
{
    raster.cells[raster.index(50, 30)] = 1e12; // whose rounding must not stay behind in other windows
    for (const int radius : {1, 3, 20}) {
        Workers workers(2);
        const auto cells = window_means(raster, radius, workers, [](int) {});
        for (int row = 0; row < raster.rows; ++row) {
            for (int column = 0; column < raster.columns; ++column) {
                const double mean = cells[raster.index(column, row)];
                if (terrain::is_no_data(raster.cell(column, row))) {
                    EXPECT_TRUE(terrain::is_no_data(mean));
                    continue;
                }
                const long double expected = mean_of(raster, column, row, radius);
                ASSERT_NEAR(mean, static_cast<double>(expected), 1e-12 * std::abs(mean) + 1e-12)
                    << column << ", " << row << ", radius " << radius;
            }
        }
    }
}

} // namespace

TEST(WindowMeans, AreThoseOfEachWindowAddedUpByItself)
{
    expect_windows_added_up(mixed_raster(97, 61));
}

TEST(WindowMeans, AreSoWhereEveryCellHasAHeight)
{
    expect_windows_added_up(full_raster(97, 61));
}

TEST(WindowMeans, AreTheSameBitByBitHoweverManyThreadsThereAre)
{
    for (const int radius : {1, 2, 5, 40}) {
        for (const auto& size :
            {std::pair(1, 1), {1, 37}, {37, 1}, {2, 2}, {23, 17}, {513, 3}, {1031, 211}}) {
            expect_the_same(mixed_raster(size.first, size.second), radius);
        }
    }
    expect_the_same(mixed_raster(3, 70001), 2);
    expect_the_same(mixed_raster(70001, 3), 2);
    expect_the_same(make_raster(1, 1, {N}), 1);
}

TEST(WindowMeans, AreTheSameAroundTheBordersOfTiles)
{
    for (const int radius : {1, 2, 7}) {
        for (const int columns : {1, 2, 511, 512, 513}) {
            for (const int rows : {1, 2, 63, 64, 65, 129}) {
                expect_the_same(mixed_raster(columns, rows), radius);
                expect_the_same(full_raster(columns, rows), radius);
            }
        }
    }
}

TEST(WindowMeans, LargeWindowsMakeLargeTiles)
{
    for (const int radius : {33, 150, 1000, INT_MAX}) {
        for (const auto& size : {std::pair(700, 131), {131, 700}, {1300, 67}}) {
            expect_the_same(mixed_raster(size.first, size.second), radius);
            expect_the_same(full_raster(size.first, size.second), radius);
        }
    }
}

TEST(WindowMeans, TilesWithAndWithoutGapsLieBesideEachOther)
{
    Raster raster = full_raster(1100, 200);
    raster.cells[raster.index(600, 100)] = N;
    expect_the_same(raster, 2);
    for (int row = 0; row < raster.rows; row += 3) { // stripes, one of them from border to border
        std::fill_n(raster.cells.begin() + static_cast<std::ptrdiff_t>(raster.index(0, row)), 700, N);
    }
    expect_the_same(raster, 1);
    std::fill(raster.cells.begin(), raster.cells.end(), N);
    expect_the_same(raster, 3);
}

TEST(WindowMeans, AMountainInAnotherTileLeavesNothingBehind)
{
    for (const int column : {100, 511, 512, 513}) {
        Raster raster = make_raster(1100, 130, std::vector<double>(1100 * 130, 0.25));
        raster.cells[raster.index(column, 63)] = 1e20;
        Workers workers(2);
        const auto means = window_means(raster, 2, workers, [](int) {});
        for (int row = 0; row < raster.rows; ++row) {
            for (int i = 0; i < raster.columns; ++i) {
                const bool sees_it = std::abs(i - column) <= 2 && std::abs(row - 63) <= 2;
                ASSERT_EQ(means[raster.index(i, row)] == 0.25, !sees_it) << i << ", " << row;
            }
        }
    }
}

TEST(WindowMeans, WindowsThatBecomeEmptyStartAnew)
{
    std::vector<double> cells(700 * 40, N);
    cells[0] = 1e20;
    cells[699] = -0.0;
    cells[700 * 39] = 0.25;
    expect_the_same(make_raster(700, 40, cells), 3);
}

TEST(WindowMeans, NothingIsMadeOfNothing)
{
    Workers workers(2);
    EXPECT_TRUE(window_means(Raster(), 2, workers, [](int) { FAIL(); }).empty());
}

TEST(WindowMeans, RowsAreToldOfInTheCallersThreadWhichMayEndIt)
{
    const Raster raster = mixed_raster(1031, 211);
    Workers workers(3);
    const auto caller = std::this_thread::get_id();
    const auto end_at = [&](int row) {
        EXPECT_EQ(std::this_thread::get_id(), caller);
        if (row == 100) {
            throw std::runtime_error("enough");
        }
    };
    EXPECT_THROW(window_means(raster, 2, workers, end_at), std::runtime_error);
}

TEST(WindowMeans, WorkersThatWereEndedServeAgain)
{
    const Raster raster = mixed_raster(1031, 211);
    for (const int threads : {1, 2, 7}) {
        Workers workers(threads);
        const auto end_at_once = [](int) { throw std::runtime_error("enough"); };
        EXPECT_THROW(window_means(raster, 150, workers, end_at_once), std::runtime_error);
        int rows = 0;
        window_means(raster, 150, workers, [&rows](int) { ++rows; });
        EXPECT_EQ(rows, raster.rows);
    }
}
