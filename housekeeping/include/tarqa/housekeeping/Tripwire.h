#pragma once

#include <tarqa/housekeeping/tq_hk_export.h>

namespace tarqa::housekeeping {

/**
 * For developers of hosts: names on the standard error stream what would otherwise be a program that stands
 * still. As the rules about threads and locks have it, a thread that asks for a mutex it already holds waits
 * for itself, and threads that hold what the others ask for wait for each other, for ever. The tripwire says
 * which mutex it is, where the thread got it, where it asks for it, the rule against it, and which command
 * runs on which document. It tells as well when the main thread has waited for more than a second, and what
 * is logged while the same thread has an ErrorProtocolOutput.
 *
 * It changes nothing else: who waits goes on waiting, and the error log stays as it is. The mutexes that it
 * watches are those under which others' code runs: of the command manager, of the document manager's
 * registry, of the message handler, of controllers and their manager, and of the error log.
 *
 * Off by default, and costs an atomic load for each lock and unlock then. Whoever starts the program may
 * switch it on without building it again: TARQ_TRIPWIRE=1 in the environment, which is looked at when the
 * library takes the first of these mutexes and counts until enable() or disable() is called.
 *
 * All operations: any thread, at any time. What was locked before enable() is not known to it.
 */
class TQ_HK_EXPORT Tripwire
{
public:
    Tripwire() = delete;

    /// Begins to watch. A second call changes nothing.
    static void enable();
    /// Forgets what it knows, and watches no more.
    static void disable();
    /// Whether it watches just now.
    static bool enabled();
};

} // namespace tarqa::housekeeping
