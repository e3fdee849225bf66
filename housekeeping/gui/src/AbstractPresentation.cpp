#include <tarqa/housekeeping/gui/AbstractPresentation.h>

#include <tarqa/housekeeping/ControllerManager.h>

namespace tarqa::housekeeping::gui {

AbstractPresentation::AbstractPresentation() = default;
AbstractPresentation::AbstractPresentation(const AbstractPresentation&) = default;
AbstractPresentation& AbstractPresentation::operator=(const AbstractPresentation&) = default;
AbstractPresentation::~AbstractPresentation()
{
    // Documents that go later may still have their controllers redraw.
    unregister();
}

void AbstractPresentation::update()
{
    if (m_receive_updates) {
        update_presentation();
    }
}

void AbstractPresentation::update_presentation_private()
{
    update_presentation();
}

AbstractController* AbstractPresentation::controller() const
{
    return m_p_controller;
}

void AbstractPresentation::connect_controller()
{
    // The controller manager keeps it alive.
    m_p_controller = ControllerManager::instance().controller(controller_name()).get();
    if (m_p_controller) {
        register_controller(m_p_controller);
    }
}

void AbstractPresentation::init()
{
    connect_controller();
    init_presentation();
}

void AbstractPresentation::build()
{
    build_presentation();
}

} // namespace tarqa::housekeeping::gui
