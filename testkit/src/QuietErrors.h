#pragma once

#include <sstream>

namespace tarqa::housekeeping::testkit {

/// While it lives, errors show no boxes and what they write to std::cerr is discarded. Main thread.
class QuietErrors
{
public:
    QuietErrors();
    ~QuietErrors();
    QuietErrors(const QuietErrors&) = delete;
    QuietErrors& operator=(const QuietErrors&) = delete;

private:
    bool m_shows_dialogs;
    std::ostringstream m_discarded;
    std::streambuf* m_p_errors; // not owned
};

} // namespace tarqa::housekeeping::testkit
