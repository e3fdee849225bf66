#include "tour/Tour.h"

#include "scene/SceneView.h"
#include "tour/UserInput.h"
#include "views/TerrainView.h"
#include "windows/DocumentPage.h"
#include "windows/DocumentViews.h"
#include "windows/MainWindow.h"

#include <tarqa/utilities/Exception.h>

#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>
#include <QtWidgets/QMessageBox>

#include <algorithm>
#include <cstdlib>
#include <iomanip>
#include <iostream>

namespace terrain {

namespace {

const int s_tick = 20; ///< milliseconds
const int s_patience = 60000; ///< milliseconds, for a step
const int s_needed_looks = 5; ///< so that what is drawn a little later is drawn

[[noreturn]] void give_up()
{
    std::cerr << "tarq-terrain: the tour stands still" << std::endl;
    std::_Exit(EXIT_FAILURE);
}

bool all_hold(const std::vector<TourCheck>& checks)
{
    return std::all_of(checks.begin(), checks.end(), [](const TourCheck& check) { return check.result; });
}

/// Whether one of the views on top is still on its way.
bool is_moving(const MainWindow& window)
{
    const DocumentPage* const p_page = window.views().current_page();
    return p_page
        && (p_page->map().is_gliding() || (p_page->scene() && p_page->scene()->navigator().is_moving()));
}

QString text_of(const QWidget& dialog)
{
    const auto* const p_box = qobject_cast<const QMessageBox*>(&dialog);
    return p_box ? p_box->text().trimmed() : dialog.windowTitle();
}

} // namespace

Tour::Tour(
    MainWindow& window, const QString& folder, const QString& file, std::ostream& out, std::ostream& error)
    : m_window(window)
    , m_report(folder)
    , m_stage(window, file)
    , m_out(out)
    , m_error(error)
{
    m_timer.setInterval(s_tick);
    connect(&m_timer, &QTimer::timeout, this, &Tour::tick);
}

Tour::~Tour()
{
    if (!m_ended) {
        m_error << "tarq-terrain: " << tr("the window was closed before the end of the tour").toStdString()
                << std::endl;
    }
}

void Tour::start()
{
    m_watchdog = std::make_unique<Watchdog>(std::chrono::milliseconds(s_patience), &give_up);
    m_timer.start();
}

void Tour::tick()
{
    m_watchdog->alive();
    if (QWidget* const p_dialog = QApplication::activeModalWidget()) {
        if (is_to_fill_in(*p_dialog)) {
            fill_in(*p_dialog);
        } else if (looks_at(*p_dialog)) {
            watch_step();
        } else if (!answer_dialog()) {
            close_unexpected_dialog();
        }
    } else if (m_acting || m_ended) {
        return; // in the loop of something that the step or the end of the tour has opened
    } else if (m_failed) {
        call_soon(&Tour::end);
    } else if (!m_begun) {
        call_soon(&Tour::begin_step);
    } else {
        watch_step();
    }
}

/// Calls what may run an event loop of its own. Not from the timer: Qt would not let it go on until then.
void Tour::call_soon(void (Tour::*part)())
{
    m_acting = true;
    QMetaObject::invokeMethod(
        this,
        [this, part] {
            (this->*part)();
            m_acting = false;
        },
        Qt::QueuedConnection);
}

/// Whether it is a dialog that the step leads to, as nobody has filled it in yet.
bool Tour::is_to_fill_in(const QWidget& dialog) const
{
    return m_begun && !m_ended && !m_failed && tour_steps()[m_step].fill_in && m_p_filled_in != &dialog
        && qobject_cast<const QDialog*>(&dialog) && !qobject_cast<const QMessageBox*>(&dialog);
}

void Tour::fill_in(QWidget& dialog)
{
    m_p_filled_in = &dialog;
    auto& form = *qobject_cast<QDialog*>(&dialog);
    tour_steps()[m_step].fill_in(m_stage, form);
    if (!tour_steps()[m_step].in_dialog) {
        accept(form);
    }
}

/// Whether it is the dialog that the step is about. Failures never are, and only the question that it
/// answers.
bool Tour::looks_at(const QWidget& dialog) const
{
    if (!m_begun || m_ended || m_failed || !tour_steps()[m_step].in_dialog) {
        return false;
    }
    const auto* const p_box = qobject_cast<const QMessageBox*>(&dialog);
    return !p_box || p_box->button(tour_steps()[m_step].answer);
}

/// @return false if the step expects no dialog, or another one
bool Tour::answer_dialog()
{
    auto* const p_box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (!p_box || m_ended || m_failed) {
        return false;
    }
    QAbstractButton* const p_button = p_box->button(tour_steps()[m_step].answer);
    if (p_button) {
        p_button->click();
    }
    return p_button != nullptr;
}

/// Ends the dialog that the step has looked at.
void Tour::leave_dialog()
{
    QWidget& dialog = *QApplication::activeModalWidget();
    if (tour_steps()[m_step].answer != QMessageBox::NoButton) {
        answer_dialog();
    } else if (tour_steps()[m_step].fill_in) {
        accept(*qobject_cast<QDialog*>(&dialog));
    } else {
        close(dialog);
    }
}

void Tour::close_unexpected_dialog()
{
    QWidget& dialog = *QApplication::activeModalWidget();
    fail(tr("a dialog appeared: %1").arg(text_of(dialog)));
    close(dialog);
}

void Tour::close(QWidget& dialog)
{
    if (auto* const p_dialog = qobject_cast<QDialog*>(&dialog)) {
        p_dialog->reject();
    } else {
        dialog.close();
    }
}

void Tour::begin_step()
{
    m_begun = true;
    m_steady_looks = 0;
    m_clock.start();
    try {
        tour_steps()[m_step].act(m_stage);
    } catch (const tarqa::Exception& exception) {
        fail(QString::fromUtf8(exception.what()));
    } catch (const std::exception& exception) {
        fail(QString::fromUtf8(exception.what()));
    }
}

void Tour::watch_step()
{
    std::vector<TourCheck> checks = tour_steps()[m_step].look(m_stage);
    m_steady_looks = all_hold(checks) && !is_moving(m_window) ? m_steady_looks + 1 : 0;
    if (m_steady_looks >= s_needed_looks || m_clock.hasExpired(s_patience)) {
        end_step(std::move(checks));
    }
}

void Tour::end_step(std::vector<TourCheck> checks)
{
    const TourStep& step = tour_steps()[m_step];
    const int duration = static_cast<int>(m_clock.elapsed());
    const QImage picture = picture_of(step.picture, m_stage);
    checks.push_back({tr("the picture is not uniform"), is_varied(picture)});
    try {
        m_report.add({static_cast<int>(m_step) + 1, step.name, picture, duration, checks});
        m_out << std::setw(2) << m_step + 1 << "  " << std::setw(6) << duration << " ms  " << step.name
              << std::endl;
    } catch (const std::exception& exception) {
        fail(QString::fromUtf8(exception.what()));
    }
    for (const TourCheck& check : checks) {
        if (!check.result) {
            fail(tr("not seen: %1").arg(check.text));
        }
    }
    if (step.in_dialog && QApplication::activeModalWidget()) {
        leave_dialog();
    }
    ++m_step;
    m_begun = false;
    if (m_step == tour_steps().size()) {
        call_soon(&Tour::end);
    }
}

void Tour::fail(const QString& reason)
{
    m_failed = true;
    m_error << "tarq-terrain: " << step_title().toStdString() << ": " << reason.toStdString() << std::endl;
}

void Tour::end()
{
    m_ended = true;
    m_stage.gate.open();
    m_out << "    " << std::setw(6) << m_report.duration() << " ms  " << tr("all steps").toStdString()
          << std::endl;
    m_out << tr("%1 of %2 pictures of the tour are in %3")
                 .arg(QString::number(m_report.entries()), QString::number(tour_steps().size()),
                     m_report.folder())
                 .toStdString()
          << std::endl;
    if (!m_window.close()) {
        QCoreApplication::exit(EXIT_FAILURE);
    }
}

QString Tour::step_title() const
{
    if (m_step == tour_steps().size()) {
        return tr("after the last step");
    }
    return tr("step %1, %2").arg(QString::number(m_step + 1), tour_steps()[m_step].name);
}

} // namespace terrain
