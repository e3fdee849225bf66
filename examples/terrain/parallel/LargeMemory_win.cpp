#include "parallel/LargeMemory.h"

namespace terrain {

// Windows gives large pages only to those with a privilege of their own.
void advise_large_pages(const void*, std::size_t) { }

} // namespace terrain
