#include "HomeDirectories.h"

#include <QtCore/QByteArray>
#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>

#include <filesystem>
#include <stdexcept>

namespace tarqa::housekeeping::testkit {

namespace {

const char* const s_scratch = "HK_TEST_SCRATCH";

std::string made_root()
{
    QTemporaryDir directory(QDir::tempPath() + "/hk-test-XXXXXX");
    if (!directory.isValid()) {
        throw std::runtime_error("no private home for the tests below " + QDir::tempPath().toStdString());
    }
    directory.setAutoRemove(false);
    return directory.path().toStdString();
}

std::string environment(const char* variable)
{
    return qgetenv(variable).toStdString();
}

} // namespace

HomeDirectories::HomeDirectories()
    : m_root(made_root())
{
    // A program that a test starts gets a private home of its own inside this one, unless the test hands it
    // this one.
    const auto directory = [this](const char* variable, const char* name) {
        const std::string path = m_root + "/" + name;
        std::filesystem::create_directory(path);
        qputenv(variable, path.c_str());
    };
    directory("HOME", "home");
    directory("XDG_CONFIG_HOME", "config");
    directory("XDG_RUNTIME_DIR", "runtime");
    directory("XDG_CACHE_HOME", "cache");
    directory("TMPDIR", "tmp");
    directory(s_scratch, "scratch");
    std::filesystem::permissions(m_root + "/runtime", std::filesystem::perms::owner_all);
    for (const char* const bus : {"DBUS_SYSTEM_BUS_ADDRESS", "DBUS_SESSION_BUS_ADDRESS"}) {
        qputenv(bus, ("unix:path=" + m_root + "/no-bus").c_str());
    }
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    qputenv("LC_ALL", "C.UTF-8");
    qunsetenv("LANGUAGE"); // which says more than LC_ALL to Qt
}

HomeDirectories::~HomeDirectories()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_root, ignored);
}

std::string HomeDirectories::log_directory()
{
    return environment("XDG_CONFIG_HOME") + "/tarqa";
}

std::string HomeDirectories::scratch_directory()
{
    return environment(s_scratch);
}

} // namespace tarqa::housekeeping::testkit
