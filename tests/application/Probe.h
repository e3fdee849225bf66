#pragma once

#include <QtCore/QProcess>

#include <map>
#include <optional>
#include <string>
#include <vector>

/// A run of the probe program that the test is built with. All probes of a test share one home, which is not
/// the test's own, and the test's directory of temporary files.
class Probe : private QProcess
{
public:
    Probe();
    ~Probe() override;

    // Before it starts

    void set(const std::string& variable, const std::string& value);
    void unset(const std::string& variable);
    /// Runs a copy of the program in the folder "bin" of a new installation.
    /// @return the installation's root, without a slash at its end
    std::string install();
    /// It cannot write a single byte into any file.
    void limit_files_to_nothing() { m_limits_files = true; }

    /// Starts it and does not wait.
    void launch(const std::vector<std::string>& options = {});
    /// Waits until its start-up is over. @return false if it ended before
    bool wait_until_ready();
    /// Both.
    bool start(const std::vector<std::string>& options = {});

    // While it runs

    /// Waits until it has printed a value under this name. @return false if it ended before
    bool wait_for_fact(const std::string& name);
    /// Waits until this stands on its error stream. @return false if it ended before
    bool wait_for_error(const std::string& text);
    /// The values that it printed under this name.
    std::vector<std::string> facts(const std::string& name) const;
    /// The only one.
    std::string fact(const std::string& name) const;
    /// The session lock file that it holds a lock on, full path; empty if there is none.
    std::string held_lock() const;

    /// Tells it to end. @return the exit code; -1 if it crashed
    int finish();
    /// Waits for it to end of its own accord. @return the signal that killed it; 0 if it was none
    int wait_for_signal();
    void kill_it();

    /// What it logged after the head of the log, but for the closing banner.
    std::string entries() const;
    /// The whole log.
    std::string log() const;
    const std::string& error() const { return m_error; }

    static std::string home();
    /// Where it runs; empty unless it writes something there.
    static std::string working_directory() { return home() + "/work"; }
    /// The log directory in the usual place.
    static std::string log_directory() { return home() + "/config/tarqa"; }

private:
    void setupChildProcess() override;
    void read();

    std::map<std::string, std::optional<std::string>> m_variables; // without a value: taken out
    std::string m_program;
    bool m_limits_files = false;
    std::string m_out;
    std::string m_error;
    std::string m_log_file;
};
