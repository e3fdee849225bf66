#pragma once

#include <cstddef>
#include <vector>

namespace terrain {

/**
 * Tells the system that much memory is about to be filled, and read here and there: it may give it in large
 * pages. Then it is asked for memory, and for where it is, hundreds of times less. Only advice: nothing is
 * different where it is not taken. @param p_memory not read
 */
void advise_large_pages(const void* p_memory, std::size_t bytes);

/// Makes room for so many elements, in large pages if they are many.
template <class Element>
void reserve_large(std::vector<Element>& elements, std::size_t count)
{
    elements.reserve(count);
    advise_large_pages(elements.data(), count * sizeof(Element));
}

} // namespace terrain
