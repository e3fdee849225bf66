#pragma once

#include <memory>

namespace tarqa::housekeeping {

class QTarqaApplication;

/// Listens to the operating system for the machine going to sleep and waking up, as long as it lives. Where
/// the system tells nothing, nothing happens and nothing is said. Main thread.
class PowerEvents
{
public:
    /// @param application outlives the object
    explicit PowerEvents(QTarqaApplication& application);
    ~PowerEvents();
    PowerEvents(const PowerEvents&) = delete;
    PowerEvents& operator=(const PowerEvents&) = delete;

private:
    class Listener;

    std::unique_ptr<Listener> m_listener;
};

} // namespace tarqa::housekeeping
