#pragma once

#include <cstdint>
#include <string>

namespace kills {

/// How many documents there are to be pushed.
inline constexpr int s_documents = 30;

// What a host that waits can be told.
inline constexpr char s_store = 's'; ///< new settings, and one document more
inline constexpr char s_end = 'e';

struct HostOptions
{
    int to_parent = -1; ///< for notes
    int from_parent = -1; ///< s_store or s_end, read by a host that waits before it ends
    int gate = -1; ///< one byte is read from it before anything else; -1: none
    std::string documents; ///< the folder of the files "0.tif" to "29.tif"
    std::string outside; ///< a folder that the temporary directory holds a link to
    std::uint32_t steps = 0; ///< of each thread, before it ends in an orderly way; 0: for ever
    std::uint32_t first = 0; ///< the first number for settings and documents; 0: go on after what is stored
    bool stores = true; ///< settings and recent documents, every ten steps
    bool waits = false; ///< before it ends
    bool claims_first = false; ///< takes its log before the gate, and nothing else
};

/// A host's whole life: starts the framework up, then runs commands and logs in two threads, stores settings
/// and recent documents and lives in a temporary directory, all of it told in notes. Its home is in the
/// environment. Never returns.
[[noreturn]] void live(const HostOptions& options);

/// The text that step @p number (from 1) of a thread leaves in the log.
std::string entry_text(bool worker, std::uint32_t number);

} // namespace kills
