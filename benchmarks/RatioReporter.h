#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

/// Announces that two benchmarks are to be compared; an object of it at namespace scope is enough.
class Ratio
{
public:
    /// @param what what is compared, for the reader @param ours, peer names of the two benchmarks
    Ratio(const std::string& what, const std::string& ours, const std::string& peer);
};

/// Prints the usual table and, when all benchmarks have run, the ratio of the medians of each announced pair.
class RatioReporter : public benchmark::ConsoleReporter
{
public:
    RatioReporter();

    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

private:
    std::map<std::string, double> m_medians; // nanoseconds by the benchmark's name
};
