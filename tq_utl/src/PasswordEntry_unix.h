#pragma once

#include <string>

namespace tarqa::utilities {

/// What the password database knows about the user that this process runs as; texts are empty if it does not
/// know.
struct PasswordEntry
{
    std::string name;
    std::string home;
};

/// Asks the database. Any thread.
PasswordEntry own_password_entry();

} // namespace tarqa::utilities
