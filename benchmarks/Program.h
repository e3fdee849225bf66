#pragma once

/// The main function of a benchmark program, once the application object exists.
/// @param count, arguments of the user
/// @param prepare called once the private home is there and before the library is used; null: nothing
/// @return the exit code
int run_benchmarks(int count, char** arguments, void (*prepare)() = nullptr);
