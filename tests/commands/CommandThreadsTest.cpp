#include "support/App.h"
#include "support/Fakes.h"
#include "support/LogCapture.h"

#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/ErrorHandler.h>

#include <QtGui/QIcon>
#include <QtGui/QPixmap>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <set>
#include <thread>

using namespace tarqa::housekeeping;
using support::FakeCommand;
using support::FakeDocument;
using support::FakeProgress;
using support::journal;
using support::JournalingReceiver;
using support::make_command;

namespace {

CommandManager& manager()
{
    return CommandManager::instance();
}

/// Gives another thread the time to do what it must not do.
void let_others_run()
{
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
}

QIcon icon(Qt::GlobalColor colour)
{
    QPixmap pixmap(4, 4);
    pixmap.fill(colour);
    return QIcon(pixmap);
}

} // namespace

TEST(CommandManager, SecondThreadWaitsItsTurn)
{
    FakeDocument& document = support::create_document();
    FakeDocument& other = support::create_document(); // another document's run waits as well
    const auto first = make_command(document.id(), "A");
    const auto second = make_command(other.id(), "B");
    std::atomic<bool> started{false};
    std::thread thread;
    first->on_do = [&] {
        thread = std::thread([&] {
            started = true;
            manager().insert(second, false);
        });
        while (!started) {
            std::this_thread::yield();
        }
        let_others_run();
        EXPECT_EQ(0, journal().count("B."));
        EXPECT_TRUE(other.document_history().empty());
        EXPECT_FALSE(DocumentManager::instance().document_busy(other.id()));
    };
    manager().insert(first, false);
    thread.join();
    EXPECT_EQ(1, journal().count("B.do"));
    EXPECT_EQ(1u, other.document_history().undoSize());
    EXPECT_FALSE(DocumentManager::instance().documents_busy());
}

TEST(CommandManager, RunHappensInTheCallersThread)
{
    FakeDocument& document = support::create_document();
    const auto command = make_command(document.id(), "A");
    JournalingReceiver receiver(Qt::DirectConnection);
    std::vector<std::thread::id> threads;
    const auto note = [&threads] { threads.push_back(std::this_thread::get_id()); };
    command->on_remember = note;
    command->on_do = note;
    receiver.on_document = [&](DocumentMessage&) { note(); };
    receiver.on_history = [&](DocumentHistoryMsg&) { note(); };
    receiver.on_command = [&](CommandMessage&) { note(); };
    std::thread worker([&] { manager().insert(command, false); });
    const std::thread::id id = worker.get_id();
    worker.join();
    EXPECT_EQ(std::vector<std::thread::id>(6, id), threads);
}

TEST(CommandManager, RunsOfManyThreadsDoNotOverlap)
{
    FakeDocument& document = support::create_document();
    std::atomic<int> running{0};
    std::atomic<int> overlaps{0};
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&] {
            for (int i = 0; i < 25; ++i) {
                const auto command = make_command(document.id(), "A");
                command->on_do = [&] {
                    overlaps += running.fetch_add(1) == 0 ? 0 : 1;
                    std::this_thread::yield();
                    --running;
                };
                manager().insert(command, false);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(0, overlaps);
    EXPECT_EQ(100u, document.document_history().undoSize());
    EXPECT_EQ(100, journal().count("A.finished(true)"));
    EXPECT_FALSE(DocumentManager::instance().documents_busy());
}

TEST(CommandManager, IdsFromSeveralThreadsAreAllDifferent)
{
    manager();
    std::vector<std::vector<CommandId>> ids(4);
    std::vector<std::thread> threads;
    for (std::vector<CommandId>& mine : ids) {
        threads.emplace_back([&mine] {
            for (int i = 0; i < 1000; ++i) {
                mine.push_back(manager().createId());
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    std::set<CommandId> all;
    for (const std::vector<CommandId>& some : ids) {
        all.insert(some.begin(), some.end());
    }
    EXPECT_EQ(4000u, all.size());
}

TEST(CommandManager, RunInAWorkerIsCancelledFromOutside)
{
    FakeDocument& document = support::create_document();
    FakeProgress sink;
    const auto command = make_command(document.id(), "A");
    command->setProgress(&sink);
    std::atomic<bool> running{false};
    command->on_do = [&] {
        for (;;) { // ended by the request alone
            command->progress(50);
            running = true;
            std::this_thread::yield();
        }
    };
    std::thread worker([&] { manager().insert(command, false); });
    while (!running) {
        std::this_thread::yield();
    }
    command->request_cancel();
    worker.join();
    EXPECT_EQ(1, journal().count("A.rollback"));
    EXPECT_EQ(1, journal().count("A.finished(false)"));
    EXPECT_FALSE(DocumentManager::instance().documents_busy());
}

TEST(CommandManager, FailureInAWorkerIsLoggedAndShowsNothing)
{
    FakeDocument& document = support::create_document();
    const auto command = make_command(document.id(), "A");
    command->on_do = support::throws_failure("no room");
    const JournalingReceiver receiver(Qt::DirectConnection);
    support::LogCapture log;
    ErrorHandler::instance(); // belongs to this thread
    std::thread([&] { manager().insert(command, false); }).join();
    EXPECT_TRUE(log.take("no room"));
    log.take_all();
    EXPECT_EQ(1, journal().count("CommandMessage(A, 3)"));
}

TEST(CommandManager, HistoryMayBeReadDuringARun)
{
    FakeDocument& document = support::create_document();
    std::atomic<bool> done{false};
    std::thread worker([&] {
        for (int i = 0; i < 200; ++i) {
            manager().insert(make_command(document.id(), "A"), false);
        }
        for (int i = 0; i < 100; ++i) {
            manager().undo(document.id());
        }
        done = true;
    });
    while (!done) {
        EXPECT_LE(document.document_history().getUndoCommandDetails(5).size(), 5u);
        EXPECT_LE(document.document_history().undoSize(), 200u);
        EXPECT_LE(document.document_history().redoSize(), 100u);
    }
    worker.join();
    EXPECT_EQ(100u, document.document_history().undoSize());
    EXPECT_EQ(100u, document.document_history().redoSize());
}

TEST(CommandManager, DetailsMayBeReadWhileARunChangesThem)
{
    const support::App app;
    const std::vector<std::string> texts = {std::string(100, 'a'), std::string(200, 'b')};
    const std::vector<QIcon> icons = {icon(Qt::red), icon(Qt::blue)};
    FakeDocument& document = support::create_document();
    const auto command = make_command(document.id(), texts[0]);
    std::atomic<bool> running{false};
    std::atomic<bool> stop{false};
    command->on_do = [&] {
        for (std::size_t turn = 0; !stop; turn = 1 - turn) {
            command->setName(texts[turn]);
            command->setDescription(texts[turn]);
            command->setIcon(icons[turn]);
            running = true;
            std::this_thread::yield();
        }
    };
    std::thread worker([&] { manager().insert(command, false); });
    while (!running) {
        std::this_thread::yield();
    }
    for (int i = 0; i < 500; ++i) {
        for (const CommandDetails& details : document.document_history().getUndoCommandDetails(5)) {
            const qint64 key = details.icon().cacheKey();
            EXPECT_TRUE(details.name() == texts[0] || details.name() == texts[1]);
            EXPECT_TRUE(details.description() == texts[0] || details.description() == texts[1]);
            EXPECT_TRUE(key == icons[0].cacheKey() || key == icons[1].cacheKey());
        }
    }
    stop = true;
    worker.join();
    EXPECT_EQ(1u, document.document_history().undoSize());
    document.document_history().removeLastUndo(); // the icons need the application
}
