#include "commands/Shore.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>

using terrain::Shore;

namespace {

bool comes_first(const Shore::Cell& one, const Shore::Cell& other)
{
    return one.height != other.height ? one.height < other.height : one.place < other.place;
}

/// Takes cells from a shore to which others come meanwhile, none lower than the one that was taken last, and
/// expects the lowest each time.
void expect_lowest_first(double lowest, double highest, std::size_t cells)
{
    std::mt19937_64 engine(5);
    Shore shore({lowest, highest}, cells);
    std::vector<Shore::Cell> all; // sorted, the first one at the end
    const auto add_from = [&](double low) {
        const double fraction = static_cast<double>(engine() % 65) / 64;
        const Shore::Cell cell{low + (highest / 2 - low / 2) * fraction * 2,
            {static_cast<std::uint32_t>(engine() % 9), static_cast<std::uint32_t>(engine() % 9)}};
        shore.add(cell);
        const auto place = std::upper_bound(all.begin(), all.end(), cell,
            [](const Shore::Cell& one, const Shore::Cell& other) { return comes_first(other, one); });
        all.insert(place, cell);
    };
    for (int i = 0; i < 300; ++i) {
        add_from(lowest);
    }
    for (int taken = 0; !all.empty(); ++taken) {
        ASSERT_FALSE(shore.empty());
        const Shore::Cell cell = shore.take();
        ASSERT_EQ(cell.height, all.back().height);
        ASSERT_EQ(cell.place.row, all.back().place.row);
        ASSERT_EQ(cell.place.column, all.back().place.column);
        all.pop_back();
        if (taken < 1000 && taken % 3 != 0) {
            add_from(cell.height);
        }
    }
    EXPECT_TRUE(shore.empty());
}

} // namespace

TEST(Shore, GivesTheLowestCellAndOfEqualOnesTheFirst)
{
    expect_lowest_first(100, 900, 1 << 20);
    expect_lowest_first(-3, 5, 100);
}

TEST(Shore, KnowsHeightsOfEverySize)
{
    const double huge = std::numeric_limits<double>::max() / 4;
    expect_lowest_first(-huge, huge, 1 << 20);
    expect_lowest_first(0, std::numeric_limits<double>::denorm_min() * 64, 1 << 20);
    expect_lowest_first(7, 7, 1 << 20);
}
