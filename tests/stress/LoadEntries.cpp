#include "LoadEntries.h"

#include "LoadTexts.h"

#include <tarqa/housekeeping/ErrorHandler.h>
#include <tarqa/housekeeping/ErrorProtocol.h>
#include <tarqa/housekeeping/ErrorProtocolOutput.h>

#include <limits>
#include <stdexcept>
#include <thread>
#include <utility>

namespace load {

using namespace tarqa::housekeeping;

namespace {

enum class EntryWay : unsigned
{
    Message,
    Command,
    Assertion,
    TarqaException,
    StandardException,
    Output,
    ReportedText,
    ReportedException,
    ReportedCommand,
    FatalTarqaException,
    FatalStandardException,
    LongMessage,
    LongOutput
};
constexpr unsigned s_ways = 13;

const std::size_t s_pieces = 400; // of 50 characters: more than a stream holds back
const unsigned long long s_largest = std::numeric_limits<unsigned long long>::max();
const char* const s_fatal_text = "FATAL ERROR!\nFurther Information: ";

EntryWay way_of(const Step& step)
{
    return static_cast<EntryWay>(step.value % s_ways);
}

std::string piece(const Step& step)
{
    return std::string(49, static_cast<char>('a' + step.value % 26)) + ' ';
}

std::string long_text(const std::string& start, const Step& step)
{
    std::string text = start;
    for (std::size_t i = 0; i < s_pieces; ++i) {
        text += piece(step);
    }
    return text;
}

tarqa::Exception exception_of(const std::string& text)
{
    return {42, text, "tests/stress/LoadEntries", 7};
}

void write_output(const std::string& text, const Step& step)
{
    ErrorProtocolOutput output;
    output << text << ' ' << std::flush;
    std::this_thread::yield(); // whoever need not wait comes in between
    output << step.number << ' ' << s_largest;
}

void write_long_output(const std::string& text, const Step& step)
{
    ErrorProtocolOutput output;
    output << text;
    for (std::size_t i = 0; i < s_pieces; ++i) {
        output << piece(step);
    }
}

void write_in_its_way(const std::string& text, const Step& step)
{
    ErrorProtocol& log = ErrorProtocol::instance();
    switch (way_of(step)) {
    case EntryWay::Message:
        return log.log_message(text);
    case EntryWay::Command:
        return log.log_command(text + '\n');
    case EntryWay::Assertion:
        return log.log_assert(text.c_str(), "void function()", "tests/stress/LoadEntries", 7);
    case EntryWay::TarqaException:
        return log.log_exception(exception_of(text));
    case EntryWay::StandardException:
        return log.log_exception(std::runtime_error(text));
    case EntryWay::Output:
        return write_output(text, step);
    case EntryWay::ReportedText:
        return ErrorHandler::instance().report_exception(text);
    case EntryWay::ReportedException:
        return ErrorHandler::instance().report_exception(exception_of(text));
    case EntryWay::ReportedCommand:
        return ErrorHandler::instance().report_command(text + '\n');
    case EntryWay::FatalTarqaException:
        return log.log_fatal_error(exception_of(text));
    case EntryWay::FatalStandardException:
        return log.log_fatal_error(std::runtime_error(text));
    case EntryWay::LongMessage:
        return log.log_message(long_text(text, step));
    case EntryWay::LongOutput:
        return write_long_output(text, step);
    }
}

std::string text_of_its_way(const std::string& text, const Step& step)
{
    switch (way_of(step)) {
    case EntryWay::Assertion:
        return "tests/stress/LoadEntries:7 ASSERT FAILED in void function(): " + text + '\n';
    case EntryWay::TarqaException:
    case EntryWay::ReportedException:
        return "TARQA EXCEPTION THROWN:\n" + written(exception_of(text)) + "\n\n";
    case EntryWay::StandardException:
        return "STD EXCEPTION THROWN:" + text + "\n\n";
    case EntryWay::Output:
        return text + ' ' + std::to_string(step.number) + " NULL\n";
    case EntryWay::FatalTarqaException:
        return "fatal error!\nCause: tarqa::Exception\nFurther Information: " + written(exception_of(text));
    case EntryWay::FatalStandardException:
        return "FATAL ERROR!\nCause: std::exception\nFurther Information: " + text + '\n';
    case EntryWay::LongMessage:
    case EntryWay::LongOutput:
        return long_text(text, step) + '\n';
    default:
        return text + '\n';
    }
}

} // namespace

void write_entry(unsigned thread, const Step& step)
{
    const std::string text = command_name(thread, step);
    if (step.kind == Kind::FatalText) {
        ErrorProtocol::instance().log_fatal_error(text);
    } else {
        write_in_its_way(text, step);
    }
}

std::string entry_text(unsigned thread, const Step& step)
{
    const std::string text = command_name(thread, step);
    return step.kind == Kind::FatalText ? s_fatal_text + text + "\n\n" : text_of_its_way(text, step);
}

ExpectedEntries::ExpectedEntries(const Plan& plan, unsigned thread, unsigned long long steps)
    : m_plan(plan)
    , m_left(steps)
    , m_document(thread)
{ }

const std::string* ExpectedEntries::peek()
{
    while (m_pending.empty() && m_left > 0) {
        --m_left;
        for (std::string& entry : m_document.run(m_plan.next())) {
            m_pending.push_back(std::move(entry));
            ++m_count;
        }
    }
    return m_pending.empty() ? nullptr : &m_pending.front();
}

unsigned long long ExpectedEntries::skip_rest()
{
    unsigned long long count = 0;
    for (; peek(); pop()) {
        ++count;
    }
    return count;
}

namespace {

/// One walk through a log.
class LogCheck
{
public:
    LogCheck(const std::string& text, bool emptied, std::vector<ExpectedEntries>& expected, Faults& faults)
        : m_text(text)
        , m_expected(expected)
        , m_found(expected.size(), !emptied)
        , m_faults(faults)
    { }

    unsigned long long run()
    {
        while (m_position < m_text.size() && take_entry()) {
            ++m_count;
        }
        for (std::size_t thread = 0; thread < m_expected.size(); ++thread) {
            const unsigned long long lost = m_expected[thread].skip_rest();
            if (m_found[thread]) {
                m_faults.compare("entries lost of thread " + std::to_string(thread), 0ULL, lost);
            }
        }
        return m_count;
    }

private:
    bool is_here(const std::string& entry) const
    {
        return m_text.compare(m_position, entry.size(), entry) == 0;
    }

    /// Takes the entry that begins here. @return false at a fault, after which there is no way on
    bool take_entry()
    {
        unsigned thread = 0;
        unsigned long long number = 0;
        const bool tagged = read_tag(m_text, m_position, thread, number) && thread < m_expected.size();
        if (!tagged) {
            return is_fault("no entry of a thread", nullptr);
        }
        ExpectedEntries& expected = m_expected[thread];
        const std::string* p_entry = expected.peek();
        // Where the log was emptied the first one that is left can be any.
        for (; !m_found[thread] && p_entry && !is_here(*p_entry); p_entry = expected.peek()) {
            expected.pop();
        }
        m_found[thread] = true;
        if (!p_entry || !is_here(*p_entry)) {
            return is_fault("not the next entry of thread " + std::to_string(thread), p_entry);
        }
        m_position += p_entry->size();
        expected.pop();
        return true;
    }

    bool is_fault(const std::string& what, const std::string* p_expected)
    {
        m_faults.compare(what + " after " + std::to_string(m_count) + " entries of the log",
            p_expected ? *p_expected : std::string(), m_text.substr(m_position, 500));
        return false;
    }

    const std::string& m_text;
    std::vector<ExpectedEntries>& m_expected;
    std::vector<bool> m_found; // by thread: where its next entry stands is known
    Faults& m_faults;
    std::size_t m_position = 0;
    unsigned long long m_count = 0;
};

} // namespace

unsigned long long check_log(
    const std::string& text, bool emptied, std::vector<ExpectedEntries>& expected, Faults& faults)
{
    if (emptied && text.rfind(s_fatal_text, 0) != 0) {
        faults.add("the log does not begin with the fatal error: " + text.substr(0, 200));
    }
    return LogCheck(text, emptied, expected, faults).run();
}

} // namespace load
