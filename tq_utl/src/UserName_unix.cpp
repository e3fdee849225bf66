#include <tarqa/utilities/UserName.h>

#include "PasswordEntry_unix.h"

#include <cstdlib>

namespace tarqa::utilities {

std::string user_name()
{
    const PasswordEntry entry = own_password_entry();
    if (!entry.name.empty()) {
        return entry.name;
    }
    for (const char* variable : {"USER", "LOGNAME"}) {
        const char* value = std::getenv(variable);
        if (value && *value) {
            return value;
        }
    }
    return "unknown";
}

} // namespace tarqa::utilities
