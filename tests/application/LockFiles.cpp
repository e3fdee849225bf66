#include "LockFiles.h"

#include "LogFiles.h"
#include "support/ChildProcess.h"

#include <tarqa/utilities/TemporaryDirectory.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include <fcntl.h>
#include <unistd.h>

namespace lock_files {

namespace fs = std::filesystem;

std::string held_by(pid_t process)
{
    const fs::path directory = fs::path("/proc") / std::to_string(process);
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(directory / "fdinfo", error)) {
        const fs::path file = fs::read_symlink(directory / "fd" / entry.path().filename(), error);
        const std::string name = file.filename().string();
        const bool is_lock_file = name.find("-lockfile") != std::string::npos;
        if (is_lock_file && log_files::read(entry.path()).find("lock:") != std::string::npos) {
            return file.string();
        }
    }
    return {};
}

OtherLock::OtherLock(const std::string& file, Kind kind)
    : m_descriptor(::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600))
{
    struct flock request = {};
    request.l_type = static_cast<short>(kind == Write ? F_WRLCK : F_RDLCK);
    request.l_whence = SEEK_SET;
    m_held = ::fcntl(m_descriptor, F_OFD_SETLK, &request) == 0;
}

OtherLock::~OtherLock()
{
    ::close(m_descriptor);
}

bool is_free(const std::string& file)
{
    return OtherLock(file).held();
}

std::string abandoned_directory(const std::string& kind)
{
    support::ChildProcess child([&kind] {
        const auto* const p_directory
            = new tarqa::utilities::TemporaryDirectory(kind); // killed before its end
        std::ofstream(p_directory->path() + "/file") << "content";
        return p_directory->path();
    });
    const std::string path = child.report();
    child.kill();
    EXPECT_TRUE(fs::exists(path + "/file"));
    return path;
}

} // namespace lock_files
