#include "StoredSettings.h"
#include "support/PrivateHome.h"

#include <gtest/gtest.h>

#include <QtCore/QSettings>

#include <filesystem>
#include <fstream>
#include <string>

#include <sys/stat.h>

// Who may read the user's settings.

namespace {

namespace fs = std::filesystem;
using stored_settings::in_new_application;
using tarqa::housekeeping::ApplicationManager;

unsigned int mode(const std::string& path)
{
    return static_cast<unsigned int>(fs::status(path).permissions());
}

std::string directory()
{
    return fs::path(stored_settings::path()).parent_path().string();
}

/// Starts an application that changes a setting, as the preferences do, and one as a host's own code does.
void run()
{
    const std::string failures = in_new_application([] { ::umask(022); },
        [](ApplicationManager& manager) {
            manager.setShowHiddenAttributes(true);
            QSettings().setValue("host/key", "value");
            QSettings().sync();
            manager.setMouseMode(manager.mouseMode());
            return std::string();
        });
    EXPECT_EQ("", failures);
    EXPECT_EQ("true", stored_settings::entries()["application/showHiddenAttributes"]);
    EXPECT_EQ("value", stored_settings::entries()["host/key"]);
}

TEST(SettingsRights, FileAndDirectoryAreForThisUserOnly)
{
    ASSERT_FALSE(fs::exists(directory()));
    run();
    EXPECT_EQ(0600u, mode(stored_settings::path()));
    EXPECT_EQ(0700u, mode(directory()));
    run();
    EXPECT_EQ(0600u, mode(stored_settings::path()));
}

TEST(SettingsRights, ThatTheUserGaveStay)
{
    fs::create_directories(directory());
    ::chmod(directory().c_str(), 0755);
    stored_settings::write("");
    ::chmod(stored_settings::path().c_str(), 0640);
    run();
    EXPECT_EQ(0640u, mode(stored_settings::path()));
    EXPECT_EQ(0755u, mode(directory()));
}

TEST(SettingsRights, LinkThatTheUserArrangedStaysOne)
{
    const std::string own = support::PrivateHome::scratch_directory() + "/settings of mine";
    std::ofstream(own) << "";
    fs::create_directories(directory());
    fs::create_symlink(own, stored_settings::path());
    run();
    EXPECT_TRUE(fs::is_symlink(stored_settings::path()));
    EXPECT_EQ(stored_settings::entries().size(), 3u);
    EXPECT_GT(fs::file_size(own), 0u);
}

} // namespace
