#pragma once

#include <chrono>
#include <ostream>
#include <string>
#include <vector>

namespace load {

typedef std::chrono::steady_clock Clock;

/// Times in milliseconds, and how they are distributed. One thread.
class Waits
{
public:
    /// @param for_processor how long of it the thread could have gone on if it had been given a processor
    void add(double milliseconds, double for_processor = 0);

    std::size_t count() const { return m_waits.size(); }
    double longest() const;
    /// The share of the longest one that was a wait for a processor.
    double for_processor() const { return m_for_processor; }
    /// @param share 0 to 1; 0.5 gives the median
    double quantile(double share) const;
    /// In one line.
    std::string distribution() const;

private:
    std::vector<double> m_waits;
    double m_longest = 0;
    double m_for_processor = 0;
};

double milliseconds_between(Clock::time_point begin, Clock::time_point end);

/// Time that the calling thread spent so far waiting for a processor, in milliseconds; 0 where the system
/// does not tell. The first call, in each thread, opens what it reads.
double waited_for_processor();

/// Spends @p milliseconds with computing.
void compute_for(double milliseconds);

} // namespace load
