#pragma once

#include <string>

namespace tarqa::housekeeping {

/// The platform's part of the last words.
namespace dying_program {

/**
 * Installs the handlers: from now on a fatal signal or std::terminate() writes to the standard error stream
 * and to the file of what the program dies, what is running, and the stack.
 * @param file to be made when the program dies, full path
 * @param head first lines of the words, with line ends
 * @return false if that is not possible
 */
bool listen(const std::string& file, const std::string& head);

/// Lets the calling thread's handler run although the thread's stack is full; the main thread's is there
/// after listen().
void prepare_thread();

/// The system's number of the calling thread.
long this_thread();

/// Whether it is the thread that the program began with.
bool is_main_thread();

} // namespace dying_program
} // namespace tarqa::housekeeping
