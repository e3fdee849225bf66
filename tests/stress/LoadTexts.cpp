#include "LoadTexts.h"

#include <cstdlib>
#include <sstream>

namespace load {

std::string tag(unsigned thread, unsigned long long number)
{
    return '@' + std::to_string(thread) + ':' + std::to_string(number) + '@';
}

bool read_tag(const std::string& text, std::size_t begin, unsigned& thread, unsigned long long& number)
{
    const std::size_t open = text.find('@', begin);
    if (open == std::string::npos) {
        return false;
    }
    char* p_end = nullptr;
    thread = static_cast<unsigned>(std::strtoul(text.c_str() + open + 1, &p_end, 10));
    if (*p_end != ':') {
        return false;
    }
    number = std::strtoull(p_end + 1, &p_end, 10);
    return *p_end == '@';
}

std::string command_name(unsigned thread, const Step& step)
{
    return tag(thread, step.number) + ' ' + name_of(step.kind);
}

std::string command_description(std::size_t count)
{
    return "adds " + std::to_string(count);
}

std::string child_name(const std::string& composite, std::size_t position)
{
    return composite + '.' + std::to_string(position);
}

tarqa::housekeeping::FailedCommandException failure_of(const std::string& command)
{
    return {42, command + " failed", "tests/stress/LoadTexts", 7};
}

std::string written(const tarqa::Exception& exception)
{
    std::ostringstream text;
    text << exception;
    return text.str();
}

} // namespace load
