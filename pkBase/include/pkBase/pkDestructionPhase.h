#pragma once

namespace pkBase {

/// A numbered phase of the ordered destruction; lower numbers are destroyed first. A plain
/// value, usable in constant expressions.
class pkDestructionPhase
{
public:
    /// @param number any; the libraries use 1 to 7, see pkDestructor
    explicit constexpr pkDestructionPhase(int number)
        : m_number(number)
    { }
    /// The number that it was made with.
    constexpr int number() const { return m_number; }

private:
    int m_number;
};

} // namespace pkBase
