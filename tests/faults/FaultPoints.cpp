#include "faults/FaultPoints.h"

#include <tarqa/housekeeping/CancelCommandException.h>
#include <tarqa/housekeeping/FailedCommandException.h>
#include <tarqa/housekeeping/HousekeepingException.h>

#include <algorithm>
#include <new>
#include <stdexcept>

namespace throwing_code {

using namespace tarqa::housekeeping;

namespace {

const unsigned int s_code = 4711;
const char* const s_message = "planted fault";
const char* const s_file = "tests/faults";
const unsigned int s_line = 1;

[[noreturn]] void throw_as(Kind kind)
{
    const HousekeepingException planted(s_code, s_message, s_file, s_line);
    switch (kind) {
    case Kind::Housekeeping:
        throw planted;
    case Kind::Cancel:
        throw CancelCommandException(planted);
    case Kind::Failed:
        throw FailedCommandException(s_code, s_message, s_file, s_line);
    case Kind::Standard:
        throw std::runtime_error(s_message);
    case Kind::Memory:
        throw std::bad_alloc();
    case Kind::Unknown:
        break;
    }
    throw 7;
}

} // namespace

const std::vector<Kind> all_kinds
    = {Kind::Housekeeping, Kind::Cancel, Kind::Failed, Kind::Standard, Kind::Memory, Kind::Unknown};

const std::vector<Kind> known_kinds
    = {Kind::Housekeeping, Kind::Cancel, Kind::Failed, Kind::Standard, Kind::Memory};

const char* name_of(Kind kind)
{
    switch (kind) {
    case Kind::Housekeeping:
        return "housekeeping exception";
    case Kind::Cancel:
        return "cancellation";
    case Kind::Failed:
        return "expected failure";
    case Kind::Standard:
        return "standard exception";
    case Kind::Memory:
        return "bad_alloc";
    case Kind::Unknown:
        break;
    }
    return "int";
}

std::string trace_of(Kind kind)
{
    switch (kind) {
    case Kind::Cancel:
        return "TARQA EXCEPTION THROWN:"; // it has nothing else to say
    case Kind::Memory:
        return std::bad_alloc().what();
    case Kind::Unknown:
        return "unknown";
    default:
        return s_message;
    }
}

void FaultPoints::count()
{
    m_running = true;
    m_armed.reset();
    m_places.clear();
}

void FaultPoints::arm(std::size_t index, Kind kind, Mode mode)
{
    count();
    m_armed = index;
    m_kind = kind;
    m_mode = mode;
}

std::vector<std::string> FaultPoints::stop()
{
    m_running = false;
    m_armed.reset();
    return std::move(m_places);
}

void FaultPoints::reached(const std::string& place)
{
    if (!m_running) {
        return;
    }
    const auto is_same
        = [&place](const std::string& other) { return other == place || other.rfind(place + " #", 0) == 0; };
    const auto before = std::count_if(m_places.begin(), m_places.end(), is_same);
    const std::size_t index = m_places.size();
    m_places.push_back(before == 0 ? place : place + " #" + std::to_string(before + 1));
    if (m_armed && (index == *m_armed || (m_mode == Mode::FromThere && index > *m_armed))) {
        throw_as(m_kind);
    }
}

FaultPoints& fault_points()
{
    static FaultPoints s_points;
    return s_points;
}

std::optional<Kind> thrown_by(const std::function<void()>& work)
{
    try {
        work();
    } catch (const CancelCommandException&) {
        return Kind::Cancel;
    } catch (const FailedCommandException&) {
        return Kind::Failed;
    } catch (const HousekeepingException&) {
        return Kind::Housekeeping;
    } catch (const std::bad_alloc&) {
        return Kind::Memory;
    } catch (const std::exception&) {
        return Kind::Standard;
    } catch (...) {
        return Kind::Unknown;
    }
    return {};
}

} // namespace throwing_code
