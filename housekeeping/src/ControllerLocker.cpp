#include <tarqa/housekeeping/ControllerLocker.h>

#include <tarqa/housekeeping/AbstractController.h>
#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/utilities/Exception.h>

#include <exception>

namespace tarqa::housekeeping {

ControllerLocker::ControllerLocker(AbstractController& controller)
    : m_uncaught(std::uncaught_exceptions())
    , m_controller(controller)
{
    m_controller.acquire();
}

ControllerLocker::~ControllerLocker() noexcept(false)
{
    if (std::uncaught_exceptions() == m_uncaught) {
        m_controller.release(m_finished);
        return;
    }
    // A second exception would end the program.
    try {
        m_controller.release(m_finished);
    } catch (const tarqa::Exception& e) {
        ErrorProtocol::instance().log_exception(e);
    } catch (const std::exception& e) {
        ErrorProtocol::instance().log_exception(e);
    } catch (...) {
        ErrorProtocol::instance().log_message("An unknown exception was thrown while views were updated");
    }
}

} // namespace tarqa::housekeeping
