#pragma once

#include <cstddef>

class QObject;

namespace tarqa::housekeeping::message_memory {

// The memory of messages. Every command makes several, each for a moment only.

/// @return memory for @p size bytes, aligned for every type without a greater need of its own.
/// @throw std::bad_alloc
void* take(std::size_t size);

/// Gives back what take() returned for the same @p size, in any thread, also in one that is about to end.
/// Null is allowed.
void give_back(void* p_memory, std::size_t size) noexcept;

// The messages that every command sends are kept whole, one of each kind in a thread; see ReadyMessage.

enum Kind
{
    DocumentChange,
    HistoryChange,
    RunOfCommand,
    s_kinds ///< how many there are
};

/// @return the thread's message of that kind, to be kept again or deleted; null if it has none
QObject* take_ready(Kind kind) noexcept;

/// Keeps a message for the thread's next take_ready(), and deletes it at the thread's end.
/// @return false if there is one already, or if the thread is about to end: the caller deletes it then
bool keep_ready(Kind kind, QObject* p_message) noexcept;

} // namespace tarqa::housekeeping::message_memory
