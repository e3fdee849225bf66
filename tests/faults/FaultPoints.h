#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace throwing_code {

/// What a planted fault throws.
enum class Kind
{
    Housekeeping,
    Cancel,
    Failed,
    Standard,
    Memory,
    Unknown
};

extern const std::vector<Kind> all_kinds;
/// Without those that belong to no family, which the application object lets pass.
extern const std::vector<Kind> known_kinds;
const char* name_of(Kind kind);
/// What the log says at least, when it says anything, of an exception of this kind.
std::string trace_of(Kind kind);

enum class Mode
{
    Once, ///< one place throws
    FromThere ///< it, and everything after it, which is what clean-ups meet
};

/**
 * The numbered places in a host's code that can be made to throw. Fakes report each of them with reached();
 * whoever runs a scenario counts them in a run without a fault first and then arms one after another. A place
 * that is reached again has a number behind its name: "Busy", "Busy #2".
 */
class FaultPoints
{
public:
    /// Lists the places from now on; none throws.
    void count();
    /// The same, and the place of this index throws.
    void arm(std::size_t index, Kind kind, Mode mode);
    /// Nothing is listed or thrown any more. @return what was reached
    std::vector<std::string> stop();
    bool is_running() const { return m_running; }

    /// Throws if it is this one's turn.
    void reached(const std::string& place);

private:
    bool m_running = false;
    std::optional<std::size_t> m_armed;
    Kind m_kind = Kind::Standard;
    Mode m_mode = Mode::Once;
    std::vector<std::string> m_places;
};

/// That of this process, main thread only.
FaultPoints& fault_points();

/// Runs @p work. @return what it threw, told by its type
std::optional<Kind> thrown_by(const std::function<void()>& work);

} // namespace throwing_code
