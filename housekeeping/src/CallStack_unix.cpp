#include "CallStack.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <sstream>

#include <cxxabi.h>
#include <dlfcn.h>
#include <execinfo.h>

namespace tarqa::housekeeping {

namespace {

const std::size_t s_longest = 96;

std::string readable(const char* name)
{
    int status = -1;
    const std::unique_ptr<char, void (*)(void*)> text(
        abi::__cxa_demangle(name, nullptr, nullptr, &status), &std::free);
    return status == 0 ? text.get() : name;
}

} // namespace

CallStack CallStack::here()
{
    CallStack stack;
    stack.m_calls.resize(s_longest);
    const int depth = backtrace(stack.m_calls.data(), static_cast<int>(s_longest));
    stack.m_calls.resize(static_cast<std::size_t>(depth));
    if (!stack.m_calls.empty()) {
        stack.m_calls.erase(
            stack.m_calls.begin()); // this function, or what a sanitizer puts before backtrace()
    }
    return stack;
}

std::string CallStack::text() const
{
    std::ostringstream lines;
    bool any_name = false;
    for (void* const p_return : m_calls) {
        // The call stands before the place that it returns to, which may belong to the next function.
        const char* const p_call = static_cast<const char*>(p_return) - 1;
        Dl_info info = {};
        const bool known = ::dladdr(p_call, &info) != 0 && info.dli_fname;
        const bool named = known && info.dli_sname;
        any_name = any_name || named;
        if (!any_name) {
            continue;
        }
        lines << "  " << (named ? readable(info.dli_sname) : "?");
        if (known) {
            lines << "  [" << info.dli_fname << " 0x" << std::hex
                  << p_call - static_cast<const char*>(info.dli_fbase) << ']';
        }
        lines << '\n';
    }
    return lines.str();
}

} // namespace tarqa::housekeeping
