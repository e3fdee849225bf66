#pragma once

namespace pkBase {

/// A numbered phase of the ordered destruction; lower numbers are destroyed first.
class pkDestructionPhase
{
public:
    explicit constexpr pkDestructionPhase(int number)
        : m_number(number)
    { }
    constexpr int number() const { return m_number; }

private:
    int m_number;
};

} // namespace pkBase
