#include "MessageFamilyFixture.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QPointer>

#include <thread>
#include <type_traits>

namespace {

using support::EventThread;
using tarqa::housekeeping::Message;

/// Sender and subscriber in different threads.
template <class Spy>
class MessageFamilyThreads : public testing::Test
{
private:
    support::App m_app;
};

TYPED_TEST_SUITE(MessageFamilyThreads, ThreadedSpies, SpyNames);

TYPED_TEST(MessageFamilyThreads, SubscriberInAnotherThreadGetsACopyThere)
{
    typedef typename TypeParam::Sent X;
    TypeParam here;
    TypeParam there;
    EventThread thread;
    there.moveToThread(&thread);
    QPointer<X> message = X::instance();
    const void* p_address = message;
    Message::dispatch(message);
    EXPECT_EQ(here.count(), 1);
    EXPECT_TRUE(message.isNull()); // the copy does not need it
    ASSERT_TRUE(there.wait_for(1));
    EXPECT_EQ(there.received().front().thread, &thread);
    EXPECT_NE(there.received().front().message, p_address);
    EXPECT_EQ(here.received().front().message, p_address);
    thread.quit();
    thread.wait();
}

TYPED_TEST(MessageFamilyThreads, SenderInAnotherThreadReachesTheMainThread)
{
    typedef typename TypeParam::Sent X;
    TypeParam spy;
    std::thread([] { Message::dispatch(X::instance()); }).join();
    EXPECT_EQ(spy.count(), 0); // queued
    ASSERT_TRUE(spy.wait_for(1));
    EXPECT_EQ(spy.received().front().thread, QCoreApplication::instance()->thread());
}

TYPED_TEST(MessageFamilyThreads, DirectSubscriberIsCalledInTheSendingThread)
{
    typedef typename TypeParam::Sent X;
    TypeParam spy(support::Subscription::None);
    X::subscribe(&spy, Qt::DirectConnection);
    QThread* p_sender = nullptr;
    std::thread([&p_sender] {
        p_sender = QThread::currentThread();
        Message::dispatch(X::instance());
    }).join();
    ASSERT_EQ(spy.count(), 1);
    EXPECT_EQ(spy.received().front().thread, p_sender);
}

TYPED_TEST(MessageFamilyThreads, EverySubscriberGetsItsOwnCopy)
{
    typedef typename TypeParam::Sent X;
    TypeParam first;
    TypeParam second;
    EventThread thread;
    first.moveToThread(&thread);
    second.moveToThread(&thread);
    first.run_in_slot([](X& message) { message.setObjectName("changed by the first"); });
    QString seen = "nothing";
    second.run_in_slot([&seen](X& message) { seen = message.objectName(); });
    Message::dispatch(X::instance());
    ASSERT_TRUE(first.wait_for(1));
    ASSERT_TRUE(second.wait_for(1));
    thread.quit();
    thread.wait();
    EXPECT_EQ(seen, "");
}

} // namespace
