#pragma once

#include <pkBase/AbstractProgress.h>

#include <condition_variable>
#include <mutex>

namespace terrain {

/// A progress sink that holds a run up half-way while it is closed, so that there is time to look at it. It
/// is open at first. Any thread.
class Gate : public pkBase::AbstractProgress
{
public:
    /// @param percentage where the run is held up
    explicit Gate(unsigned int percentage);

    void close();
    /// Lets a run go on that waits, and those to come.
    void open();
    /// Whether a run waits.
    bool holds() const;

    void open_run(unsigned int start) override;
    void set_percentage(unsigned int percentage) override;
    void set_text(const QString& text) override;
    void close_run() override;

private:
    const unsigned int m_percentage;
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_closed = false; // guarded by m_mutex
    bool m_holds = false; // guarded by m_mutex
};

} // namespace terrain
