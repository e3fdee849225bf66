#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <set>
#include <string>
#include <vector>

/**
 * Announces that two benchmarks are to be compared; an object of it at namespace scope is enough.
 *
 * What is compared is the median of the real time of an iteration, or the median of a counter of both.
 */
class Ratio
{
public:
    /// @param what what is compared, for the reader: "ours / the peer"
    /// @param ours, peer names of the two benchmarks, without the options that Google Benchmark adds to a
    /// name
    /// @param reach what ours / peer is to be at most; 0: nothing is asked of it
    /// @param counter the counter of both benchmarks that is compared; empty: their time
    Ratio(const std::string& what, const std::string& ours, const std::string& peer, double reach = 0,
        const std::string& counter = {});
};

/**
 * Prints the usual table and, when all benchmarks have run, a row for each announced pair: both figures,
 * their ratio, and whether it is what is to be reached.
 *
 * If the environment variable HK_BENCH_RESULTS names a file, the rows and all medians are appended to it as
 * well, one a line, for the table and the plots that are made of several programs:
 *
 *     row <tab> what <tab> ours <tab> peer <tab> counter or "time" <tab> reach
 *     failed <tab> what, instead of a row with a benchmark that skipped with an error
 *     median <tab> name of the benchmark <tab> nanoseconds
 */
class RatioReporter : public benchmark::ConsoleReporter
{
public:
    RatioReporter();

    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

private:
    /// By the benchmark's name and the counter's: "time" are nanoseconds an iteration.
    std::map<std::string, std::map<std::string, double>> m_medians;
    std::set<std::string> m_failed; // names of benchmarks that said so
};
