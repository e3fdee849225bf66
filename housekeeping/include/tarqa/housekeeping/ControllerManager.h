#pragma once

#include <pkBase/pkSingleton.h>
#include <tarqa/housekeeping/tq_hk_export.h>

#include <QtCore/QMutex>

#include <boost/shared_ptr.hpp>

#include <map>
#include <string>

namespace tarqa::housekeeping {

class AbstractController;

/**
 * Makes, owns and finds the controllers. The host calls init() and then post_init() once, at start-up, on the
 * main thread; controllers neither come nor go afterwards, and controller() may be called from any thread.
 *
 * A singleton, destroyed in phase 5 of the ordered destruction, with the controllers.
 */
class TQ_HK_EXPORT ControllerManager
{
public:
    /// The one object; made at first use.
    static ControllerManager& instance();
    /// The same, to look at only.
    static const ControllerManager& const_instance();

    /// Makes and names one controller of every registered product, in the order of registration. A second
    /// call is logged ("inserted").
    void init();
    /// Calls post_init() on all controllers, in the order of their names; each may look up any other.
    void post_init();
    /// The controller of that name; empty, and logged, if there is none.
    boost::shared_ptr<AbstractController> controller(const std::string& name);

private:
    friend class pkBase::pkSingleton<ControllerManager>;
    friend class TestAccess;
    ControllerManager();
    ~ControllerManager();
    ControllerManager(const ControllerManager&) = delete;
    ControllerManager& operator=(const ControllerManager&) = delete;
    static pkBase::pkSingleton<ControllerManager>& get_instance();
    static void destroy_instance();

    QMutex m_mutex; // recursive
    std::map<std::string, boost::shared_ptr<AbstractController>> m_controller_map; // guarded by m_mutex
};

} // namespace tarqa::housekeeping
