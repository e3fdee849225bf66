#include <tarqa/housekeeping/Updateable.h>

#include <algorithm>
#include <iterator>
#include <vector>

namespace tarqa::housekeeping {

Updateable::Updateable() = default;
Updateable::Updateable(const Updateable&) = default;
Updateable& Updateable::operator=(const Updateable&) = default;
Updateable::~Updateable() = default; // deliberately stays registered: views live until shutdown

/// Leaked, so that views of any lifetime may register.
Updateable::Registry& Updateable::registry()
{
    static Registry* const m_s_registry = new Registry;
    return *m_s_registry;
}

void Updateable::register_controller(AbstractController* p_controller)
{
    registry().insert(std::make_pair(p_controller, this));
}

bool Updateable::is_registered(const Registry::value_type& entry)
{
    const auto range = registry().equal_range(entry.first);
    return std::find(range.first, range.second, entry) != range.second;
}

void Updateable::unregister()
{
    Registry& views = registry();
    for (auto iter = views.begin(); iter != views.end();) {
        iter = iter->second == this ? views.erase(iter) : std::next(iter);
    }
}

void Updateable::update(AbstractController* p_controller)
{
    const auto range = registry().equal_range(p_controller);
    if (range.first == range.second) {
        return;
    }
    if (std::next(range.first) == range.second) {
        range.first->second->update(); // whatever it does to the registry, nobody comes after it
        return;
    }
    // A view may register another one while it updates, and may end one.
    const std::vector<Registry::value_type> snapshot(range.first, range.second);
    for (const Registry::value_type& entry : snapshot) {
        if (is_registered(entry)) {
            entry.second->update();
        }
    }
}

} // namespace tarqa::housekeeping
