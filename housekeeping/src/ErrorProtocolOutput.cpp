#include <tarqa/housekeeping/ErrorProtocolOutput.h>

#include "LogFile.h"
#include "LogHolder.h"

#include <tarqa/housekeeping/ErrorProtocol.h>

#include <filesystem>
#include <iostream>
#include <limits>

namespace tarqa::housekeeping {

ErrorProtocolOutput::ErrorProtocolOutput()
    : m_log(ErrorProtocol::instance())
    , m_nested(LogHolder::is_this_thread())
    , m_locker(std::make_unique<GuardedLocker>(m_nested ? nullptr : &m_log.m_mutex, s_log_mutex))
    , m_holder(std::make_unique<LogHolder>())
{
    if (m_nested) {
        guarded::avoided(m_log.m_mutex, s_log_mutex);
        std::ios::rdbuf(std::cerr.rdbuf());
        return;
    }
    const std::string& file = m_log.log_filename();
    // Writing nothing makes the file, and tells whether what is there may be written to.
    if (file.empty() || !log_file::write(file, std::string(), false)) {
        setstate(std::ios::badbit); // the entry is dropped
        return;
    }
    open(std::filesystem::u8path(file), std::ios::out | std::ios::app);
}

ErrorProtocolOutput::~ErrorProtocolOutput()
{
    forward('\n');
    if (m_nested) {
        flush();
        std::ios::rdbuf(std::ofstream::rdbuf());
        return;
    }
    close();
}

ErrorProtocolOutput& ErrorProtocolOutput::operator<<(unsigned long long number)
{
    return number == std::numeric_limits<unsigned long long>::max() ? forward("NULL") : forward(number);
}

} // namespace tarqa::housekeeping
