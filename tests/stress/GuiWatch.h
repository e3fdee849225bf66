#pragma once

#include "Waits.h"
#include "WorkerCommand.h"

#include <QtCore/QEventLoop>
#include <QtCore/QObject>
#include <QtCore/QTimer>

#include <functional>
#include <vector>

namespace load {

/// The heart of the main thread's event loop: beats every millisecond, makes calls at each beat, and measures
/// how long it had to wait for its next beat, and each call.
class GuiWatch : public QObject
{
    Q_OBJECT

public:
    explicit GuiWatch(const std::vector<GuiCall>& calls);

    /// Runs the event loop until @p finished.
    void run_until(const std::function<bool()>& finished);

    /// From the end of a beat to that of the next one.
    const Waits& waits() const { return m_waits; }
    /// By call, in their order.
    const std::vector<Waits>& waits_of_calls() const { return m_waits_of_calls; }

private slots:
    void beat();

private:
    std::vector<GuiCall> m_calls;
    std::vector<Waits> m_waits_of_calls;
    Waits m_waits;
    QTimer m_timer;
    QEventLoop m_loop;
    std::function<bool()> m_finished;
    Clock::time_point m_last;
    double m_last_for_processor = 0;
};

} // namespace load
