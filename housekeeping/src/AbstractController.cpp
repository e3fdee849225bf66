#include <tarqa/housekeeping/AbstractController.h>

#include "Assertion.h"
#include "GuardedLocker.h"

#include <tarqa/housekeeping/AbstractState.h>
#include <tarqa/housekeeping/Updateable.h>

namespace tarqa::housekeeping {

namespace {

const char* const s_source = "housekeeping/src/AbstractController";
const char* const s_unnamed = "AbstractController";
const char* const s_named_condition = "m_controller_name != \"AbstractController\"";
const char* const s_unnamed_condition = "m_controller_name == \"AbstractController\"";

const GuardedMutex s_lock{"a controller's lock",
    "commands and slots of posted messages lock no controller, and nobody but the undo list's presentation "
    "holds a ControllerLocker across insert(), undo() or redo().",
    true};

} // namespace

AbstractController::AbstractController()
    : m_controller_name(s_unnamed)
    , m_mutex(QMutex::Recursive)
{ }

AbstractController::~AbstractController() = default;

void AbstractController::post_init() { }

bool AbstractController::state_exists() const
{
    return m_state_exists;
}

const std::string& AbstractController::controller_name() const
{
    HK_ASSERT(m_controller_name != s_unnamed, s_named_condition);
    return m_controller_name;
}

void AbstractController::controller_name(const std::string& name)
{
    HK_ASSERT(m_controller_name == s_unnamed, s_unnamed_condition);
    m_controller_name = name;
    HK_ASSERT(m_controller_name != s_unnamed, s_named_condition);
}

boost::shared_ptr<AbstractState> AbstractController::create_associated_state(AbstractDocument& document)
{
    return create_state(document);
}

void AbstractController::update_associated_state(boost::shared_ptr<AbstractState> state)
{
    m_state_exists = state != nullptr;
    update_state(state);
}

boost::shared_ptr<AbstractState> AbstractController::create_state(AbstractDocument&)
{
    return {};
}

void AbstractController::update_state(boost::shared_ptr<AbstractState>) { }

void AbstractController::force_update()
{
    acquire();
    release(true);
}

void AbstractController::acquire()
{
    guarded::lock(m_mutex, s_lock);
    m_locked.store(true, std::memory_order_release);
}

void AbstractController::release(bool update)
{
    /// Gives the lock back when a view throws, too. The flag goes first: after the lock it may be another
    /// thread's.
    struct Unlock
    {
        AbstractController& controller;
        ~Unlock()
        {
            controller.m_locked.store(false, std::memory_order_release);
            guarded::unlock(controller.m_mutex);
        }
    };
    const Unlock unlock{*this};
    if (update) {
        Updateable::update(this);
    }
}

} // namespace tarqa::housekeeping
