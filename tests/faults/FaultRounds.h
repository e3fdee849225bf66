#pragma once

#include "faults/SystemFaults.h"

#include <functional>
#include <string>
#include <vector>

namespace faults {

/**
 * Runs one scenario once for each of its calls to the system and each fault that the call may have, always
 * from the same beginning. Prints a line, which is also a property of the test:
 *
 *     FaultCount LogEntry: 3 points, 17 faults, 17 survived
 *
 * A fault is survived if the round fails no check and is not counted as lost.
 */
class FaultRounds
{
public:
    /// @param path_part which files count; see SystemFaults
    FaultRounds(const std::string& name, const std::string& path_part);

    std::function<void()> prepare = [] {};
    std::function<void()> act = [] {}; ///< the only part in which calls fail
    /// Looks at what is left. Called also after the first rounds, which have no fault: with an error of 0.
    std::function<void(const Fault&)> check = [](const Fault&) {};
    /// Whether act() closes what it opens.
    bool keeps_descriptors = true;
    /// Whether act() makes the same calls each time. If not, a round whose call was another one is not
    /// counted.
    bool is_repeatable = true;
    /// Whether locks fail too. A database may wait for them.
    bool with_locks = true;

    void run();
    /// To be called by check(): what the round left is known not to be right, and not to be ours.
    void count_as_lost() { m_is_lost = true; }
    /// The call that failed in this round; null in the rounds without a fault.
    const SystemFaults::Point* point() const { return m_p_point; }

private:
    std::vector<SystemFaults::Point> count_points();
    void run_one(const SystemFaults::Point& point, std::size_t number, const Fault& fault);

    std::string m_name;
    std::string m_path_part;
    std::size_t m_rounds = 0;
    std::size_t m_survived = 0;
    bool m_is_lost = false; // this round
    const SystemFaults::Point* m_p_point = nullptr; // not owned
};

/// How many descriptors this process has open, apart from the one that the log keeps of its directory for a
/// moment.
std::size_t open_descriptors();

/// Prints the line that is described above.
void report_fault_count(
    const std::string& name, std::size_t points, std::size_t faults, std::size_t survived);

/// How many checks of the running test have failed so far.
int failed_checks();

} // namespace faults
