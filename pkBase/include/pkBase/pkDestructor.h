#pragma once

#include <pkBase/pkBase_export.h>
#include <pkBase/pkDestructionPhase.h>

namespace pkBase {

/**
 * Ordered destruction: a table of functions that destroy the process's singletons, phase by phase.
 *
 * Constructing a pkDestructor enters a function into the table; the object itself holds nothing and may be
 * thrown away at once. run() calls the functions with phases ascending and, inside a phase, the last one
 * entered first, so that a singleton goes before those that it was built on. A function that was entered
 * while run() is under way is called too. Functions throw nothing; what escapes all the same is written to
 * the standard error stream and the rest goes on.
 *
 * Entering is allowed in any thread and during static initialisation; run() belongs to the main thread, after
 * the main loop has ended and the host's own objects are gone.
 */
class PKBASE_EXPORT pkDestructor
{
public:
    /// What the table holds: destroys something, throws nothing.
    typedef void (*Function)();

    /// Enters @p function, which must stay callable until the process ends; null is ignored.
    pkDestructor(pkDestructionPhase phase, Function function);

    /// Empties the table, calling each function once. Does nothing when there is nothing left, so it may be
    /// called again; a call from inside one of the functions returns at once.
    static void run();

    /// Makes sure that run() happens when the calling thread, the main thread, exits the process, for hosts
    /// that forget to call it; later calls do nothing. Where another thread exits the process nothing is
    /// destroyed. To be called after the application object exists: what is armed earlier would run after it
    /// is gone.
    static void run_at_exit();
};

} // namespace pkBase
