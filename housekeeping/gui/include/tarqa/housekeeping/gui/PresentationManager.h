#pragma once

#include <pkBase/pkSingleton.h>
#include <tarqa/housekeeping/tq_hk_export.h>

#include <boost/shared_ptr.hpp>

#include <map>
#include <string>

namespace tarqa::housekeeping {
class TestAccess;
}

namespace tarqa::housekeeping::gui {

class AbstractPresentation;

/**
 * Makes, owns and finds the presentations. The host calls init() once, when the controllers and the main
 * window exist.
 *
 * A singleton, destroyed in phase 5 of the ordered destruction, with the presentations that nobody else
 * holds. Main thread.
 */
class TQ_HK_EXPORT PresentationManager
{
public:
    /// The one object; made at first use.
    static PresentationManager& instance();
    /// The same, to look at only.
    static const PresentationManager& const_instance();

    /// Makes one presentation of every registered product, in the order of registration, then initialises
    /// all, then builds all. What a factory fails to make is logged, in each of the three passes, and is
    /// empty.
    void init();
    /// The presentation of that name; empty if there is none.
    boost::shared_ptr<AbstractPresentation> presentation(std::string name);

protected:
    PresentationManager();
    virtual ~PresentationManager();
    PresentationManager(const PresentationManager&) = delete;
    PresentationManager& operator=(const PresentationManager&) = delete;

private:
    friend class pkBase::pkSingleton<PresentationManager>;
    friend class housekeeping::TestAccess;
    static pkBase::pkSingleton<PresentationManager>& get_instance();
    static void destroy_instance();

    void create_all();

    std::map<std::string, boost::shared_ptr<AbstractPresentation>> m_presentations;
};

} // namespace tarqa::housekeeping::gui
