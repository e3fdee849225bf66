#include "support/Fakes.h"
#include "support/MessageSpy.h"
#include "support/PrivateHome.h"
#include "support/TestAccess.h"

#include <pkBase/pkDestructor.h>
#include <tarqa/housekeeping/ApplicationManager.h>
#include <tarqa/housekeeping/ApplicationMessage.h>
#include <tarqa/housekeeping/QuickHelpManager.h>
#include <tarqa/housekeeping/ThreadLocal.h>
#include <tarqa/utilities/Exception.h>

#include <QtCore/QSemaphore>
#include <QtCore/QThreadPool>
#include <QtCore/QTimer>
#include <QtWidgets/QWidget>

#include <boost/weak_ptr.hpp>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

// A host that ends in the way that its first argument names, and prints which singletons are left when, one
// "name: value" line each. (With stdio: it prints until the very end of the process.)

namespace {

using namespace tarqa::housekeeping;
using pkBase::pkDestructionPhase;
using pkBase::pkDestructor;

// What is left

void print(const std::string& name, const std::string& value)
{
    std::printf("%s: %s\n", name.c_str(), value.c_str());
}

template <class Singleton>
bool lives()
{
    return TestAccess::peek<Singleton>() != nullptr;
}

struct NamedSingleton
{
    const char* name;
    bool (*lives)();
};

const NamedSingleton s_singletons[] = {
    {"application", &lives<ApplicationManager>},
    {"threads", &lives<ThreadLocal>},
    {"handler", &lives<ErrorHandler>},
    {"log", &lives<ErrorProtocol>},
    {"messages", &lives<MessageHandler>},
    {"documents", &lives<DocumentManager>},
    {"commands", &lives<CommandManager>},
    {"controllers", &lives<ControllerManager>},
    {"quick-help", &lives<QuickHelpManager>},
};

void print_living(const std::string& when)
{
    std::string living;
    for (const NamedSingleton& singleton : s_singletons) {
        if (singleton.lives()) {
            living += (living.empty() ? "" : " ") + std::string(singleton.name);
        }
    }
    print(when, living.empty() ? "nothing" : living);
}

// Inside a phase the last function entered is called first. The log entered its own before main().

void watch_the_ends_of_phases()
{
    pkDestructor(pkDestructionPhase(4), [] { print_living("phase 4 ends"); });
    pkDestructor(pkDestructionPhase(5), [] { print_living("phase 5 ends"); });
    pkDestructor(pkDestructionPhase(6), [] { print_living("phase 6 ends"); });
}

void watch_the_beginnings_of_phases()
{
    pkDestructor(pkDestructionPhase(4), [] { print_living("phase 4 begins"); });
    pkDestructor(pkDestructionPhase(5), [] { print_living("phase 5 begins"); });
    pkDestructor(pkDestructionPhase(6), [] { print_living("phase 6 begins"); });
}

/// Prints the end of each object, so often as it comes.
void watch(QObject& object, const char* name)
{
    QObject::connect(&object, &QObject::destroyed, [name] { print("destroyed", name); });
}

void use_all_singletons()
{
    watch(ApplicationManager::instance(), "application");
    watch(ErrorHandler::instance(), "handler");
    watch(MessageHandler::instance(), "messages");
    watch(DocumentManager::instance(), "documents");
    watch(QuickHelpManager::instance(), "quick-help");
    CommandManager::instance();
    ControllerManager::instance();
}

// The host's steps

struct CommandLine
{
    int count;
    char** arguments;
};

void start(CommandLine line, bool gui = true)
{
    watch_the_ends_of_phases();
    ApplicationManager::instance().init(line.count, line.arguments, "probe", gui);
    use_all_singletons();
    ErrorProtocol::instance().log_message("the host's entry");
}

void run_main_loop(const std::function<void()>& action, bool visible = true)
{
    QWidget window;
    ApplicationManager::instance().top_level_widget(&window);
    if (visible) {
        ApplicationManager::instance().show();
    }
    QTimer::singleShot(0, action);
    ApplicationManager::instance().main_loop();
    print("loop", "ended");
}

void exit_main_loop()
{
    ApplicationManager::instance().exit_main_loop();
}

int end()
{
    watch_the_beginnings_of_phases();
    pkDestructor::run();
    print_living("left");
    return 0;
}

// The ways to end

int instance_only(CommandLine)
{
    ApplicationManager::instance();
    return end();
}

int never_looped(CommandLine line)
{
    start(line);
    return end();
}

int without_windows(CommandLine line)
{
    start(line, false);
    return end();
}

int looped(CommandLine line)
{
    start(line);
    run_main_loop(&exit_main_loop);
    return end();
}

int never_shown(CommandLine line)
{
    start(line);
    run_main_loop(&exit_main_loop, false);
    return end();
}

/// The loop ends with an error that a worker reports.
int fatal(CommandLine line, const std::function<void()>& report)
{
    start(line);
    std::thread worker;
    run_main_loop([&] { worker = std::thread(report); });
    worker.join();
    return end();
}

int fatal_text(CommandLine line)
{
    return fatal(line, [] { ErrorHandler::instance().fatal_error("the end"); });
}

int fatal_exception(CommandLine line)
{
    return fatal(line, [] {
        ErrorHandler::instance().fatal_error(tarqa::Exception(7, std::string("the end"), "probe", 1));
    });
}

int fatal_standard_exception(CommandLine line)
{
    return fatal(line, [] { ErrorHandler::instance().fatal_error(std::runtime_error("the end")); });
}

int forgets_to_run(CommandLine line)
{
    start(line);
    run_main_loop(&exit_main_loop);
    watch_the_beginnings_of_phases();
    return 0;
}

int runs_twice(CommandLine line)
{
    start(line);
    end();
    pkDestructor::run();
    print_living("left after the second run");
    return 0;
}

int with_posted_messages(CommandLine line)
{
    start(line);
    const support::ApplicationMessageSpy spy;
    std::vector<std::unique_ptr<ApplicationMessage>> messages; // what is not delivered is nobody's
    for (int i = 0; i < 3; ++i) {
        messages.emplace_back(ApplicationMessage::instance());
        messages.back()->post();
    }
    end();
    print("messages delivered", std::to_string(spy.count()));
    return 0;
}

int with_documents(CommandLine line)
{
    start(line);
    std::vector<boost::weak_ptr<AbstractCommand>> commands;
    for (int i = 0; i < 2; ++i) {
        const DocumentId document = support::create_document().id();
        for (const char* const name : {"first", "second", "third"}) {
            const boost::shared_ptr<support::FakeCommand> command = support::make_command(document, name);
            commands.push_back(command);
            CommandManager::instance().insert(command, false);
        }
        CommandManager::instance().undo(document);
    }
    end();
    print("documents destroyed",
        std::to_string(support::journal().count("Document 1.destroyed")
            + support::journal().count("Document 2.destroyed")));
    print("commands left",
        std::to_string(std::count_if(commands.begin(), commands.end(),
            [](const boost::weak_ptr<AbstractCommand>& command) { return !command.expired(); })));
    return 0;
}

int with_a_window(CommandLine line)
{
    start(line);
    static QWidget* const s_p_window = new QWidget; // never deleted
    new QWidget(s_p_window);
    ApplicationManager::instance().top_level_widget(s_p_window);
    ApplicationManager::instance().show();
    QTimer::singleShot(0, &exit_main_loop);
    ApplicationManager::instance().main_loop();
    return end();
}

/// Logs when the process is over already.
struct LastWords
{
    ~LastWords() { ErrorProtocol::instance().log_message("last words"); }
};

int with_last_words(CommandLine line)
{
    static const LastWords s_last_words;
    start(line);
    return end();
}

/// Starts itself anew. The second process finds the name of the program among the arguments, and writes
/// what else it has found into the file that the last one names.
int relaunched(CommandLine line)
{
    start(line);
    print("process", std::to_string(getpid()));
    print("session", std::to_string(getsid(0)));
    run_main_loop([] { ApplicationManager::relaunch(); });
    return end();
}

bool is_second_process(CommandLine line)
{
    return line.count > 1 && std::strcmp(line.arguments[0], line.arguments[1]) == 0;
}

int report_second_process(CommandLine line)
{
    const std::string file = line.arguments[line.count - 1];
    const std::string draft = file + ".part";
    std::FILE* const p_stream = std::fopen(draft.c_str(), "w");
    for (int i = 0; i < line.count; ++i) {
        std::fprintf(p_stream, "%s\n", line.arguments[i]);
    }
    std::fprintf(p_stream, "%d\n%d\n", static_cast<int>(getppid()), static_cast<int>(getsid(0)));
    std::fclose(p_stream);
    return std::rename(draft.c_str(), file.c_str());
}

/// A whole life in a home of its own.
int cycle(CommandLine line)
{
    const support::PrivateHome home;
    return looped(line);
}

/// Twenty lives, one after the other, each in a copy of this process that nothing has happened to.
int cycles(CommandLine line)
{
    for (int i = 0; i < 20; ++i) {
        std::fflush(stdout);
        const pid_t child = fork();
        if (child == 0) {
            std::exit(cycle(line));
        }
        int status = 0;
        if (waitpid(child, &status, 0) != child || status != 0) {
            return 1;
        }
    }
    return 0;
}

/// A task of the pool still runs when the ordered destruction begins, and asks for the manager.
int with_a_busy_pool(CommandLine line)
{
    static QSemaphore s_end_has_begun;
    static ApplicationManager* s_p_manager = nullptr;
    start(line);
    s_p_manager = &ApplicationManager::instance();
    QThreadPool::globalInstance()->start([] {
        s_end_has_begun.acquire();
        std::this_thread::sleep_for(std::chrono::milliseconds(200)); // long enough for all the destruction
        print(
            "task finds", &ApplicationManager::instance() == s_p_manager ? "the manager" : "another manager");
    });
    pkDestructor(pkDestructionPhase(0), [] { s_end_has_begun.release(); });
    return end();
}

/// Ends the process while the loop runs.
int exits_in_its_loop(CommandLine line)
{
    start(line);
    run_main_loop([] {
        watch_the_beginnings_of_phases();
        std::exit(7);
    });
    return 1;
}

/// A worker ends the process while the loop runs.
int exits_in_a_worker(CommandLine line)
{
    start(line);
    run_main_loop([] { std::thread([] { std::exit(7); }).join(); });
    return 1;
}

struct Way
{
    const char* name;
    int (*go)(CommandLine);
};

const Way s_ways[] = {
    {"instance-only", &instance_only},
    {"never-looped", &never_looped},
    {"without-windows", &without_windows},
    {"looped", &looped},
    {"never-shown", &never_shown},
    {"fatal-text", &fatal_text},
    {"fatal-exception", &fatal_exception},
    {"fatal-standard-exception", &fatal_standard_exception},
    {"forgets-to-run", &forgets_to_run},
    {"runs-twice", &runs_twice},
    {"posted-messages", &with_posted_messages},
    {"documents", &with_documents},
    {"window", &with_a_window},
    {"last-words", &with_last_words},
    {"relaunched", &relaunched},
    {"cycles", &cycles},
    {"busy-pool", &with_a_busy_pool},
    {"exits-in-its-loop", &exits_in_its_loop},
    {"exits-in-a-worker", &exits_in_a_worker},
};

} // namespace

int main(int argc, char** argv)
{
    const CommandLine line = {argc, argv};
    if (is_second_process(line)) {
        return report_second_process(line);
    }
    for (const Way& way : s_ways) {
        if (argc > 1 && std::strcmp(argv[1], way.name) == 0) {
            return way.go(line);
        }
    }
    return 2;
}
