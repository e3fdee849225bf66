#include "Victim.h"

#include "Home.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <stdexcept>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kills {

namespace {

[[noreturn]] void run_program(const HostOptions& options)
{
    std::vector<std::string> words{HK_KILLS_PROBE};
    for (const int descriptor : {options.to_parent, options.from_parent, options.gate}) {
        words.push_back(std::to_string(descriptor));
        if (descriptor >= 0) {
            ::fcntl(descriptor, F_SETFD, 0); // survives the start of the program
        }
    }
    words.insert(words.end(),
        {options.documents, options.outside, std::to_string(options.steps), std::to_string(options.first),
            options.stores ? "1" : "0", options.waits ? "1" : "0", options.claims_first ? "1" : "0"});
    std::vector<char*> argv;
    for (std::string& word : words) {
        argv.push_back(word.data());
    }
    argv.push_back(nullptr);
    ::execv(argv.front(), argv.data());
    ::_exit(127);
}

} // namespace

Victim::Victim(const Home& home, HostOptions options, Launch launch)
{
    std::array<int, 2> up;
    std::array<int, 2> down;
    if (::pipe2(up.data(), O_CLOEXEC) != 0 || ::pipe2(down.data(), O_CLOEXEC) != 0) {
        throw std::runtime_error("no pipes");
    }
    m_id = ::fork();
    if (m_id < 0) {
        throw std::runtime_error("no child process");
    }
    if (m_id == 0) {
        ::close(up[0]);
        ::close(down[1]);
        options.to_parent = up[1];
        options.from_parent = down[0];
        home.enter();
        if (launch == Launch::Program) {
            run_program(options);
        }
        live(options);
    }
    ::close(up[1]);
    ::close(down[0]);
    m_from_child = up[0];
    m_to_child = down[1];
}

Victim::~Victim()
{
    if (!m_ended) {
        kill();
    }
    ::close(m_from_child);
    ::close(m_to_child);
}

bool Victim::read_note()
{
    Note note{};
    ssize_t count = 0;
    do {
        count = ::read(m_from_child, &note, sizeof note);
    } while (count < 0 && errno == EINTR);
    if (count != static_cast<ssize_t>(sizeof note)) {
        return false;
    }
    m_notes.push_back(note);
    return true;
}

bool Victim::read_until(Kind kind)
{
    while (read_note()) {
        if (m_notes.back().kind == kind) {
            return true;
        }
    }
    return false;
}

void Victim::tell(char what)
{
    while (::write(m_to_child, &what, 1) < 0 && errno == EINTR) { }
}

void Victim::kill_and_go_on() const
{
    ::kill(m_id, SIGKILL);
}

void Victim::kill()
{
    kill_and_go_on();
    wait();
    while (read_note()) { }
}

bool Victim::wait_for_end()
{
    while (read_note()) { }
    const int status = wait();
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

std::optional<std::uint32_t> Victim::last(Kind kind) const
{
    for (auto note = m_notes.rbegin(); note != m_notes.rend(); ++note) {
        if (note->kind == kind) {
            return note->number;
        }
    }
    return std::nullopt;
}

int Victim::wait()
{
    int status = 0;
    while (::waitpid(m_id, &status, 0) < 0 && errno == EINTR) { }
    m_ended = true;
    return status;
}

void spin(long long nanoseconds)
{
    typedef std::chrono::steady_clock Clock;
    const Clock::time_point end = Clock::now() + std::chrono::nanoseconds(nanoseconds);
    while (Clock::now() < end) { }
}

} // namespace kills
