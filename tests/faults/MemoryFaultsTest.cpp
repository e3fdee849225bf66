#include "faults/AllocationFaults.h"
#include "support/Fakes.h"
#include "support/LogCapture.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/DataSource.h>
#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/housekeeping/ErrorProtocolOutput.h>
#include <tarqa/housekeeping/RecentDocumentsQueue.h>
#include <tarqa/utilities/Exception.h>

#include <boost/make_shared.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

// What is left when memory runs out inside the library.

namespace {

using namespace tarqa::housekeeping;
using faults::AllocationRounds;
using support::FakeCommand;
using support::LogCapture;

/// A document, and commands that count how often they were done.
class CommandsWithoutMemory : public testing::Test
{
protected:
    CommandsWithoutMemory() { manager(); }
    ~CommandsWithoutMemory() override { m_log.take_all(); }

    static CommandManager& manager() { return CommandManager::instance(); }
    static DocumentManager& documents() { return DocumentManager::instance(); }
    AbstractDocument& document() { return documents().document_from_id(m_id); }
    AbstractDocumentHistory& history() { return document().document_history(); }

    /// A new document in the place of the last one.
    void new_document()
    {
        if (documents().document_exists(m_id)) {
            documents().destroy_document(m_id, true, false, false, DocumentId::null());
        }
        m_id = support::create_document().id();
    }

    boost::shared_ptr<FakeCommand> make_command(int& done)
    {
        // Long names, so that copies of them need memory.
        const auto sp_command = support::make_command(m_id, "A command with a name that is rather long");
        sp_command->on_do = [&done] { ++done; };
        sp_command->on_undo = [&done] { --done; };
        return sp_command;
    }

    /// Nothing is held or marked, and the next command is done, undone and done again.
    void expect_working()
    {
        QMutex& mutex = TestAccess::mutex(manager());
        const bool free = mutex.tryLock();
        ASSERT_TRUE(free) << "the mutex of the commands is held";
        mutex.unlock();
        for (QMutex* const p_mutex : {&TestAccess::registry_mutex(documents()),
                 &TestAccess::busy_mutex(documents()), &TestAccess::destruction_mutex(documents())}) {
            ASSERT_TRUE(p_mutex->tryLock());
            p_mutex->unlock();
        }
        EXPECT_FALSE(documents().documents_busy());
        EXPECT_FALSE(document().is_busy());
        int done = 0;
        const unsigned long long before = history().undoSize();
        manager().insert(make_command(done), false);
        EXPECT_EQ(done, 1);
        EXPECT_EQ(history().undoSize(), before + 1);
        manager().undo(m_id);
        EXPECT_EQ(done, 0);
        EXPECT_EQ(history().undoSize(), before);
        manager().redo(m_id);
        EXPECT_EQ(done, 1);
        EXPECT_FALSE(documents().documents_busy());
    }

    LogCapture m_log;
    DocumentId m_id = DocumentId::null();
};

} // namespace

TEST_F(CommandsWithoutMemory, InsertLeavesNothingDoneThatIsNotListed)
{
    int done = 0;
    boost::shared_ptr<FakeCommand> sp_command;
    AllocationRounds rounds("MemoryInsert");
    rounds.prepare = [&] {
        new_document();
        done = 0;
        sp_command = make_command(done);
    };
    rounds.act = [&] { manager().insert(sp_command, false); };
    rounds.check = [&](bool threw) {
        // It is listed before it runs, and stays so.
        EXPECT_LE(history().undoSize(), 1u);
        EXPECT_GE(history().undoSize(), static_cast<unsigned long long>(done));
        EXPECT_EQ(history().redoSize(), 0u);
        EXPECT_TRUE(threw || done == 1);
        expect_working();
    };
    rounds.run();
}

TEST_F(CommandsWithoutMemory, UndoKeepsTheCommandInOneOfTheLists)
{
    int done = 0;
    AllocationRounds rounds("MemoryUndo");
    rounds.prepare = [&] {
        new_document();
        done = 0;
        manager().insert(make_command(done), false);
    };
    rounds.act = [&] { manager().undo(m_id); };
    rounds.check = [&](bool threw) {
        // It goes from one list to the other before it is undone.
        EXPECT_EQ(history().undoSize() + history().redoSize(), 1u);
        EXPECT_TRUE(done == 1 || history().redoSize() == 1u);
        EXPECT_TRUE(threw || done == 0);
        expect_working();
    };
    rounds.run();
}

TEST_F(CommandsWithoutMemory, RedoKeepsTheCommandInOneOfTheLists)
{
    int done = 0;
    AllocationRounds rounds("MemoryRedo");
    rounds.prepare = [&] {
        new_document();
        done = 0;
        manager().insert(make_command(done), false);
        manager().undo(m_id);
    };
    rounds.act = [&] { manager().redo(m_id); };
    rounds.check = [&](bool threw) {
        EXPECT_EQ(history().undoSize() + history().redoSize(), 1u);
        EXPECT_TRUE(done == 0 || history().undoSize() == 1u);
        EXPECT_TRUE(threw || done == 1);
        expect_working();
    };
    rounds.run();
}

TEST_F(CommandsWithoutMemory, DocumentsAreRegisteredWholeOrNotAtAll)
{
    AllocationRounds rounds("MemoryCreateDocument");
    unsigned long long before = 0;
    rounds.prepare = [&] {
        new_document();
        before = documents().num_documents();
    };
    rounds.act = [&] { documents().create_document(); };
    rounds.check = [&](bool threw) {
        EXPECT_GE(documents().num_documents(), before);
        EXPECT_LE(documents().num_documents(), before + 1);
        EXPECT_TRUE(threw || documents().num_documents() == before + 1);
        EXPECT_TRUE(documents().document_exists(documents().current_document_id()));
        expect_working();
        for (const DocumentId& id : documents().current_documents()) {
            if (id != m_id) {
                EXPECT_TRUE(documents().destroy_document(id, true, false, false, DocumentId::null()));
            }
        }
        EXPECT_EQ(documents().num_documents(), 1u);
    };
    rounds.run();
}

TEST_F(CommandsWithoutMemory, DocumentsAreDestroyedOrStay)
{
    AllocationRounds rounds("MemoryDestroyDocument");
    DocumentId doomed = DocumentId::null();
    rounds.prepare = [&] {
        new_document();
        doomed = documents().create_document().id();
    };
    rounds.act = [&] { documents().destroy_document(doomed, true, false, false, DocumentId::null()); };
    rounds.check = [&](bool threw) {
        EXPECT_TRUE(threw || !documents().document_exists(doomed));
        expect_working();
        // It is not taken for one that is being destroyed.
        if (documents().document_exists(doomed)) {
            EXPECT_TRUE(documents().destroy_document(doomed, true, false, false, DocumentId::null()));
        }
        EXPECT_FALSE(documents().document_exists(doomed));
    };
    rounds.run();
}

TEST_F(CommandsWithoutMemory, LogEntriesAreWholeOrMissing)
{
    std::string before;
    AllocationRounds rounds("MemoryLogEntries");
    rounds.prepare = [&] {
        ErrorProtocol::instance().log_message("before");
        before = m_log.text();
    };
    const std::string text(100, 'x');
    const std::runtime_error standard(text);
    const tarqa::Exception makers(1, text, "file", 1);
    rounds.act = [&] {
        ErrorProtocol& log = ErrorProtocol::instance();
        EXPECT_NO_THROW(log.log_message(text));
        EXPECT_NO_THROW(log.log_command(text + "\n"));
        EXPECT_NO_THROW(log.log_assert(text.c_str(), "function", "file", 1));
        EXPECT_NO_THROW(log.log_exception(standard));
        EXPECT_NO_THROW(log.log_exception(makers));
        EXPECT_NO_THROW(log.log_fatal_error(standard));
    };
    rounds.check = [&](bool threw) {
        EXPECT_FALSE(threw);
        ErrorProtocol::instance().log_message("after");
        const std::string after = m_log.text();
        EXPECT_EQ(after.substr(0, before.size()), before);
        EXPECT_EQ(after.substr(after.size() - 6), "after\n");
    };
    rounds.run();
}

TEST_F(CommandsWithoutMemory, StreamedEntriesLeaveTheLogUsable)
{
    AllocationRounds rounds("MemoryLogOutput");
    rounds.act = [&] { ErrorProtocolOutput() << std::string(100, 'x'); };
    rounds.check = [&](bool) {
        const std::string before = m_log.text();
        ErrorProtocol::instance().log_message("after");
        EXPECT_EQ(m_log.text(), before + "after\n");
    };
    rounds.run();
}

TEST_F(CommandsWithoutMemory, PostedMessagesArriveOrAreRefused)
{
    support::JournalingReceiver receiver;
    int received = 0;
    bool posted = false;
    receiver.on_history = [&](DocumentHistoryMsg&) { ++received; };
    MessageHandler& handler = MessageHandler::instance();
    std::vector<std::unique_ptr<DocumentHistoryMsg>>
        living; // they have what the thread keeps ready for messages
    AllocationRounds rounds("MemoryPost");
    rounds.prepare = [&] {
        for (int count = 0; count < 10; ++count) {
            living.emplace_back(DocumentHistoryMsg::instance());
        }
        received = 0;
        posted = false;
    };
    rounds.act = [&] {
        DocumentHistoryMsg message;
        message.dispatch();
        MessageHandler::instance().post(DocumentHistoryMsg::instance());
        posted = true;
        TestAccess::idleTimeout(handler);
    };
    rounds.check = [&](bool) {
        if (posted) {
            TestAccess::idleTimeout(handler);
        }
        EXPECT_EQ(TestAccess::queued(handler), 0);
        EXPECT_TRUE(TestAccess::mutex(handler).tryLock());
        TestAccess::mutex(handler).unlock();
        received = 0;
        DocumentHistoryMsg message;
        message.dispatch();
        EXPECT_EQ(received, 1);
    };
    rounds.run();
}

TEST_F(CommandsWithoutMemory, RecentDocumentsKeepWhatTheyHad)
{
    support::register_data_information("fake");
    const auto source = [](const std::string& name) {
        return boost::make_shared<DataSource>("file:///a/long/way/to/the/file/" + name,
            boost::make_shared<support::FakeDataInformation>("fake"));
    };
    RecentDocumentsQueue& queue = RecentDocumentsQueue::instance();
    queue.max_size(100000);
    std::vector<std::string> before;
    const auto urls = [&] {
        std::vector<std::string> all;
        for (const auto& entry : queue) {
            all.push_back(entry->url());
        }
        return all;
    };
    // More than fit into what the queue has already.
    std::vector<boost::shared_ptr<DataSource>> fresh(100);
    std::size_t pushed = 0;
    int number = 0;
    AllocationRounds rounds("MemoryRecentDocuments");
    rounds.prepare = [&] {
        queue.push(source(std::to_string(number++)));
        for (auto& sp_source : fresh) {
            sp_source = source(std::to_string(number++));
        }
        before = urls();
        pushed = 0;
    };
    rounds.act = [&] {
        for (const auto& sp_source : fresh) {
            queue.push(sp_source);
            ++pushed;
            queue.push(queue.at(0)); // the oldest one becomes the newest
        }
    };
    rounds.check = [&](bool) {
        std::vector<std::string> expected = before;
        for (std::size_t i = 0; i < pushed; ++i) {
            expected.push_back(fresh[i]->url());
        }
        EXPECT_THAT(urls(), testing::UnorderedElementsAreArray(expected));
    };
    rounds.run();
}
