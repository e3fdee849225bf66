#pragma once

namespace terrain {

// What the program needs of the operating system.

/// Turns the first Ctrl-C into a request that the batch looks for at every step (a second one ends the
/// program at once), and makes a reader of the standard output that has gone away and a full disk errors like
/// others instead of the end of the program.
void watch_signals();

/// Whether Ctrl-C was pressed since watch_signals().
bool interrupted();

/// Whether somebody sees the standard error stream.
bool standard_error_is_terminal();

/// Whether windows can be shown; told apart from a program that Qt would end at once.
bool has_display();

} // namespace terrain
