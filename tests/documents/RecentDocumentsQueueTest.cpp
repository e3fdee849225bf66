#include "RecentDocumentsFixture.h"
#include "support/LogCapture.h"
#include "support/Phases.h"

#include <gmock/gmock.h>

#include <limits>
#include <stdexcept>
#include <type_traits>

// The list in memory: what a push does, and its bound.

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

const unsigned long long s_huge = std::numeric_limits<unsigned long long>::max();

std::string number_url(int number)
{
    return "file:///data/" + std::to_string(number) + ".dat";
}

} // namespace

TEST_F(RecentDocumentsQueue, IsOneObject)
{
    EXPECT_EQ(&Queue::instance(), &Queue::instance());
    EXPECT_EQ(&Queue::const_instance(), &Queue::instance());
    EXPECT_TRUE((std::is_same_v<decltype(Queue::const_instance()), const Queue&>));
    EXPECT_FALSE(std::is_default_constructible_v<Queue>);
    EXPECT_TRUE(std::has_virtual_destructor_v<Queue>);
}

TEST_F(RecentDocumentsQueue, IsDestroyedInPhaseFive)
{
    EXPECT_TRUE(support::goes_in_phase_five<Queue>());
}

TEST_F(RecentDocumentsQueue, IsFreshAfterItsDestruction)
{
    queue().max_size(1);
    push("file:///a");
    restart();
    EXPECT_EQ(tarqa::housekeeping::TestAccess::peek<Queue>(), nullptr);
    EXPECT_EQ(queue().size(), 0U);
    push("file:///a");
    push("file:///b");
    EXPECT_EQ(queue().size(), 2U);
}

TEST_F(RecentDocumentsQueue, IsEmptyAtFirst)
{
    EXPECT_EQ(queue().size(), 0U);
    EXPECT_TRUE(queue().begin() == queue().end());
}

TEST_F(RecentDocumentsQueue, NewDocumentsAreAppended)
{
    EXPECT_TRUE(push("file:///a"));
    EXPECT_TRUE(push("file:///b"));
    EXPECT_TRUE(push("file:///c"));
    EXPECT_THAT(urls(), ElementsAre("file:///a", "file:///b", "file:///c"));
    EXPECT_EQ(queue().size(), 3U);
}

TEST_F(RecentDocumentsQueue, KnownDocumentBecomesTheNewest)
{
    EXPECT_TRUE(push("file:///a"));
    EXPECT_TRUE(push("file:///b"));
    EXPECT_FALSE(push("file:///a"));
    EXPECT_THAT(urls(), ElementsAre("file:///b", "file:///a"));
}

TEST_F(RecentDocumentsQueue, KnownDocumentInTheMiddleLeavesTheOthersInOrder)
{
    for (const char* url : {"a", "b", "c", "d"}) {
        push(url);
    }
    EXPECT_FALSE(push("b"));
    EXPECT_THAT(urls(), ElementsAre("a", "c", "d", "b"));
}

TEST_F(RecentDocumentsQueue, NewestDocumentPushedAgainStaysTheNewest)
{
    push("a");
    push("b");
    EXPECT_FALSE(push("b"));
    EXPECT_THAT(urls(), ElementsAre("a", "b"));
}

TEST_F(RecentDocumentsQueue, KeepsTheObjectThatWasGivenLast)
{
    const auto first = source("a");
    const auto second = source("a");
    queue().push(first);
    EXPECT_EQ(queue().at(0), first);
    queue().push(second);
    EXPECT_EQ(queue().at(0), second);
    EXPECT_EQ(queue().size(), 1U);
    EXPECT_EQ(first.use_count(), 1); // let go
}

TEST_F(RecentDocumentsQueue, EntryPushedAgainIsTheSameObject)
{
    push("a");
    push("b");
    const auto entry = queue().at(0);
    EXPECT_FALSE(queue().push(queue().at(0)));
    EXPECT_THAT(urls(), ElementsAre("b", "a"));
    EXPECT_EQ(queue().at(1), entry);
}

TEST_F(RecentDocumentsQueue, DocumentsDifferByCase)
{
    EXPECT_TRUE(push("file:///data/A.dat"));
    EXPECT_TRUE(push("file:///data/a.dat"));
    EXPECT_TRUE(push("FILE:///data/a.dat"));
    EXPECT_EQ(queue().size(), 3U);
}

TEST_F(RecentDocumentsQueue, DocumentsDifferByTheWritingOfTheirUrls)
{
    EXPECT_TRUE(push("file:///data/a%20b.dat"));
    EXPECT_TRUE(push("file:///data/a b.dat"));
    EXPECT_TRUE(push("/data/a b.dat"));
    EXPECT_TRUE(push("file:///data/./a b.dat"));
    EXPECT_TRUE(push(" /data/a b.dat"));
    EXPECT_EQ(queue().size(), 5U);
}

TEST_F(RecentDocumentsQueue, DocumentsWithOneDisplayKeyAreTwo)
{
    const auto first = source("a");
    const auto second = source("b");
    first->ds_key("North field");
    second->ds_key("North field");
    EXPECT_TRUE(queue().push(first));
    EXPECT_TRUE(queue().push(second));
    EXPECT_EQ(queue().size(), 2U);
}

TEST_F(RecentDocumentsQueue, EmptyUrlChangesNothing)
{
    push("a");
    EXPECT_FALSE(push(""));
    EXPECT_FALSE(queue().push(boost::make_shared<DataSource>()));
    EXPECT_THAT(urls(), ElementsAre("a"));
}

TEST_F(RecentDocumentsQueue, SeveralFilesHaveNoUrlAndChangeNothing)
{
    const std::vector<std::string> files = {"file:///a", "file:///b"};
    EXPECT_FALSE(queue().push(boost::make_shared<DataSource>(files, nullptr)));
    EXPECT_EQ(queue().size(), 0U);
}

TEST_F(RecentDocumentsQueue, EmptyUrlDropsNoSurplus)
{
    for (int i = 0; i < 3; ++i) {
        push(number_url(i));
    }
    queue().max_size(1);
    EXPECT_FALSE(push(""));
    EXPECT_EQ(queue().size(), 3U);
}

TEST_F(RecentDocumentsQueue, NothingIsLoggedAndChangesNothing)
{
    push("a");
    support::LogCapture log;
    EXPECT_FALSE(queue().push(nullptr));
    EXPECT_TRUE(log.take("housekeeping/src/RecentDocumentsQueue:"));
    EXPECT_THAT(urls(), ElementsAre("a"));
    EXPECT_TRUE(push("b"));
}

TEST_F(RecentDocumentsQueue, KeepsTwentyDocuments)
{
    for (int i = 0; i < 20; ++i) {
        EXPECT_TRUE(push(number_url(i)));
    }
    EXPECT_EQ(queue().size(), 20U);
    EXPECT_EQ(queue().at(0)->url(), number_url(0));
}

TEST_F(RecentDocumentsQueue, TwentyFirstDocumentDropsTheOldest)
{
    for (int i = 0; i < 20; ++i) {
        push(number_url(i));
    }
    EXPECT_TRUE(push(number_url(20)));
    EXPECT_EQ(queue().size(), 20U);
    EXPECT_EQ(queue().at(0)->url(), number_url(1));
    EXPECT_EQ(queue().at(19)->url(), number_url(20));
}

TEST_F(RecentDocumentsQueue, KnownDocumentDropsNothingWhenFull)
{
    for (int i = 0; i < 20; ++i) {
        push(number_url(i));
    }
    EXPECT_FALSE(push(number_url(7)));
    EXPECT_EQ(queue().size(), 20U);
    EXPECT_EQ(queue().at(0)->url(), number_url(0));
    EXPECT_EQ(queue().at(19)->url(), number_url(7));
}

TEST_F(RecentDocumentsQueue, DroppedDocumentIsNewAgain)
{
    queue().max_size(1);
    push("a");
    push("b");
    EXPECT_TRUE(push("a"));
    EXPECT_THAT(urls(), ElementsAre("a"));
}

TEST_F(RecentDocumentsQueue, DroppedDocumentIsLetGo)
{
    queue().max_size(1);
    const auto dropped = source("a");
    queue().push(dropped);
    EXPECT_EQ(dropped.use_count(), 2);
    push("b");
    EXPECT_EQ(dropped.use_count(), 1);
}

TEST_F(RecentDocumentsQueue, MaximumOfOneKeepsTheNewest)
{
    queue().max_size(1);
    EXPECT_TRUE(push("a"));
    EXPECT_TRUE(push("b"));
    EXPECT_FALSE(push("b"));
    EXPECT_THAT(urls(), ElementsAre("b"));
}

TEST_F(RecentDocumentsQueue, MaximumOfZeroKeepsNothing)
{
    queue().max_size(0);
    EXPECT_TRUE(push("a"));
    EXPECT_TRUE(push("a")); // it was not kept, so it is new each time
    EXPECT_THAT(urls(), IsEmpty());
}

TEST_F(RecentDocumentsQueue, HugeMaximumKeepsEverything)
{
    queue().max_size(s_huge);
    for (int i = 0; i < 1000; ++i) {
        EXPECT_TRUE(push(number_url(i)));
    }
    EXPECT_EQ(queue().size(), 1000U);
}

TEST_F(RecentDocumentsQueue, SmallerMaximumDropsNothingAtOnce)
{
    for (int i = 0; i < 5; ++i) {
        push(number_url(i));
    }
    queue().max_size(2);
    EXPECT_EQ(queue().size(), 5U);
}

TEST_F(RecentDocumentsQueue, SmallerMaximumDropsOneForEachNewDocument)
{
    for (int i = 0; i < 5; ++i) {
        push(number_url(i));
    }
    queue().max_size(2);
    EXPECT_TRUE(push("new"));
    EXPECT_THAT(urls(), ElementsAre(number_url(1), number_url(2), number_url(3), number_url(4), "new"));
    EXPECT_TRUE(push("newer"));
    EXPECT_EQ(queue().size(), 5U); // the surplus stays
}

TEST_F(RecentDocumentsQueue, SmallerMaximumDropsNothingForAKnownDocument)
{
    for (int i = 0; i < 3; ++i) {
        push(number_url(i));
    }
    queue().max_size(1);
    EXPECT_FALSE(push(number_url(0)));
    EXPECT_THAT(urls(), ElementsAre(number_url(1), number_url(2), number_url(0)));
}

TEST_F(RecentDocumentsQueue, MaximumOfZeroDropsOneOfManyForEachNewDocument)
{
    push("a");
    push("b");
    queue().max_size(0);
    EXPECT_TRUE(push("c"));
    EXPECT_THAT(urls(), ElementsAre("b", "c"));
}

TEST_F(RecentDocumentsQueue, LargerMaximumMakesRoom)
{
    queue().max_size(1);
    push("a");
    queue().max_size(2);
    push("b");
    EXPECT_THAT(urls(), ElementsAre("a", "b"));
}

TEST_F(RecentDocumentsQueue, EntriesAreNumberedFromTheOldest)
{
    push("a");
    push("b");
    push("c");
    EXPECT_EQ(queue().at(0)->url(), "a");
    EXPECT_EQ(queue().at(1)->url(), "b");
    EXPECT_EQ(queue().at(2)->url(), "c");
    EXPECT_EQ((*queue().begin())->url(), "a");
    EXPECT_EQ((*(queue().end() - 1))->url(), "c");
    EXPECT_EQ(queue().end() - queue().begin(), 3);
    EXPECT_EQ(Queue::const_instance().size(), 3U);
    EXPECT_TRUE(Queue::const_instance().begin() == queue().begin());
}

TEST_F(RecentDocumentsQueue, IteratorsAreConstant)
{
    EXPECT_TRUE((std::is_same_v<decltype(*queue().begin()), const boost::shared_ptr<DataSource>&>));
    EXPECT_TRUE((std::is_same_v<decltype(*queue().end()), const boost::shared_ptr<DataSource>&>));
}

TEST_F(RecentDocumentsQueue, NoEntryBehindTheLast)
{
    push("a");
    for (const unsigned long long i : {1ULL, 2ULL, 1ULL << 32U, s_huge}) {
        try {
            queue().at(i);
            ADD_FAILURE() << "entry " << i;
        } catch (const std::out_of_range& e) {
            EXPECT_STREQ(e.what(), "invalid deque<T> subscript");
        }
    }
    EXPECT_EQ(queue().at(0)->url(), "a");
}

TEST_F(RecentDocumentsQueue, NoEntryInAnEmptyList)
{
    try {
        queue().at(0);
        ADD_FAILURE();
    } catch (const std::out_of_range& e) {
        EXPECT_STREQ(e.what(), "invalid deque<T> subscript");
    }
}
