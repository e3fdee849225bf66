#pragma once

#include <tarqa/housekeeping/tq_hk_export.h>

#include <map>

namespace tarqa::housekeeping {

class AbstractController;

/**
 * A view of a controller's data: it is told to redraw when a finished change of that controller is released.
 *
 * A view registers once, when it is built, on the main thread, before controllers are changed from other
 * threads. It must live as long as the controller, or take itself out with unregister() before: the
 * destructor deliberately leaves the registration where it is.
 */
class TQ_HK_EXPORT Updateable
{
public:
    Updateable();
    Updateable(const Updateable&);
    Updateable& operator=(const Updateable&);
    virtual ~Updateable();

    /// Calls update() on every view registered for @p p_controller, in the order of registration, in the
    /// calling thread. Views that register meanwhile come next time.
    static void update(AbstractController* p_controller);

protected:
    /// Registers this view for @p p_controller; each call counts.
    void register_controller(AbstractController* p_controller);
    /// Takes this view out everywhere, for a derived class that may go before its controller.
    void unregister();

private:
    friend class TestAccess;
    typedef std::multimap<AbstractController*, Updateable*> Registry;

    /// Redraws from the controller's current data, under its lock.
    virtual void update() = 0;

    static Registry& registry();
    static bool is_registered(const Registry::value_type& entry);
};

} // namespace tarqa::housekeeping
