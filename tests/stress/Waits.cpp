#include "Waits.h"

#include <algorithm>
#include <cstdlib>
#include <iomanip>
#include <sstream>

#include <fcntl.h>
#include <unistd.h>

namespace load {

namespace {

/// The kernel's account of the calling thread: its time on a processor and its time waiting for one.
class SchedulerAccount
{
public:
    SchedulerAccount()
        : m_file(::open("/proc/thread-self/schedstat", O_RDONLY | O_CLOEXEC))
    { }
    ~SchedulerAccount()
    {
        if (m_file >= 0) {
            ::close(m_file);
        }
    }
    SchedulerAccount(const SchedulerAccount&) = delete;
    SchedulerAccount& operator=(const SchedulerAccount&) = delete;

    double waited() const
    {
        char text[100] = {};
        if (m_file < 0 || ::pread(m_file, text, sizeof(text) - 1, 0) <= 0) {
            return 0;
        }
        char* p_end = nullptr;
        std::strtoull(text, &p_end, 10);
        return static_cast<double>(std::strtoull(p_end, nullptr, 10)) / 1e6;
    }

private:
    int m_file;
};

} // namespace

void Waits::add(double milliseconds, double for_processor)
{
    m_waits.push_back(milliseconds);
    if (milliseconds > m_longest) {
        m_longest = milliseconds;
        m_for_processor = for_processor;
    }
}

double Waits::longest() const
{
    return m_longest;
}

double Waits::quantile(double share) const
{
    if (m_waits.empty()) {
        return 0;
    }
    std::vector<double> sorted = m_waits;
    const auto at = static_cast<std::ptrdiff_t>(share * static_cast<double>(sorted.size() - 1));
    std::nth_element(sorted.begin(), sorted.begin() + at, sorted.end());
    return sorted[static_cast<std::size_t>(at)];
}

std::string Waits::distribution() const
{
    std::ostringstream text;
    text << std::fixed << std::setprecision(3) << "median " << quantile(0.5) << ", 90 % " << quantile(0.9)
         << ", 99 % " << quantile(0.99) << ", 99.9 % " << quantile(0.999) << ", longest " << longest()
         << " ms of " << count();
    return text.str();
}

double milliseconds_between(Clock::time_point begin, Clock::time_point end)
{
    return std::chrono::duration<double, std::milli>(end - begin).count();
}

double waited_for_processor()
{
    static thread_local const SchedulerAccount s_account;
    return s_account.waited();
}

void compute_for(double milliseconds)
{
    const Clock::time_point begin = Clock::now();
    while (milliseconds_between(begin, Clock::now()) < milliseconds) { }
}

} // namespace load
