#include "commands/CommandRunner.h"

#include "commands/RasterCommand.h"

#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/ControllerLocker.h>
#include <tarqa/housekeeping/ControllerManager.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/ErrorHandler.h>
#include <tarqa/housekeeping/ProgressBarsController.h>
#include <tarqa/utilities/Exception.h>

#include <pkBase/AbstractProgress.h>

#include <QtCore/QEventLoop>

#include <exception>
#include <system_error>

namespace terrain {

namespace {

housekeeping::DocumentManager& documents()
{
    return housekeeping::DocumentManager::instance();
}

/// Changes what the progress bars show. Main thread: the views are redrawn.
template <class Change>
void change_progress(Change change)
{
    const auto sp_controller = boost::dynamic_pointer_cast<housekeeping::ProgressBarsController>(
        housekeeping::ControllerManager::instance().controller("ProgressBarsController"));
    if (sp_controller) {
        housekeeping::ControllerLocker locker(*sp_controller);
        change(*sp_controller);
        locker.finished();
    }
}

/// Does @p work, in which anybody may be told something; what that throws goes to the log. A run must end for
/// those who wait for it, whatever becomes of others.
template <typename Work>
void do_whatever_happens(Work work)
{
    auto& errors = housekeeping::ErrorHandler::instance();
    try {
        work();
    } catch (const tarqa::Exception& exception) {
        errors.report_exception(exception);
    } catch (const std::exception& exception) {
        errors.report_exception(exception);
    } catch (...) {
        errors.report_exception("An unknown exception was thrown");
    }
}

} // namespace

/// Hands the progress of a run over to the main thread, which is told again only when it has listened.
class CommandRunner::Sink : public pkBase::AbstractProgress
{
public:
    explicit Sink(CommandRunner& runner)
        : m_runner(runner)
    { }
    void open_run(unsigned int start) override
    {
        if (m_runner.m_p_second_sink) {
            m_runner.m_p_second_sink->open_run(start);
        }
    }
    void set_percentage(unsigned int percentage) override
    {
        m_runner.m_percentage = percentage;
        if (!m_runner.m_progress_posted.exchange(true)) {
            QMetaObject::invokeMethod(
                &m_runner, [this] { m_runner.show_progress(); }, Qt::QueuedConnection);
        }
        if (m_runner.m_p_second_sink) {
            m_runner.m_p_second_sink->set_percentage(percentage);
        }
    }
    void set_text(const QString& text) override
    {
        if (m_runner.m_p_second_sink) {
            m_runner.m_p_second_sink->set_text(text);
        }
    }
    void close_run() override
    {
        if (m_runner.m_p_second_sink) {
            m_runner.m_p_second_sink->close_run();
        }
    }

private:
    CommandRunner& m_runner;
};

CommandRunner::CommandRunner()
    : m_sink(std::make_unique<Sink>(*this))
{
    // From the other thread comes a copy of the message; only its ids and its type are good here.
    housekeeping::CommandMessage::subscribe(this, Qt::AutoConnection);
}

CommandRunner::~CommandRunner()
{
    abandon();
}

housekeeping::CommandId CommandRunner::command() const
{
    return is_running() ? m_sp_command->id() : housekeeping::CommandId::null();
}

bool CommandRunner::start(const boost::shared_ptr<housekeeping::AbstractCommand>& sp_command, Length length)
{
    // Not even a second thread may insert now: the main thread is not to wait when it undoes.
    if (is_running() || documents().documents_busy()) {
        return false;
    }
    m_sp_command = sp_command;
    m_name = QString::fromStdString(sp_command->name());
    m_length = length;
    m_succeeded = false;
    m_error.clear();
    m_percentage = 0;
    sp_command->setProgress(m_sink.get());
    do_whatever_happens([&sp_command] { documents().document_busy(sp_command->document_id(), true); });
    do_whatever_happens([&sp_command] {
        change_progress([&sp_command](housekeeping::ProgressBarsController& bars) {
            bars.command_started(sp_command->id(), sp_command->document_id());
        });
    });
    try {
        m_thread = std::thread([this] { run(); });
    } catch (const std::system_error& error) {
        m_error = error.what();
        end();
    }
    return true;
}

void CommandRunner::run()
{
    try {
        housekeeping::CommandManager::instance().insert(m_sp_command, false);
    } catch (const tarqa::Exception& exception) {
        m_error = exception.what();
    } catch (const std::exception& exception) {
        m_error = exception.what();
    } catch (...) {
        m_error = "An unknown exception was thrown";
    }
    // After all messages of the run, which went the same way.
    QMetaObject::invokeMethod(
        this, [this] { end(); }, Qt::QueuedConnection);
}

void CommandRunner::handle_message(housekeeping::CommandMessage& message)
{
    if (is_running() && message.id() == m_sp_command->id()) {
        m_succeeded = message.command_type() == housekeeping::CommandMessage::Done;
    }
}

void CommandRunner::show_progress()
{
    m_progress_posted = false;
    if (is_running()) {
        change_progress([this](housekeeping::ProgressBarsController& bars) {
            bars.command_progress(m_sp_command->id(), m_percentage);
        });
    }
}

void CommandRunner::end()
{
    if (!is_running()) {
        return; // it was abandoned
    }
    if (m_thread.joinable()) {
        m_thread.join();
    }
    const auto sp_command = std::move(m_sp_command);
    m_sp_command.reset();
    sp_command->setProgress(nullptr); // a redo runs on the main thread
    const std::string failure = m_error.empty() ? failure_of(*sp_command) : m_error;
    const Outcome how = outcome(failure);
    do_whatever_happens([&sp_command] {
        change_progress([&sp_command](housekeeping::ProgressBarsController& bars) {
            bars.command_finished(sp_command->id());
        });
    });
    do_whatever_happens([&sp_command] { documents().document_busy(sp_command->document_id(), false); });
    emit ended(QPrivateSignal()); // first: a slot of the other one may throw
    emit finished(how, m_name, QString::fromStdString(failure));
}

CommandRunner::Outcome CommandRunner::outcome(const std::string& failure) const
{
    if (!failure.empty()) {
        return Outcome::Failed;
    }
    return m_succeeded ? Outcome::Done : Outcome::Cancelled;
}

void CommandRunner::cancel()
{
    if (is_running()) {
        m_sp_command->request_cancel();
    }
}

void CommandRunner::wait()
{
    if (!is_running()) {
        return;
    }
    QEventLoop loop;
    connect(this, &CommandRunner::ended, &loop, &QEventLoop::quit);
    loop.exec(QEventLoop::ExcludeUserInputEvents);
    end(); // the loop may have ended with the program's
}

void CommandRunner::abandon()
{
    cancel();
    if (m_thread.joinable()) {
        m_thread.join();
    }
    m_sp_command.reset();
}

} // namespace terrain
