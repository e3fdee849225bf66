#include "support/MessageSpy.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/DocumentHistoryMsg.h>

#include <gtest/gtest.h>

namespace {

using tarqa::housekeeping::DocumentHistoryMsg;
using tarqa::housekeeping::TestAccess;

TEST(DocumentHistoryMsg, HoldsZero)
{
    const DocumentHistoryMsg message;
    EXPECT_EQ(TestAccess::kind(message), 0);
    EXPECT_EQ(TestAccess::kind(DocumentHistoryMsg(message)), 0);
}

TEST(DocumentHistoryMsg, IsSentFromTheStack)
{
    support::DocumentHistoryMsgSpy spy;
    DocumentHistoryMsg message;
    message.dispatch();
    ASSERT_EQ(spy.count(), 1);
    EXPECT_EQ(spy.received().front().kind, 0);
    EXPECT_EQ(spy.received().front().message, &message);
}

} // namespace
