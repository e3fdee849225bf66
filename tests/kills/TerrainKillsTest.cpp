#include "Home.h"
#include "Victim.h"
#include "support/PrivateHome.h"

#include <QtCore/QProcess>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <climits>
#include <filesystem>
#include <iostream>
#include <random>
#include <string>
#include <vector>

#include <sys/inotify.h>
#include <unistd.h>

using kills::content_of;
using kills::write_content;

namespace {

namespace fs = std::filesystem;

const int s_patience = 120000; ///< milliseconds, for a machine that is very busy
const int s_kills = 10;
const int s_most_lines = 12;
const unsigned int s_longest_write = 60000000; ///< nanoseconds
const char* const s_endings[] = {".tif", ".asc"};

std::string scratch(const std::string& name)
{
    return support::PrivateHome::scratch_directory() + '/' + name;
}

/// With a home of its own.
void start(QProcess& process, const std::string& program, const QStringList& arguments)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("XDG_CONFIG_HOME", QString::fromStdString(scratch("config")));
    process.setProcessEnvironment(environment);
    process.start(QString::fromStdString(program), arguments);
}

int run(const std::string& program, const QStringList& arguments)
{
    QProcess process;
    start(process, program, arguments);
    const bool finished = process.waitForFinished(s_patience);
    return finished && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

int run_script(const std::string& script)
{
    write_content(scratch("script"), script);
    return run(TARQ_TERRAIN,
        {"--batch", QString::fromStdString(scratch("script")),
            QString::fromStdString(scratch("sample.tif"))});
}

/// The terrain host, which writes the same file again and again, with one content and another in turn; the
/// parameter is the seed.
class TerrainKills : public testing::TestWithParam<int>
{
protected:
    TerrainKills()
        : random(static_cast<std::uint64_t>(GetParam()))
    { }

    void SetUp() override
    {
        ASSERT_EQ(run(TARQ_TERRAIN_SAMPLE,
                      {QString::fromStdString(scratch("sample.tif")), "--size", "300", "--seed", "7"}),
            0);
        std::string script;
        for (const std::string ending : s_endings) {
            script += "export " + scratch("one" + ending) + "\nscale 2\nexport " + scratch("other" + ending)
                + "\nundo\n";
        }
        ASSERT_EQ(run_script(script), 0);
        for (const std::string ending : s_endings) {
            fs::copy_file(scratch("one" + ending), scratch("target" + ending));
            ASSERT_NE(content_of(scratch("one" + ending)), content_of(scratch("other" + ending)));
        }
        fs::copy_file(scratch("one.prj"), scratch("target.prj"));
    }

    /// Lets it write the file, and kills it at some moment.
    void kill_one(const std::string& target)
    {
        std::string script;
        for (int i = 0; i < s_most_lines; ++i) {
            script += "scale 2\nexport " + target + "\nundo\nexport " + target + '\n';
        }
        write_content(scratch("script"), script);
        QProcess process;
        start(process, TARQ_TERRAIN,
            {"--batch", QString::fromStdString(scratch("script")),
                QString::fromStdString(scratch("sample.tif"))});
        QByteArray out;
        const int lines = static_cast<int>(kills::below(random, s_most_lines));
        while (out.count('\n') <= lines && process.waitForReadyRead(s_patience)) {
            out += process.readAllStandardOutput();
        }
        kills::spin(kills::below(random, s_longest_write));
        process.kill();
        ASSERT_TRUE(process.waitForFinished(s_patience));
        killed += process.exitStatus() == QProcess::CrashExit ? 1 : 0;
    }

    std::size_t unfinished_files() const
    {
        std::size_t count = 0;
        for (const auto& entry : fs::directory_iterator(support::PrivateHome::scratch_directory())) {
            count += entry.path().filename().string().find(".part.") != std::string::npos ? 1 : 0;
        }
        return count;
    }

    std::mt19937_64 random;
    int killed = 0;
};

} // namespace

TEST_P(TerrainKills, LeaveTheOldFileOrTheNewOne)
{
    int with_other_content = 0;
    for (int i = 0; i < s_kills; ++i) {
        const std::string ending = s_endings[static_cast<std::size_t>(i) % std::size(s_endings)];
        kill_one(scratch("target" + ending));
        const std::string found = content_of(scratch("target" + ending));
        const bool is_other = found == content_of(scratch("other" + ending));
        EXPECT_TRUE(is_other || found == content_of(scratch("one" + ending)))
            << "kill " << i << ": " << ending << " of " << found.size() << " bytes";
        EXPECT_EQ(content_of(scratch("target.prj")), content_of(scratch("one.prj"))) << "kill " << i;
        with_other_content += is_other ? 1 : 0;
    }
    std::cout << "killed: " << killed << ", with the other content: " << with_other_content
              << ", unfinished files left: " << unfinished_files() << '\n';
    EXPECT_EQ(killed, s_kills);
    EXPECT_EQ(
        run_script("open " + scratch("target.tif") + "\ninfo\nexport " + scratch("target.asc") + '\n'), 0);
}

INSTANTIATE_TEST_SUITE_P(Seed, TerrainKills, testing::Range(1, 5));

namespace {

/// What happens to the names in the scratch directory, in order: "deleted a.txt" for example.
class DirectoryWatch
{
public:
    DirectoryWatch()
        : m_descriptor(inotify_init1(IN_CLOEXEC | IN_NONBLOCK))
    {
        inotify_add_watch(m_descriptor, support::PrivateHome::scratch_directory().c_str(),
            IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO);
    }
    ~DirectoryWatch() { ::close(m_descriptor); }
    DirectoryWatch(const DirectoryWatch&) = delete;
    DirectoryWatch& operator=(const DirectoryWatch&) = delete;

    std::vector<std::string> events(const std::string& name)
    {
        alignas(inotify_event) std::array<char, 64 * (sizeof(inotify_event) + NAME_MAX + 1)> buffer;
        std::vector<std::string> events;
        ssize_t size = 0;
        while ((size = ::read(m_descriptor, buffer.data(), buffer.size())) > 0) {
            const inotify_event* p_event = nullptr;
            for (ssize_t at = 0; at < size; at += static_cast<ssize_t>(sizeof *p_event + p_event->len)) {
                p_event = reinterpret_cast<const inotify_event*>(buffer.data() + at);
                if (p_event->len > 0 && name == p_event->name) {
                    events.emplace_back(p_event->mask & IN_MOVED_TO ? "replaced" : "gone");
                }
            }
        }
        return events;
    }

private:
    int m_descriptor;
};

} // namespace

// Between two steps a kill would leave a raster that does not know where on the Earth it is.
TEST(TerrainFiles, CompanionIsReplacedInOneStep)
{
    ASSERT_EQ(run(TARQ_TERRAIN_SAMPLE, {QString::fromStdString(scratch("sample.tif")), "--size", "20"}), 0);
    ASSERT_EQ(run_script("export " + scratch("target.asc") + '\n'), 0);
    DirectoryWatch watch;
    ASSERT_EQ(run_script("export " + scratch("target.asc") + '\n'), 0);
    EXPECT_THAT(watch.events("target.prj"), testing::ElementsAre("replaced"));
}
