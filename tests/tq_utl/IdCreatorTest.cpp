#include <tarqa/utilities/IdCreator.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <set>
#include <thread>
#include <type_traits>
#include <vector>

using tarqa::utilities::IdCreator;

TEST(IdCreator, StartsAtOneAndCountsUp)
{
    IdCreator creator;
    EXPECT_EQ(creator.createNextId(), 1u);
    EXPECT_EQ(creator.createNextId(), 2u);
    EXPECT_EQ(creator.createNextId(), 3u);
}

TEST(IdCreator, EachHasItsOwnSequence)
{
    IdCreator first;
    first.createNextId();
    first.createNextId();
    IdCreator second;
    EXPECT_EQ(second.createNextId(), 1u);
    EXPECT_EQ(first.createNextId(), 3u);
}

TEST(IdCreator, GivesUnsigned64BitNumbersAndIsNotCopied)
{
    EXPECT_TRUE((std::is_same<decltype(IdCreator().createNextId()), unsigned long long>::value));
    EXPECT_FALSE(std::is_copy_constructible<IdCreator>::value);
    EXPECT_FALSE(std::is_copy_assignable<IdCreator>::value);
    EXPECT_TRUE(std::has_virtual_destructor<IdCreator>::value);
}

namespace {

const std::size_t s_threads = 8;
const std::size_t s_each = 20000;

/// What several threads get at once, thread by thread; each thread's numbers must ascend.
std::vector<unsigned long long> draw_in_threads(IdCreator& creator)
{
    std::vector<std::vector<unsigned long long>> taken(s_threads);
    std::vector<std::thread> running;
    for (std::vector<unsigned long long>& numbers : taken) {
        running.emplace_back([&creator, &numbers] {
            for (std::size_t i = 0; i < s_each; ++i) {
                numbers.push_back(creator.createNextId());
            }
        });
    }
    for (std::thread& thread : running) {
        thread.join();
    }
    std::vector<unsigned long long> all;
    for (const std::vector<unsigned long long>& numbers : taken) {
        EXPECT_TRUE(std::is_sorted(numbers.begin(), numbers.end()));
        all.insert(all.end(), numbers.begin(), numbers.end());
    }
    return all;
}

} // namespace

TEST(IdCreator, ManyThreadsGetEveryNumberOnce)
{
    IdCreator creator;
    std::vector<unsigned long long> all = draw_in_threads(creator);
    std::sort(all.begin(), all.end());
    ASSERT_EQ(all.size(), s_threads * s_each);
    for (std::size_t i = 0; i < all.size(); ++i) {
        ASSERT_EQ(all[i], i + 1);
    }
}

TEST(IdCreator, NumbersAscendInTimeWhicheverThreadGetsThem)
{
    IdCreator creator;
    for (unsigned long long expected = 1; expected <= 200; expected += 2) {
        ASSERT_EQ(creator.createNextId(), expected);
        std::thread([&] { EXPECT_EQ(creator.createNextId(), expected + 1); }).join();
    }
}

TEST(IdCreatorInEachThread, LeavesNoNumberOutForTheOnlyThread)
{
    IdCreator creator(IdCreator::Order::InEachThread);
    IdCreator other(IdCreator::Order::InEachThread);
    for (unsigned long long expected = 1; expected <= 1000; ++expected) {
        ASSERT_EQ(creator.createNextId(), expected);
        ASSERT_EQ(other.createNextId(), expected);
    }
}

TEST(IdCreatorInEachThread, StartsAnewWhereAnotherOneWas)
{
    std::optional<IdCreator> creator;
    for (int round = 0; round < 3; ++round) {
        creator.emplace(IdCreator::Order::InEachThread);
        EXPECT_EQ(creator->createNextId(), 1u);
        EXPECT_EQ(creator->createNextId(), 2u);
        std::thread([&creator] {
            creator.emplace(IdCreator::Order::InEachThread);
            EXPECT_EQ(creator->createNextId(), 1u);
            EXPECT_EQ(creator->createNextId(), 2u);
        }).join();
        creator.emplace(IdCreator::Order::InEachThread);
        EXPECT_EQ(creator->createNextId(), 1u);
    }
}

TEST(IdCreatorInEachThread, GivesNothingTwiceToThreadsAfterEachOther)
{
    IdCreator creator(IdCreator::Order::InEachThread);
    std::set<unsigned long long> all;
    const auto draw = [&creator, &all] {
        unsigned long long last = 0;
        for (int i = 0; i < 100; ++i) {
            const unsigned long long number = creator.createNextId();
            EXPECT_GT(number, last);
            EXPECT_TRUE(all.insert(number).second) << number;
            last = number;
        }
    };
    for (int thread = 0; thread < 10; ++thread) {
        std::thread(draw).join(); // the first one has ended when the others come, perhaps in its place
    }
    draw();
    EXPECT_EQ(all.size(), 1100u);
}

TEST(IdCreatorInEachThread, ManyThreadsGetNoNumberTwice)
{
    IdCreator creator(IdCreator::Order::InEachThread);
    std::vector<unsigned long long> all = draw_in_threads(creator);
    std::sort(all.begin(), all.end());
    ASSERT_EQ(all.size(), s_threads * s_each);
    EXPECT_EQ(all.front(), 1u);
    EXPECT_EQ(std::adjacent_find(all.begin(), all.end()), all.end());
}
