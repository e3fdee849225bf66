#include "support/App.h"
#include "support/LogCapture.h"
#include "support/MessageSpy.h"
#include "support/Phases.h"
#include "support/StartedApplication.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/ThreadLocal.h>

#include <QtCore/QThreadStorage>

#include <gtest/gtest.h>

#include <algorithm>
#include <thread>
#include <vector>

namespace {

using support::LogCapture;
using tarqa::housekeeping::ApplicationManager;
using tarqa::housekeeping::TestAccess;
using tarqa::housekeeping::ThreadLocal;

const char* const s_source = "housekeeping/src/ApplicationManager"; // of all of the start-up

/// The number that a new thread gets; 0 if it does not keep it.
unsigned int number_of_a_new_thread()
{
    unsigned int number = 0;
    std::thread([&number] {
        const unsigned int first = ThreadLocal::instance().thread_local_id();
        number = ThreadLocal::instance().thread_local_id() == first ? first : 0;
    }).join();
    return number;
}

bool is_main_thread_for_a_new_thread()
{
    bool is_main = false;
    std::thread([&is_main] { is_main = ThreadLocal::instance().is_main_thread(); }).join();
    return is_main;
}

TEST(ThreadLocalIds, MainThreadIsTheFirst)
{
    ThreadLocal& threads = ThreadLocal::instance();
    EXPECT_EQ(threads.main_thread_id(), 1u);
    EXPECT_EQ(threads.thread_local_id(), 1u);
    EXPECT_EQ(&ThreadLocal::instance(), &threads);
}

TEST(ThreadLocalIds, ManagerMakesTheMainThreadTheFirst)
{
    ApplicationManager::instance();
    ASSERT_NE(TestAccess::peek<ThreadLocal>(), nullptr);
    EXPECT_EQ(number_of_a_new_thread(), 2u); // although it asks before the main thread does
    EXPECT_EQ(ThreadLocal::instance().thread_local_id(), 1u);
    EXPECT_EQ(ThreadLocal::instance().main_thread_id(), 1u);
    EXPECT_TRUE(ThreadLocal::instance().is_main_thread());
}

TEST(ThreadLocalIds, ThreadsAreCountedAsTheyAsk)
{
    ThreadLocal::instance();
    EXPECT_EQ(number_of_a_new_thread(), 2u);
    EXPECT_EQ(number_of_a_new_thread(), 3u);
    EXPECT_EQ(number_of_a_new_thread(), 4u);
    EXPECT_EQ(ThreadLocal::instance().thread_local_id(), 1u);
}

TEST(ThreadLocalIds, ThreadsThatDoNotAskAreNotCounted)
{
    ThreadLocal::instance();
    std::thread([] {}).join();
    EXPECT_FALSE(is_main_thread_for_a_new_thread()); // asks for its own number too
    EXPECT_EQ(number_of_a_new_thread(), 3u);
}

TEST(ThreadLocalIds, ManyThreadsAtOnceGetNumbersOfTheirOwn)
{
    const unsigned int count = 32;
    ThreadLocal::instance();
    std::vector<unsigned int> numbers(count);
    std::vector<std::thread> threads;
    threads.reserve(count);
    for (unsigned int& number : numbers) {
        threads.emplace_back([&number] { number = ThreadLocal::instance().thread_local_id(); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    std::sort(numbers.begin(), numbers.end());
    for (unsigned int i = 0; i < count; ++i) {
        EXPECT_EQ(numbers[i], i + 2);
    }
}

TEST(ThreadLocalIds, ThreadsOfQtAreCountedToo)
{
    const support::App app;
    ThreadLocal::instance();
    support::EventThread thread;
    QObject inside;
    inside.moveToThread(&thread);
    unsigned int number = 0;
    QMetaObject::invokeMethod(
        &inside, [&number] { number = ThreadLocal::instance().thread_local_id(); },
        Qt::BlockingQueuedConnection);
    EXPECT_EQ(number, 2u);
    QMetaObject::invokeMethod(
        &inside, [&number] { number = ThreadLocal::instance().thread_local_id(); },
        Qt::BlockingQueuedConnection);
    EXPECT_EQ(number, 2u);
}

TEST(ThreadLocalIds, MainThreadIsToldFromTheOthers)
{
    ThreadLocal::instance();
    EXPECT_FALSE(is_main_thread_for_a_new_thread());
    EXPECT_TRUE(ThreadLocal::instance().is_main_thread());
    unsigned int seen = 0;
    std::thread([&seen] { seen = ThreadLocal::instance().main_thread_id(); }).join();
    EXPECT_EQ(seen, 1u);
}

TEST(ThreadLocalIds, SurviveTheApplicationObject)
{
    ThreadLocal::instance();
    { // which wipes the main thread's storage when it goes
        support::App app;
        EXPECT_EQ(ThreadLocal::instance().thread_local_id(), 1u);
    }
    EXPECT_EQ(ThreadLocal::instance().thread_local_id(), 1u);
    EXPECT_EQ(ThreadLocal::instance().main_thread_id(), 1u);
    EXPECT_TRUE(ThreadLocal::instance().is_main_thread());
    EXPECT_EQ(number_of_a_new_thread(), 2u);
}

TEST(ThreadLocalIds, SurviveTheManager)
{
    const support::StartedApplication started;
    TestAccess::destroy<ApplicationManager>();
    EXPECT_EQ(QCoreApplication::instance(), nullptr);
    ASSERT_NE(TestAccess::peek<ThreadLocal>(), nullptr);
    EXPECT_EQ(ThreadLocal::instance().thread_local_id(), 1u);
    EXPECT_TRUE(ThreadLocal::instance().is_main_thread());
    EXPECT_FALSE(is_main_thread_for_a_new_thread());
}

TEST(ThreadLocalIds, AreThereInPhaseFive)
{
    EXPECT_TRUE(support::goes_in_phase_five<ThreadLocal>());
}

TEST(ThreadLocalIds, StorageMustBeEmptyAtFirst)
{
    LogCapture log;
    { // Qt gives the place of a storage that is gone to the next one, with what the thread has left there.
        QThreadStorage<unsigned int> former;
        former.setLocalData(99);
    }
    ThreadLocal& threads = ThreadLocal::instance();
    EXPECT_TRUE(
        log.took_assert("!m_thread_local_ids.hasLocalData()", "ThreadLocal::ThreadLocal()", s_source));
    EXPECT_TRUE(threads.is_main_thread());
    EXPECT_NE(threads.main_thread_id(), 0u);
}

TEST(ThreadLocalIds, MissingMainThreadIsLogged)
{
    LogCapture log;
    ThreadLocal& threads = ThreadLocal::instance();
    TestAccess::main_thread_id(threads, 0);
    EXPECT_EQ(threads.main_thread_id(), 0u);
    EXPECT_TRUE(log.took_assert("m_main_thread_id", "ThreadLocal::main_thread_id()", s_source));
    threads.is_main_thread();
    EXPECT_TRUE(log.took_assert("m_main_thread_id", "ThreadLocal::is_main_thread()", s_source));
}

} // namespace
