#include "commands/CommandsController.h"

#include <tarqa/housekeeping/AbstractControllerFactory.h>
#include <tarqa/housekeeping/AbstractDocument.h>
#include <tarqa/housekeeping/ControllerManager.h>

#include <boost/make_shared.hpp>

namespace terrain {

const char* const CommandsController::product_name = "CommandsController";

namespace {

class CommandsControllerFactory : public housekeeping::AbstractControllerFactory
{
public:
    CommandsControllerFactory()
        : AbstractControllerFactory(CommandsController::product_name, false)
    { }
    boost::shared_ptr<housekeeping::AbstractController> create_product() override
    {
        return boost::make_shared<CommandsController>();
    }
    housekeeping::AbstractController* create_unmanaged_product() override { return new CommandsController; }
};

const CommandsControllerFactory s_factory; // registers itself

} // namespace

CommandsController::CommandsController() = default;

CommandsController::~CommandsController() = default;

CommandsController& CommandsController::instance()
{
    return dynamic_cast<CommandsController&>(
        *housekeeping::ControllerManager::instance().controller(product_name));
}

boost::shared_ptr<housekeeping::AbstractState> CommandsController::create_state(
    housekeeping::AbstractDocument& document)
{
    return boost::make_shared<State>(document, document.id(), controller_name());
}

void CommandsController::update_state(boost::shared_ptr<housekeeping::AbstractState> sp_state)
{
    m_sp_state = boost::dynamic_pointer_cast<State>(sp_state);
    force_update();
}

} // namespace terrain
