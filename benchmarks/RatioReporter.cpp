#include "RatioReporter.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>

namespace {

const char* const s_time = "time";

struct Pair
{
    std::string what;
    std::string ours;
    std::string peer;
    double reach;
    std::string counter;
};

std::vector<Pair>& pairs()
{
    static std::vector<Pair> s_pairs;
    return s_pairs;
}

/// The name without the options that it carries, such as the number of repetitions.
std::string plain_name(benchmark::BenchmarkName name)
{
    name.repetitions.clear();
    name.min_time.clear();
    name.iterations.clear();
    name.time_type.clear();
    return name.str();
}

/// "reached", or how far it is.
std::string verdict(double ratio, double reach)
{
    if (reach <= 0) {
        return "";
    }
    char text[64];
    if (ratio <= reach) {
        std::snprintf(text, sizeof(text), "  <= %.3g reached", reach);
    } else {
        std::snprintf(text, sizeof(text), "  <= %.3g not reached: %.2f times that", reach, ratio / reach);
    }
    return text;
}

} // namespace

Ratio::Ratio(const std::string& what, const std::string& ours, const std::string& peer, double reach,
    const std::string& counter)
{
    pairs().push_back({what, ours, peer, reach, counter.empty() ? s_time : counter});
}

RatioReporter::RatioReporter()
    : ConsoleReporter(OO_None)
{ }

void RatioReporter::ReportRuns(const std::vector<Run>& runs)
{
    for (const Run& run : runs) {
        if (run.error_occurred) {
            m_failed.insert(plain_name(run.run_name));
        }
        if (run.run_type == Run::RT_Aggregate && run.aggregate_name == "median") {
            std::map<std::string, double>& medians = m_medians[plain_name(run.run_name)];
            medians[s_time]
                = run.GetAdjustedRealTime() * 1e9 / benchmark::GetTimeUnitMultiplier(run.time_unit);
            for (const auto& counter : run.counters) {
                medians[counter.first] = counter.second.value;
            }
        }
    }
    ConsoleReporter::ReportRuns(runs);
}

void RatioReporter::Finalize()
{
    std::ofstream results;
    if (const char* const file = std::getenv("HK_BENCH_RESULTS")) {
        results.open(file, std::ios::app);
    }
    for (const auto& medians : m_medians) {
        const auto time = medians.second.find(s_time);
        results << "median\t" << medians.first << '\t' << time->second << '\n';
    }

    std::size_t width = 0;
    for (const Pair& pair : pairs()) {
        width = std::max(width, pair.what.size());
    }
    std::fputs("\nMedians, ours / peer:\n", stdout);
    for (const Pair& pair : pairs()) {
        if (m_failed.count(pair.ours) || m_failed.count(pair.peer)) {
            std::printf("  %s: FAILED\n", pair.what.c_str());
            results << "failed\t" << pair.what << '\n';
            continue;
        }
        const auto ours = m_medians.find(pair.ours);
        const auto peer = m_medians.find(pair.peer);
        if (ours == m_medians.end() || peer == m_medians.end()) {
            continue; // filtered out on the command line
        }
        const auto our_value = ours->second.find(pair.counter);
        const auto peer_value = peer->second.find(pair.counter);
        if (our_value == ours->second.end() || peer_value == peer->second.end()) {
            std::printf("  %s: no such counter: %s\n", pair.what.c_str(), pair.counter.c_str());
            continue;
        }
        const double ratio = our_value->second / peer_value->second;
        std::printf("  %-*s  %11.4g %s / %11.4g = %.3f%s\n", static_cast<int>(width), pair.what.c_str(),
            our_value->second, pair.counter == s_time ? "ns" : pair.counter.c_str(), peer_value->second,
            ratio, verdict(ratio, pair.reach).c_str());
        results << "row\t" << pair.what << '\t' << our_value->second << '\t' << peer_value->second << '\t'
                << pair.counter << '\t' << pair.reach << '\n';
    }
}
