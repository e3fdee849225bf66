#include "DyingProgram.h"

#include "OwnFile_unix.h"
#include "WordsWriter.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <exception>
#include <memory>
#include <typeinfo>

#include <cxxabi.h>
#include <execinfo.h>
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

// What happens in a dying program calls nothing but functions that POSIX lists as safe in signal handlers,
// and backtrace() and backtrace_symbols_fd(), which allocate nothing once their library is loaded (see their
// manual page).

namespace tarqa::housekeeping::dying_program {

namespace {

struct FatalSignal
{
    int number;
    const char* name;
};

const FatalSignal s_signals[] = {{SIGSEGV, "SIGSEGV"}, {SIGBUS, "SIGBUS"}, {SIGFPE, "SIGFPE"},
    {SIGILL, "SIGILL"}, {SIGABRT, "SIGABRT"}, {SIGSYS, "SIGSYS"}, {SIGTRAP, "SIGTRAP"}};
const std::size_t s_signal_count = sizeof s_signals / sizeof s_signals[0];
const std::size_t s_path_length = 4096;
const std::size_t s_text_length = 1024;
const std::size_t s_stack_size = 128 * 1024;
const int s_longest_trace = 96;

char s_file[s_path_length];
char s_head[s_text_length];
char s_exception[s_text_length]; // what std::terminate() was called for
struct sigaction s_before[s_signal_count];
std::terminate_handler s_terminate_before = nullptr;
std::atomic<long> s_dying_thread{0};

void write(std::intptr_t descriptor, const char* bytes, std::size_t left)
{
    while (left > 0) {
        const ssize_t count = ::write(static_cast<int>(descriptor), bytes, left);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count <= 0) {
            return;
        }
        bytes += count;
        left -= static_cast<std::size_t>(count);
    }
}

void write_cause(WordsWriter& writer, int number, const siginfo_t* p_info)
{
    writer << "Signal: ";
    for (const FatalSignal& fatal : s_signals) {
        if (fatal.number == number) {
            writer << fatal.name;
        }
    }
    writer << " (" << static_cast<unsigned long long>(number) << ")";
    const bool has_address = number == SIGSEGV || number == SIGBUS || number == SIGFPE || number == SIGILL;
    if (p_info && has_address && p_info->si_code > 0) {
        writer << " at address ";
        writer.hexadecimal(reinterpret_cast<std::uintptr_t>(p_info->si_addr));
    }
    writer << "\n";
    if (s_exception[0] != '\0') {
        writer << "Exception that nobody caught: " << s_exception << "\n";
    }
}

void write_words(int descriptor, int number, const siginfo_t* p_info, void* const* trace, int depth)
{
    WordsWriter writer(&write, descriptor);
    writer << s_head;
    write_cause(writer, number, p_info);
    writer << "Process: " << static_cast<unsigned long long>(::getpid()) << ", thread "
           << static_cast<unsigned long long>(this_thread())
           << (is_main_thread() ? " (the main thread)\n" : "\n");
    writer << "Seconds since 1970: " << static_cast<unsigned long long>(std::time(nullptr)) << "\n";
    writer.running_commands(s_dying_thread);
    writer << "Stack, the innermost function first:\n";
    backtrace_symbols_fd(trace, depth, descriptor);
    writer << "\n";
}

/// Everything is as if nobody had listened.
void step_back()
{
    for (std::size_t i = 0; i < s_signal_count; ++i) {
        ::sigaction(s_signals[i].number, &s_before[i], nullptr);
    }
}

extern "C" void hk_last_words(int number, siginfo_t* p_info, void*)
{
    const int error = errno;
    long nobody = 0;
    if (s_dying_thread.compare_exchange_strong(nobody, this_thread())) {
        void* trace[s_longest_trace];
        const int depth = backtrace(trace, s_longest_trace);
        write_words(STDERR_FILENO, number, p_info, trace, depth);
        const int file = open_own_file(s_file, O_WRONLY | O_CREAT | O_APPEND);
        if (file >= 0) {
            write_words(file, number, p_info, trace, depth);
            ::close(file);
        }
        step_back();
    } else if (s_dying_thread != this_thread()) {
        // Two threads die at once: the first one ends the program for both.
        for (;;) {
            ::pause();
        }
    } else {
        step_back(); // the words themselves failed: no more of them
    }
    errno = error;
    ::raise(number); // waits until the handler is left
}

void keep_exception()
{
    const std::type_info* const p_type = abi::__cxa_current_exception_type();
    if (!p_type) {
        return;
    }
    const auto append = [](const char* text) {
        const std::size_t length = std::strlen(s_exception);
        std::strncat(s_exception, text, sizeof s_exception - 1 - length);
    };
    int status = -1;
    const std::unique_ptr<char, void (*)(void*)> readable(
        abi::__cxa_demangle(p_type->name(), nullptr, nullptr, &status), &std::free);
    append(status == 0 ? readable.get() : p_type->name());
    try {
        throw;
    } catch (const std::exception& exception) {
        append(": ");
        append(exception.what());
    } catch (...) { }
}

[[noreturn]] void terminating()
{
    keep_exception();
    if (s_terminate_before) {
        s_terminate_before();
    }
    for (;;) {
        ::raise(SIGABRT);
    }
}

/// The stack that handlers of a thread run on.
class HandlerStack
{
public:
    HandlerStack()
        : m_memory(new char[s_stack_size])
    {
        stack_t before = {};
        if (::sigaltstack(nullptr, &before) != 0 || !(before.ss_flags & SS_DISABLE)) {
            return; // somebody else's
        }
        stack_t stack = {};
        stack.ss_sp = m_memory.get();
        stack.ss_size = s_stack_size;
        m_installed = ::sigaltstack(&stack, nullptr) == 0;
    }
    ~HandlerStack()
    {
        if (m_installed) {
            stack_t none = {};
            none.ss_flags = SS_DISABLE;
            ::sigaltstack(&none, nullptr);
        }
    }
    HandlerStack(const HandlerStack&) = delete;
    HandlerStack& operator=(const HandlerStack&) = delete;

private:
    std::unique_ptr<char[]> m_memory;
    bool m_installed = false;
};

} // namespace

bool listen(const std::string& file, const std::string& head)
{
    if (file.size() >= sizeof s_file) {
        return false;
    }
    std::strcpy(s_file, file.c_str());
    std::strncpy(s_head, head.c_str(), sizeof s_head - 1);
    void* trace[1];
    backtrace(trace, 1); // loads what it needs
    prepare_thread();
    s_terminate_before = std::set_terminate(&terminating);
    struct sigaction action = {};
    action.sa_sigaction = &hk_last_words;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK;
    sigemptyset(&action.sa_mask);
    for (std::size_t i = 0; i < s_signal_count; ++i) {
        ::sigaction(s_signals[i].number, &action, &s_before[i]);
    }
    return true;
}

void prepare_thread()
{
    thread_local const HandlerStack s_stack;
    static_cast<void>(s_stack);
}

long this_thread()
{
    return ::syscall(SYS_gettid);
}

bool is_main_thread()
{
    return this_thread() == ::getpid();
}

} // namespace tarqa::housekeeping::dying_program
