#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace kills {

/// What the log of a host says. Of what is allowed in the log of a killed one: the very last entry may be
/// cut, if the host had not come back from writing it.
struct LogReading
{
    bool has_head = false; ///< a whole one
    bool has_cut_head = false; ///< part of one, or nothing
    std::uint32_t main = 0; ///< whole entries of the main thread, one after the other from 1
    std::uint32_t worker = 0;
    bool has_cut_entry = false; ///< at the end
    bool has_banner = false; ///< the closing one
    std::vector<std::string> violations;
};

/// Reads it. @param head what it must begin with
LogReading read_log(const std::string& text, const std::string& head);

/// The head of a log; empty if there is none.
std::string head_of(const std::string& text);

} // namespace kills
