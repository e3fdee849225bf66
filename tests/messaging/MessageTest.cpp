#include "support/LogCapture.h"
#include "support/MessageSpy.h"

#include <tarqa/housekeeping/ApplicationMessage.h>
#include <tarqa/housekeeping/Message.h>

#include <gtest/gtest.h>

#include <stdexcept>
#include <type_traits>

namespace {

using support::ApplicationMessageSpy;
using support::LogCapture;
using tarqa::housekeeping::ApplicationMessage;
using tarqa::housekeeping::Message;

/// Counts what happens to it.
class Probe : public ApplicationMessage
{
public:
    explicit Probe(int& deleted)
        : m_deleted(deleted)
    { }
    ~Probe() override { ++m_deleted; }
    using ApplicationMessage::dispatch;
    void dispatch() override
    {
        ++dispatched;
        ApplicationMessage::dispatch();
    }

    int dispatched = 0;

private:
    int& m_deleted;
};

TEST(Message, IsAnAbstractQObject)
{
    EXPECT_TRUE((std::is_base_of_v<QObject, Message>));
    EXPECT_TRUE(std::is_abstract_v<Message>);
    EXPECT_FALSE(std::is_copy_constructible_v<Message>);
    EXPECT_EQ(sizeof(Message), sizeof(QObject)); // no members of its own
    EXPECT_STREQ(Message::staticMetaObject.className(), "tarqa::housekeeping::Message");
}

TEST(Message, DispatchOfNullIsLogged)
{
    LogCapture capture;
    Message::dispatch(nullptr);
    EXPECT_TRUE(capture.took_assert(
        "msg", "tarqa::housekeeping::Message::dispatch(", "housekeeping/src/Message", 59));
}

TEST(Message, DispatchSendsThroughTheVirtualOperationThenDeletes)
{
    int deleted = 0;
    int dispatched = 0;
    ApplicationMessageSpy spy;
    spy.run_in_slot([&deleted, &dispatched](ApplicationMessage& message) {
        EXPECT_EQ(deleted, 0);
        dispatched = dynamic_cast<Probe&>(message).dispatched;
    });
    Message::dispatch(new Probe(deleted));
    EXPECT_EQ(spy.count(), 1);
    EXPECT_EQ(dispatched, 1);
    EXPECT_EQ(deleted, 1);
}

TEST(Message, DispatchDeletesOnceWhenASubscriberThrows)
{
    int deleted = 0;
    ApplicationMessageSpy spy;
    spy.run_in_slot([](ApplicationMessage&) { throw std::runtime_error("slot"); });
    EXPECT_THROW(Message::dispatch(new Probe(deleted)), std::runtime_error);
    EXPECT_EQ(deleted, 1);
}

} // namespace
