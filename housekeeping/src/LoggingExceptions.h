#pragma once

#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/utilities/Exception.h>

#include <exception>

namespace tarqa::housekeeping {

/// Calls @p function and logs what it throws, for places that must not let an exception pass: destructors,
/// mostly, where a second exception would end the program. @param unknown what to log for an exception of
/// neither family
template <class Function>
void logging_exceptions(const char* unknown, Function function)
{
    try {
        function();
    } catch (const tarqa::Exception& e) {
        ErrorProtocol::instance().log_exception(e);
    } catch (const std::exception& e) {
        ErrorProtocol::instance().log_exception(e);
    } catch (...) {
        ErrorProtocol::instance().log_message(unknown);
    }
}

} // namespace tarqa::housekeeping
