#include "Program.h"

#include "RatioReporter.h"

#include "support/PrivateHome.h"

#include <pkBase/pkDestructor.h>
#include <pkBaseQt/pkProductInfo.h>
#include <tarqa/housekeeping/ControllerManager.h>

#include <thread>
#include <vector>

#include <malloc.h>

namespace {

/// The C library's mutexes and heap lock nothing before a program's first thread. Hosts have threads, and so
/// do some benchmarks: no figure depends on which of them ran before.
void start_first_thread()
{
    std::thread([] {}).join();
}

/// What is given back stays in the process. A virtual machine gives memory that is free for two seconds back
/// to its host, and fetching 128 MB again took up to ten times as long as smoothing them, for whoever came
/// first.
void keep_memory()
{
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, -1);
}

} // namespace

int run_benchmarks(int argc, char** argv, void (*prepare)())
{
    // Defaults, ahead of the user's own options: medians of interleaved repetitions, so that a change of the
    // machine's speed meanwhile meets both sides of a ratio alike.
    static char s_repetitions[] = "--benchmark_repetitions=9";
    static char s_interleaved[] = "--benchmark_enable_random_interleaving=true";
    static char s_medians[] = "--benchmark_report_aggregates_only=true";
    static char s_time[] = "--benchmark_min_time=0.1";
    std::vector<char*> arguments = {argv[0], s_repetitions, s_interleaved, s_medians, s_time};
    arguments.insert(arguments.end(), argv + 1, argv + argc);
    int count = static_cast<int>(arguments.size());
    arguments.push_back(nullptr);

    keep_memory();
    start_first_thread();
    const support::PrivateHome home;
    pkBase::pkProductInfo::instance().product_name("Benchmarks");
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) {
        return 2;
    }

    if (prepare) {
        prepare();
    }
    tarqa::housekeeping::ControllerManager::instance().init(); // each document has a state of each controller
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    pkBase::pkDestructor::run();
    return 0;
}
