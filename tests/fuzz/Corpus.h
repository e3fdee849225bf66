#pragma once

#include <string>

namespace fuzz {

/// Runs @p target over the committed inputs in the folder @p name of the corpus, in alphabetical order; fails
/// the test with the names of those for which something does not hold, and if there are none. What they leave
/// in the error log is taken.
void run_corpus(const std::string& name, void (*target)(const std::string& input));

} // namespace fuzz
