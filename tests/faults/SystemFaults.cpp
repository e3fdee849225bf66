#include "faults/SystemFaults.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <unistd.h>

namespace faults {

namespace {

constexpr std::size_t s_most_points = 8192;
constexpr std::size_t s_kept_of_path = 96;
constexpr std::size_t s_longest_path = 4096;

struct Seen
{
    Call call;
    char path[s_kept_of_path];
};

// Plain memory, since the calls may come from a signal handler.
std::atomic<bool> s_active{false};
char s_part[s_longest_path];
bool s_only_counts = true;
std::size_t s_at = 0;
Fault s_fault;
std::atomic<std::size_t> s_calls{0};
std::atomic<std::size_t> s_failures{0};
Seen s_seen[s_most_points];

/// @return its number
std::size_t note(Call call, const char* path)
{
    const std::size_t number = s_calls++;
    if (number < s_most_points) {
        Seen& seen = s_seen[number];
        const std::size_t length = std::strlen(path);
        seen.call = call;
        std::strncpy(seen.path, path + (length < s_kept_of_path ? 0 : length + 1 - s_kept_of_path),
            s_kept_of_path - 1);
        seen.path[s_kept_of_path - 1] = '\0';
    }
    return number;
}

void begin(const std::string& path_part)
{
    if (s_active || path_part.size() >= sizeof s_part) {
        std::fputs("one SystemFaults at a time\n", stderr);
        std::_Exit(2);
    }
    std::strcpy(s_part, path_part.c_str());
    s_calls = 0;
    s_failures = 0;
    std::memset(s_seen, 0, sizeof s_seen);
}

bool is_lasting(Manner manner)
{
    return manner == Manner::FromThenOn || manner == Manner::ShortThenError;
}

bool is_short(Manner manner)
{
    return manner == Manner::Short || manner == Manner::ShortThenError;
}

bool has_bytes(Call call)
{
    return call == Call::Read || call == Call::Write;
}

bool gives_error(Call call, int error)
{
    switch (error) {
    case ENOSPC:
        return call == Call::Open || call == Call::Write || call == Call::Flush || call == Call::Truncate
            || call == Call::Rename || call == Call::MakeDirectory;
    case EMFILE:
        return call == Call::Open;
    case EACCES:
        return call == Call::Open || call == Call::Rename || call == Call::Remove
            || call == Call::MakeDirectory;
    case EINTR:
        return has_bytes(call) || call == Call::Close || call == Call::Lock;
    case ENOLCK:
        return call == Call::Lock;
    case EIO:
        return call != Call::Lock;
    default:
        return false;
    }
}

const char* name_of(int error)
{
    switch (error) {
    case ENOSPC:
        return "ENOSPC";
    case EMFILE:
        return "EMFILE";
    case EACCES:
        return "EACCES";
    case EINTR:
        return "EINTR";
    case ENOLCK:
        return "ENOLCK";
    case EIO:
        return "EIO";
    default:
        return "?";
    }
}

} // namespace

bool is_possible(Call call, const Fault& fault)
{
    switch (fault.manner) {
    case Manner::Short:
        return has_bytes(call);
    case Manner::ShortThenError:
        return call == Call::Write && gives_error(call, fault.error);
    case Manner::FromThenOn: // nobody is interrupted for ever
        return fault.error != EINTR && gives_error(call, fault.error);
    case Manner::Once:
        return gives_error(call, fault.error);
    }
    return false;
}

std::string text(const Fault& fault)
{
    switch (fault.manner) {
    case Manner::Once:
        return std::string(name_of(fault.error)) + " once";
    case Manner::FromThenOn:
        return std::string(name_of(fault.error)) + " from then on";
    case Manner::Short:
        return "cut short";
    case Manner::ShortThenError:
        return std::string("cut short, then ") + name_of(fault.error);
    }
    return "?";
}

std::string text(const SystemFaults::Point& point)
{
    static const char* const s_names[]
        = {"open", "read", "write", "close", "flush", "truncate", "rename", "remove", "mkdir", "lock"};
    return std::string(s_names[static_cast<std::size_t>(point.call)]) + " of "
        + point.path.substr(point.path.rfind('/') + 1);
}

SystemFaults::SystemFaults(const std::string& path_part)
{
    begin(path_part);
    s_only_counts = true;
    s_active = true;
}

SystemFaults::SystemFaults(const std::string& path_part, std::size_t at, const Fault& fault)
{
    begin(path_part);
    s_only_counts = false;
    s_at = at;
    s_fault = fault;
    s_active = true;
}

SystemFaults::~SystemFaults()
{
    s_active = false;
}

std::vector<SystemFaults::Point> SystemFaults::points() const
{
    std::vector<Point> points;
    const std::size_t count = std::min(s_calls.load(), s_most_points);
    points.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        points.push_back({s_seen[i].call, s_seen[i].path});
    }
    return points;
}

std::size_t SystemFaults::failures() const
{
    return s_failures;
}

Verdict judge(Call call, const char* path, std::size_t bytes)
{
    const Verdict pass{0, bytes};
    if (!s_active || !path || !std::strstr(path, s_part)) {
        return pass;
    }
    const std::size_t number = note(call, path);
    const bool is_it = number == s_at;
    const bool is_later = number > s_at && is_lasting(s_fault.manner);
    if (s_only_counts || !(is_it || is_later)) {
        return pass;
    }
    if (is_it && is_short(s_fault.manner)) {
        ++s_failures;
        return {0, bytes > 1 ? bytes / 2 : bytes};
    }
    // A disk that is full still lets a file be renamed.
    const bool is_spared = is_later && s_fault.error == ENOSPC && call == Call::Rename;
    if (is_spared || !gives_error(call, s_fault.error)) {
        return pass;
    }
    ++s_failures;
    return {s_fault.error, 0};
}

Verdict judge(Call call, int descriptor, std::size_t bytes)
{
    if (!s_active) {
        return {0, bytes};
    }
    const int error = errno;
    char link[64] = "/proc/self/fd/";
    char digits[16];
    std::size_t count = 0;
    unsigned int rest = static_cast<unsigned int>(descriptor);
    do {
        digits[count++] = static_cast<char>('0' + rest % 10);
        rest /= 10;
    } while (rest > 0 && count < sizeof digits);
    char* p_end = link + std::strlen(link);
    while (count > 0) {
        *p_end++ = digits[--count];
    }
    *p_end = '\0';
    char path[s_longest_path];
    const ssize_t length = ::readlink(link, path, sizeof path - 1);
    errno = error;
    if (length < 0) {
        return {0, bytes};
    }
    path[length] = '\0';
    return judge(call, path, bytes);
}

} // namespace faults
