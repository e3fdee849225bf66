#pragma once

#include <string>
#include <vector>

namespace support {

/// Takes the products that are registered with an abstract factory out of the way while it lives; what a test
/// registers meanwhile is forgotten after it.
template <class Factory>
class EmptyRegistry
{
public:
    EmptyRegistry() { swap(); }
    ~EmptyRegistry() { swap(); }
    EmptyRegistry(const EmptyRegistry&) = delete;
    EmptyRegistry& operator=(const EmptyRegistry&) = delete;

    /// Lists a registered product once more, which registering refuses.
    void list_again(const std::string& name) { Products::registry_str().push_back(name); }

private:
    struct Products : Factory
    {
        using Factory::registry;
        using Factory::registry_str;
    };

    void swap()
    {
        m_registry.swap(Products::registry());
        m_names.swap(Products::registry_str());
    }

    typename Factory::Registry m_registry;
    std::vector<std::string> m_names;
};

} // namespace support
