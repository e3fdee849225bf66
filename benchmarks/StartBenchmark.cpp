#include "RatioReporter.h"

#include "support/PrivateHome.h"

#include <array>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

// The start of a program, from its call to the painted window, with everything in the caches of the machine:
// the terrain host beside a program with an empty window. Both load the same libraries, and a plug-in of Qt's
// that tells when the window has been painted.

namespace {

const Ratio s_first("first start of the host to the painted window / empty window", "first_start_of_host",
    "first_start_of_empty_window");
const Ratio s_ordinary(
    "start of the host to the painted window / empty window", "start_of_host", "start_of_empty_window", 1.3);

const char* const s_host = TARQ_TERRAIN;
const char* const s_empty_window = EMPTY_WINDOW;

/// A directory with nothing in it, and the environment of a program whose home it is.
class Home
{
public:
    Home()
    {
        static int s_count = 0;
        m_root = support::PrivateHome::scratch_directory() + "/home" + std::to_string(++s_count);
        const auto directory = [this](const std::string& variable, const std::string& name) {
            const std::string path = m_root + '/' + name;
            std::filesystem::create_directories(path);
            m_environment.push_back(variable + '=' + path);
        };
        directory("HOME", "home");
        directory("XDG_CONFIG_HOME", "config");
        directory("XDG_DATA_HOME", "data");
        directory("XDG_CACHE_HOME", "cache");
        directory("XDG_RUNTIME_DIR", "runtime");
        directory("TMPDIR", "tmp");
        std::filesystem::permissions(m_root + "/runtime", std::filesystem::perms::owner_all);
        const std::string no_bus = "=unix:path=" + m_root + "/no-bus";
        m_environment.push_back("DBUS_SYSTEM_BUS_ADDRESS" + no_bus);
        m_environment.push_back("DBUS_SESSION_BUS_ADDRESS" + no_bus);
        m_environment.insert(m_environment.end(),
            {"PATH=/usr/bin:/bin", "LC_ALL=C.UTF-8", "QT_QPA_PLATFORM=offscreen",
                "QT_PLUGIN_PATH=" QT_PLUGINS, "QT_QPA_GENERIC_PLUGINS=first-paint"});
    }
    ~Home() { std::filesystem::remove_all(m_root); }
    Home(const Home&) = delete;
    Home& operator=(const Home&) = delete;

    const std::vector<std::string>& environment() const { return m_environment; }

private:
    std::string m_root;
    std::vector<std::string> m_environment;
};

std::vector<char*> pointers(std::vector<std::string>& texts)
{
    std::vector<char*> result;
    for (std::string& text : texts) {
        result.push_back(text.data());
    }
    result.push_back(nullptr);
    return result;
}

/// Runs @p program until its window is closed. @return seconds until that was painted
double start(const char* program, const Home& home)
{
    std::array<int, 2> pipe = {};
    if (::pipe2(pipe.data(), O_CLOEXEC) != 0) {
        throw std::runtime_error("no pipe");
    }
    ::fcntl(pipe[1], F_SETFD, 0); // the program's end
    std::vector<std::string> environment = home.environment();
    environment.push_back("HK_BENCH_PAINTED=" + std::to_string(pipe[1]));
    std::vector<std::string> arguments = {program};

    const auto begin = std::chrono::steady_clock::now();
    pid_t child = 0;
    const int error = ::posix_spawn(
        &child, program, nullptr, nullptr, pointers(arguments).data(), pointers(environment).data());
    ::close(pipe[1]);
    char message = 0;
    const bool painted = error == 0 && ::read(pipe[0], &message, 1) == 1;
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;

    ::close(pipe[0]);
    int status = 0;
    if (error != 0 || ::waitpid(child, &status, 0) != child || status != 0 || !painted) {
        throw std::runtime_error(std::string("no window of ") + program);
    }
    return time.count();
}

void measure(benchmark::State& state, const char* program, bool first_start)
{
    static const bool s_warm = [] { // the caches
        const Home home;
        start(s_host, home);
        start(s_empty_window, home);
        return true;
    }();
    benchmark::DoNotOptimize(s_warm);
    for (auto _ : state) {
        const Home home;
        if (!first_start) {
            start(program, home); // which leaves settings
        }
        state.SetIterationTime(start(program, home));
    }
}

/// Of the clock on the wall, and each start for itself: the median passes over those that the machine
/// disturbed.
void starts(benchmark::internal::Benchmark* p_benchmark)
{
    p_benchmark->UseManualTime()->Iterations(1)->Repetitions(27)->Unit(benchmark::kMillisecond);
}

BENCHMARK_CAPTURE(measure, host, s_host, false)->Name("start_of_host")->Apply(starts);
BENCHMARK_CAPTURE(measure, empty_window, s_empty_window, false)->Name("start_of_empty_window")->Apply(starts);
BENCHMARK_CAPTURE(measure, host_first, s_host, true)->Name("first_start_of_host")->Apply(starts);
BENCHMARK_CAPTURE(measure, empty_window_first, s_empty_window, true)
    ->Name("first_start_of_empty_window")
    ->Apply(starts);

} // namespace
