#include "support/MessageSpy.h"

#include <tarqa/housekeeping/FilesInsertMessage.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using tarqa::housekeeping::DocumentId;
using tarqa::housekeeping::FilesInsertMessage;
using tarqa::housekeeping::Message;

const std::vector<std::string> s_files = {"/data/b.dat", "", "/data/a.dat"};

TEST(FilesInsertMessage, StartsEmpty)
{
    const FilesInsertMessage message;
    EXPECT_TRUE(message.documentId() == DocumentId::null());
    EXPECT_TRUE(message.files().empty());
}

TEST(FilesInsertMessage, KeepsAndCopiesItsFields)
{
    FilesInsertMessage message;
    message.documentId(DocumentId::build(4));
    message.files(s_files);
    EXPECT_EQ(message.documentId().getId(), 4ULL);
    EXPECT_EQ(message.files(), s_files);
    const FilesInsertMessage copy(message);
    EXPECT_EQ(copy.documentId().getId(), 4ULL);
    EXPECT_EQ(copy.files(), s_files);
    message.files({});
    EXPECT_EQ(copy.files(), s_files);
}

TEST(FilesInsertMessage, ReachesItsSubscribersWhole)
{
    support::FilesInsertMessageSpy spy;
    FilesInsertMessage* p_message = FilesInsertMessage::instance();
    p_message->documentId(DocumentId::build(4));
    p_message->files(s_files);
    Message::dispatch(p_message);
    ASSERT_EQ(spy.count(), 1);
    EXPECT_EQ(spy.received().front().document_id, 4ULL);
    EXPECT_EQ(spy.received().front().files, s_files);
}

} // namespace
