#pragma once

#include "Sheet.h"

#include <tarqa/testkit/Promise.h>

#include <tarqa/housekeeping/AbstractCommand.h>

#include <boost/make_shared.hpp>

#include <functional>
#include <string>
#include <vector>

namespace sheet {

using tarqa::housekeeping::testkit::Promise;

typedef boost::shared_ptr<housekeeping::AbstractCommand> CommandPointer;

/// A command as hosts really write them, with one mistake.
struct WrongCommand
{
    std::string name; ///< of its class
    std::string fault; ///< what it does wrong, for the reader
    Promise promise; ///< that it breaks
    std::string where; ///< in which part of the proof that shows first
    std::function<CommandPointer(SheetDocument&)> make;
    std::vector<Promise> also; ///< promises that the same mistake breaks
    std::vector<Promise> left_out; ///< promises that it is not meant to keep
};

/// All of them, in the order of the guide's table.
const std::vector<WrongCommand>& wrong_commands();

template <class Command>
WrongCommand wrong(const char* name, const char* fault, Promise promise, const char* where,
    const std::vector<Promise>& also = {}, const std::vector<Promise>& left_out = {})
{
    return {name, fault, promise, where,
        [](SheetDocument& document) { return boost::make_shared<Command>(document); }, also, left_out};
}

// The parts of the catalogue; each adds its commands.
void add_wrong_undo(std::vector<WrongCommand>& all);
void add_wrong_endings(std::vector<WrongCommand>& all);
void add_wrong_answers(std::vector<WrongCommand>& all);
void add_wrong_manners(std::vector<WrongCommand>& all);
void add_wrong_merges(std::vector<WrongCommand>& all);

} // namespace sheet
