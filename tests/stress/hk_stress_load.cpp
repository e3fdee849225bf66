// Load for a while, and whether the window stays usable meanwhile. Prints figures; ends with 1 if anything
// went wrong or took too long. See usage().

#include "GuiWatch.h"
#include "Load.h"
#include "WorkerRun.h"

#include "support/App.h"
#include "support/PrivateHome.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <iomanip>
#include <iostream>

using namespace load;

namespace {

const double s_gui_limit = 50; // milliseconds
const double s_cancel_limit = 100;
const int s_rounds = 50;

struct Arguments
{
    Options load;
    int worker_seconds = 30;
};

int usage()
{
    std::cerr << "usage: hk_stress_load [--seconds S] [--seed N] [--threads N] [--worker-command S]\n"
                 "  --seconds S         how long the threads work; 60, 0 leaves that out\n"
                 "  --seed N            of what they do; 1\n"
                 "  --threads N         1 to 15; 8\n"
                 "  --worker-command S  how long the command in a worker runs; 30, 0 leaves that out\n";
    return 2;
}

bool read(int argc, char** argv, Arguments& arguments)
{
    arguments.load.steps = 0;
    arguments.load.seconds = 60;
    for (int i = 1; i < argc; i += 2) {
        const std::string name = argv[i];
        char* p_end = nullptr;
        const unsigned long long value = i + 1 < argc ? std::strtoull(argv[i + 1], &p_end, 10) : 0;
        if (!p_end || p_end == argv[i + 1] || *p_end) {
            return false;
        }
        if (name == "--seconds") {
            arguments.load.seconds = static_cast<int>(value);
        } else if (name == "--seed") {
            arguments.load.seed = value;
        } else if (name == "--threads") {
            arguments.load.threads = static_cast<unsigned>(value);
        } else if (name == "--worker-command") {
            arguments.worker_seconds = static_cast<int>(value);
        } else {
            return false;
        }
    }
    return arguments.load.threads >= 1 && arguments.load.threads < s_senders;
}

bool print_verdict(const std::string& what, double milliseconds, double limit)
{
    const bool held = milliseconds <= limit;
    std::cout << what << ": " << std::fixed << std::setprecision(3) << milliseconds << " ms, at most "
              << std::setprecision(0) << limit << " ms: " << (held ? "held" : "missed") << '\n';
    return held;
}

/// What the window waits for while a command runs in a worker. @return whether the limit was kept
bool measure_gui(const ShownDocuments& documents, int seconds)
{
    const std::vector<GuiCall> calls = gui_calls(documents.all());
    GuiWatch watch(calls);
    const auto work = [seconds](WorkerCommand& command) {
        const Clock::time_point begin = Clock::now();
        for (double done = 0; done < 1;) {
            compute_for(2);
            done = milliseconds_between(begin, Clock::now()) / (1000.0 * seconds);
            const auto percentage = static_cast<unsigned>(std::min(100.0, 100 * done));
            command.report(percentage);
            command.progress_text(std::to_string(percentage) + " %");
            command.setDescription(std::to_string(percentage) + " per cent");
        }
    };
    WorkerRun run(documents.first(), work);
    watch.run_until([&run] { return run.finished(); });
    run.join();

    std::cout << "\nA command in a worker, " << seconds << " s, " << run.command().reports.size()
              << " progress reports, " << run.progress().shown << " shown\n"
              << "from beat to beat of the GUI thread, all calls included: " << watch.waits().distribution()
              << '\n';
    for (std::size_t at = 0; at < calls.size(); ++at) {
        std::cout << "  " << calls[at].name << ": " << watch.waits_of_calls()[at].distribution() << '\n';
    }
    std::cout << "of the longest wait, for a processor: " << watch.waits().for_processor() << " ms\n";
    return print_verdict("longest wait of the GUI thread", watch.waits().longest(), s_gui_limit);
}

/// How soon a command ends that is to be cancelled. @return whether the limit was kept
bool measure_cancelling(const ShownDocuments& documents)
{
    Waits from_report;
    Waits from_request;
    int late = 0;
    for (int round = 0; round < s_rounds; ++round) {
        std::atomic<int> reports{0};
        const auto work = [&reports](WorkerCommand& command) {
            for (;;) { // ended by the request alone
                compute_for(3);
                ++reports;
                command.report(50);
            }
        };
        GuiWatch watch({});
        WorkerRun run(documents.first(), work);
        watch.run_until([&reports, round] { return reports > round % 7; });
        const Clock::time_point request = Clock::now();
        run.command().request_cancel();
        const Clock::time_point requested = Clock::now();
        watch.run_until([&run] { return run.finished(); });
        run.join();
        const std::vector<Clock::time_point>& begun = run.command().reports;
        const auto after = std::count_if(
            begun.begin(), begun.end(), [requested](Clock::time_point time) { return time > requested; });
        late += after > 1 || !run.command().rolled_back ? 1 : 0;
        from_report.add(milliseconds_between(begun.back(), run.end()));
        from_request.add(milliseconds_between(request, run.end()));
    }
    std::cout << "\nCancelled commands in a worker, " << s_rounds << " rounds, a report every 3 ms\n"
              << "from the next report to the end of the run: " << from_report.distribution() << '\n'
              << "from the request to the end of the run: " << from_request.distribution() << '\n'
              << "runs that went on after the next report: " << late << '\n';
    return print_verdict("cancelled after the next report", from_report.longest(), s_cancel_limit)
        && late == 0;
}

bool run_load(const Options& options)
{
    std::cout << "\n"
              << options.threads << " threads, " << options.seconds << " s, seed " << options.seed << '\n';
    const Report report = Load(options).run();
    std::cout << report;
    return report.fault_count == 0;
}

} // namespace

int main(int argc, char** argv)
{
    Arguments arguments;
    if (!read(argc, argv, arguments)) {
        return usage();
    }
    const support::PrivateHome home;
    const support::App app;
    bool good = true;
    if (arguments.worker_seconds > 0) {
        const ShownDocuments documents;
        good = measure_gui(documents, arguments.worker_seconds);
        good = measure_cancelling(documents) && good;
    }
    if (arguments.load.seconds > 0) {
        good = run_load(arguments.load) && good;
    }
    return good ? EXIT_SUCCESS : EXIT_FAILURE;
}
