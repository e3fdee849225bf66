#include "windows/FileWork.h"

#include "windows/FileProgressBar.h"
#include "windows/WaitCursor.h"

#include <pkBase/AbstractProgress.h>

#include <QtCore/QEventLoop>
#include <QtCore/QScopedValueRollback>
#include <QtCore/QTimer>
#include <QtGui/QKeyEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QStatusBar>

#include <chrono>
#include <future>

namespace terrain {

namespace {

const std::chrono::milliseconds s_moment(300); ///< in which nobody misses the window
const int s_poll_interval = 40; ///< milliseconds

bool is_input(const QEvent& event)
{
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::Shortcut:
    case QEvent::ContextMenu:
    case QEvent::DragEnter:
    case QEvent::Drop:
    case QEvent::Close:
        return true;
    default:
        return false;
    }
}

bool is_escape(const QEvent& event)
{
    return event.type() == QEvent::KeyPress && static_cast<const QKeyEvent&>(event).key() == Qt::Key_Escape;
}

} // namespace

FileWork::FileWork(QMainWindow* p_window)
    : QObject(p_window)
    , m_p_bar(new FileProgressBar)
{
    // Left of the other permanent ones; passing messages would hide an ordinary one.
    p_window->statusBar()->insertPermanentWidget(0, m_p_bar);
    m_p_bar->hide();
    connect(m_p_bar, &FileProgressBar::cancelled, this, &FileWork::cancel);
}

void FileWork::run(const QString& name, const std::function<void(const FileProgress&)>& work)
{
    const QScopedValueRollback<bool> running(m_is_running, true);
    const WaitCursor cursor;
    m_cancelled = false;
    m_percentage = 0;
    auto result = std::async(
        std::launch::async, [this, &work] { work([this](double share) { return take_progress(share); }); });
    const auto has_ended_within = [&result](std::chrono::milliseconds time) {
        return result.wait_for(time) == std::future_status::ready;
    };
    if (m_p_second_sink || !has_ended_within(s_moment)) {
        wait_alive(name, [has_ended_within] { return has_ended_within(std::chrono::milliseconds(0)); });
    }
    result.get(); // throws what the work threw
}

void FileWork::cancel()
{
    m_cancelled = true;
}

bool FileWork::take_progress(double share)
{
    m_percentage = static_cast<int>(100 * share);
    if (m_p_second_sink) {
        m_p_second_sink->set_percentage(static_cast<unsigned int>(m_percentage));
    }
    return !m_cancelled;
}

void FileWork::wait_alive(const QString& name, const std::function<bool()>& has_ended)
{
    QEventLoop loop;
    QTimer timer; // the other thread must not be held up by telling us
    connect(&timer, &QTimer::timeout, this, [&] {
        m_p_bar->percentage(m_percentage);
        if (has_ended()) {
            loop.quit();
        }
    });
    timer.start(s_poll_interval);
    m_p_bar->begin(name);
    qApp->installEventFilter(this);
    loop.exec();
    qApp->removeEventFilter(this);
    m_p_bar->hide();
    if (!has_ended()) { // the loop has ended with the program's
        cancel();
    }
}

bool FileWork::eventFilter(QObject* p_receiver, QEvent* p_event)
{
    const auto* const p_widget = qobject_cast<const QWidget*>(p_receiver);
    const bool is_for_user = p_widget || p_event->type() == QEvent::Shortcut;
    if (!is_for_user || !is_input(*p_event) || (p_widget && m_p_bar->isAncestorOf(p_widget))) {
        return QObject::eventFilter(p_receiver, p_event);
    }
    if (is_escape(*p_event) || (p_event->type() == QEvent::Close && p_widget == parent())) {
        m_p_bar->cancel();
    }
    p_event->ignore();
    return true;
}

} // namespace terrain
