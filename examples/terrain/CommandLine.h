#pragma once

#include <optional>
#include <string>
#include <vector>

namespace terrain {

/// What the user asked for on the command line.
struct CommandLine
{
    enum class Task
    {
        Window,
        Tour,
        Batch,
        Help,
        Version
    };

    Task task = Task::Window;
    std::string language; ///< empty: that of the system
    std::vector<std::string> files;
    std::string script; ///< of a batch; "-" stands for the standard input
    std::string folder; ///< of a tour, for its pictures

    /// Takes any word for a language; which there are, Language knows.
    /// @param arguments without the program's name
    /// @return nothing if they make no sense
    static std::optional<CommandLine> parse(const std::vector<std::string>& arguments);

    static std::string usage();
};

} // namespace terrain
