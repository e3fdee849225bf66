#include "support/Fakes.h"

#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/housekeeping/LastWords.h>

#include <QtCore/QSemaphore>

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <functional>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

// A host that dies. Its arguments: the way, one of s_ways; then any of
//   off            without last words
//   in=do, in=undo, in=redo  inside such a run of a command
//   in=worker      inside a run in another thread
//   elsewhere      while a command runs in another thread
//   after          after such a run
//   long           with a very long name of the command
//   many           after a hundred runs
//   twice          in two threads at once
//   bare           before there is an application

namespace {

using namespace tarqa::housekeeping;

typedef std::vector<std::string> Options;

bool has(const Options& options, const std::string& option)
{
    return std::find(options.begin(), options.end(), option) != options.end();
}

struct Own
{ };

support::FakeModelFactory s_model_factory;
support::FakeDocumentFactory s_document_factory;
volatile int s_zero = 0;
bool s_has_long_name = false;

__attribute__((noinline)) int overflow(int depth)
{
    volatile char memory[4096];
    memory[0] = static_cast<char>(depth);
    return depth < s_zero ? 0 : overflow(depth + 1) + memory[0];
}

void thrown_by_nobody(const std::function<void()>& throw_it)
{
    std::thread([&] { throw_it(); }).join();
}

} // namespace

/// The name is looked for in the stack.
extern "C" __attribute__((noinline, visibility("default"))) void the_function_that_dies(
    const std::string& way)
{
    static const std::map<std::string, std::function<void()>> s_ways{
        {"segv", [] { *reinterpret_cast<volatile int*>(std::uintptr_t(16) + s_zero) = 1; }},
        {"bus", [] { std::raise(SIGBUS); }},
        {"fpe", [] { std::raise(SIGFPE); }},
        {"ill", [] { std::raise(SIGILL); }},
        {"sys", [] { std::raise(SIGSYS); }},
        {"trap", [] { std::raise(SIGTRAP); }},
        {"abort", [] { std::abort(); }},
        {"overflow", [] { overflow(0); }},
        {"terminate", [] { std::terminate(); }},
        {"exception", [] { thrown_by_nobody([] { throw std::runtime_error("the reason"); }); }},
        {"own", [] { thrown_by_nobody([] { throw Own(); }); }},
        {"qfatal", [] { qFatal("the end"); }},
        {"kill", [] { std::raise(SIGKILL); }},
        {"exit", [] { std::_Exit(3); }},
        {"end", [] {}},
    };
    s_ways.at(way)();
}

namespace {

boost::shared_ptr<support::FakeCommand> make_command(const std::string& name)
{
    return support::make_command(DocumentManager::instance().create_document().id(), name);
}

/// Its name and its document, and the line that is expected of it, are printed.
boost::shared_ptr<support::FakeCommand> command_that(const std::function<void()>& action)
{
    auto sp_command = make_command(s_has_long_name ? std::string(1000, 'x')
                                                   : "Fill \"sinks\" of Vall\xc3\xa9"
                                                     "e");
    sp_command->on_do = action;
    const AbstractDocument& document
        = DocumentManager::instance().document_from_id(sp_command->document_id());
    std::cout << "command: of command " << sp_command->id() << " \"" << sp_command->name()
              << "\" on document " << document.id() << " \"" << document.title() << "\" in thread "
              << std::endl;
    return sp_command;
}

void die(const Options& options)
{
    const std::string way = options.front();
    s_has_long_name = has(options, "long");
    const auto dying = [way] { the_function_that_dies(way); };
    CommandManager& manager = CommandManager::instance();
    for (int i = 0; has(options, "many") && i < 100; ++i) {
        manager.insert(make_command("Smooth"), false);
    }
    if (has(options, "in=do")) {
        manager.insert(make_command("Smooth"), false);
        manager.insert(command_that(dying), false);
    } else if (has(options, "in=undo") || has(options, "in=redo")) {
        const auto sp_command = command_that([] {});
        manager.insert(sp_command, false);
        if (has(options, "in=undo")) {
            sp_command->on_undo = dying;
        }
        manager.undo(sp_command->document_id());
        sp_command->on_do = dying;
        manager.redo(sp_command->document_id());
    } else if (has(options, "in=worker")) {
        const auto sp_command = command_that(dying);
        std::thread([&] { manager.insert(sp_command, false); }).join();
    } else if (has(options, "elsewhere")) {
        QSemaphore running;
        const auto sp_command = command_that([&] {
            running.release();
            QSemaphore().acquire(); // for ever
        });
        std::thread([&] { manager.insert(sp_command, false); }).detach();
        running.acquire();
        dying();
    } else if (has(options, "after")) {
        manager.insert(command_that([] {}), false);
        dying();
    } else if (has(options, "twice")) {
        QSemaphore start;
        std::vector<std::thread> threads;
        for (int i = 0; i < 8; ++i) {
            threads.emplace_back([&] {
                start.acquire();
                dying();
            });
        }
        start.release(8);
        for (std::thread& thread : threads) {
            thread.join();
        }
    } else {
        dying();
    }
}

} // namespace

int main(int argc, char** argv)
{
    const Options options(argv + 1, argv + argc);
    if (!has(options, "bare")) {
        ApplicationManager::instance().init(argc, argv, "probe", false);
    }
    if (!has(options, "off")) {
        std::cout << "enabled: " << LastWords::enable() << LastWords::enable() << '\n';
    }
    std::cout << "file: " << LastWords::file() << '\n';
    std::cout << "log: " << ErrorProtocol::instance().log_filename() << "\nready" << std::endl;
    die(options);
    return 0;
}
