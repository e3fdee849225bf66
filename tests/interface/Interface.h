#pragma once

#include <cstddef>
#include <cstring>
#include <type_traits>
#include <utility>
#include <vector>

// Tools for tables of what the library offers. A table is checked when it is compiled; only the order of
// virtual operations is looked at while the tests run.

namespace interface {

/**
 * Says that a class, or a base of it, has an operation of exactly this type, as a pointer to it:
 *
 *     INTERFACE_HAS(Message::dispatch, void (*)(Message*));
 *     INTERFACE_HAS(AbstractCommand::size, unsigned long long (AbstractCommand::*)() const);
 *
 * Protected operations are named through a class that derives and has a using-declaration for them.
 */
#define INTERFACE_HAS(operation, ...)                                                                        \
    static_assert(std::is_same_v<decltype(static_cast<__VA_ARGS__>(&operation)), __VA_ARGS__>,               \
        "the operation is there")

/// The place of a virtual operation in the table of its class, in the C++ ABI that gcc and clang share: a
/// pointer to one holds the distance of its entry from the beginning of the table, in bytes, and one more.
template <class Operation>
std::size_t slot_of(Operation operation)
{
    static_assert(std::is_member_function_pointer_v<Operation>, "only operations have a place");
    std::ptrdiff_t words[2];
    static_assert(sizeof words == sizeof operation, "the representation is known");
    std::memcpy(words, &operation, sizeof words);
    return words[0] % 2 == 1 ? static_cast<std::size_t>(words[0] - 1) / sizeof(void*) : ~std::size_t(0);
}

/// Whether all are virtual, and each one directly follows the one before, in the order of the arguments.
template <class... Operations>
bool in_a_row(Operations... operations)
{
    const std::vector<std::size_t> slots{slot_of(operations)...};
    for (std::size_t i = 0; i < slots.size(); ++i) {
        if (slots[i] == ~std::size_t(0) || slots[i] != slots[0] + i) {
            return false;
        }
    }
    return true;
}

} // namespace interface
