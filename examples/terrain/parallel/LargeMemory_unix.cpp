#include "parallel/LargeMemory.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>

namespace terrain {

namespace {

const std::size_t s_worth_it = std::size_t(1) << 23; ///< bytes: some of the usual large pages

} // namespace

void advise_large_pages(const void* p_memory, std::size_t bytes)
{
#ifdef MADV_HUGEPAGE // Linux has it
    if (bytes < s_worth_it) {
        return;
    }
    // Whole pages only, or what lies beside would get the same.
    const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
    const auto begin = reinterpret_cast<std::uintptr_t>(p_memory);
    const std::uintptr_t first = (begin + page - 1) / page * page;
    const std::uintptr_t end = (begin + bytes) / page * page;
    madvise(reinterpret_cast<void*>(first), end - first, MADV_HUGEPAGE); // or not
#else
    static_cast<void>(p_memory);
    static_cast<void>(bytes);
#endif
}

} // namespace terrain
