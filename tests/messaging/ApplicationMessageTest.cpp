#include <tarqa/housekeeping/ApplicationMessage.h>

#include <gtest/gtest.h>

#include <memory>

namespace {

using tarqa::housekeeping::ApplicationMessage;

TEST(ApplicationMessage, StartsWithOperationOne)
{
    EXPECT_EQ(static_cast<int>(ApplicationMessage().opType()), 1);
    const std::unique_ptr<ApplicationMessage> message(ApplicationMessage::instance());
    EXPECT_EQ(static_cast<int>(message->opType()), 1);
    EXPECT_EQ(sizeof(ApplicationMessage::OpType), 4u);
}

TEST(ApplicationMessage, KeepsAnyOperation)
{
    ApplicationMessage message;
    message.opType(static_cast<ApplicationMessage::OpType>(-7));
    EXPECT_EQ(static_cast<int>(message.opType()), -7);
    const ApplicationMessage copy(message);
    EXPECT_EQ(static_cast<int>(copy.opType()), -7);
}

} // namespace
