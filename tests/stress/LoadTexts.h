#pragma once

#include "LoadPlan.h"

#include <tarqa/housekeeping/FailedCommandException.h>

#include <string>

namespace load {

/// Where a text comes from, "@2:17@" for step 17 of the third thread: every entry of the log and the name of
/// every command begins with one, or has it as the first thing of that look.
std::string tag(unsigned thread, unsigned long long number);

/// Reads the first tag at or after @p begin. @return false if there is none
bool read_tag(const std::string& text, std::size_t begin, unsigned& thread, unsigned long long& number);

std::string command_name(unsigned thread, const Step& step);
/// @p count the numbers that the command adds
std::string command_description(std::size_t count);
/// The name of a composite's child.
std::string child_name(const std::string& composite, std::size_t position);
/// What a failing command throws.
tarqa::housekeeping::FailedCommandException failure_of(const std::string& command);

/// What an exception writes of itself.
std::string written(const tarqa::Exception& exception);

} // namespace load
