#include "CallStack.h"

#include <sstream>

#include <windows.h>

namespace tarqa::housekeeping {

namespace {

const ULONG s_longest = 62; // what the system allows at most

} // namespace

CallStack CallStack::here()
{
    CallStack stack;
    stack.m_calls.resize(s_longest);
    stack.m_calls.resize(CaptureStackBackTrace(0, s_longest, stack.m_calls.data(), nullptr));
    return stack;
}

std::string CallStack::text() const
{
    std::ostringstream lines;
    for (void* const p_return : m_calls) {
        lines << "  " << p_return << '\n'; // for a debugger
    }
    return lines.str();
}

} // namespace tarqa::housekeeping
