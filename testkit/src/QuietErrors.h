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

    /// Whether there were boxes before, and will be again.
    bool silences_dialogs() const { return m_shows_dialogs; }

private:
    bool m_shows_dialogs;
    std::ostringstream m_discarded;
    std::streambuf* m_p_errors; // not owned
};

} // namespace tarqa::housekeeping::testkit
