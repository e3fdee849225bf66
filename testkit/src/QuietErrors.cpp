#include "QuietErrors.h"

#include <tarqa/housekeeping/ErrorHandler.h>

#include <iostream>

namespace tarqa::housekeeping::testkit {

QuietErrors::QuietErrors()
    : m_shows_dialogs(ErrorHandler::const_instance().may_show_dialogs())
    , m_p_errors(std::cerr.rdbuf(m_discarded.rdbuf()))
{
    if (m_shows_dialogs) { // else there is nothing to switch off, nor to put back
        ErrorHandler::show_dialogs(false);
    }
}

QuietErrors::~QuietErrors()
{
    std::cerr.rdbuf(m_p_errors);
    if (m_shows_dialogs) {
        ErrorHandler::show_dialogs(true);
    }
}

} // namespace tarqa::housekeeping::testkit
