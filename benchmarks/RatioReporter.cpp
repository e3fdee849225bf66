#include "RatioReporter.h"

#include <algorithm>
#include <cstdio>

namespace {

struct Pair
{
    std::string what;
    std::string ours;
    std::string peer;
};

std::vector<Pair>& pairs()
{
    static std::vector<Pair> s_pairs;
    return s_pairs;
}

} // namespace

Ratio::Ratio(const std::string& what, const std::string& ours, const std::string& peer)
{
    pairs().push_back({what, ours, peer});
}

RatioReporter::RatioReporter()
    : ConsoleReporter(OO_None)
{ }

void RatioReporter::ReportRuns(const std::vector<Run>& runs)
{
    for (const Run& run : runs) {
        if (run.run_type == Run::RT_Aggregate && run.aggregate_name == "median") {
            // Without the options that the name of the run carries, such as the number of repetitions.
            benchmark::BenchmarkName name = run.run_name;
            name.repetitions.clear();
            name.min_time.clear();
            m_medians[name.str()]
                = run.GetAdjustedRealTime() * 1e9 / benchmark::GetTimeUnitMultiplier(run.time_unit);
        }
    }
    ConsoleReporter::ReportRuns(runs);
}

void RatioReporter::Finalize()
{
    std::size_t width = 0;
    for (const Pair& pair : pairs()) {
        width = std::max(width, pair.what.size());
    }
    std::fputs("\nMedians, ours / peer:\n", stdout);
    for (const Pair& pair : pairs()) {
        const auto ours = m_medians.find(pair.ours);
        const auto peer = m_medians.find(pair.peer);
        if (ours == m_medians.end() || peer == m_medians.end()) {
            continue; // filtered out on the command line
        }
        std::printf("  %-*s  %8.0f ns / %8.0f ns = %.2f\n", static_cast<int>(width), pair.what.c_str(),
            ours->second, peer->second, ours->second / peer->second);
    }
}
