#pragma once

#include "tour/TourReport.h"
#include "tour/TourSteps.h"
#include "tour/Watchdog.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QTimer>

#include <memory>
#include <ostream>

namespace terrain {

/**
 * Drives the main window through its steps as a user would, looks whether what is expected is to be seen, and
 * leaves pictures. It works from a timer, so in the main loop and in the loops of dialogs; a dialog that no
 * step expects fails the step and is closed. The first step that fails ends the tour, and the window is
 * closed at the end.
 *
 * Main thread. Should it stand still, the program is ended from another thread.
 */
class Tour : public QObject
{
    Q_OBJECT

public:
    /// @param folder for the pictures @param file the raster to show; "" for a sample
    /// @param out for the result, @param error for what went wrong; both must outlive the object
    /// @throws std::runtime_error if the folder cannot be written, a tarqa::Exception if a sample cannot
    Tour(MainWindow& window, const QString& folder, const QString& file, std::ostream& out,
        std::ostream& error);
    ~Tour() override;

    /// Begins; call it before the main loop.
    void start();

    /// Whether all steps were taken, and all that was expected was there.
    bool succeeded() const { return m_ended && !m_failed; }

private:
    void tick();
    void call_soon(void (Tour::*part)());
    bool is_to_fill_in(const QWidget& dialog) const;
    void fill_in(QWidget& dialog);
    bool looks_at(const QWidget& dialog) const;
    bool answer_dialog();
    void leave_dialog();
    void close_unexpected_dialog();
    static void close(QWidget& dialog);
    void begin_step();
    void watch_step();
    void end_step(std::vector<TourCheck> checks);
    void fail(const QString& reason);
    void end();
    QString step_title() const;

    MainWindow& m_window;
    TourReport m_report;
    TourStage m_stage;
    std::ostream& m_out;
    std::ostream& m_error;
    QTimer m_timer;
    QElapsedTimer m_clock; // of the step
    QPointer<QWidget> m_p_filled_in; // the last dialog of which that is true; not owned
    std::unique_ptr<Watchdog> m_watchdog;

    std::size_t m_step = 0;
    bool m_begun = false; // the step
    bool m_acting = false; // inside code that may run an event loop of its own, or about to be
    int m_steady_looks = 0; // how often in a row everything was there
    bool m_failed = false;
    bool m_ended = false;
};

} // namespace terrain
