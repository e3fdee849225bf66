#include "MessageFamilyFixture.h"

#include "support/LogCapture.h"

#include <pkBase/pkDestructor.h>

#include <QtCore/QMetaMethod>
#include <QtCore/QPointer>

#include <stdexcept>
#include <type_traits>

namespace {

using support::LogCapture;
using support::Subscription;
using tarqa::housekeeping::Message;
using tarqa::housekeeping::TestAccess;

template <class Spy>
class MessageFamily : public testing::Test
{
protected:
    static std::string signature(const char* name)
    {
        return std::string(name) + '(' + NamesOf<Spy>::value.signal_type + "&)";
    }
};

TYPED_TEST_SUITE(MessageFamily, AllSpies, SpyNames);

TYPED_TEST(MessageFamily, IsAMessageWithPublicCopies)
{
    typedef typename TypeParam::Sent X;
    EXPECT_TRUE((std::is_base_of_v<Message, X>));
    EXPECT_TRUE(std::is_copy_constructible_v<X>);
    EXPECT_FALSE(std::is_copy_constructible_v<Message>);
    EXPECT_FALSE(std::is_destructible_v<Message>);
}

TYPED_TEST(MessageFamily, SignalNamesItsParameterWithTheNamespace)
{
    const QMetaObject& meta = TypeParam::Sent::staticMetaObject;
    EXPECT_GE(meta.indexOfSignal(this->signature("message_dispatched").c_str()), 0);
    EXPECT_STREQ(meta.className(), NamesOf<TypeParam>::value.full); // the context of tr()
}

TYPED_TEST(MessageFamily, InstanceMakesAFreshMessageWithoutAParent)
{
    typedef typename TypeParam::Sent X;
    QPointer<X> first = X::instance();
    QPointer<X> second = X::instance();
    EXPECT_NE(first, second);
    EXPECT_EQ(first->parent(), nullptr);
    delete first;
    EXPECT_FALSE(second.isNull());
    delete second;
}

TYPED_TEST(MessageFamily, StaticDispatchSendsAtOnceAndDeletes)
{
    typedef typename TypeParam::Sent X;
    TypeParam spy;
    QPointer<X> message = X::instance();
    const void* p_address = message;
    bool alive_in_slot = false;
    spy.run_in_slot([&message, &alive_in_slot](X&) { alive_in_slot = !message.isNull(); });
    Message::dispatch(message);
    ASSERT_EQ(spy.count(), 1);
    EXPECT_EQ(spy.received().front().message, p_address); // no copy on the way
    EXPECT_EQ(spy.received().front().thread, QThread::currentThread());
    EXPECT_TRUE(alive_in_slot);
    EXPECT_TRUE(message.isNull());
}

TYPED_TEST(MessageFamily, OwnDispatchSendsAtOnceAndKeeps)
{
    typedef typename TypeParam::Sent X;
    TypeParam spy;
    X message;
    QPointer<X> still_there = &message;
    message.dispatch();
    message.dispatch();
    ASSERT_EQ(spy.count(), 2);
    EXPECT_EQ(spy.received().front().message, &message);
    EXPECT_FALSE(still_there.isNull());
}

TYPED_TEST(MessageFamily, DispatchWithoutSubscribersDoesNothing)
{
    typedef typename TypeParam::Sent X;
    QPointer<X> message = X::instance();
    Message::dispatch(message);
    EXPECT_TRUE(message.isNull());
}

TYPED_TEST(MessageFamily, SubscribesTheFixedSlot)
{
    typedef typename TypeParam::Sent X;
    TypeParam spy(Subscription::None);
    X().dispatch();
    EXPECT_EQ(spy.count(), 0);
    EXPECT_TRUE(X::subscribe(&spy, Qt::AutoConnection));
    X().dispatch();
    EXPECT_EQ(spy.count(), 1);
}

TYPED_TEST(MessageFamily, SubscribesANamedSlot)
{
    typedef typename TypeParam::Sent X;
    TypeParam spy(Subscription::None);
    const std::string slot = '1' + this->signature("other_slot");
    EXPECT_TRUE(X::subscribe(&spy, slot.c_str(), Qt::AutoConnection));
    X().dispatch();
    EXPECT_EQ(spy.count(), 1);
}

TYPED_TEST(MessageFamily, SecondSubscriptionIsASecondConnection)
{
    typedef typename TypeParam::Sent X;
    TypeParam spy;
    EXPECT_TRUE(X::subscribe(&spy, Qt::AutoConnection));
    X().dispatch();
    EXPECT_EQ(spy.count(), 2);
}

TYPED_TEST(MessageFamily, UniqueConnectionIsMadeOnce)
{
    typedef typename TypeParam::Sent X;
    TypeParam spy;
    EXPECT_FALSE(X::subscribe(&spy, Qt::UniqueConnection));
    X().dispatch();
    EXPECT_EQ(spy.count(), 1);
}

TYPED_TEST(MessageFamily, ObjectWithoutTheSlotIsNotSubscribed)
{
    typedef typename TypeParam::Sent X;
    QObject receiver;
    EXPECT_FALSE(X::subscribe(&receiver, Qt::AutoConnection));
    EXPECT_FALSE(X::unsubscribe(&receiver));
    EXPECT_FALSE(X::subscribe(&receiver, "1no_such_slot()", Qt::AutoConnection));
    TypeParam spy(Subscription::None);
    const std::string other_spelling
        = std::string("1handle_message(") + NamesOf<TypeParam>::value.full + "&)";
    EXPECT_FALSE(X::subscribe(&spy, other_spelling.c_str(), Qt::AutoConnection));
}

TYPED_TEST(MessageFamily, UnsubscribesEverySlotOfTheReceiver)
{
    typedef typename TypeParam::Sent X;
    TypeParam spy;
    TypeParam other;
    const std::string slot = '1' + this->signature("other_slot");
    X::subscribe(&spy, slot.c_str(), Qt::AutoConnection);
    EXPECT_TRUE(X::unsubscribe(&spy));
    X().dispatch();
    EXPECT_EQ(spy.count(), 0);
    EXPECT_EQ(other.count(), 1);
    EXPECT_FALSE(X::unsubscribe(&spy));
}

TYPED_TEST(MessageFamily, NobodyIsUnsubscribedForNull)
{
    typedef typename TypeParam::Sent X;
    TypeParam spy;
    EXPECT_FALSE(X::unsubscribe(nullptr));
    X().dispatch();
    EXPECT_EQ(spy.count(), 1);
}

TYPED_TEST(MessageFamily, SubscriberMayUnsubscribeDuringTheCall)
{
    typedef typename TypeParam::Sent X;
    TypeParam spy;
    TypeParam other;
    bool completed = false;
    spy.run_in_slot([&spy, &completed](X& message) {
        EXPECT_TRUE(X::unsubscribe(&spy));
        EXPECT_NE(message.metaObject(), nullptr);
        completed = true;
    });
    X().dispatch();
    EXPECT_TRUE(completed);
    EXPECT_EQ(other.count(), 1);
    X().dispatch();
    EXPECT_EQ(spy.count(), 1);
    EXPECT_EQ(other.count(), 2);
}

TYPED_TEST(MessageFamily, DeadSubscribersAreForgotten)
{
    typedef typename TypeParam::Sent X;
    {
        TypeParam spy;
    }
    X().dispatch();
    TypeParam spy;
    EXPECT_EQ(spy.count(), 0);
}

TYPED_TEST(MessageFamily, SubscribersAreCalledInTheOrderOfSubscription)
{
    typedef typename TypeParam::Sent X;
    TypeParam first;
    TypeParam second;
    std::string order;
    first.run_in_slot([&order](X&) { order += '1'; });
    second.run_in_slot([&order](X&) { order += '2'; });
    X().dispatch();
    EXPECT_EQ(order, "12");
}

TYPED_TEST(MessageFamily, SubscriberMaySendAtOnce)
{
    typedef typename TypeParam::Sent X;
    TypeParam spy;
    spy.run_in_slot([&spy](X&) {
        if (spy.count() < 3) {
            X().dispatch();
        }
    });
    X().dispatch();
    EXPECT_EQ(spy.count(), 3);
}

TYPED_TEST(MessageFamily, ThrowingSubscriberLeaksNothing)
{
    typedef typename TypeParam::Sent X;
    TypeParam spy;
    TypeParam later;
    spy.run_in_slot([](X&) { throw std::runtime_error("slot"); });
    QPointer<X> message = X::instance();
    EXPECT_THROW(Message::dispatch(message), std::runtime_error);
    EXPECT_TRUE(message.isNull());
    EXPECT_EQ(later.count(), 0);

    X on_stack;
    EXPECT_THROW(on_stack.dispatch(), std::runtime_error);
}

TYPED_TEST(MessageFamily, CopyHasNeitherParentNorConnections)
{
    typedef typename TypeParam::Sent X;
    QObject parent;
    bool destroyed = false; // until the original has gone
    X original;
    original.setParent(&parent);
    original.setObjectName("original");
    QObject::connect(&original, &QObject::destroyed, [&destroyed] { destroyed = true; });
    {
        const X copy(original);
        EXPECT_EQ(copy.parent(), nullptr);
        EXPECT_EQ(copy.objectName(), "");
    }
    EXPECT_FALSE(destroyed);
}

TYPED_TEST(MessageFamily, NullToTheClassInstanceIsLogged)
{
    typedef typename TypeParam::Sent X;
    LogCapture capture;
    TypeParam spy;
    TestAccess::class_instance_dispatch<X>(nullptr);
    EXPECT_TRUE(
        capture.took_assert("p_message", "::class_instance_dispatch(", NamesOf<TypeParam>::value.source));
    EXPECT_EQ(spy.count(), 0);
}

TYPED_TEST(MessageFamily, ClassInstanceDispatchEmitsOnTheObjectItIsCalledOn)
{
    typedef typename TypeParam::Sent X;
    TypeParam subscriber;
    TypeParam spy(Subscription::None);
    X sender;
    const std::string signal = '2' + this->signature("message_dispatched");
    const std::string slot = '1' + this->signature("handle_message");
    ASSERT_TRUE(QObject::connect(&sender, signal.c_str(), &spy, slot.c_str()));
    X message;
    TestAccess::class_instance_dispatch(sender, message);
    ASSERT_EQ(spy.count(), 1);
    EXPECT_EQ(spy.received().front().message, &message);
    EXPECT_EQ(subscriber.count(), 0); // hears the class instance only
    message.dispatch();
    EXPECT_EQ(spy.count(), 1);
    EXPECT_EQ(subscriber.count(), 1);
}

TYPED_TEST(MessageFamily, SubscriptionsOutliveTheOrderedDestruction)
{
    typedef typename TypeParam::Sent X;
    const support::App app;
    TypeParam spy;
    tarqa::housekeeping::MessageHandler::instance();
    pkBase::pkDestructor::run();
    Message::dispatch(X::instance());
    EXPECT_EQ(spy.count(), 1);
}

TYPED_TEST(MessageFamily, PostIsDeliveredByTheEventLoopAndDeleted)
{
    typedef typename TypeParam::Sent X;
    const support::App app;
    TypeParam spy;
    QPointer<X> message = X::instance();
    message->post();
    EXPECT_EQ(spy.count(), 0);
    EXPECT_FALSE(message.isNull());
    ASSERT_TRUE(spy.wait_for(1));
    EXPECT_TRUE(message.isNull());
    EXPECT_EQ(spy.received().front().thread, QCoreApplication::instance()->thread());
}

} // namespace
