#include "commands/RunningSum.h"

#include <gtest/gtest.h>

using terrain::RunningSum;

TEST(RunningSum, AddsWhatEntersAndTakesAwayWhatLeaves)
{
    RunningSum sum;
    sum.enter(3, 1);
    sum.enter(10, 2);
    EXPECT_EQ(sum.sum(), 13);
    EXPECT_EQ(sum.count(), 3u);
    sum.leave(3, 1);
    EXPECT_EQ(sum.sum(), 10);
    EXPECT_EQ(sum.count(), 2u);
}

TEST(RunningSum, AHugeTermThatLeftLeavesNothingBehind)
{
    RunningSum sum;
    sum.enter(0.1, 1);
    sum.enter(1e20, 1);
    sum.enter(0.2, 1);
    sum.leave(1e20, 1);
    EXPECT_DOUBLE_EQ(sum.sum(), 0.1 + 0.2);
}

TEST(RunningSum, IsExactlyZeroWhenEverythingHasLeft)
{
    RunningSum sum;
    sum.enter(0.1, 1);
    sum.enter(0.7, 1);
    sum.leave(0.7, 1);
    sum.leave(0.1, 1);
    EXPECT_EQ(sum.sum(), 0);
    EXPECT_EQ(sum.count(), 0u);
}

TEST(RunningTotal, IsTheSameSumWithoutCounting)
{
    terrain::RunningTotalOf<double> total;
    total.enter(0.1, 1);
    total.enter(1e20, 1);
    total.enter(0.2, 1);
    total.leave(1e20, 1);
    EXPECT_DOUBLE_EQ(total.sum(), 0.1 + 0.2);
    EXPECT_EQ(total.count(), 0);
}
