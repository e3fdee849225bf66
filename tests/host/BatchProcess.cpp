#include "BatchProcess.h"

#include "RasterFiles.h"

#include <filesystem>
#include <sstream>

namespace host_test {

namespace {

namespace fs = std::filesystem;

const int s_patience = 180000; ///< milliseconds, for a machine that is very busy

std::string fresh_home()
{
    static int s_homes = 0;
    return make_directory("home" + std::to_string(++s_homes));
}

} // namespace

BatchProcess::BatchProcess()
    : m_home(fresh_home())
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("HOME", QString::fromStdString(m_home));
    environment.insert("XDG_CONFIG_HOME", QString::fromStdString(m_home));
    environment.remove("DISPLAY");
    environment.remove("WAYLAND_DISPLAY");
    environment.remove("QT_QPA_PLATFORM");
    m_process.setProcessEnvironment(environment);
}

BatchProcess::~BatchProcess()
{
    if (m_process.state() != QProcess::NotRunning) {
        m_process.kill();
        m_process.waitForFinished(s_patience);
    }
}

void BatchProcess::find_programs_in(const std::string& folder)
{
    QProcessEnvironment environment = m_process.processEnvironment();
    environment.insert("PATH", QString::fromStdString(folder) + ':' + environment.value("PATH"));
    m_process.setProcessEnvironment(environment);
}

void BatchProcess::set_variable(const QString& name, const QString& value)
{
    QProcessEnvironment environment = m_process.processEnvironment();
    environment.insert(name, value);
    m_process.setProcessEnvironment(environment);
}

void BatchProcess::show_on(const QString& display)
{
    set_variable("DISPLAY", display);
}

void BatchProcess::start(const std::vector<std::string>& arguments)
{
    start(TARQ_TERRAIN, arguments);
}

void BatchProcess::start(const std::string& program, const std::vector<std::string>& arguments)
{
    QStringList list;
    for (const std::string& argument : arguments) {
        list.append(QString::fromStdString(argument));
    }
    m_process.start(QString::fromStdString(program), list);
    m_process.waitForStarted(s_patience);
}

void BatchProcess::type(const std::string& text)
{
    m_process.write(text.data(), static_cast<qint64>(text.size()));
    m_process.waitForBytesWritten(s_patience);
}

int BatchProcess::finish()
{
    m_process.closeWriteChannel();
    const bool finished = m_process.state() == QProcess::NotRunning || m_process.waitForFinished(s_patience);
    read();
    return finished && m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}

bool BatchProcess::wait_for(const std::string& text)
{
    read();
    while (m_out.find(text) == std::string::npos && m_process.waitForReadyRead(s_patience)) {
        read();
    }
    return m_out.find(text) != std::string::npos;
}

std::string BatchProcess::log() const
{
    return read_text(log_file());
}

std::string BatchProcess::log_file() const
{
    return m_home + "/tarqa/TarqTerrain_1.log";
}

void BatchProcess::read()
{
    m_out += m_process.readAllStandardOutput().toStdString();
    m_error += m_process.readAllStandardError().toStdString();
}

BatchResult run_script(const std::string& script, const std::vector<std::string>& files)
{
    write_text(scratch("script.batch"), script);
    std::vector<std::string> arguments = {"--batch", scratch("script.batch")};
    arguments.insert(arguments.end(), files.begin(), files.end());
    BatchProcess batch;
    batch.start(arguments);
    const int code = batch.finish();
    return {code, batch.out(), batch.error(), batch.log()};
}

std::vector<std::string> lines_with(const std::string& text, const std::string& start)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        if (line.rfind(start, 0) == 0) {
            lines.push_back(line);
        }
    }
    return lines;
}

} // namespace host_test
