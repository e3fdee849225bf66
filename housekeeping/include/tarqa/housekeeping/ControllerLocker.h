#pragma once

#include <tarqa/housekeeping/tq_hk_export.h>

namespace tarqa::housekeeping {

class AbstractController;

/**
 * Holds a controller's lock for a scope, and redraws its views at the end if the change was finished:
 *
 *     ControllerLocker locker(controller);
 *     controller.set_colour(colour);
 *     locker.finished();
 *
 * Without finished(), for instance while an exception unwinds, the lock is released and nothing is redrawn.
 * The views are redrawn under the lock, in the calling thread, so a worker thread must not call finished().
 * Not to be held across CommandManager::insert().
 */
class TQ_HK_EXPORT ControllerLocker
{
public:
    /// Waits for the lock of @p controller, which must outlive the locker, and takes it. Any thread.
    explicit ControllerLocker(AbstractController& controller);
    /// Passes on what a view throws, after the lock is released; while another exception unwinds it is logged
    /// instead.
    virtual ~ControllerLocker() noexcept(false);
    ControllerLocker(const ControllerLocker&) = delete;
    ControllerLocker& operator=(const ControllerLocker&) = delete;

    /// The change is complete and must be shown.
    void finished() { m_finished = true; }

private:
    bool m_finished = false;
    int m_uncaught; // exceptions under way when the lock was taken
    AbstractController& m_controller; // not owned
};

} // namespace tarqa::housekeeping
