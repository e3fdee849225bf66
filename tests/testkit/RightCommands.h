#pragma once

#include "WrongCommands.h"

#include <functional>
#include <string>
#include <vector>

namespace sheet {

/// A command that keeps all promises but those that it says it does not make.
struct RightCommand
{
    std::string name; ///< of its class
    std::string manner; ///< how it is done, for the reader
    std::function<CommandPointer(SheetDocument&)> make;
    std::vector<Promise> left_out; ///< promises that it does not make
    bool reports = false; ///< whether it reports progress, and so can be cancelled
    std::function<SheetDocument&()> document; ///< on which it is tried; empty for new_sheet()
};

/// All of them, in the order of the guide's table.
const std::vector<RightCommand>& right_commands();

template <class Command>
RightCommand right(
    const char* name, const char* manner, bool reports = false, const std::vector<Promise>& left_out = {})
{
    return {name, manner, [](SheetDocument& document) { return boost::make_shared<Command>(document); },
        left_out, reports, {}};
}

// The parts of the catalogue; each adds its commands.
void add_right_plain(std::vector<RightCommand>& all);
void add_right_special(std::vector<RightCommand>& all);

} // namespace sheet
