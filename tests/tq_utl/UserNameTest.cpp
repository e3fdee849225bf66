#include <tarqa/utilities/UserName.h>

#include "support/ChildProcess.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>

#include <pwd.h>
#include <unistd.h>

using support::ChildProcess;

using tarqa::utilities::user_name;

namespace {

const uid_t s_nobody_has_it = 2000123456;

/// user_name() of a process that runs as a user whom the password database does not know, if this user may
/// start one; else of this user.
std::string name_of_a_stranger(const std::function<void()>& set_environment)
{
    ChildProcess child([&set_environment]() -> std::string {
        set_environment();
        if (geteuid() == 0 && setuid(s_nobody_has_it) != 0) {
            return "not changed";
        }
        return user_name();
    });
    return child.report();
}

/// What is expected of a stranger, or of this user where no stranger can be had.
std::string expected(const std::string& of_a_stranger)
{
    return geteuid() == 0 ? of_a_stranger : user_name();
}

} // namespace

TEST(UserName, IsTheOneOfThePasswordDatabaseWhateverTheEnvironmentSays)
{
    const passwd* const p_entry = getpwuid(geteuid());
    ASSERT_NE(p_entry, nullptr);
    const std::string name = p_entry->pw_name;
    setenv("USER", "somebody else", 1);
    setenv("LOGNAME", "somebody else", 1);
    EXPECT_EQ(user_name(), name);
}

TEST(UserName, OfAnUnknownUserComesFromTheEnvironment)
{
    EXPECT_EQ(name_of_a_stranger([] {
        setenv("USER", "J\xc3\xbcrgen", 1);
        setenv("LOGNAME", "second", 1);
    }),
        expected("J\xc3\xbcrgen"));
    EXPECT_EQ(name_of_a_stranger([] {
        setenv("USER", "", 1);
        setenv("LOGNAME", "second", 1);
    }),
        expected("second"));
}

TEST(UserName, OfAnUnknownUserWithoutEnvironmentIsUnknown)
{
    EXPECT_EQ(name_of_a_stranger([] {
        unsetenv("USER");
        setenv("LOGNAME", "", 1);
    }),
        expected("unknown"));
}
