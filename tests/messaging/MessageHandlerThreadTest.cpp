#include "support/App.h"
#include "support/MessageSpy.h"
#include "support/MutexWatch.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/ApplicationMessage.h>
#include <tarqa/housekeeping/DocumentMessage.h>
#include <tarqa/housekeeping/MessageHandler.h>

#include <gtest/gtest.h>

#include <atomic>
#include <map>
#include <thread>
#include <vector>

namespace {

using support::App;
using support::ApplicationMessageSpy;
using support::DocumentMessageSpy;
using tarqa::housekeeping::ApplicationMessage;
using tarqa::housekeeping::DocumentId;
using tarqa::housekeeping::DocumentMessage;
using tarqa::housekeeping::MessageHandler;
using tarqa::housekeeping::TestAccess;

TEST(MessageHandlerThreads, WorkersPostIsDeliveredOnTheMainThread)
{
    const App app;
    ApplicationMessageSpy spy;
    MessageHandler::instance();
    std::thread([] { ApplicationMessage::instance()->post(); }).join();
    EXPECT_EQ(spy.count(), 0);
    ASSERT_TRUE(spy.wait_for(1));
    EXPECT_EQ(spy.received().front().thread, QThread::currentThread());
}

TEST(MessageHandlerThreads, WorkersPostsAreDeliveredAfterEachOther)
{
    const App app;
    ApplicationMessageSpy spy;
    MessageHandler::instance();
    for (int round = 1; round <= 3; ++round) { // the timer was stopped in between
        std::thread([] { ApplicationMessage::instance()->post(); }).join();
        ASSERT_TRUE(spy.wait_for(round));
    }
    EXPECT_EQ(spy.count(), 3);
}

TEST(MessageHandlerThreads, EveryPostOfManyThreadsArrivesInItsThreadsOrder)
{
    const int threads = 8;
    const int posts = 500;
    const App app;
    DocumentMessageSpy spy;
    MessageHandler& handler = MessageHandler::instance();
    std::vector<std::thread> workers;
    for (int thread = 0; thread < threads; ++thread) {
        workers.emplace_back([thread] {
            for (int number = 0; number < posts; ++number) {
                DocumentMessage* p_message = DocumentMessage::instance();
                p_message->doc_change_type(static_cast<DocumentMessage::DocChangeType>(number));
                p_message->id(DocumentId::build(static_cast<unsigned long long>(thread)));
                p_message->post();
            }
        });
    }
    EXPECT_TRUE(spy.wait_for(threads * posts)); // while they post
    for (std::thread& worker : workers) {
        worker.join();
    }
    std::map<unsigned long long, int> next;
    for (const support::ReceivedDocumentMessage& entry : spy.received()) {
        EXPECT_EQ(entry.type, next[entry.id]++);
        EXPECT_EQ(entry.thread, QThread::currentThread());
    }
    EXPECT_EQ(spy.count(), threads * posts);
    EXPECT_EQ(TestAccess::queued(handler), 0);
}

TEST(MessageHandlerThreads, PostWaitsWhileASlotOfAPostedMessageRuns)
{
    const App app;
    ApplicationMessageSpy spy;
    MessageHandler& handler = MessageHandler::instance();
    std::atomic<bool> posted{false};
    std::thread poster;
    spy.run_in_slot([&](ApplicationMessage&) {
        if (spy.count() > 1) {
            return;
        }
        const support::MutexWatch<QMutex> watch(TestAccess::mutex(handler));
        poster = std::thread([&posted] {
            ApplicationMessage::instance()->post();
            posted = true;
        });
        while (!posted && !watch.somebody_waits()) {
            std::this_thread::yield();
        }
        EXPECT_FALSE(posted);
    });
    ApplicationMessage::instance()->post();
    TestAccess::idleTimeout(handler);
    poster.join();
    EXPECT_TRUE(posted);
    ASSERT_TRUE(spy.wait_for(2));
    EXPECT_EQ(spy.count(), 2);
}

TEST(MessageHandlerThreads, SubscriberInAnotherThreadGetsAPostedMessageToo)
{
    const App app;
    ApplicationMessageSpy spy;
    support::EventThread thread;
    spy.moveToThread(&thread);
    ApplicationMessage::instance()->post();
    ASSERT_TRUE(spy.wait_for(1));
    EXPECT_EQ(spy.received().front().thread, &thread);
    thread.quit();
    thread.wait();
}

} // namespace
