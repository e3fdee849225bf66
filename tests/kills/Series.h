#pragma once

#include "Home.h"
#include "LogReading.h"
#include "Victim.h"

#include <cstdint>
#include <iosfwd>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace support {
class ChildProcess;
}

namespace kills {

struct Figures
{
    unsigned int in_start_up = 0;
    unsigned int at_work = 0;
    unsigned int in_shutdown = 0;
    unsigned int starts = 0; ///< that came as far as to be ready
    unsigned long long entries = 0; ///< whole ones read in the logs of killed hosts
    unsigned long long lost_entries = 0; ///< announced as finished and not there
    unsigned int cut_entries = 0; ///< last ones, not announced
    unsigned int cut_heads = 0; ///< logs without a whole head, not announced
    unsigned int stale = 0; ///< temporary directories that the killed left
    unsigned int cleaned = 0; ///< those that a later start has deleted
    unsigned int half_made = 0; ///< directories that are too young to be deleted
    unsigned int settings_left_over = 0; ///< files beside the settings, which Qt made while it stored them
    long long longest_start = 0; ///< milliseconds

    unsigned int kills() const { return in_start_up + at_work + in_shutdown; }
    void add(const Figures& other);
};

std::ostream& operator<<(std::ostream& stream, const Figures& figures);

/// Hosts that live in one home, one after the other, and are killed at random moments. Each one finds what
/// the one before has left, and that is checked: its log, the settings, the recent documents and the
/// temporary directories. Somebody else lives among the temporary directories all the time.
class Series
{
public:
    /// @param root a directory for the home, which does not exist yet
    Series(const std::string& root, std::uint64_t seed);
    ~Series();

    /// Lets that many be killed, and one more live and end in an orderly way.
    void run(unsigned int kills);

    const Figures& figures() const { return m_figures; }
    /// What should not have happened.
    const std::vector<std::string>& violations() const { return m_violations; }

private:
    enum class Moment
    {
        StartUp,
        Work,
        Shutdown,
        Never
    };
    typedef std::map<std::uint32_t, std::string> Logs;

    Moment next_moment();
    void live_one(Moment moment);
    void await(Victim& victim, Moment moment);
    void let_work(Victim& victim);
    void let_live(Victim& victim);
    long long up_to(long long nanoseconds);
    void check(const Victim& victim, Moment moment, const Logs& before, std::uint32_t expected_log);
    void check_logs(const Victim& victim, const Logs& before, std::uint32_t expected_log);
    void check_own_log(const Victim& victim, const std::string& text);
    void check_stored(const Victim& victim);
    void check_number(const char* what, std::uint32_t read, std::uint32_t stored, std::uint32_t modulus);
    void check_directories(const Victim& victim, Moment moment);
    void violated(const std::string& what);

    Home m_home;
    std::mt19937_64 m_random;
    std::unique_ptr<support::ChildProcess> m_neighbour; // lives in a temporary directory
    std::string m_head; // of every log
    long long m_start_up = 0; // nanoseconds that one took
    long long m_shutdown = 0;
    unsigned int m_lives = 0;
    std::uint32_t m_ffmpeg = 0; // the last one that was told to be stored
    std::uint32_t m_colour = 0;
    std::uint32_t m_recent = s_no_document;
    std::vector<std::string> m_stale;
    Figures m_figures;
    std::vector<std::string> m_violations;
};

} // namespace kills
