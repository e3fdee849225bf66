#pragma once

/// The main function of a benchmark program, once the application object exists.
/// @param count, arguments of the user @return the exit code
int run_benchmarks(int count, char** arguments);
