#include "support/ChildProcess.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <stdexcept>

#include <sys/wait.h>
#include <unistd.h>

namespace support {

namespace {

ssize_t read_some(int from, char* buffer, std::size_t size)
{
    ssize_t count = 0;
    do {
        count = ::read(from, buffer, size);
    } while (count < 0 && errno == EINTR);
    return count;
}

bool write_all(int to, const std::string& text)
{
    std::size_t done = 0;
    while (done < text.size()) {
        const ssize_t count = ::write(to, text.data() + done, text.size() - done);
        if (count <= 0) {
            return false;
        }
        done += static_cast<std::size_t>(count);
    }
    return true;
}

[[noreturn]] void run_child(const std::function<std::string()>& work, const std::function<void()>& end,
    int to_parent, int from_parent)
{
    std::string report;
    try {
        report = work();
    } catch (...) {
        report = "exception";
    }
    const bool sent = write_all(to_parent, report);
    ::close(to_parent);
    char nothing = 0;
    if (read_some(from_parent, &nothing, 1) == 1) { // or the parent has closed its end
        end();
    }
    ::_exit(sent ? 0 : 1);
}

} // namespace

ChildProcess::ChildProcess(const std::function<std::string()>& work, const std::function<void()>& end)
{
    std::array<int, 2> up;
    std::array<int, 2> down;
    if (::pipe(up.data()) != 0 || ::pipe(down.data()) != 0) {
        throw std::runtime_error("no pipes");
    }
    m_id = ::fork();
    if (m_id < 0) {
        throw std::runtime_error("no child process");
    }
    if (m_id == 0) {
        ::close(up[0]);
        ::close(down[1]);
        run_child(work, end, up[1], down[0]);
    }
    ::close(up[1]);
    ::close(down[0]);
    m_from_child = up[0];
    m_to_child = down[1];
}

ChildProcess::~ChildProcess()
{
    if (!m_ended) {
        kill();
    }
    ::close(m_from_child);
    ::close(m_to_child);
}

const std::string& ChildProcess::report()
{
    std::array<char, 4096> buffer;
    while (!m_reported) {
        const ssize_t count = read_some(m_from_child, buffer.data(), buffer.size());
        if (count <= 0) {
            m_reported = true;
            break;
        }
        m_report.append(buffer.data(), static_cast<std::size_t>(count));
    }
    return m_report;
}

int ChildProcess::let_go()
{
    report();
    if (::write(m_to_child, "x", 1) == 1) {
        return wait();
    }
    kill();
    return -1;
}

void ChildProcess::kill()
{
    ::kill(m_id, SIGKILL);
    wait();
}

/// @return its exit code; -1 if it was killed
int ChildProcess::wait()
{
    int status = 0;
    while (::waitpid(m_id, &status, 0) < 0 && errno == EINTR) { }
    m_ended = true;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace support
