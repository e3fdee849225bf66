#pragma once

#include <tarqa/housekeeping/ErrorHandler.h>
#include <tarqa/housekeeping/HousekeepingException.h>

#include <QtCore/QObject>

#include <exception>

namespace tarqa::housekeeping {

/// Where a command's exceptions are caught, as the log shows it.
struct CatchPoint
{
    const char* source;
    unsigned int line; ///< for exceptions of the tarqa family
    unsigned int line_of_unknown; ///< for those of neither family
};

/// Hands the exception that is being handled, which no command throws on purpose, to the fatal error path. To
/// be called inside a handler. @param standard_text what to say before the text of a standard exception, in
/// the caller's translation context
inline void report_unexpected_failure(const CatchPoint& here, const QString& standard_text)
{
    constexpr unsigned int unknown_error = 2;
    try {
        throw;
    } catch (tarqa::Exception& e) {
        e.caught_here(here.source, here.line);
        ErrorHandler::instance().fatal_error(e);
    } catch (std::exception& e) {
        ErrorHandler::instance().fatal_error(standard_text.toStdString() + e.what());
    } catch (...) {
        const HousekeepingException unknown(unknown_error,
            QObject::tr("An unknown serious error has occured in this Command"), here.source,
            here.line_of_unknown);
        ErrorHandler::instance().fatal_error(unknown);
    }
}

} // namespace tarqa::housekeeping
