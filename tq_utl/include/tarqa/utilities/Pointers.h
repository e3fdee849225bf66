#pragma once

namespace tarqa::utilities {

/// True if @p pointer, plain or shared, points to nothing.
template <class Pointer>
bool null_pointer(const Pointer& pointer)
{
    return !pointer;
}

/// True if @p pointer, plain or shared, points to something.
template <class Pointer>
bool valid_pointer(const Pointer& pointer)
{
    return !null_pointer(pointer);
}

} // namespace tarqa::utilities
