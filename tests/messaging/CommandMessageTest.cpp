#include "support/LogCapture.h"

#include <tarqa/housekeeping/AbstractCommand.h>
#include <tarqa/housekeeping/CommandMessage.h>

#include <gtest/gtest.h>

namespace {

using support::LogCapture;
using tarqa::housekeeping::AbstractCommand;
using tarqa::housekeeping::CommandId;
using tarqa::housekeeping::CommandMessage;
using tarqa::housekeeping::DocumentId;

class NoCommand : public AbstractCommand
{
public:
    NoCommand()
        : AbstractCommand(DocumentId::null(), "no command")
    { }
    void rollback() override { }

private:
    void remember() override { }
    void do_command() override { }
    void undo_command() override { }
};

TEST(CommandMessage, StartsEmpty)
{
    const CommandMessage message;
    EXPECT_TRUE(message.id() == CommandId::null());
    EXPECT_TRUE(message.document_id() == DocumentId::null());
    EXPECT_EQ(static_cast<int>(message.command_type()), 0);
    EXPECT_FALSE(message.isRedoCommand());
}

TEST(CommandMessage, NumbersItsTypesAsSent)
{
    EXPECT_EQ(static_cast<int>(CommandMessage::Done), 0);
    EXPECT_EQ(static_cast<int>(CommandMessage::Undone), 1);
    EXPECT_EQ(static_cast<int>(CommandMessage::Failed), 3);
    EXPECT_EQ(sizeof(CommandMessage::CommandType), 4u);
}

TEST(CommandMessage, KeepsItsFields)
{
    NoCommand command;
    CommandMessage message;
    message.command(&command);
    message.id(CommandId::build(7));
    message.command_type(CommandMessage::Failed);
    message.document_id(DocumentId::build(8));
    message.setAsRedoCommand(true);
    EXPECT_EQ(message.command(), &command);
    EXPECT_EQ(message.id().getId(), 7ULL);
    EXPECT_EQ(message.command_type(), CommandMessage::Failed);
    EXPECT_EQ(message.document_id().getId(), 8ULL);
    EXPECT_TRUE(message.isRedoCommand());
    message.setAsRedoCommand(false);
    EXPECT_FALSE(message.isRedoCommand());
}

TEST(CommandMessage, CopiesAllFields)
{
    NoCommand command;
    CommandMessage message;
    message.command(&command);
    message.id(CommandId::build(7));
    message.command_type(CommandMessage::Undone);
    message.document_id(DocumentId::build(8));
    message.setAsRedoCommand(true);
    const CommandMessage copy(message);
    EXPECT_EQ(copy.command(), &command);
    EXPECT_EQ(copy.id().getId(), 7ULL);
    EXPECT_EQ(copy.command_type(), CommandMessage::Undone);
    EXPECT_EQ(copy.document_id().getId(), 8ULL);
    EXPECT_TRUE(copy.isRedoCommand());
}

TEST(CommandMessage, NullCommandIsLoggedAndStored)
{
    NoCommand command;
    LogCapture capture;
    CommandMessage message;
    message.command(&command);
    message.command(nullptr);
    EXPECT_TRUE(capture.took_assert("p_cmd", "CommandMessage::command(", "housekeeping/src/CommandMessage"));
    EXPECT_EQ(message.command(), nullptr);
    EXPECT_TRUE(
        capture.took_assert("m_p_command", "CommandMessage::command(", "housekeeping/src/CommandMessage"));
}

TEST(CommandMessage, MissingCommandIsLoggedAndNull)
{
    LogCapture capture;
    const CommandMessage message;
    EXPECT_EQ(message.command(), nullptr);
    EXPECT_TRUE(
        capture.took_assert("m_p_command", "CommandMessage::command(", "housekeeping/src/CommandMessage"));
}

TEST(CommandMessage, PresentCommandIsNotLogged)
{
    const LogCapture capture; // fails on any entry
    NoCommand command;
    CommandMessage message;
    message.command(&command);
    EXPECT_EQ(message.command(), &command);
}

} // namespace
