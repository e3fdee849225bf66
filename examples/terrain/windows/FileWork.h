#pragma once

#include "io/FileProgress.h"

#include <QtCore/QObject>
#include <QtCore/QString>

#include <atomic>
#include <functional>

class QMainWindow;

namespace pkBase {
class AbstractProgress;
}

namespace terrain {

class FileProgressBar;

/**
 * Reads and writes files in a thread of its own, one at a time, while whoever wants it done waits.
 *
 * If it takes longer than a moment the window comes back to life meanwhile: it is drawn, and its status bar
 * shows the progress and a button to cancel. No other input reaches it, as who waits would be surprised by
 * documents that come and go; closing the window cancels the work and leaves the window open. Main thread.
 */
class FileWork : public QObject
{
    Q_OBJECT

public:
    /// @param p_window with the status bar; becomes the parent
    explicit FileWork(QMainWindow* p_window);

    /// Does @p work in the other thread and waits for its end. What it throws is thrown again here.
    /// @param name what is being done, for people
    /// @throws FileCancelled if it was cancelled
    void run(const QString& name, const std::function<void(const FileProgress&)>& work);
    bool is_running() const { return m_is_running; }
    /// Asks the work to stop, which it does when it next reports.
    void cancel();

    FileProgressBar& bar() const { return *m_p_bar; }
    /// A second sink of the runs to come, told in the thread of the work; null for none. Not owned. With one
    /// the window comes to life at once.
    void report_also_to(pkBase::AbstractProgress* p_sink) { m_p_second_sink = p_sink; }

    /// Keeps input away from everything but the button to cancel.
    bool eventFilter(QObject* p_receiver, QEvent* p_event) override;

private:
    bool take_progress(double share); // in the other thread
    void wait_alive(const QString& name, const std::function<bool()>& has_ended);

    FileProgressBar* m_p_bar; // the status bar's
    pkBase::AbstractProgress* m_p_second_sink = nullptr; // not owned
    bool m_is_running = false;
    std::atomic<bool> m_cancelled{false};
    std::atomic<int> m_percentage{0};
};

} // namespace terrain
