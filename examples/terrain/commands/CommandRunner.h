#pragma once

#include <tarqa/housekeeping/AbstractCommand.h>
#include <tarqa/housekeeping/CommandMessage.h>

#include <QtCore/QObject>
#include <QtCore/QString>

#include <boost/shared_ptr.hpp>

#include <atomic>
#include <memory>
#include <string>
#include <thread>

namespace pkBase {
class AbstractProgress;
}

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

/**
 * Runs commands in a thread of their own, one at a time, so that the window stays alive, and keeps the
 * program's ProgressBarsController informed.
 *
 * The document has a busy mark from start() to finished(), both on the main thread: whoever looks at
 * DocumentManager::document_busy() there knows for certain whether the cells may be read. What somebody
 * throws who is told about the beginning or the end goes to the log: finished() comes whatever happens, and
 * wait() returns. Everything belongs to the main thread; of the run only insert() and the progress sink are
 * in the other one.
 */
class CommandRunner : public QObject
{
    Q_OBJECT

public:
    enum class Outcome
    {
        Done,
        Cancelled,
        Failed
    };
    Q_ENUM(Outcome)

    CommandRunner();
    /// Cancels and waits, without a word to anybody.
    ~CommandRunner() override;

    /// What people expect of a run.
    enum class Length
    {
        Any,
        Moment ///< mostly over before one could read its progress
    };

    /// Begins to run a command. @return false if a document is busy: nothing happens then
    bool start(
        const boost::shared_ptr<housekeeping::AbstractCommand>& sp_command, Length length = Length::Any);

    bool is_running() const { return m_sp_command != nullptr; }
    /// The running command; null if none is running.
    housekeeping::CommandId command() const;
    /// Its name, as it was in the beginning.
    const QString& name() const { return m_name; }

    /// As it was started.
    Length length() const { return m_length; }

    /// Asks the running command to stop, which it does when it next reports.
    void cancel();
    /// Waits for the running command. The window is drawn meanwhile, and gets no input.
    void wait();
    /// Cancels and waits without an event loop, and tells nobody; for the end of the program.
    void abandon();

    /// A second sink of the runs to come, told in the thread of the run; null for none. Not owned.
    void report_also_to(pkBase::AbstractProgress* p_sink) { m_p_second_sink = p_sink; }

signals:
    /// The run is over and the document free. @param failure why it failed, for the user
    void finished(terrain::CommandRunner::Outcome outcome, const QString& name, const QString& failure);
    /// The same, for those who wait.
    void ended(QPrivateSignal);

private slots:
    void handle_message(housekeeping::CommandMessage& message);

private:
    class Sink;

    void run(); // in the other thread
    void show_progress();
    void end();
    Outcome outcome(const std::string& failure) const;

    boost::shared_ptr<housekeeping::AbstractCommand> m_sp_command; // while it is running
    QString m_name;
    Length m_length = Length::Any;
    bool m_succeeded = false;
    std::string m_error; // what the run threw; the other thread's until it has ended
    std::unique_ptr<Sink> m_sink;
    pkBase::AbstractProgress* m_p_second_sink = nullptr; // not owned
    std::atomic<unsigned int> m_percentage{0};
    std::atomic<bool> m_progress_posted{false}; // show_progress() is on its way
    std::thread m_thread;
};

} // namespace terrain
