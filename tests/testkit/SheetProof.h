#pragma once

#include "RightCommands.h"
#include "WrongCommands.h"

#include <tarqa/testkit/Breach.h>

#include <vector>

namespace sheet {

using tarqa::housekeeping::testkit::Breach;

/// What the proof finds in a command, tried on sheets. What that leaves in the error log counts as announced.
std::vector<Breach> breaches_of(const WrongCommand& wrong);
/// @param reports how often the command reports progress
std::vector<Breach> breaches_of(const RightCommand& right, int& reports);

/// The first breach of a promise; null if there is none.
const Breach* breach_of(const std::vector<Breach>& breaches, Promise promise);

} // namespace sheet
