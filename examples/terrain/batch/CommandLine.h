#pragma once

#include <optional>
#include <string>
#include <vector>

namespace terrain {

/// What the user asked for on the command line.
struct CommandLine
{
    bool help = false;
    bool version = false;
    std::string script; ///< "-" stands for the standard input
    std::vector<std::string> files;

    /// @param arguments without the program's name
    /// @return nothing if they make no sense
    static std::optional<CommandLine> parse(const std::vector<std::string>& arguments);

    static std::string usage();
};

} // namespace terrain
