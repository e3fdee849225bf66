#pragma once

#include <cstddef>

namespace tarqa::housekeeping::message_memory {

// The memory of messages. Every command makes several, each for a moment only.

/// @return memory for @p size bytes, aligned for every type without a greater need of its own.
/// @throw std::bad_alloc
void* take(std::size_t size);

/// Gives back what take() returned for the same @p size, in any thread, also in one that is about to end.
/// Null is allowed.
void give_back(void* p_memory, std::size_t size) noexcept;

} // namespace tarqa::housekeeping::message_memory
