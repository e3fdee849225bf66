#include "commands/WindowMeans.h"
#include "CommandFixture.h"
#include "commands/RunningSum.h"
#include "parallel/Workers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>
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

/// One cell after the other, in this thread: what the means are to be, bit by bit.
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

void expect_the_same(const Raster& raster, int radius)
{
    const auto expected = bits(means_one_by_one(raster, radius));
    for (const int threads : {1, 2, 3, 7}) {
        Workers workers(threads);
        std::vector<int> rows;
        const auto cells = window_means(raster, radius, workers, [&rows](int row) { rows.push_back(row); });
        ASSERT_TRUE(bits(cells) == expected)
            << raster.columns << " x " << raster.rows << ", radius " << radius << ", threads " << threads;
        std::vector<int> all_rows(static_cast<std::size_t>(raster.rows));
        for (int row = 0; row < raster.rows; ++row) {
            all_rows[static_cast<std::size_t>(row)] = row;
        }
        EXPECT_EQ(rows, all_rows) << "each row is told of once";
    }
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

} // namespace

TEST(WindowMeans, AreThoseOfEachWindowAddedUpByItself)
{
    Raster raster = mixed_raster(97, 61);
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
