#include <tarqa/housekeeping/ErrorProtocol.h>

#include "LogFile.h"
#include "LogHolder.h"

#include <pkBaseQt/pkProductInfo.h>
#include <tarqa/utilities/Exception.h>
#include <tarqa/utilities/Hardware.h>
#include <tarqa/utilities/SystemPaths.h>
#include <tarqa/utilities/Url.h>

#include <boost/container/small_vector.hpp>

#include <atomic>
#include <initializer_list>
#include <iostream>
#include <sstream>

namespace tarqa::housekeeping {

namespace {

const char* const s_opened = "************ ERROR LOG OPENED ************ \n\n";
const char* const s_system_information = "SYSTEM INFROMATION\n"; // spelled so deliberately
const char* const s_begin = "************ ERROR LOG BEGIN  ************ \n";
const char* const s_end = "************** END OF ERROR LOG ***************\n";

/// Set when the log has been destroyed: no second file is made then.
std::atomic<bool> s_closed{false};

std::string head_of_file()
{
    std::ostringstream head;
    head << s_opened << s_system_information;
    pkBase::pkProductInfo::const_instance().write_to_log(head);
    utilities::Hardware::write_to_log(head);
    utilities::SystemPaths::write_to_log(head);
    head << s_begin;
    return head.str();
}

/// The text of an entry, put together of parts: without the heap if it is as long as most are.
class Entry
{
public:
    template <class... Parts>
    explicit Entry(const Parts&... parts)
    {
        const std::initializer_list<std::string_view> all = {parts...};
        std::size_t length = 0;
        for (const std::string_view& part : all) {
            length += part.size();
        }
        m_text.reserve(length);
        for (const std::string_view& part : all) {
            m_text.insert(m_text.end(), part.begin(), part.end());
        }
    }
    operator std::string_view() const { return {m_text.data(), m_text.size()}; }

private:
    static constexpr std::size_t s_usual_length = 512;

    boost::container::small_vector<char, s_usual_length> m_text;
};

std::string_view text_or_empty(const char* text)
{
    return text ? std::string_view(text) : std::string_view();
}

std::string information_of(const tarqa::Exception& exception)
{
    std::ostringstream text;
    text << exception;
    return text.str();
}

} // namespace

/// The log is the last to go in its phase, because its destruction is entered first, while the library loads.
const bool ErrorProtocol::s_destruction_reserved
    = (ErrorProtocol::get_instance().reserve_destruction(), true);

ErrorProtocol::ErrorProtocol(State state)
{
    if (state == State::Inert) {
        return;
    }
    const LogHolder holder;
    const std::string base = utilities::url_to_filesystem(utilities::SystemPaths::user_preferences_path())
        + pkBase::pkProductInfo::const_instance().product_name();
    m_filename = log_file::choose(base, head_of_file());
}

ErrorProtocol::~ErrorProtocol()
{
    write(s_end);
}

pkBase::pkSingleton<ErrorProtocol>& ErrorProtocol::get_instance()
{
    static pkBase::pkSingleton<ErrorProtocol> s_holder(
        pkBase::pkDestructionPhase(5), &ErrorProtocol::destroy_at_shutdown);
    return s_holder;
}

ErrorProtocol& ErrorProtocol::instance()
{
    ErrorProtocol* const p_log = get_instance().peek();
    if (p_log) {
        return *p_log;
    }
    // An entry after the end must not make a second file, and one that the head of the file causes must not
    // wait for it.
    if (s_closed.load(std::memory_order_acquire) || LogHolder::is_this_thread()) {
        static ErrorProtocol* const s_p_inert
            = new ErrorProtocol(State::Inert); // leaked: for everybody's last words
        return *s_p_inert;
    }
    return get_instance().get();
}

const ErrorProtocol& ErrorProtocol::const_instance()
{
    return instance();
}

void ErrorProtocol::destroy_instance()
{
    get_instance().destroy();
}

void ErrorProtocol::destroy_at_shutdown()
{
    s_closed.store(true, std::memory_order_release);
    destroy_instance();
}

void ErrorProtocol::write(std::string_view text, bool empty_first)
{
    if (LogHolder::is_this_thread()) {
        guarded::avoided(m_mutex, s_log_mutex);
        std::cerr << text << std::flush;
        return;
    }
    if (m_filename.empty()) {
        return;
    }
    const GuardedLocker lock(&m_mutex, s_log_mutex);
    log_file::write(m_filename, text, empty_first);
}

// Rendering comes before the lock, and whatever it throws costs the entry only.

void ErrorProtocol::log_message(const std::string& text)
{
    try {
        write(Entry(text, "\n"));
    } catch (...) { }
}

void ErrorProtocol::log_command(const std::string& text)
{
    try {
        write(text);
    } catch (...) { }
}

void ErrorProtocol::log_assert(
    const char* expression, const char* function, const char* file, unsigned int line)
{
    try {
        write(Entry(text_or_empty(file), ":", std::to_string(line), " ASSERT FAILED in ",
            text_or_empty(function), ": ", text_or_empty(expression), "\n"));
    } catch (...) { }
}

void ErrorProtocol::log_exception(const tarqa::Exception& exception)
{
    try {
        write(Entry("TARQA EXCEPTION THROWN:\n", information_of(exception), "\n\n"));
    } catch (...) { }
}

void ErrorProtocol::log_exception(const std::exception& exception)
{
    try {
        write(Entry("STD EXCEPTION THROWN:", exception.what(), "\n\n"));
    } catch (...) { }
}

void ErrorProtocol::log_fatal_error(const std::string& text)
{
    try {
        write(Entry("FATAL ERROR!\nFurther Information: ", text, "\n\n"), true);
    } catch (...) { }
}

void ErrorProtocol::log_fatal_error(const tarqa::Exception& exception)
{
    try {
        write(
            Entry("fatal error!\nCause: tarqa::Exception\nFurther Information: ", information_of(exception)));
    } catch (...) { }
}

void ErrorProtocol::log_fatal_error(const std::exception& exception)
{
    try {
        write(Entry("FATAL ERROR!\nCause: std::exception\nFurther Information: ", exception.what(), "\n"));
    } catch (...) { }
}

} // namespace tarqa::housekeeping
