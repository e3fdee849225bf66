#include <tarqa/housekeeping/ControllerLocker.h>

#include "LoggingExceptions.h"

#include <tarqa/housekeeping/AbstractController.h>

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
    try {
        m_controller.release(m_finished);
    } catch (...) {
        if (std::uncaught_exceptions() == m_uncaught) {
            throw;
        }
        logging_exceptions("An unknown exception was thrown while views were updated", [] { throw; });
    }
}

} // namespace tarqa::housekeeping
