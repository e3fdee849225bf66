#include "faults/AllocationFaults.h"

#include "faults/FaultRounds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <new>

#include <dlfcn.h>
#include <execinfo.h>
#include <link.h>
#include <pthread.h>

namespace faults {

namespace {

constexpr int s_deepest = 24;
constexpr std::size_t s_most_ranges = 64;
constexpr std::size_t s_most_rounds = 2000;
constexpr std::size_t s_most_failing_rounds = 10;

/// Code of a library.
struct Range
{
    std::uintptr_t begin;
    std::uintptr_t end;
    bool is_ours; // else it is the C++ library's
};

std::atomic<bool> s_active{false};
pthread_t s_thread;
bool s_only_counts = true;
std::size_t s_at = 0;
std::size_t s_count = 0;
std::size_t s_passed_over = 0;
bool s_failed = false;
bool s_looking = false; // the look itself may allocate
void* s_place[s_deepest];
int s_depth = 0;
Range s_ranges[s_most_ranges];
std::size_t s_range_count = 0;

int note_library(dl_phdr_info* p_info, std::size_t, void*)
{
    static const char* const s_ours[] = {"/libtq_hk.so", "/libtq_utl.so", "/libpkBase.so", "/libpkBaseQt.so"};
    bool ours = false;
    for (const char* const name : s_ours) {
        ours = ours || std::strstr(p_info->dlpi_name, name);
    }
    if (!ours && !std::strstr(p_info->dlpi_name, "/libstdc++.so")) {
        return 0;
    }
    for (int i = 0; i < p_info->dlpi_phnum && s_range_count < s_most_ranges; ++i) {
        const auto& part = p_info->dlpi_phdr[i];
        if (part.p_type == PT_LOAD && (part.p_flags & PF_X) != 0) {
            const std::uintptr_t begin = p_info->dlpi_addr + part.p_vaddr;
            s_ranges[s_range_count++] = {begin, begin + part.p_memsz, ours};
        }
    }
    return 0;
}

const Range* range_of(const void* p_code)
{
    const auto place = reinterpret_cast<std::uintptr_t>(p_code);
    for (std::size_t i = 0; i < s_range_count; ++i) {
        if (place >= s_ranges[i].begin && place < s_ranges[i].end) {
            return &s_ranges[i];
        }
    }
    return nullptr;
}

/// Whether our libraries ask. @param p_caller where operator new returns to
bool asked_by_us(const void* p_caller)
{
    s_depth = backtrace(s_place, s_deepest);
    const auto first = std::find(s_place, s_place + s_depth, p_caller) - s_place;
    for (auto i = first; i < s_depth; ++i) {
        const Range* const p_range = range_of(s_place[i]);
        if (!p_range || p_range->is_ours) {
            return p_range != nullptr;
        }
    }
    return false;
}

bool must_fail(const void* p_caller)
{
    if (s_looking || !pthread_equal(pthread_self(), s_thread) || s_failed) {
        return false;
    }
    s_looking = true;
    const bool looked_at = asked_by_us(p_caller);
    s_looking = false;
    if (!looked_at) {
        ++s_passed_over;
        return false;
    }
    s_failed = s_count++ == s_at && !s_only_counts;
    return s_failed;
}

void begin(bool only_counts, std::size_t at)
{
    if (s_active) {
        std::fputs("one AllocationFaults at a time\n", stderr);
        std::_Exit(2);
    }
    s_range_count = 0;
    dl_iterate_phdr(&note_library, nullptr);
    void* place[1];
    backtrace(place, 1); // loads what it needs
    s_thread = pthread_self();
    s_only_counts = only_counts;
    s_at = at;
    s_count = 0;
    s_passed_over = 0;
    s_failed = false;
    s_active = true;
}

} // namespace

/// Behind every operator new of this program.
void* allocate(std::size_t size, const void* p_caller)
{
    if (s_active && must_fail(p_caller)) {
        throw std::bad_alloc();
    }
    void* const p_memory = std::malloc(size == 0 ? 1 : size);
    if (!p_memory) {
        throw std::bad_alloc();
    }
    return p_memory;
}

AllocationFaults::AllocationFaults()
{
    begin(true, 0);
}

AllocationFaults::AllocationFaults(std::size_t at)
{
    begin(false, at);
}

AllocationFaults::~AllocationFaults()
{
    s_active = false;
}

bool AllocationFaults::has_failed() const
{
    return s_failed;
}

std::size_t AllocationFaults::passed_over() const
{
    return s_passed_over;
}

std::string AllocationFaults::place() const
{
    std::string text;
    for (int i = 0; s_failed && i < s_depth; ++i) {
        Dl_info info = {};
        if (!dladdr(s_place[i], &info) || !info.dli_fname) {
            continue;
        }
        const std::string file = info.dli_fname;
        const auto offset
            = reinterpret_cast<std::uintptr_t>(s_place[i]) - reinterpret_cast<std::uintptr_t>(info.dli_fbase);
        char number[32];
        std::snprintf(number, sizeof number, "+0x%zx", static_cast<std::size_t>(offset));
        text += "\n  " + file.substr(file.rfind('/') + 1) + number + ' '
            + (info.dli_sname ? info.dli_sname : "");
    }
    return text;
}

AllocationRounds::AllocationRounds(const std::string& name)
    : m_name(name)
{ }

/// @return whether there was an allocation of this number
bool AllocationRounds::run_one(std::size_t number)
{
    prepare();
    const int failed_before = failed_checks();
    bool threw = false;
    bool failed = false;
    std::string place;
    {
        const AllocationFaults faults(number);
        try {
            act();
        } catch (const std::bad_alloc&) {
            threw = true;
        }
        failed = faults.has_failed();
        place = faults.place();
        m_passed_over = faults.passed_over();
    }
    SCOPED_TRACE(m_name + ", allocation " + std::to_string(number) + (threw ? ", threw" : "") + place);
    check(threw);
    EXPECT_TRUE(failed || !threw);
    if (failed) {
        ++m_rounds;
        m_survived += failed_checks() == failed_before ? 1 : 0;
    }
    return failed;
}

void AllocationRounds::run()
{
    prepare();
    act(); // what is made only once, is
    check(false);
    std::size_t number = 0;
    while (number < s_most_rounds && m_rounds - m_survived < s_most_failing_rounds && run_one(number)) {
        ++number;
    }
    EXPECT_GT(m_rounds, 0u) << m_name << ": no allocation was seen";
    report_fault_count(m_name, m_rounds, m_rounds, m_survived);
    std::cout << "FaultCount " << m_name << ": " << m_passed_over << " allocations of others passed over"
              << std::endl;
}

} // namespace faults

// All forms for one object and for arrays end here. What is allocated with the C library is freed with it.

void* operator new(std::size_t size)
{
    return faults::allocate(size, __builtin_return_address(0));
}

void operator delete(void* p_memory) noexcept
{
    std::free(p_memory);
}

void operator delete(void* p_memory, std::size_t) noexcept
{
    std::free(p_memory);
}
