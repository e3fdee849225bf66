// Stands in for calls of the C library in a program of its own. The header of the C library must not bring
// checked forms of the same calls along.
#undef _FORTIFY_SOURCE

#include "faults/SystemFaults.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

namespace {

using faults::Call;
using faults::judge;
using faults::Verdict;

/// The call that would have been made without this file.
template <class Function>
Function* next(Function*& known, const char* name)
{
    if (!known) {
        known = reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
    }
    return known;
}

template <class Result>
Result failed(int error, Result result)
{
    errno = error;
    return result;
}

bool makes_files(int flags)
{
    return (flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE;
}

bool is_relative(int directory, const char* path)
{
    return directory != AT_FDCWD && path[0] != '/';
}

template <class Open>
int open_at(Open* p_open, int directory, const char* path, int flags, mode_t mode)
{
    const Verdict verdict
        = is_relative(directory, path) ? judge(Call::Open, directory) : judge(Call::Open, path);
    return verdict.error ? failed(verdict.error, -1) : p_open(directory, path, flags, mode);
}

template <class Open>
int open_it(Open* p_open, const char* path, int flags, mode_t mode)
{
    const Verdict verdict = judge(Call::Open, path);
    return verdict.error ? failed(verdict.error, -1) : p_open(path, flags, mode);
}

template <class Do>
int on_path(Call call, const char* path, Do do_it)
{
    const Verdict verdict = judge(call, path);
    return verdict.error ? failed(verdict.error, -1) : do_it();
}

template <class Do>
int on_descriptor(Call call, int descriptor, Do do_it)
{
    const Verdict verdict = judge(call, descriptor);
    return verdict.error ? failed(verdict.error, -1) : do_it();
}

template <class Do>
ssize_t on_bytes(Call call, int descriptor, std::size_t bytes, Do do_it)
{
    const Verdict verdict = judge(call, descriptor, bytes);
    return verdict.error ? failed(verdict.error, ssize_t(-1)) : do_it(verdict.allowed);
}

template <class Open>
FILE* open_stream(Open* p_open, const char* path, const char* mode)
{
    const Verdict verdict = judge(Call::Open, path);
    return verdict.error ? failed(verdict.error, static_cast<FILE*>(nullptr)) : p_open(path, mode);
}

mode_t mode_of(int flags, va_list arguments)
{
    return makes_files(flags) ? static_cast<mode_t>(va_arg(arguments, int)) : 0;
}

} // namespace

#pragma GCC visibility push(default) // the libraries must find them

extern "C" {

int open(const char* path, int flags, ...)
{
    static int (*s_next)(const char*, int, ...);
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = mode_of(flags, arguments);
    va_end(arguments);
    return open_it(next(s_next, "open"), path, flags, mode);
}

int open64(const char* path, int flags, ...)
{
    static int (*s_next)(const char*, int, ...);
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = mode_of(flags, arguments);
    va_end(arguments);
    return open_it(next(s_next, "open64"), path, flags, mode);
}

int openat(int directory, const char* path, int flags, ...)
{
    static int (*s_next)(int, const char*, int, ...);
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = mode_of(flags, arguments);
    va_end(arguments);
    return open_at(next(s_next, "openat"), directory, path, flags, mode);
}

FILE* fopen(const char* path, const char* mode)
{
    static FILE* (*s_next)(const char*, const char*);
    return open_stream(next(s_next, "fopen"), path, mode);
}

FILE* fopen64(const char* path, const char* mode)
{
    static FILE* (*s_next)(const char*, const char*);
    return open_stream(next(s_next, "fopen64"), path, mode);
}

ssize_t read(int descriptor, void* bytes, size_t count)
{
    static ssize_t (*s_next)(int, void*, size_t);
    next(s_next, "read");
    return on_bytes(Call::Read, descriptor, count,
        [&](std::size_t allowed) { return s_next(descriptor, bytes, allowed); });
}

ssize_t pread64(int descriptor, void* bytes, size_t count, off64_t place)
{
    static ssize_t (*s_next)(int, void*, size_t, off64_t);
    next(s_next, "pread64");
    return on_bytes(Call::Read, descriptor, count,
        [&](std::size_t allowed) { return s_next(descriptor, bytes, allowed, place); });
}

ssize_t write(int descriptor, const void* bytes, size_t count)
{
    static ssize_t (*s_next)(int, const void*, size_t);
    next(s_next, "write");
    return on_bytes(Call::Write, descriptor, count,
        [&](std::size_t allowed) { return s_next(descriptor, bytes, allowed); });
}

ssize_t pwrite64(int descriptor, const void* bytes, size_t count, off64_t place)
{
    static ssize_t (*s_next)(int, const void*, size_t, off64_t);
    next(s_next, "pwrite64");
    return on_bytes(Call::Write, descriptor, count,
        [&](std::size_t allowed) { return s_next(descriptor, bytes, allowed, place); });
}

ssize_t writev(int descriptor, const struct iovec* parts, int count)
{
    static ssize_t (*s_next)(int, const struct iovec*, int);
    next(s_next, "writev");
    std::size_t bytes = 0;
    for (int i = 0; i < count; ++i) {
        bytes += parts[i].iov_len;
    }
    return on_bytes(Call::Write, descriptor, bytes, [&](std::size_t allowed) {
        if (allowed == bytes || count < 1) {
            return s_next(descriptor, parts, count);
        }
        struct iovec first = parts[0]; // and nothing of the others
        first.iov_len = std::min(first.iov_len, allowed);
        return s_next(descriptor, &first, 1);
    });
}

size_t fwrite(const void* bytes, size_t size, size_t count, FILE* p_stream)
{
    static size_t (*s_next)(const void*, size_t, size_t, FILE*);
    next(s_next, "fwrite");
    const Verdict verdict = judge(Call::Write, fileno(p_stream), size * count);
    if (verdict.error) {
        return failed(verdict.error, std::size_t(0));
    }
    if (verdict.allowed == size * count || size == 0) {
        return s_next(bytes, size, count, p_stream);
    }
    return s_next(bytes, 1, verdict.allowed, p_stream) / size;
}

ssize_t sendfile(int to, int from, off_t* p_place, size_t count) noexcept
{
    static ssize_t (*s_next)(int, int, off_t*, size_t);
    next(s_next, "sendfile");
    return on_bytes(
        Call::Write, to, count, [&](std::size_t allowed) { return s_next(to, from, p_place, allowed); });
}

int close(int descriptor)
{
    static int (*s_next)(int);
    next(s_next, "close");
    const Verdict verdict = judge(Call::Close, descriptor);
    const int result = s_next(descriptor); // the descriptor is gone whatever the system says
    return verdict.error ? failed(verdict.error, -1) : result;
}

int fclose(FILE* p_stream)
{
    static int (*s_next)(FILE*);
    next(s_next, "fclose");
    const Verdict verdict = judge(Call::Close, fileno(p_stream));
    const int result = s_next(p_stream);
    return verdict.error ? failed(verdict.error, EOF) : result;
}

int fsync(int descriptor)
{
    static int (*s_next)(int);
    next(s_next, "fsync");
    return on_descriptor(Call::Flush, descriptor, [&] { return s_next(descriptor); });
}

int fdatasync(int descriptor)
{
    static int (*s_next)(int);
    next(s_next, "fdatasync");
    return on_descriptor(Call::Flush, descriptor, [&] { return s_next(descriptor); });
}

int ftruncate(int descriptor, off_t size) noexcept
{
    static int (*s_next)(int, off_t);
    next(s_next, "ftruncate");
    return on_descriptor(Call::Truncate, descriptor, [&] { return s_next(descriptor, size); });
}

int ftruncate64(int descriptor, off64_t size) noexcept
{
    static int (*s_next)(int, off64_t);
    next(s_next, "ftruncate64");
    return on_descriptor(Call::Truncate, descriptor, [&] { return s_next(descriptor, size); });
}

int rename(const char* from, const char* to) noexcept
{
    static int (*s_next)(const char*, const char*);
    next(s_next, "rename");
    return on_path(Call::Rename, to, [&] { return s_next(from, to); });
}

int renameat2(
    int from_directory, const char* from, int to_directory, const char* to, unsigned int flags) noexcept
{
    static int (*s_next)(int, const char*, int, const char*, unsigned int);
    next(s_next, "renameat2");
    return on_path(Call::Rename, to, [&] { return s_next(from_directory, from, to_directory, to, flags); });
}

int link(const char* from, const char* to) noexcept
{
    static int (*s_next)(const char*, const char*);
    next(s_next, "link");
    return on_path(Call::Rename, to, [&] { return s_next(from, to); });
}

int unlink(const char* path) noexcept
{
    static int (*s_next)(const char*);
    next(s_next, "unlink");
    return on_path(Call::Remove, path, [&] { return s_next(path); });
}

int unlinkat(int directory, const char* path, int flags) noexcept
{
    static int (*s_next)(int, const char*, int);
    next(s_next, "unlinkat");
    const auto remove = [&] { return s_next(directory, path, flags); };
    return is_relative(directory, path) ? on_descriptor(Call::Remove, directory, remove)
                                        : on_path(Call::Remove, path, remove);
}

int rmdir(const char* path) noexcept
{
    static int (*s_next)(const char*);
    next(s_next, "rmdir");
    return on_path(Call::Remove, path, [&] { return s_next(path); });
}

int mkdir(const char* path, mode_t mode) noexcept
{
    static int (*s_next)(const char*, mode_t);
    next(s_next, "mkdir");
    return on_path(Call::MakeDirectory, path, [&] { return s_next(path, mode); });
}

char* mkdtemp(char* pattern) noexcept
{
    static char* (*s_next)(char*);
    next(s_next, "mkdtemp");
    const Verdict verdict = judge(Call::MakeDirectory, pattern);
    return verdict.error ? failed(verdict.error, static_cast<char*>(nullptr)) : s_next(pattern);
}

int flock(int descriptor, int operation) noexcept
{
    static int (*s_next)(int, int);
    next(s_next, "flock");
    return on_descriptor(Call::Lock, descriptor, [&] { return s_next(descriptor, operation); });
}

} // extern "C"

#pragma GCC visibility pop

namespace {

bool is_locking(int command)
{
    return command == F_SETLK || command == F_SETLKW || command == F_OFD_SETLK || command == F_OFD_SETLKW;
}

template <class Function>
int control(Function* p_next, int descriptor, int command, void* argument)
{
    if (!is_locking(command)) {
        return p_next(descriptor, command, argument);
    }
    return on_descriptor(Call::Lock, descriptor, [&] { return p_next(descriptor, command, argument); });
}

} // namespace

#pragma GCC visibility push(default)

extern "C" {

// The third argument is a number or a pointer: on this system both are passed as a pointer is.

int fcntl(int descriptor, int command, ...)
{
    static int (*s_next)(int, int, ...);
    va_list arguments;
    va_start(arguments, command);
    void* const argument = va_arg(arguments, void*);
    va_end(arguments);
    return control(next(s_next, "fcntl"), descriptor, command, argument);
}

int fcntl64(int descriptor, int command, ...)
{
    static int (*s_next)(int, int, ...);
    va_list arguments;
    va_start(arguments, command);
    void* const argument = va_arg(arguments, void*);
    va_end(arguments);
    return control(next(s_next, "fcntl64"), descriptor, command, argument);
}

} // extern "C"

#pragma GCC visibility pop
