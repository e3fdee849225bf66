#pragma once

#include <atomic>
#include <cstddef>

namespace tarqa::housekeeping {

class AbstractCommand;

/**
 * The entry of a run in the list of what is running, which the last words of a dying program are read from,
 * and tells the tripwire. While both are off it does nothing.
 */
class RunningCommand
{
public:
    /// @param what is done with the command, a literal: "do", "undo" or "redo"
    RunningCommand(const AbstractCommand& command, const char* what);
    ~RunningCommand();
    RunningCommand(const RunningCommand&) = delete;
    RunningCommand& operator=(const RunningCommand&) = delete;

    static constexpr std::size_t s_length = 160; // of a text, with the null at its end
    static constexpr std::size_t s_count = 32; // at the same time; more are not listed

    /// One entry. A signal handler reads it, so it holds its texts itself, and they are there before the
    /// rest.
    struct Entry
    {
        std::atomic<bool> used{false};
        std::atomic<long> thread{0}; ///< 0 while it is being filled
        const char* what = nullptr;
        unsigned long long command_id = 0;
        unsigned long long document_id = 0;
        char command[s_length] = {};
        char document[s_length] = {};
    };

    /// All entries, used or not. Safe in a signal handler.
    static const Entry* entries();

private:
    void list(const AbstractCommand& command, const char* what);

    Entry* m_p_entry = nullptr;
};

} // namespace tarqa::housekeeping
