#pragma once

#include <vector>

namespace support {

/// Keeps an object until the process ends, for registries that refer to it. Also where a test has put the
/// registry aside, the object stays within reach, so that it does not count as leaked.
template <class T>
T& kept(T* p_object)
{
    static std::vector<T*>* const s_p_objects = new std::vector<T*>;
    s_p_objects->push_back(p_object);
    return *p_object;
}

} // namespace support
