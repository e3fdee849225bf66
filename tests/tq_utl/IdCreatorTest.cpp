#include <tarqa/utilities/IdCreator.h>

#include <gtest/gtest.h>

#include <algorithm>
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

TEST(IdCreator, ManyThreadsGetEveryNumberOnce)
{
    const std::size_t threads = 8;
    const std::size_t each = 20000;
    IdCreator creator;
    std::vector<std::vector<unsigned long long>> taken(threads);
    std::vector<std::thread> running;
    for (std::vector<unsigned long long>& numbers : taken) {
        running.emplace_back([&creator, &numbers] {
            for (std::size_t i = 0; i < each; ++i) {
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
    std::sort(all.begin(), all.end());
    ASSERT_EQ(all.size(), threads * each);
    for (std::size_t i = 0; i < all.size(); ++i) {
        ASSERT_EQ(all[i], i + 1);
    }
}
