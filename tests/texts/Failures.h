#pragma once

#include "support/LogCapture.h"

#include <tarqa/housekeeping/HousekeepingException.h>

#include <exception>
#include <functional>
#include <string>

// What failures say.

namespace texts {

/// What @p action throws: "1014 Document does not exist", or the text of a standard exception.
inline std::string thrown_by(const std::function<void()>& action)
{
    try {
        action();
    } catch (const tarqa::housekeeping::HousekeepingException& exception) {
        return std::to_string(exception.code()) + ' ' + exception.message();
    } catch (const std::exception& exception) {
        return exception.what();
    }
    return "nothing was thrown";
}

/// The first assertion that fails in @p action, in a function whose signature holds @p function:
/// "housekeeping/src/AbstractModel: m_id != DocumentId::null()". Other entries in the log do not matter.
inline std::string assertion_in(const std::function<void()>& action, const std::string& function = "")
{
    support::LogCapture log;
    try {
        action();
    } catch (const tarqa::housekeeping::HousekeepingException&) {
        // Many operations cannot go on.
    }
    std::string found = "nothing was asserted";
    for (const std::string& line : log.lines()) {
        const std::size_t in = line.find(" ASSERT FAILED in ");
        const std::size_t condition = line.rfind(": ");
        if (in != std::string::npos && line.find(function, in) < condition) {
            found = line.substr(0, line.find(':')) + line.substr(condition);
            break;
        }
    }
    log.take_all();
    return found;
}

} // namespace texts
