#include "support/LogCapture.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/DocumentMessage.h>

#include <gtest/gtest.h>

namespace {

using support::LogCapture;
using tarqa::housekeeping::DocumentId;
using tarqa::housekeeping::DocumentMessage;
using tarqa::housekeeping::TestAccess;

TEST(DocumentMessage, StartsWithoutAnId)
{
    const DocumentMessage message;
    EXPECT_EQ(static_cast<int>(message.doc_change_type()), 0);
    EXPECT_FALSE(TestAccess::id_set(message));
}

TEST(DocumentMessage, NumbersItsTypesAsSent)
{
    EXPECT_EQ(static_cast<int>(DocumentMessage::Created), 1);
    EXPECT_EQ(static_cast<int>(DocumentMessage::Destroyed), 4);
    EXPECT_EQ(static_cast<int>(DocumentMessage::Busy), 5);
    EXPECT_EQ(static_cast<int>(DocumentMessage::Idle), 6);
    EXPECT_EQ(static_cast<int>(DocumentMessage::CurrentChanged), 15);
    EXPECT_EQ(sizeof(DocumentMessage::DocChangeType), 4u);
}

TEST(DocumentMessage, KeepsItsFields)
{
    const LogCapture capture; // fails on any entry
    DocumentMessage message;
    message.doc_change_type(DocumentMessage::CurrentChanged);
    message.id(DocumentId::build(3));
    EXPECT_EQ(message.doc_change_type(), DocumentMessage::CurrentChanged);
    EXPECT_EQ(message.id().getId(), 3ULL);
    EXPECT_TRUE(TestAccess::id_set(message));
}

TEST(DocumentMessage, KeepsAHostsOwnType)
{
    DocumentMessage message;
    message.doc_change_type(static_cast<DocumentMessage::DocChangeType>(14));
    EXPECT_EQ(static_cast<int>(message.doc_change_type()), 14);
}

TEST(DocumentMessage, MissingIdIsLoggedAndNull)
{
    LogCapture capture;
    const DocumentMessage message;
    EXPECT_TRUE(message.id() == DocumentId::null());
    EXPECT_TRUE(capture.took_assert("m_id_set", "DocumentMessage::id(", "housekeeping/src/DocumentMessage"));
}

TEST(DocumentMessage, NullIdCountsAsSet)
{
    const LogCapture capture; // fails on any entry
    DocumentMessage message;
    message.id(DocumentId::null());
    EXPECT_TRUE(message.id() == DocumentId::null());
}

TEST(DocumentMessage, CopiesKeepWhetherTheIdIsSet)
{
    LogCapture capture;
    DocumentMessage message;
    message.doc_change_type(DocumentMessage::Busy);
    const DocumentMessage without(message);
    EXPECT_FALSE(TestAccess::id_set(without));
    EXPECT_EQ(without.doc_change_type(), DocumentMessage::Busy);

    message.id(DocumentId::build(3));
    const DocumentMessage with(message);
    EXPECT_EQ(with.id().getId(), 3ULL); // logs nothing

    without.id();
    EXPECT_TRUE(capture.took_assert("m_id_set", "DocumentMessage::id(", "housekeeping/src/DocumentMessage"));
}

} // namespace
