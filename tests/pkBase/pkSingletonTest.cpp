#include <pkBase/pkSingleton.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

using pkBase::pkDestructionPhase;
using pkBase::pkDestructor;
using pkBase::pkSingleton;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

std::vector<std::string> s_events;

/// A singleton as the libraries write theirs; private all around.
class Log
{
public:
    static Log& instance() { return get_instance().get(); }
    static Log* peek() { return get_instance().peek(); }
    static void reserve() { get_instance().reserve_destruction(); }
    static void destroy_instance()
    {
        ++s_destroy_calls;
        get_instance().destroy();
    }

    static std::atomic<int> s_made;
    static int s_destroy_calls;
    static bool s_was_empty_in_destructor;
    static bool s_fail;

protected:
    Log()
    {
        if (s_fail) {
            throw std::runtime_error("no log");
        }
        std::this_thread::yield(); // gives other threads the chance to make a second one
        ++s_made;
    }
    virtual ~Log()
    {
        s_was_empty_in_destructor = peek() == nullptr;
        s_events.push_back("log");
    }

private:
    friend class pkSingleton<Log>;
    static pkSingleton<Log>& get_instance()
    {
        static pkSingleton<Log> s_holder(pkDestructionPhase(5), &Log::destroy_instance);
        return s_holder;
    }
};

std::atomic<int> Log::s_made{0};
int Log::s_destroy_calls = 0;
bool Log::s_was_empty_in_destructor = false;
bool Log::s_fail = false;

void enter(int phase, pkDestructor::Function function)
{
    pkDestructor(pkDestructionPhase(phase), function);
}

} // namespace

TEST(pkSingleton, IsMadeAtFirstUse)
{
    EXPECT_EQ(Log::s_made, 0);
    Log& log = Log::instance();
    EXPECT_EQ(Log::s_made, 1);
    EXPECT_EQ(&Log::instance(), &log);
    EXPECT_EQ(Log::s_made, 1);
}

TEST(pkSingleton, PeekNeverMakesOne)
{
    EXPECT_EQ(Log::peek(), nullptr);
    EXPECT_EQ(Log::s_made, 0);
    Log& log = Log::instance();
    EXPECT_EQ(Log::peek(), &log);
}

TEST(pkSingleton, IsRefilledAfterItWasDestroyed)
{
    Log::instance();
    Log::destroy_instance();
    EXPECT_EQ(Log::peek(), nullptr);
    EXPECT_THAT(s_events, ElementsAre("log"));
    Log::instance();
    EXPECT_EQ(Log::s_made, 2);
    EXPECT_NE(Log::peek(), nullptr);
}

TEST(pkSingleton, DestroyingNothingDoesNothing)
{
    Log::destroy_instance();
    Log::instance();
    Log::destroy_instance();
    Log::destroy_instance();
    EXPECT_THAT(s_events, ElementsAre("log"));
}

TEST(pkSingleton, HolderIsEmptyWhileTheDestructorRuns)
{
    Log::instance();
    Log::destroy_instance();
    EXPECT_TRUE(Log::s_was_empty_in_destructor);
}

TEST(pkSingleton, IsDestroyedByTheOrderedDestructionInItsPhase)
{
    enter(6, [] { s_events.push_back("six"); });
    Log::instance();
    enter(4, [] { s_events.push_back("four"); });
    pkDestructor::run();
    EXPECT_THAT(s_events, ElementsAre("four", "log", "six"));
    EXPECT_EQ(Log::peek(), nullptr);
}

TEST(pkSingleton, EntersItsDestructionOnce)
{
    Log::instance();
    Log::destroy_instance();
    Log::instance();
    Log::reserve();
    Log::s_destroy_calls = 0;
    pkDestructor::run();
    EXPECT_EQ(Log::s_destroy_calls, 1);
    EXPECT_THAT(s_events, ElementsAre("log", "log"));
}

TEST(pkSingleton, ReservedDestructionComesAfterLaterEntriesOfItsPhase)
{
    Log::reserve();
    EXPECT_EQ(Log::s_made, 0);
    enter(5, [] { s_events.push_back("later"); });
    Log::instance();
    Log::s_destroy_calls = 0;
    pkDestructor::run();
    EXPECT_THAT(s_events, ElementsAre("later", "log"));
    EXPECT_EQ(Log::s_destroy_calls, 1);
}

TEST(pkSingleton, WithoutReservationComesBeforeEarlierEntriesOfItsPhase)
{
    enter(5, [] { s_events.push_back("earlier"); });
    Log::instance();
    pkDestructor::run();
    EXPECT_THAT(s_events, ElementsAre("log", "earlier"));
}

TEST(pkSingleton, ReservedButNeverMadeIsNotMadeByTheDestruction)
{
    Log::reserve();
    pkDestructor::run();
    EXPECT_EQ(Log::s_destroy_calls, 1);
    EXPECT_EQ(Log::s_made, 0);
    EXPECT_THAT(s_events, IsEmpty());
}

TEST(pkSingleton, StaysEmptyWhenTheConstructorThrows)
{
    Log::s_fail = true;
    EXPECT_THROW(Log::instance(), std::runtime_error);
    EXPECT_EQ(Log::peek(), nullptr);
    Log::s_fail = false;
    Log& log = Log::instance();
    EXPECT_EQ(Log::peek(), &log);
    EXPECT_EQ(Log::s_made, 1);
}

TEST(pkSingleton, ManyThreadsGetOneObject)
{
    std::atomic<bool> go{false};
    std::vector<Log*> seen(16);
    std::vector<std::thread> running;
    for (Log*& p_log : seen) {
        running.emplace_back([&go, &p_log] {
            while (!go) {
                std::this_thread::yield();
            }
            p_log = &Log::instance();
        });
    }
    go = true;
    for (std::thread& thread : running) {
        thread.join();
    }
    EXPECT_EQ(std::set<Log*>(seen.begin(), seen.end()).size(), 1u);
    EXPECT_NE(seen.front(), nullptr);
    EXPECT_EQ(Log::s_made, 1);
}
