#include "Series.h"

#include "support/ChildProcess.h"

#include <tarqa/utilities/TemporaryDirectory.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <iterator>
#include <ostream>

namespace kills {

namespace {

namespace fs = std::filesystem;
typedef std::chrono::steady_clock Clock;

const std::uint32_t s_most_notes = 60; ///< that are waited for while it works
const unsigned int s_doublings = 12; ///< of a microsecond, after that: up to four milliseconds
const std::uint32_t s_steps_of_orderly_life = 25;
const std::uint32_t s_most_steps_before_shutdown = 12;
const unsigned int s_lives_per_program = 10; ///< one of so many is a program of its own
const std::uint32_t s_colours = 1u << 24;

long long nanoseconds_since(Clock::time_point begin)
{
    return std::chrono::duration_cast<std::chrono::nanoseconds>(Clock::now() - begin).count();
}

} // namespace

void Figures::add(const Figures& other)
{
    in_start_up += other.in_start_up;
    at_work += other.at_work;
    in_shutdown += other.in_shutdown;
    starts += other.starts;
    entries += other.entries;
    lost_entries += other.lost_entries;
    cut_entries += other.cut_entries;
    cut_heads += other.cut_heads;
    stale += other.stale;
    cleaned += other.cleaned;
    half_made += other.half_made;
    settings_left_over += other.settings_left_over;
    longest_start = std::max(longest_start, other.longest_start);
}

std::ostream& operator<<(std::ostream& stream, const Figures& figures)
{
    return stream << "kills: " << figures.kills() << " (in start-up " << figures.in_start_up << ", at work "
                  << figures.at_work << ", in shutdown " << figures.in_shutdown << ")\n"
                  << "starts that came to be ready: " << figures.starts << ", the longest "
                  << figures.longest_start << " ms\n"
                  << "whole entries read: " << figures.entries << "\n"
                  << "entries lost: " << figures.lost_entries << "\n"
                  << "last entries cut: " << figures.cut_entries << "\n"
                  << "logs without a whole head: " << figures.cut_heads << "\n"
                  << "directories of dead hosts: " << figures.stale << ", cleaned: " << figures.cleaned
                  << ", half made and still young: " << figures.half_made << "\n"
                  << "files left beside the settings: " << figures.settings_left_over << "\n";
}

Series::Series(const std::string& root, std::uint64_t seed)
    : m_home(root)
    , m_random(seed)
{
    m_neighbour = std::make_unique<support::ChildProcess>([this] {
        m_home.enter();
        const auto* const p_directory = new tarqa::utilities::TemporaryDirectory("vista"); // for ever
        write_content(p_directory->path() + "/file", "content");
        return p_directory->path();
    });
    m_home.guard(m_neighbour->report() + "/file");
    if (content_of(m_neighbour->report() + "/file").empty()) {
        violated("the neighbour has no directory");
    }
}

Series::~Series() = default;

void Series::run(unsigned int kills)
{
    live_one(Moment::Never);
    for (unsigned int i = 0; i < kills; ++i) {
        live_one(next_moment());
    }
    live_one(Moment::Never);
    m_figures.settings_left_over += static_cast<unsigned int>(m_home.settings_left_over().size());
}

Series::Moment Series::next_moment()
{
    switch (below(m_random, 5)) {
    case 0:
        return Moment::StartUp;
    case 1:
        return Moment::Shutdown;
    default:
        return Moment::Work;
    }
}

void Series::live_one(Moment moment)
{
    const Logs before = m_home.logs();
    const std::uint32_t expected_log = m_home.next_log();
    HostOptions options = m_home.options();
    if (moment == Moment::Shutdown) {
        options.steps = 1 + below(m_random, s_most_steps_before_shutdown);
    } else if (moment == Moment::Never) {
        options.steps = s_steps_of_orderly_life;
    }
    const bool is_program = m_lives++ % s_lives_per_program == 0;
    Victim victim(m_home, options, is_program ? Victim::Launch::Program : Victim::Launch::Forked);
    if (moment == Moment::Never) {
        let_live(victim);
    } else {
        await(victim, moment);
        victim.kill();
    }
    m_figures.starts += victim.told(Kind::Ready) ? 1 : 0;
    check(victim, moment, before, expected_log);
}

void Series::await(Victim& victim, Moment moment)
{
    if (moment == Moment::StartUp) {
        ++m_figures.in_start_up;
        victim.read_until(Kind::Begun);
        spin(up_to(m_start_up * 3 / 2)); // also what comes next
    } else if (moment == Moment::Shutdown) {
        ++m_figures.in_shutdown;
        victim.read_until(Kind::Ending);
        spin(up_to(m_shutdown * 3 / 2));
    } else {
        ++m_figures.at_work;
        const Clock::time_point begin = Clock::now();
        victim.read_until(Kind::Ready);
        m_figures.longest_start = std::max(m_figures.longest_start, nanoseconds_since(begin) / 1000000);
        let_work(victim);
    }
}

/// Half of them die a moment, and more often a very short one, after they have told of something that is
/// followed by work on files.
void Series::let_work(Victim& victim)
{
    const Kind kinds[] = {Kind::KeptRead, Kind::Directory, Kind::Ffmpeg, Kind::Colour, Kind::Recent};
    if (below(m_random, 2) == 0) {
        victim.read_until(kinds[below(m_random, std::size(kinds))]);
    } else {
        for (std::uint32_t notes = below(m_random, s_most_notes); notes > 0 && victim.read_note(); --notes) {
        }
    }
    spin(up_to(1000LL << below(m_random, s_doublings + 1)));
}

long long Series::up_to(long long nanoseconds)
{
    return below(m_random, static_cast<std::uint64_t>(nanoseconds) + 1);
}

/// And measures how long start-up and shutdown take.
void Series::let_live(Victim& victim)
{
    victim.read_until(Kind::Begun);
    const Clock::time_point begin = Clock::now();
    victim.read_until(Kind::Ready);
    m_start_up = nanoseconds_since(begin);
    victim.read_until(Kind::Ending);
    const Clock::time_point end = Clock::now();
    victim.read_until(Kind::Ended);
    m_shutdown = nanoseconds_since(end);
    if (!victim.wait_for_end() || !victim.told(Kind::Ended)) {
        violated("a host that nobody killed has not come to its end");
    }
}

void Series::check(const Victim& victim, Moment moment, const Logs& before, std::uint32_t expected_log)
{
    check_logs(victim, before, expected_log);
    check_stored(victim);
    check_directories(victim, moment);
    for (const std::string& file : m_home.touched()) {
        violated("touched: " + file);
    }
}

void Series::check_logs(const Victim& victim, const Logs& before, std::uint32_t expected_log)
{
    Logs after = m_home.logs();
    if (m_home.files_beside_logs() != 0) {
        violated("there is something beside the logs");
    }
    if (victim.told(Kind::Log) && victim.last(Kind::Log) != expected_log) {
        violated("took log " + std::to_string(*victim.last(Kind::Log)) + " in place of "
            + std::to_string(expected_log));
    }
    const std::string own = after[expected_log]; // made empty if it does not exist
    Logs others = before;
    others[expected_log] = own;
    if (after != others) {
        violated("another log than " + std::to_string(expected_log) + " has changed");
    }
    const auto old = before.find(expected_log);
    const bool is_untouched = old != before.end() && old->second == own;
    if (victim.told(Kind::Log) || !is_untouched) {
        check_own_log(victim, own);
    }
}

void Series::check_own_log(const Victim& victim, const std::string& text)
{
    if (m_head.empty()) {
        m_head = head_of(text);
    }
    const LogReading reading = read_log(text, m_head);
    for (const std::string& violation : reading.violations) {
        violated(violation);
    }
    if (!reading.has_head) {
        ++m_figures.cut_heads;
        if (victim.told(Kind::Log)) {
            violated("a log that was claimed has no whole head");
        }
    }
    m_figures.entries += reading.main + reading.worker;
    m_figures.cut_entries += reading.has_cut_entry ? 1 : 0;
    const auto compare = [&](Kind kind, std::uint32_t there) {
        const std::uint32_t told = victim.last(kind).value_or(0);
        if (there < told) {
            m_figures.lost_entries += told - there;
            violated(std::to_string(told) + " entries were told to be finished, and " + std::to_string(there)
                + " are there");
        } else if (there > told + 1) {
            violated("there are entries that were not made yet");
        }
    };
    compare(Kind::MainEntry, reading.main);
    compare(Kind::WorkerEntry, reading.worker);
    if (victim.told(Kind::Ended) && !reading.has_banner) {
        violated("a log that was ended has no banner");
    }
    if (reading.has_banner && !victim.told(Kind::Ending)) {
        violated("a log has a banner before its end");
    }
}

/// What it has found must be what the one before has told to have stored, or what that one was just storing.
void Series::check_stored(const Victim& victim)
{
    if (victim.told(Kind::KeptRead) && victim.last(Kind::KeptRead) != 1u) {
        violated("settings that nobody changes are not as they were");
    }
    if (m_ffmpeg != 0) {
        check_number("setting", victim.last(Kind::FfmpegRead).value_or(m_ffmpeg), m_ffmpeg, s_torn);
        // It gets the number that the setting got just before; one life may have come to that, and not to the
        // colour.
        const std::uint32_t colour = victim.last(Kind::ColourRead).value_or(m_colour);
        check_number("colour", colour, colour == m_ffmpeg ? m_ffmpeg : m_colour, s_colours);
        check_number(
            "recent document", victim.last(Kind::RecentRead).value_or(m_recent), m_recent, s_documents);
    }
    if (victim.last(Kind::RecentCount).value_or(0) > 20) {
        violated("the recent documents are not one after the other, or too many");
    }
    m_ffmpeg
        = std::max(victim.last(Kind::FfmpegRead).value_or(0), victim.last(Kind::Ffmpeg).value_or(m_ffmpeg));
    const auto take = [&victim](std::uint32_t& value, Kind read, Kind stored) {
        value = victim.last(stored).value_or(victim.last(read).value_or(value));
    };
    take(m_ffmpeg, Kind::FfmpegRead, Kind::Ffmpeg);
    take(m_colour, Kind::ColourRead, Kind::Colour);
    take(m_recent, Kind::RecentRead, Kind::Recent);
}

void Series::check_number(const char* what, std::uint32_t read, std::uint32_t stored, std::uint32_t modulus)
{
    if (read != stored && read != (stored + 1) % modulus) {
        violated(std::string("the stored ") + what + " is " + std::to_string(read) + " after "
            + std::to_string(stored));
    }
}

void Series::check_directories(const Victim& victim, Moment moment)
{
    const std::vector<std::string> left = m_home.directories_of(victim.id());
    const std::vector<std::string> half_made = m_home.half_made_directories_of(victim.id());
    if (victim.told(Kind::Ready)) {
        for (const std::string& path : m_stale) {
            if (fs::exists(path)) {
                violated("not cleaned: " + path);
            } else {
                ++m_figures.cleaned;
            }
        }
        m_stale.clear();
    }
    if (victim.told(Kind::OwnDirectory) && victim.last(Kind::OwnDirectory) != 1u) {
        violated("the directory of a living host is not whole");
    }
    if (left.size() > 1 || (victim.told(Kind::Directory) && !victim.told(Kind::Ending) && left.size() != 1)) {
        violated("a host has left " + std::to_string(left.size()) + " directories");
    }
    if ((moment == Moment::Never || victim.told(Kind::Ended)) && left.size() + half_made.size() > 0) {
        violated("a host that came to its end has left its directory");
    }
    m_stale.insert(m_stale.end(), left.begin(), left.end());
    m_figures.stale += static_cast<unsigned int>(left.size());
    m_figures.half_made += static_cast<unsigned int>(half_made.size());
}

void Series::violated(const std::string& what)
{
    m_violations.push_back("life " + std::to_string(m_lives) + ": " + what);
}

} // namespace kills
