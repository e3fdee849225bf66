#pragma once

#include "Borehole.h"

namespace boreholes {

/// Reads a file of comma-separated values: a heading, then x, y, depth and name of one borehole a line, in
/// metres and UTF-8. The name comes last, so that it may hold commas.
/// @throws std::runtime_error, with a text for the user, if the file cannot be read or a line is none of
/// these
Boreholes read_boreholes(const QString& path);

/// Writes such a file, or leaves the old one as it was.
/// @throws std::runtime_error, with a text for the user
void write_boreholes(const QString& path, const Boreholes& boreholes);

} // namespace boreholes
