#include "parallel/Workers.h"

#include <gtest/gtest.h>

#include <atomic>
#include <set>
#include <stdexcept>
#include <thread>
#include <vector>

using terrain::Workers;

namespace {

/// How often each part is done.
std::vector<int> counts_of(Workers& workers, std::size_t parts)
{
    std::vector<int> counts(parts);
    workers.run(parts, [&counts](std::size_t part) { ++counts[part]; });
    return counts;
}

} // namespace

TEST(Workers, DoEachPartOnceHoweverManyThereAre)
{
    for (const int threads : {-1, 0, 1, 2, 3, 8}) {
        Workers workers(threads);
        for (const std::size_t parts : {0u, 1u, 2u, 7u, 1000u, 0u, 3u}) {
            EXPECT_EQ(counts_of(workers, parts), std::vector<int>(parts, 1)) << threads << ", " << parts;
        }
    }
}

TEST(Workers, RowsAreCoveredByRangesWithoutGaps)
{
    for (const int rows : {0, 1, 4, 5, 6, 99}) {
        Workers workers(3);
        std::vector<int> counts(static_cast<std::size_t>(rows));
        workers.run_rows(rows, 5, [&counts](int first, int end) {
            EXPECT_LE(end - first, 5);
            for (int row = first; row < end; ++row) {
                ++counts[static_cast<std::size_t>(row)];
            }
        });
        EXPECT_EQ(counts, std::vector<int>(static_cast<std::size_t>(rows), 1)) << rows;
    }
}

TEST(Workers, OnlyTheOwnerWorksWhereItIsAlone)
{
    Workers workers(1);
    std::set<std::thread::id> threads;
    workers.run(50, [&threads](std::size_t) { threads.insert(std::this_thread::get_id()); });
    EXPECT_EQ(threads, std::set<std::thread::id>{std::this_thread::get_id()});
    EXPECT_EQ(workers.threads(), 1);
}

TEST(Workers, OtherThreadsTakePart)
{
    Workers workers(2);
    std::atomic<bool> other_came{false};
    const auto owner = std::this_thread::get_id();
    // The owner's part ends only when the other thread has begun one.
    workers.run(2, [&](std::size_t) {
        if (std::this_thread::get_id() != owner) {
            other_came = true;
        }
        while (!other_came) {
            std::this_thread::yield();
        }
    });
    EXPECT_TRUE(other_came);
}

TEST(Workers, WhatAThreadThrowsReachesTheOwnerAndTheRestIsLeftOut)
{
    Workers workers(3);
    std::atomic<std::size_t> done{0};
    for (const bool by_owner : {false, true}) {
        done = 0;
        const auto owner = std::this_thread::get_id();
        std::atomic<bool> threw{false};
        const auto work = [&](std::size_t) {
            if ((std::this_thread::get_id() == owner) == by_owner && !threw.exchange(true)) {
                throw std::runtime_error("no");
            }
            while (!threw) {
                std::this_thread::yield();
            }
            ++done;
        };
        EXPECT_THROW(workers.run(1 << 20, work), std::runtime_error);
        EXPECT_LT(done, std::size_t(1 << 20) - 1);
    }
    EXPECT_EQ(counts_of(workers, 10), std::vector<int>(10, 1)) << "it works on after that";
}
