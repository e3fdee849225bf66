#include "Disturbance.h"

#include <tarqa/housekeeping/FailedCommandException.h>

#include <memory>
#include <new>
#include <stdexcept>

namespace tarqa::housekeeping::testkit {

namespace {

const char* const s_source = "testkit/src/Disturbance";
const unsigned int s_code = 1;

/// Says in the log that it is no real lack of memory.
class NoMemory : public std::bad_alloc
{
public:
    explicit NoMemory(const std::string& text)
        : m_p_text(std::make_shared<const std::string>(text))
    { }
    const char* what() const noexcept override { return m_p_text->c_str(); }

private:
    std::shared_ptr<const std::string> m_p_text; // a copy of the exception must not throw
};

/// No two alike: a fatal error empties the log, which shows only by other contents.
std::string text_of(const Disturbance& disturbance)
{
    static unsigned int s_count = 0;
    return name_of(disturbance.kind) + " of the round-trip proof at report "
        + std::to_string(disturbance.place) + ", the " + std::to_string(++s_count) + ". failure";
}

} // namespace

void Disturbance::fail() const
{
    if (kind == None || kind == Cancel) {
        return;
    }
    const std::string text = text_of(*this);
    switch (kind) {
    case None:
    case Cancel:
        return;
    case Expected:
        throw FailedCommandException(s_code, text, s_source, __LINE__);
    case Runtime:
        throw std::runtime_error(text);
    case Memory:
        throw NoMemory(text);
    case Housekeeping:
        throw HousekeepingException(s_code, text, s_source, __LINE__);
    }
}

std::string name_of(Disturbance::Kind kind)
{
    switch (kind) {
    case Disturbance::None:
        return "undisturbed";
    case Disturbance::Cancel:
        return "cancelled";
    case Disturbance::Expected:
        return "FailedCommandException";
    case Disturbance::Runtime:
        return "std::runtime_error";
    case Disturbance::Memory:
        return "std::bad_alloc";
    case Disturbance::Housekeeping:
        return "HousekeepingException";
    }
    return "unknown";
}

} // namespace tarqa::housekeeping::testkit
