#pragma once

#include "Host.h"
#include "Notes.h"

#include <optional>
#include <random>
#include <string>
#include <vector>

#include <sys/types.h>

namespace kills {

class Home;

/// A process that lives as a host, and what it has told. All of them share the home; one in so many is a
/// program of its own, the others are forked copies of this process, which must have one thread only.
class Victim
{
public:
    enum class Launch
    {
        Forked,
        Program
    };

    /// Starts it. @param options the pipes are filled in here, but for the gate
    Victim(const Home& home, HostOptions options, Launch launch);
    /// Kills it if it is still there.
    ~Victim();
    Victim(const Victim&) = delete;
    Victim& operator=(const Victim&) = delete;

    pid_t id() const { return m_id; }

    /// Reads one note more. @return false if it has ended
    bool read_note();
    /// Reads notes until one of this kind. @return false if it ended before
    bool read_until(Kind kind);
    /// Tells one that waits what to do. @param what s_store or s_end
    void tell(char what);
    /// Kills it where it is, and reads what it had told.
    void kill();
    /// Only kills it: one of many that are to die together. kill() is still due.
    void kill_and_go_on() const;
    /// Reads until it has ended of its own accord. @return whether that was with exit code 0
    bool wait_for_end();

    const std::vector<Note>& notes() const { return m_notes; }
    bool told(Kind kind) const { return last(kind).has_value(); }
    /// The number of the last note of this kind.
    std::optional<std::uint32_t> last(Kind kind) const;

private:
    int wait();

    pid_t m_id = -1;
    int m_from_child = -1;
    int m_to_child = -1;
    bool m_ended = false;
    std::vector<Note> m_notes;
};

/// Lets this time pass without giving up the processor.
void spin(long long nanoseconds);

/// A number from 0 to @p end - 1, the same everywhere.
inline std::uint32_t below(std::mt19937_64& random, std::uint64_t end)
{
    return static_cast<std::uint32_t>(random() % end);
}

} // namespace kills
