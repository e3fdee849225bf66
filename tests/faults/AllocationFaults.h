#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace faults {

/**
 * Counts the allocations of this thread that the product's own libraries ask for while it lives, and lets one
 * of them fail with std::bad_alloc. Whoever calls operator new is the innermost function on the stack that is
 * not the C++ library's; what Qt asks for, and what the test program itself asks for, is not looked at.
 *
 * One at a time. Works in a program that links this, which has an operator new of its own.
 */
class AllocationFaults
{
public:
    /// Only counts.
    AllocationFaults();
    /// @param at which of the allocations fails, counted from 0
    explicit AllocationFaults(std::size_t at);
    ~AllocationFaults();
    AllocationFaults(const AllocationFaults&) = delete;
    AllocationFaults& operator=(const AllocationFaults&) = delete;

    bool has_failed() const;
    /// Allocations of this thread that were not looked at.
    std::size_t passed_over() const;
    /// The stack at the failure, for messages.
    std::string place() const;
};

/**
 * Runs one scenario once for each allocation in it, which fails, always from the same beginning; ends with
 * the first round in which all were had. Prints the line that FaultRounds prints.
 */
class AllocationRounds
{
public:
    explicit AllocationRounds(const std::string& name);

    std::function<void()> prepare = [] {};
    std::function<void()> act = [] {}; ///< std::bad_alloc may leave it
    /// Looks at what is left. @param threw whether std::bad_alloc left act()
    std::function<void(bool threw)> check = [](bool) {};

    void run();

private:
    bool run_one(std::size_t number);

    std::string m_name;
    std::size_t m_rounds = 0;
    std::size_t m_survived = 0;
    std::size_t m_passed_over = 0;
};

} // namespace faults
