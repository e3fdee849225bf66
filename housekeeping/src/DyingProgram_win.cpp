#include "DyingProgram.h"

#include "WordsWriter.h"

#include <QtCore/QString>

#include <atomic>
#include <csignal>
#include <cstdint>
#include <cstring>

#include <windows.h>

namespace tarqa::housekeeping::dying_program {

namespace {

const std::size_t s_text_length = 1024;
const ULONG s_longest_trace = 62; // what the system allows at most
const ULONG s_stack_guarantee = 64 * 1024;

wchar_t s_file[MAX_PATH];
char s_head[s_text_length];
LPTOP_LEVEL_EXCEPTION_FILTER s_before = nullptr;
std::atomic<long> s_dying_thread{0};
const DWORD s_main_thread = GetCurrentThreadId(); // it loads the library

void write(std::intptr_t handle, const char* bytes, std::size_t count)
{
    DWORD written = 0;
    WriteFile(reinterpret_cast<HANDLE>(handle), bytes, static_cast<DWORD>(count), &written, nullptr);
}

void write_words(HANDLE file, DWORD code, void* const* trace, unsigned int depth)
{
    WordsWriter writer(&write, reinterpret_cast<std::intptr_t>(file));
    writer << s_head << "Exception: ";
    writer.hexadecimal(code);
    writer << "\nProcess: " << static_cast<unsigned long long>(GetCurrentProcessId()) << ", thread "
           << static_cast<unsigned long long>(this_thread()) << "\n";
    writer.running_commands(s_dying_thread);
    writer << "Stack, the innermost function first:\n";
    for (unsigned int i = 0; i < depth; ++i) {
        writer.hexadecimal(reinterpret_cast<std::uintptr_t>(trace[i]));
        writer << "\n";
    }
    writer << "\n";
}

void say_once(DWORD code)
{
    long nobody = 0;
    if (!s_dying_thread.compare_exchange_strong(nobody, this_thread())) {
        return;
    }
    void* trace[s_longest_trace];
    const unsigned int depth = CaptureStackBackTrace(0, s_longest_trace, trace, nullptr);
    write_words(GetStdHandle(STD_ERROR_HANDLE), code, trace, depth);
    const HANDLE file = CreateFileW(
        s_file, FILE_APPEND_DATA, FILE_SHARE_READ, nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file != INVALID_HANDLE_VALUE) {
        write_words(file, code, trace, depth);
        CloseHandle(file);
    }
}

LONG WINAPI last_words(EXCEPTION_POINTERS* p_exception)
{
    say_once(p_exception->ExceptionRecord->ExceptionCode);
    return s_before ? s_before(p_exception) : EXCEPTION_CONTINUE_SEARCH;
}

void aborting(int)
{
    say_once(0); // the signal is back to its default: abort() goes on to end the program
}

} // namespace

bool listen(const std::string& file, const std::string& head)
{
    const std::wstring path = QString::fromStdString(file).toStdWString();
    if (path.size() >= MAX_PATH) {
        return false;
    }
    std::wcscpy(s_file, path.c_str());
    std::strncpy(s_head, head.c_str(), sizeof s_head - 1);
    prepare_thread();
    s_before = SetUnhandledExceptionFilter(&last_words);
    return std::signal(SIGABRT, &aborting) != SIG_ERR; // which std::terminate() and qFatal() raise
}

void prepare_thread()
{
    ULONG size = s_stack_guarantee;
    SetThreadStackGuarantee(&size);
}

long this_thread()
{
    return static_cast<long>(GetCurrentThreadId());
}

bool is_main_thread()
{
    return GetCurrentThreadId() == s_main_thread;
}

} // namespace tarqa::housekeeping::dying_program
