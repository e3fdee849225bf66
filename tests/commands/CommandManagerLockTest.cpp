#include "support/Fakes.h"
#include "support/LogCapture.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/HousekeepingException.h>

#include <boost/make_shared.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

// What happens under the command manager's mutex, and that it is released on every way out.

using namespace tarqa::housekeeping;
using support::FakeCommand;
using support::FakeDocument;
using support::journal;
using support::JournalingReceiver;
using support::make_command;
using testing::ElementsAre;

namespace {

CommandManager& manager()
{
    return CommandManager::instance();
}

/// Whether nobody holds the manager's mutex, which is not recursive: a run of this thread counts as well.
bool is_free()
{
    QMutex& mutex = TestAccess::mutex(manager());
    if (!mutex.tryLock()) {
        return false;
    }
    mutex.unlock();
    return true;
}

/// Journals where it is asked for its size, and whether the mutex was free then.
class EmptyCommand : public FakeCommand
{
public:
    using FakeCommand::FakeCommand;
    unsigned long long size() const override
    {
        journal().add(is_free() ? "size, free" : "size, locked");
        return 0;
    }
};

/// A document, and a command that notes at each of its steps and messages whether the mutex is free.
class CommandManagerLock : public testing::Test
{
protected:
    CommandManagerLock()
    {
        command->on_remember = [this] { note("remember"); };
        command->on_do = [this] { note("do"); };
        command->on_undo = [this] { note("undo"); };
        command->on_rollback = [this] { note("rollback"); };
        command->on_finished = [this] { note("finished"); };
        receiver.on_document = [this](DocumentMessage& message) {
            note(message.doc_change_type() == DocumentMessage::Busy ? "busy" : "idle");
        };
        receiver.on_history = [this](DocumentHistoryMsg&) { note("history"); };
        receiver.on_command = [this](CommandMessage&) { note("message"); };
    }

    void note(const std::string& what) { notes.push_back(what + (is_free() ? ", free" : ", locked")); }

    FakeDocument& document = support::create_document();
    const DocumentId id = document.id();
    boost::shared_ptr<FakeCommand> command = make_command(id, "Rotate");
    JournalingReceiver receiver;
    std::vector<std::string> notes;
};

} // namespace

TEST_F(CommandManagerLock, HoldsFromBeforeTheBusyMarkUntilAfterIt)
{
    EXPECT_TRUE(is_free());
    manager().insert(command, false);
    EXPECT_THAT(notes,
        ElementsAre("busy, locked", "history, locked", "remember, locked", "do, locked", "finished, locked",
            "message, locked", "idle, locked"));
    EXPECT_TRUE(is_free());
}

TEST_F(CommandManagerLock, HoldsFromBeforeTheHistoryChangesUntilTheDocumentIsIdle)
{
    manager().insert(command, false);
    notes.clear();
    manager().undo(id);
    EXPECT_THAT(notes,
        ElementsAre("history, locked", "busy, locked", "undo, locked", "finished, locked", "message, locked",
            "idle, locked"));
    EXPECT_TRUE(is_free());

    notes.clear();
    manager().redo(id);
    EXPECT_THAT(notes,
        ElementsAre("history, locked", "busy, locked", "remember, locked", "do, locked", "finished, locked",
            "message, locked", "idle, locked"));
    EXPECT_TRUE(is_free());
}

TEST_F(CommandManagerLock, HoldsUntilTheDocumentIsIdleWhenARunThrows)
{
    command->on_finished = support::throws_std("finished");
    EXPECT_THROW(manager().insert(command, false), std::runtime_error);
    EXPECT_EQ("idle, locked", notes.back());
    EXPECT_TRUE(is_free());
    notes.clear();
    EXPECT_THROW(manager().undo(id), std::runtime_error);
    EXPECT_EQ("idle, locked", notes.back());
    EXPECT_TRUE(is_free());
    notes.clear();
    EXPECT_THROW(manager().redo(id), std::runtime_error);
    EXPECT_EQ("idle, locked", notes.back());
    EXPECT_TRUE(is_free());
}

TEST_F(CommandManagerLock, HoldsWithoutABusyMarkToo)
{
    command->sets_document_busy(false);
    manager().insert(command, false);
    EXPECT_THAT(notes,
        ElementsAre(
            "history, locked", "remember, locked", "do, locked", "finished, locked", "message, locked"));
    EXPECT_TRUE(is_free());
}

TEST_F(CommandManagerLock, CancelledRunIsRolledBackUnderIt)
{
    command->on_do = support::throws_cancel();
    manager().insert(command, false);
    EXPECT_EQ(1, std::count(notes.begin(), notes.end(), "rollback, locked"));
    EXPECT_TRUE(is_free());
}

TEST_F(CommandManagerLock, IsNotTakenBeforeACommandIsFoundEmpty)
{
    const auto empty = boost::make_shared<EmptyCommand>(id, "Empty");
    support::LogCapture log;
    manager().insert(empty, false);
    manager().finish();
    manager().insert(empty, false);
    EXPECT_EQ(2, journal().count("size, free"));
    EXPECT_EQ(0, journal().count("size, locked"));
    for (int call = 0; call < 2; ++call) {
        EXPECT_TRUE(log.took_assert(
            "!sp_command->empty()", "CommandManager::insert", "housekeeping/src/CommandManager"));
    }
}

TEST_F(CommandManagerLock, IsReleasedWhenThereIsNothingToDo)
{
    manager().undo(id);
    EXPECT_TRUE(is_free());
    manager().redo(id);
    EXPECT_TRUE(is_free());
    manager().finish();
    manager().insert(command, false);
    EXPECT_TRUE(is_free());
    EXPECT_TRUE(notes.empty());
}

TEST_F(CommandManagerLock, IsReleasedWhenTheDocumentDoesNotExist)
{
    const DocumentId unknown = DocumentId::build(77);
    support::LogCapture log;
    EXPECT_THROW(manager().insert(make_command(unknown, "A"), false), HousekeepingException);
    EXPECT_TRUE(is_free());
    EXPECT_THROW(manager().undo(unknown), HousekeepingException);
    EXPECT_TRUE(is_free());
    EXPECT_THROW(manager().redo(unknown), HousekeepingException);
    EXPECT_TRUE(is_free());
    log.take_all();
}

// Trouble while the busy mark goes

TEST_F(CommandManagerLock, ExceptionOfAnIdleSubscriberLeavesTheManagerOnce)
{
    int idles = 0;
    receiver.on_document = [&idles](DocumentMessage& message) {
        if (message.doc_change_type() == DocumentMessage::Idle) {
            ++idles;
            throw std::runtime_error("idle");
        }
    };
    support::LogCapture log;
    EXPECT_THROW(manager().insert(command, false), std::runtime_error);
    EXPECT_THROW(manager().undo(id), std::runtime_error);
    EXPECT_THROW(manager().redo(id), std::runtime_error);
    EXPECT_EQ(3, idles);
    EXPECT_EQ("DO>\tRotate - Succeeded.\nUNDO>\tRotate - Succeeded.\nDO>\tRotate - Succeeded.\n", log.text());
    EXPECT_FALSE(DocumentManager::instance().documents_busy());
    EXPECT_TRUE(is_free());
}

TEST_F(CommandManagerLock, ExceptionOfAnIdleSubscriberIsLoggedWhileAnotherUnwinds)
{
    std::ostringstream text;
    text << HousekeepingException(42, "idle", "tests/Fakes", 7);
    const std::vector<std::pair<FakeCommand::Step, std::string>> failures
        = {{support::throws_std("idle"), "STD EXCEPTION THROWN:idle\n\n"},
            {support::throws_housekeeping("idle"), "TARQA EXCEPTION THROWN:\n" + text.str() + "\n\n"},
            {support::throws_unknown(), "An unknown exception was thrown while a document became idle\n"}};
    command->on_finished = [] { throw std::logic_error("finished"); };
    for (const auto& failure : failures) {
        receiver.on_document = [&failure](DocumentMessage& message) {
            if (message.doc_change_type() == DocumentMessage::Idle) {
                failure.first();
            }
        };
        support::LogCapture log;
        EXPECT_THROW(manager().insert(command, false), std::logic_error);
        EXPECT_EQ(failure.second, log.text());
        EXPECT_FALSE(DocumentManager::instance().documents_busy());
        EXPECT_TRUE(is_free());
        log.take_all();
    }
}
