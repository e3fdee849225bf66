#pragma once

#include <cstddef>

/**
 * Counts what is taken from the heap by operator new, and given back, while the object lives. One at a time;
 * any thread may take and give meanwhile.
 *
 * The program has an operator new of its own for that, which takes its memory from malloc() as the usual one
 * does and asks that how much it gave. What a library takes from malloc() itself is not counted: of the cells
 * of rasters and of what commands keep of them there is nothing like that.
 */
class HeapCount
{
public:
    HeapCount();
    ~HeapCount();
    HeapCount(const HeapCount&) = delete;
    HeapCount& operator=(const HeapCount&) = delete;

    /// The most bytes that were taken at a time, beyond those at the beginning.
    std::size_t peak() const;
    /// The bytes that are taken now, beyond those at the beginning; below 0 if there are fewer.
    long long held() const;
};
