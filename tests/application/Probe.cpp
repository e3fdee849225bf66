#include "Probe.h"

#include "LockFiles.h"
#include "LogFiles.h"
#include "support/PrivateHome.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <sstream>

#include <sys/resource.h>

namespace {

namespace fs = std::filesystem;

const int s_patience = 60000; ///< milliseconds, for a machine that is very busy
const std::string s_head_end = "************ ERROR LOG BEGIN  ************ \n";
const std::string s_banner = "************** END OF ERROR LOG ***************\n";

QString text(const std::string& bytes)
{
    return QString::fromLocal8Bit(bytes.data(), static_cast<int>(bytes.size()));
}

} // namespace

Probe::Probe()
    : m_program(TARQ_APPLICATION_PROBE)
{
    fs::create_directories(home() + "/config");
    fs::create_directories(working_directory());
    set("HOME", home());
    set("XDG_CONFIG_HOME", home() + "/config");
    set("XDG_SESSION_ID", "31");
    setWorkingDirectory(text(working_directory()));
}

Probe::~Probe()
{
    if (state() != NotRunning) {
        kill_it();
    }
}

void Probe::set(const std::string& variable, const std::string& value)
{
    m_variables[variable] = value;
}

void Probe::unset(const std::string& variable)
{
    m_variables[variable].reset();
}

std::string Probe::install()
{
    const fs::path root = fs::canonical(support::PrivateHome::scratch_directory()) / "installation";
    fs::create_directories(root / "bin");
    fs::copy_file(m_program, root / "bin/probe");
    m_program = root / "bin/probe";
    return root.string();
}

void Probe::launch(const std::vector<std::string>& options)
{
    QStringList list;
    for (const std::string& option : options) {
        list.append(text(option));
    }
    QProcess::start(text(m_program), list);
}

bool Probe::wait_until_ready()
{
    while (m_out.find("ready\n") == std::string::npos && waitForReadyRead(s_patience)) {
        read();
    }
    read();
    if (m_out.find("ready\n") == std::string::npos) {
        waitForFinished(s_patience);
        read();
        return false;
    }
    m_log_file = fact("log");
    return true;
}

bool Probe::start(const std::vector<std::string>& options)
{
    launch(options);
    return wait_until_ready();
}

bool Probe::wait_for_fact(const std::string& name)
{
    read();
    while (facts(name).empty() && waitForReadyRead(s_patience)) {
        read();
    }
    read();
    return !facts(name).empty();
}

bool Probe::wait_for_error(const std::string& text)
{
    setReadChannel(StandardError);
    read();
    while (m_error.find(text) == std::string::npos && waitForReadyRead(s_patience)) {
        read();
    }
    setReadChannel(StandardOutput);
    read();
    return m_error.find(text) != std::string::npos;
}

std::vector<std::string> Probe::facts(const std::string& name) const
{
    std::vector<std::string> values;
    std::istringstream stream(m_out);
    for (std::string line; std::getline(stream, line);) {
        if (line.rfind(name + ": ", 0) == 0) {
            values.push_back(line.substr(name.size() + 2));
        }
    }
    return values;
}

std::string Probe::fact(const std::string& name) const
{
    const std::vector<std::string> values = facts(name);
    EXPECT_EQ(values.size(), 1u) << name;
    return values.empty() ? std::string() : values.front();
}

std::string Probe::held_lock() const
{
    return lock_files::held_by(static_cast<pid_t>(processId()));
}

int Probe::finish()
{
    closeWriteChannel();
    const bool finished = state() == NotRunning || waitForFinished(s_patience);
    read();
    return finished && exitStatus() == NormalExit ? exitCode() : -1;
}

int Probe::wait_for_signal()
{
    const bool finished = state() == NotRunning || waitForFinished(s_patience);
    read();
    return finished && exitStatus() == CrashExit ? exitCode() : 0;
}

void Probe::kill_it()
{
    kill();
    waitForFinished(s_patience);
    read();
}

std::string Probe::entries() const
{
    std::string entries = log();
    const std::size_t head = entries.find(s_head_end);
    if (head != std::string::npos) {
        entries.erase(0, head + s_head_end.size());
    }
    const std::size_t banner = entries.rfind(s_banner);
    if (banner != std::string::npos) {
        entries.erase(banner);
    }
    return entries;
}

std::string Probe::log() const
{
    return log_files::read(m_log_file);
}

std::string Probe::home()
{
    return support::PrivateHome::scratch_directory() + "/home";
}

void Probe::setupChildProcess()
{
    // Here and not with QProcess's own means, because those know only text.
    for (const auto& [name, value] : m_variables) {
        value ? ::setenv(name.c_str(), value->c_str(), 1) : ::unsetenv(name.c_str());
    }
    const rlimit nothing = {0, 0};
    setrlimit(RLIMIT_CORE, &nothing);
    if (m_limits_files) {
        std::signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &nothing);
    }
}

void Probe::read()
{
    m_out += readAllStandardOutput().toStdString();
    m_error += readAllStandardError().toStdString();
}
