#include "HeapCount.h"

#include <malloc.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<bool> s_counts{false};
std::atomic<long long> s_taken{0}; ///< bytes; below 0 if what was taken before is given back
std::atomic<long long> s_peak{0};

void count(long long bytes)
{
    const long long taken = s_taken += bytes;
    long long peak = s_peak;
    while (peak < taken && !s_peak.compare_exchange_weak(peak, taken)) { }
}

void* take(std::size_t size)
{
    void* const p_memory = std::malloc(std::max<std::size_t>(size, 1));
    if (!p_memory) {
        throw std::bad_alloc();
    }
    if (s_counts) {
        count(static_cast<long long>(malloc_usable_size(p_memory)));
    }
    return p_memory;
}

void give_back(void* p_memory) noexcept
{
    if (p_memory && s_counts) {
        count(-static_cast<long long>(malloc_usable_size(p_memory)));
    }
    std::free(p_memory);
}

} // namespace

HeapCount::HeapCount()
{
    s_taken = 0;
    s_peak = 0;
    s_counts = true;
}

HeapCount::~HeapCount()
{
    s_counts = false;
}

std::size_t HeapCount::peak() const
{
    return static_cast<std::size_t>(s_peak);
}

long long HeapCount::held() const
{
    return s_taken;
}

// The other forms call these.
void* operator new(std::size_t size)
{
    return take(size);
}

void operator delete(void* p_memory) noexcept
{
    give_back(p_memory);
}

void operator delete(void* p_memory, std::size_t) noexcept
{
    give_back(p_memory);
}
