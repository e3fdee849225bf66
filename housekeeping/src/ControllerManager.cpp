#include <tarqa/housekeeping/ControllerManager.h>

#include "Assertion.h"
#include "GuardedLocker.h"

#include <tarqa/housekeeping/AbstractController.h>
#include <tarqa/housekeeping/AbstractControllerFactory.h>

#include <utility>

namespace tarqa::housekeeping {

namespace {

const char* const s_source = "housekeeping/src/ControllerManager";

const GuardedMutex s_controllers{"the controller manager's mutex",
    "init() and post_init() come at start-up, before other threads begin.", true};

} // namespace

ControllerManager::ControllerManager()
    : m_mutex(QMutex::Recursive)
{ }

ControllerManager::~ControllerManager() = default;

pkBase::pkSingleton<ControllerManager>& ControllerManager::get_instance()
{
    static pkBase::pkSingleton<ControllerManager> s_holder(
        pkBase::pkDestructionPhase(5), &ControllerManager::destroy_instance);
    return s_holder;
}

ControllerManager& ControllerManager::instance()
{
    return get_instance().get();
}

const ControllerManager& ControllerManager::const_instance()
{
    return instance();
}

void ControllerManager::destroy_instance()
{
    get_instance().destroy();
}

void ControllerManager::init()
{
    const GuardedLocker lock(&m_mutex, s_controllers);
    for (const std::string& name : AbstractControllerFactory::products()) {
        const boost::shared_ptr<AbstractController> sp_ac = AbstractControllerFactory::create(name);
        if (!HK_ASSERT(sp_ac, "!utilities::null_pointer( sp_ac )")) {
            continue;
        }
        sp_ac->controller_name(name);
        const bool inserted = m_controller_map.insert(std::make_pair(name, sp_ac)).second;
        HK_ASSERT(inserted, "inserted");
    }
}

void ControllerManager::post_init()
{
    const GuardedLocker lock(&m_mutex, s_controllers);
    for (const auto& entry : m_controller_map) {
        entry.second->post_init();
    }
}

boost::shared_ptr<AbstractController> ControllerManager::controller(const std::string& name)
{
    const GuardedLocker lock(&m_mutex, s_controllers);
    HK_ASSERT(m_controller_map.size() > 0, "m_controller_map.size() > 0");
    const auto iter = m_controller_map.find(name);
    if (!HK_ASSERT(iter != m_controller_map.end(), "iter != m_controller_map.end()")) {
        return {};
    }
    return iter->second;
}

} // namespace tarqa::housekeeping
