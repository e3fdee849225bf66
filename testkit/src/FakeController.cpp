#include <tarqa/testkit/FakeController.h>

#include <tarqa/housekeeping/AbstractControllerFactory.h>
#include <tarqa/housekeeping/AbstractDocument.h>
#include <tarqa/housekeeping/ControllerManager.h>

#include <boost/make_shared.hpp>
#include <boost/pointer_cast.hpp>

#include <typeinfo>

namespace tarqa::housekeeping::testkit {

namespace {

class FakeControllerFactory : public AbstractControllerFactory
{
public:
    explicit FakeControllerFactory(const std::string& name)
        : AbstractControllerFactory(name, false)
    { }
    boost::shared_ptr<AbstractController> create_product() override
    {
        return boost::make_shared<FakeController>();
    }
    AbstractController* create_unmanaged_product() override { return new FakeController; }
};

void make_all_controllers()
{
    ControllerManager::instance().init();
    ControllerManager::instance().post_init();
}

} // namespace

FakeController::State::~State() = default;

FakeController::FakeController() = default;
FakeController::~FakeController() = default;

void FakeController::register_factory(const std::string& name)
{
    new FakeControllerFactory(name); // leaked: the registry refers to it until the process ends
}

void FakeController::make_controllers()
{
    static const bool s_made = (make_all_controllers(), true);
    static_cast<void>(s_made);
}

FakeController& FakeController::of(const std::string& name)
{
    const auto p_controller
        = boost::dynamic_pointer_cast<FakeController>(ControllerManager::instance().controller(name));
    if (!p_controller) {
        throw std::bad_cast();
    }
    return *p_controller; // the controller manager's
}

void FakeController::post_init()
{
    m_was_initialised = true;
}

boost::shared_ptr<AbstractState> FakeController::create_state(AbstractDocument& document)
{
    ++m_states_made;
    return boost::make_shared<State>(document, document.id(), controller_name());
}

void FakeController::update_state(boost::shared_ptr<AbstractState> state)
{
    ++m_updates;
    m_current_state = boost::dynamic_pointer_cast<State>(state);
}

} // namespace tarqa::housekeeping::testkit
