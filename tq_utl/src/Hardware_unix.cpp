#include "platform.h"

#include <algorithm>
#include <fstream>

#include <sched.h>
#include <unistd.h>

namespace tarqa::utilities::platform {

namespace {

/// What stands behind the colon of a line "name  : value"; empty if the line has another name.
std::string value_of(const std::string& line, const std::string& name)
{
    const std::size_t colon = line.find(':');
    if (colon == std::string::npos || line.compare(0, name.size(), name) != 0) {
        return {};
    }
    const std::size_t begin = line.find_first_not_of(" \t", colon + 1);
    const std::size_t end = line.find_last_not_of(" \t\r");
    return begin == std::string::npos ? std::string() : line.substr(begin, end - begin + 1);
}

} // namespace

std::string processor()
{
    std::ifstream facts("/proc/cpuinfo");
    for (std::string line; std::getline(facts, line);) {
        std::string name = value_of(line, "model name");
        if (!name.empty()) {
            return name;
        }
    }
    return {};
}

unsigned int processor_count()
{
    cpu_set_t allowed;
    if (sched_getaffinity(0, sizeof allowed, &allowed) == 0) {
        return static_cast<unsigned int>(std::max(1, CPU_COUNT(&allowed)));
    }
    // More processors than the set can hold.
    return static_cast<unsigned int>(std::max(1L, sysconf(_SC_NPROCESSORS_ONLN)));
}

unsigned long long physical_memory()
{
    const long pages = sysconf(_SC_PHYS_PAGES);
    const long page_size = sysconf(_SC_PAGESIZE);
    if (pages < 0 || page_size < 0) {
        return 0;
    }
    return static_cast<unsigned long long>(pages) * static_cast<unsigned long long>(page_size);
}

} // namespace tarqa::utilities::platform
