#include "LoadMessages.h"

#include "support/MessageSpy.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using load::Family;
using load::Faults;
using load::Sender;
using load::Subscriber;
using load::Way;
using tarqa::housekeeping::ApplicationMessage;
using tarqa::housekeeping::CommandMessage;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// Whether the subscriber would notice anything.

namespace {

const Family s_numbered[] = {Family::Application, Family::Document, Family::FilesInsert};

} // namespace

TEST(LoadMessages, CountsWhatComesInOrder)
{
    Faults faults;
    const Subscriber subscriber("test", {}, Qt::DirectConnection, faults);
    Sender sender(3);
    for (const Family family : s_numbered) {
        sender.send(Way::Dispatch, family);
        sender.send(Way::Dispatch, family);
    }
    sender.send(Way::Dispatch, Family::History);
    EXPECT_THAT(faults.texts(), IsEmpty());
    EXPECT_THAT(subscriber.received(3)[0], ElementsAre(2, 2, 2, 0));
    EXPECT_THAT(subscriber.received(3)[1], ElementsAre(0, 0, 0, 0));
    EXPECT_THAT(subscriber.received(2)[0], ElementsAre(0, 0, 0, 0));
    EXPECT_EQ(subscriber.history_messages(), 1u);
    EXPECT_THAT(sender.sent()[0], ElementsAre(2, 2, 2, 1));
}

TEST(LoadMessages, NoticesThatOneIsMissing)
{
    for (const Family family : s_numbered) {
        Faults faults;
        Sender sender(15);
        sender.send(Way::Dispatch, family);
        const Subscriber subscriber("test", {}, Qt::DirectConnection, faults);
        sender.send(Way::Dispatch, family);
        EXPECT_EQ(faults.count(), 1u);
    }
}

TEST(LoadMessages, NoticesOneTwice)
{
    Faults faults;
    const Subscriber subscriber("test", {}, Qt::DirectConnection, faults);
    const support::ApplicationMessageSpy spy;
    Sender sender(0);
    sender.send(Way::Dispatch, Family::Application);
    ASSERT_EQ(spy.count(), 1);
    ApplicationMessage again;
    again.opType(static_cast<ApplicationMessage::OpType>(spy.received().front().op_type));
    again.dispatch();
    EXPECT_THAT(faults.texts(), ElementsAre(HasSubstr("message of family 0 at the test")));
}

TEST(LoadMessages, NoticesTheRunOfAnUnknownDocument)
{
    Faults faults;
    const Subscriber subscriber("test", {}, Qt::DirectConnection, faults);
    CommandMessage message;
    message.dispatch();
    EXPECT_THAT(faults.texts(), ElementsAre(HasSubstr("command message of an unknown document")));
}
