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

/**
 * Says that users of a class cannot name a member of it, which is protected or private and not overloaded:
 *
 *     INTERFACE_HIDES(AbstractController, force_update);
 */
#define INTERFACE_HIDES(class_name, member)                                                                  \
    template <class T>                                                                                       \
    std::false_type INTERFACE_JOINED(hides_, __LINE__)(decltype(&T::member));                                \
    template <class T>                                                                                       \
    std::true_type INTERFACE_JOINED(hides_, __LINE__)(...);                                                  \
    static_assert(decltype(INTERFACE_JOINED(hides_, __LINE__) < class_name > (nullptr))::value,              \
        "the member is not for users")
#define INTERFACE_JOINED(first, second) INTERFACE_JOINED_AGAIN(first, second)
#define INTERFACE_JOINED_AGAIN(first, second) first##second

/// Whether anybody may delete the object of a class that has one only: the destructor, or an operation that
/// deletes it or hands it out.
template <class X, class = void>
struct DestroysItsInstance : std::false_type
{ };
template <class X>
struct DestroysItsInstance<X, decltype(X::destroy_instance(), void())> : std::true_type
{ };
template <class X, class = void>
struct HandsOutItsInstance : std::false_type
{ };
template <class X>
struct HandsOutItsInstance<X, decltype(X::get_instance(), void())> : std::true_type
{ };
template <class X>
constexpr bool is_destroyed_by_anybody
    = std::is_destructible_v<X> || DestroysItsInstance<X>::value || HandsOutItsInstance<X>::value;

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

/// A class that derives from @p Base and defines what @p Parts define, templates that derive from their
/// argument.
template <class Base, template <class> class... Parts>
struct Defined
{
    typedef Base type;
};
template <class Base, template <class> class First, template <class> class... Rest>
struct Defined<Base, First, Rest...>
{
    typedef First<typename Defined<Base, Rest...>::type> type;
};

template <std::size_t rounds, class Base, template <class> class First, template <class> class... Rest>
constexpr bool each_is_missed()
{
    if constexpr (rounds == 0) {
        return !std::is_abstract_v<typename Defined<Base, First, Rest...>::type>;
    } else {
        return std::is_abstract_v<typename Defined<Base,
                   Rest...>::type> && each_is_missed<rounds - 1, Base, Rest..., First>();
    }
}

/// Whether the operations that @p Parts define, one each, are those that @p Base leaves to others to define.
template <class Base, template <class> class... Parts>
constexpr bool are_the_pure_ones = each_is_missed<sizeof...(Parts), Base, Parts...>();

} // namespace interface
