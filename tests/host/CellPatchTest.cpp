#include "commands/CellPatch.h"
#include "CommandFixture.h"

#include <gtest/gtest.h>

using namespace host_test;
using terrain::CellPatch;

namespace {

void expect_restored(const std::vector<double>& before, const std::vector<double>& after)
{
    const CellPatch patch(before, after);
    std::vector<double> cells = after;
    patch.restore(cells);
    EXPECT_EQ(bits(cells), bits(before));
}

} // namespace

TEST(CellPatch, RestoresWhatChanged)
{
    expect_restored({1, 2, 3, 4, 5, 6, 7, 8}, {1, 20, 3, 4, 5, 6, 70, 80});
    expect_restored({0.1, 0.2, 0.3}, {1, 2, 3});
    expect_restored({5}, {6});
    expect_restored({}, {});
}

TEST(CellPatch, LeavesCellsAloneThatDidNotChange)
{
    const CellPatch patch({1, 2, 3, 4, 5, 6, 7, 8}, {9, 2, 3, 4, 5, 6, 7, 8});
    std::vector<double> cells = {0, 0, 0, 0, 0, 0, 0, 0};
    patch.restore(cells);
    EXPECT_EQ(cells, (std::vector<double>{1, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(CellPatch, CountsACellWhoseSignAloneChanged)
{
    const CellPatch patch({0.0, -0.0, 1}, {-0.0, -0.0, 1});
    EXPECT_EQ(patch.changed(), 1u);
    expect_restored({0.0, -0.0, 1}, {-0.0, 0.0, 1});
}

TEST(CellPatch, DoesNotCountCellsWithoutDataThatStaySo)
{
    EXPECT_EQ(CellPatch({N, 1, N}, {N, 2, N}).changed(), 1u);
    expect_restored({N, 1, N}, {1, N, N});
}

TEST(CellPatch, CountsOnlyChangesThoughItKeepsGaps)
{
    EXPECT_EQ(CellPatch({1, 2, 3, 4, 5}, {0, 2, 0, 4, 0}).changed(), 3u);
    EXPECT_EQ(CellPatch().changed(), 0u);
}

TEST(CellPatch, RestoresRandomChanges)
{
    const std::vector<double> before = mixed_raster(40, 30).cells;
    for (const std::size_t step : {1u, 2u, 3u, 4u, 5u, 17u}) {
        std::vector<double> after = before;
        for (std::size_t i = 0; i < after.size(); i += step) {
            after[i] = static_cast<double>(i) / 3;
        }
        expect_restored(before, after);
    }
}

TEST(CellPatch, HoldsNoMoreThanTheChangedCells)
{
    std::vector<double> before(100000, 0.1);
    std::vector<double> after = before;
    for (std::size_t i = 5000; i < 5100; ++i) {
        after[i] = 2;
    }
    EXPECT_LE(CellPatch(before, after).bytes(), 100 * sizeof(double) + 200);
}

TEST(CellPatch, HoldsNoMoreThanACopyWhenEverySecondCellChanges)
{
    std::vector<double> before(100000, 0.1);
    std::vector<double> after = before;
    for (std::size_t i = 0; i < after.size(); i += 2) {
        after[i] = 2;
    }
    EXPECT_LE(CellPatch(before, after).bytes(), before.size() * sizeof(double) + 200);
}

TEST(CellPatch, HoldsHalfACopyWhenThirtyTwoBitsAreEnough)
{
    const std::vector<double> before(100000, 0.5);
    const std::vector<double> after(100000, 0.1);
    EXPECT_LE(CellPatch(before, after).bytes(), before.size() * sizeof(float) + 200);
}
