#include "MessageMemory.h"

#include <QtCore/QObject>

#include <new>
#include <utility>

namespace tarqa::housekeeping::message_memory {

namespace {

/// Holds the library's own messages, but for those of the menus; with what the heap adds, a line of the
/// cache.
constexpr std::size_t s_block = 56;
constexpr unsigned s_most_spares = 16384; // a mebibyte in each thread

struct Spare
{
    Spare* p_next;
};

/// A thread's blocks for its next messages, and its messages for the next commands. Without a destructor, so
/// that the messages which others of its objects delete while the thread ends still find it.
struct Spares
{
    Spare* p_first;
    unsigned room; // for how many more
    bool was_opened;
    bool is_closed;
    QObject* p_ready[s_kinds]; // owned
};

thread_local Spares t_spares{nullptr, 0, false, false, {}};

/// Opens the thread's list, and closes it at the thread's end: what is given back later is deleted at once.
struct Keeper
{
    Keeper()
    {
        t_spares.room = s_most_spares;
        t_spares.was_opened = true;
    }
    ~Keeper()
    {
        t_spares.is_closed = true;
        for (QObject*& p_ready : t_spares.p_ready) {
            delete std::exchange(p_ready, nullptr);
        }
        t_spares.room = 0;
        while (t_spares.p_first) {
            ::operator delete(std::exchange(t_spares.p_first, t_spares.p_first->p_next));
        }
    }
};

/// The first time in a thread. @return false later: the list is full, or closed
bool opens(const Spares& spares)
{
    if (spares.was_opened) {
        return false;
    }
    static thread_local const Keeper s_keeper;
    return true;
}

} // namespace

void* take(std::size_t size)
{
    if (size > s_block) {
        return ::operator new(size);
    }
    Spares& spares = t_spares;
    if (!spares.p_first) {
        return ::operator new(s_block);
    }
    ++spares.room;
    return std::exchange(spares.p_first, spares.p_first->p_next);
}

void give_back(void* p_memory, std::size_t size) noexcept
{
    Spares& spares = t_spares;
    if (!p_memory || size > s_block || (spares.room == 0 && !opens(spares))) {
        ::operator delete(p_memory);
        return;
    }
    --spares.room;
    spares.p_first = ::new (p_memory) Spare{spares.p_first};
}

QObject* take_ready(Kind kind) noexcept
{
    return std::exchange(t_spares.p_ready[kind], nullptr);
}

bool keep_ready(Kind kind, QObject* p_message) noexcept
{
    Spares& spares = t_spares;
    if (spares.p_ready[kind] || spares.is_closed) {
        return false;
    }
    opens(spares);
    spares.p_ready[kind] = p_message;
    return true;
}

} // namespace tarqa::housekeeping::message_memory
