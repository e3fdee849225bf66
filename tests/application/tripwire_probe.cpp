#include "support/Fakes.h"
#include "support/MutexWatch.h"
#include "support/Sanitizers.h"
#include "support/TestAccess.h"

#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/ControllerLocker.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/housekeeping/ErrorProtocolOutput.h>
#include <tarqa/housekeeping/MessageHandler.h>
#include <tarqa/housekeeping/Tripwire.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QSemaphore>

#include <algorithm>
#include <functional>
#include <iostream>
#include <map>
#include <string>
#include <thread>
#include <vector>

// A host that breaks the rules about locks, or keeps them. Its arguments: what it does, one of s_ways; then
// any of
//   on         with the tripwire
//   disabled   which is switched off again
//   late       which is switched on when it holds the first lock already
//   worker     in another thread
// Before it waits for ever, it prints "waits".

namespace {

using namespace tarqa::housekeeping;

typedef std::function<void()> Action;

volatile int s_done
    = 0; // keeps calls from being the last ones of their functions, which have no place in stacks

bool s_late = false;

} // namespace

// The names are looked for in the stacks.

extern "C" __attribute__((noinline, visibility("default"))) void the_function_that_takes_it(
    const Action& operation)
{
    operation();
    s_done = s_done + 1;
}

extern "C" __attribute__((noinline, visibility("default"))) void the_function_that_asks_again(
    const Action& operation)
{
    operation();
    s_done = s_done + 1;
}

namespace {

/// Asks for a mutex that somebody holds, and has another thread tell when it waits for it.
template <class Mutex>
void ask_again(const Mutex& mutex, const Action& operation)
{
    if (s_late) {
        Tripwire::enable();
    }
    const support::MutexWatch<Mutex> watch(mutex);
    std::thread([watch] {
        while (!watch.somebody_waits()) {
            std::this_thread::yield();
        }
        std::cout << "waits: 1" << std::endl;
    }).detach();
    the_function_that_asks_again(operation);
}

boost::shared_ptr<support::FakeCommand> make_command(const std::string& name, const Action& action = {})
{
    const auto sp_command = support::make_command(DocumentManager::instance().create_document().id(), name);
    sp_command->on_do = action;
    return sp_command;
}

CommandManager& commands()
{
    return CommandManager::instance();
}

/// Inserts a command that does this, and prints what is expected of it.
void run(const Action& action)
{
    const auto sp_command = make_command("Fill sinks", action);
    const AbstractDocument& document
        = DocumentManager::instance().document_from_id(sp_command->document_id());
    std::cout << "command: of command " << sp_command->id() << " \"Fill sinks\" on document " << document.id()
              << " \"" << document.title() << "\" in thread " << std::endl;
    the_function_that_takes_it([&] { commands().insert(sp_command, false); });
}

void break_a_rule_of_runs(const std::function<void(const boost::shared_ptr<support::FakeCommand>&)>& what)
{
    const auto sp_other = make_command("Smooth");
    run([&] { ask_again(TestAccess::mutex(commands()), [&] { what(sp_other); }); });
}

void insert_from_a_message()
{
    const auto sp_other = make_command("Smooth");
    support::JournalingReceiver receiver;
    receiver.on_command = [&](CommandMessage&) {
        ask_again(TestAccess::mutex(commands()), [&] { commands().insert(sp_other, false); });
    };
    run([] {});
}

void create_during_creation(const Action& what)
{
    support::JournalingReceiver receiver;
    receiver.on_document = [&](DocumentMessage& message) {
        if (message.doc_change_type() == DocumentMessage::Created) {
            ask_again(TestAccess::registry_mutex(DocumentManager::instance()), what);
        }
    };
    the_function_that_takes_it([] { DocumentManager::instance().create_document(); });
}

/// A subscriber of a posted message does this.
void deliver(const Action& what)
{
    support::JournalingReceiver receiver;
    bool delivered = false;
    receiver.on_document = [&](DocumentMessage&) {
        if (!delivered) {
            what();
        }
        delivered = true;
    };
    DocumentMessage::instance()->post();
    the_function_that_takes_it([&] {
        while (!delivered) {
            QCoreApplication::processEvents();
        }
    });
}

void post_from_a_delivery()
{
    deliver([] {
        ask_again(TestAccess::mutex(MessageHandler::instance()), [] { DocumentMessage::instance()->post(); });
    });
}

void log_beside_a_stream(const Action& what)
{
    std::unique_ptr<ErrorProtocolOutput> stream;
    the_function_that_takes_it([&] { stream = std::make_unique<ErrorProtocolOutput>(); });
    *stream << "the outer entry";
    if (s_late) {
        Tripwire::enable();
    }
    the_function_that_asks_again(what);
}

/// A worker's command posts while the main thread delivers, and the main thread inserts from there.
void two_threads()
{
    const auto sp_other = make_command("Smooth");
    const auto sp_command = make_command("Fill sinks");
    sp_command->on_do = [] { the_function_that_asks_again([] { DocumentMessage::instance()->post(); }); };
    std::thread worker;
    deliver([&] {
        const support::MutexWatch<QMutex> watch(TestAccess::mutex(MessageHandler::instance()));
        worker
            = std::thread([&] { the_function_that_takes_it([&] { commands().insert(sp_command, false); }); });
        while (!watch.somebody_waits()) {
            std::this_thread::yield();
        }
        ask_again(TestAccess::mutex(commands()), [&] { commands().insert(sp_other, false); });
    });
    worker.join();
}

/// A worker's command asks for a controller that the main thread has while it waits for the command's end.
void two_threads_and_a_controller()
{
    support::FakeController controller("alpha");
    const auto sp_other = make_command("Smooth");
    const auto sp_command = make_command("Fill sinks");
    QSemaphore running;
    const ControllerLocker locker(controller);
    sp_command->on_do = [&] {
        const support::MutexWatch<QMutex> watch(TestAccess::mutex(commands()));
        running.release();
        while (!watch.somebody_waits()) {
            std::this_thread::yield();
        }
        const ControllerLocker again(controller);
    };
    std::thread worker([&] { commands().insert(sp_command, false); });
    running.acquire();
    commands().insert(sp_other, false);
    worker.join();
}

/// A worker's run goes on while the main thread wants one.
void wait_for_a_worker()
{
    const auto sp_other = make_command("Smooth");
    QSemaphore running;
    std::thread worker([&] {
        run([&] {
            running.release();
            QSemaphore().acquire(); // for ever
        });
    });
    running.acquire();
    ask_again(TestAccess::mutex(commands()), [&] { commands().insert(sp_other, false); });
    worker.join();
}

/// All that is like the above and allowed.
void keep_the_rules()
{
    support::FakeController controller("alpha");
    const auto sp_command = make_command("Fill sinks");
    commands().insert(sp_command, false);
    commands().undo(sp_command->document_id());
    commands().redo(sp_command->document_id());
    commands().insert(make_command("Smooth", [] { DocumentMessage::instance()->post(); }), false);
    std::thread([&] { commands().insert(make_command("Smooth"), false); }).join();
    std::thread poster;
    deliver([&] { // who posts in another thread waits for the end of the delivery
        poster = std::thread([] { DocumentMessage::instance()->post(); });
    });
    poster.join();
    DocumentMessage message;
    {
        support::JournalingReceiver receiver;
        receiver.on_document = [](DocumentMessage&) { DocumentMessage::instance()->post(); };
        message.dispatch();
    }
    const ControllerLocker outer(controller);
    const ControllerLocker inner(controller);
    ErrorProtocolOutput() << "an entry";
    ErrorProtocolOutput() << "another entry";
    ErrorProtocol::instance().log_message("and one more");
    const DocumentId id = DocumentManager::instance().create_document().id();
    DocumentManager::instance().destroy_document(id, true, false, false, DocumentId::null());
}

const std::map<std::string, Action> s_ways{
    {"insert",
        [] { break_a_rule_of_runs([](const auto& sp_other) { commands().insert(sp_other, false); }); }},
    {"undo",
        [] { break_a_rule_of_runs([](const auto& sp_other) { commands().undo(sp_other->document_id()); }); }},
    {"redo",
        [] { break_a_rule_of_runs([](const auto& sp_other) { commands().redo(sp_other->document_id()); }); }},
    {"message", &insert_from_a_message},
    {"create", [] { create_during_creation([] { DocumentManager::instance().create_document(); }); }},
    {"destroy",
        [] {
            const DocumentId id = DocumentManager::instance().create_document().id();
            create_during_creation([id] {
                DocumentManager::instance().destroy_document(id, true, false, false, DocumentId::null());
            });
        }},
    {"post", &post_from_a_delivery},
    {"log", [] { log_beside_a_stream([] { ErrorProtocol::instance().log_message("the inner entry"); }); }},
    {"stream", [] { log_beside_a_stream([] { ErrorProtocolOutput() << "the inner entry"; }); }},
    {"two", &two_threads},
    {"controller", &two_threads_and_a_controller},
    {"long", &wait_for_a_worker},
    {"allowed", &keep_the_rules},
    {"nothing", [] {}},
};

} // namespace

#ifdef HK_SANITIZED
/// A probe ends with messages that were posted and not delivered, as any host may: they are no leaks.
extern "C" __attribute__((visibility("default"))) const char* __asan_default_options();
const char* __asan_default_options()
{
    return "detect_leaks=0";
}
#endif

int main(int argc, char** argv)
{
    const std::vector<std::string> options(argv + 1, argv + argc);
    const auto has = [&](const char* option) {
        return std::find(options.begin(), options.end(), option) != options.end();
    };
    s_late = has("late");
    if (has("on")) {
        Tripwire::enable();
        Tripwire::enable();
    }
    if (has("disabled")) {
        Tripwire::disable();
    }
    ApplicationManager::instance().init(argc, argv, "probe", false);
    support::register_documents();
    std::cout << "enabled: " << Tripwire::enabled() << "\nlog: " << ErrorProtocol::instance().log_filename()
              << "\nready" << std::endl;
    const Action& way = s_ways.at(options.front());
    has("worker") ? std::thread(way).join() : way();
    std::cout << "entries: " << support::journal().entries().size() << std::endl;
    return 0;
}
