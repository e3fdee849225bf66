#pragma once

#include <QtCore/QProcess>

#include <string>
#include <vector>

namespace host_test {

/// A run of tarq-terrain, with a private home of its own inside that of the test.
class BatchProcess
{
public:
    BatchProcess();
    ~BatchProcess();
    BatchProcess(const BatchProcess&) = delete;
    BatchProcess& operator=(const BatchProcess&) = delete;

    QProcess& process() { return m_process; }

    /// Its home, which is also where its settings are.
    const std::string& home() const { return m_home; }
    /// Sets a variable of its environment.
    void set_variable(const QString& name, const QString& value);
    /// Lets it find programs in @p folder first.
    void find_programs_in(const std::string& folder);
    /// Gives it a display; without this it has none. @param display as in DISPLAY
    void show_on(const QString& display);
    /// Starts the program. @param arguments without its name
    void start(const std::vector<std::string>& arguments);
    /// Starts another one in the same way.
    void start(const std::string& program, const std::vector<std::string>& arguments);
    /// Writes to its standard input.
    void type(const std::string& text);
    /// Closes its standard input and waits for its end. @return the exit code; -1 if it crashed
    int finish();
    /// Waits until @p text has been printed; false if the program ends without it.
    bool wait_for(const std::string& text);

    const std::string& out() const { return m_out; }
    const std::string& error() const { return m_error; }
    /// Its error log; "" if there is none.
    std::string log() const;
    /// The path of its error log.
    std::string log_file() const;

private:
    void read();

    std::string m_home;
    QProcess m_process;
    std::string m_out;
    std::string m_error;
};

/// What came of a script.
struct BatchResult
{
    int code;
    std::string out;
    std::string error;
    std::string log;
};

/// Runs a script that stands in the file "script.batch" of the scratch directory.
BatchResult run_script(const std::string& script, const std::vector<std::string>& files = {});

/// The lines of a text that begin with @p start.
std::vector<std::string> lines_with(const std::string& text, const std::string& start);

} // namespace host_test
