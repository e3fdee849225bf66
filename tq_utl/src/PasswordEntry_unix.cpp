#include "PasswordEntry_unix.h"

#include <cerrno>
#include <vector>

#include <pwd.h>
#include <unistd.h>

namespace tarqa::utilities {

namespace {

const std::size_t s_first_buffer = 1024;
const std::size_t s_largest_buffer = 1024 * s_first_buffer;

std::string text_of(const char* text)
{
    return text ? text : "";
}

} // namespace

PasswordEntry own_password_entry()
{
    for (std::size_t size = s_first_buffer; size <= s_largest_buffer; size *= 4) {
        std::vector<char> buffer(size);
        passwd entry = {};
        passwd* p_found = nullptr;
        const int error = getpwuid_r(geteuid(), &entry, buffer.data(), buffer.size(), &p_found);
        if (p_found) {
            return {text_of(entry.pw_name), text_of(entry.pw_dir)};
        }
        if (error != ERANGE) {
            break;
        }
    }
    return {};
}

} // namespace tarqa::utilities
