#include "support/PrivateHome.h"

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <vector>

#include <unistd.h>

namespace support {

namespace {

std::string environment(const char* name)
{
    const char* value = std::getenv(name);
    return value ? value : "";
}

} // namespace

PrivateHome::PrivateHome()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "hk-test-XXXXXX").string();
    std::vector<char> buffer(pattern.begin(), pattern.end());
    buffer.push_back('\0');
    if (!mkdtemp(buffer.data())) {
        throw std::runtime_error("no private home for the tests below " + pattern);
    }
    m_root = buffer.data();

    // A program that a test starts gets a private home of its own inside this one, unless the test hands it
    // this one.
    const auto directory = [this](const char* variable, const char* name) {
        const std::string path = m_root + "/" + name;
        std::filesystem::create_directory(path);
        setenv(variable, path.c_str(), 1);
    };
    directory("HOME", "home");
    directory("XDG_CONFIG_HOME", "config");
    directory("XDG_RUNTIME_DIR", "runtime");
    directory("XDG_CACHE_HOME", "cache");
    directory("TMPDIR", "tmp");
    directory("HK_TEST_SCRATCH", "scratch");
    std::filesystem::permissions(m_root + "/runtime", std::filesystem::perms::owner_all);
    for (const char* const bus : {"DBUS_SYSTEM_BUS_ADDRESS", "DBUS_SESSION_BUS_ADDRESS"}) {
        setenv(bus, ("unix:path=" + m_root + "/no-bus").c_str(), 1);
    }
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    setenv("LC_ALL", "C.UTF-8", 1);
    unsetenv("LANGUAGE"); // which says more than LC_ALL to Qt
}

PrivateHome::~PrivateHome()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_root, ignored);
}

std::string PrivateHome::log_directory()
{
    return environment("XDG_CONFIG_HOME") + "/tarqa";
}

std::string PrivateHome::scratch_directory()
{
    return environment("HK_TEST_SCRATCH");
}

} // namespace support
