#pragma once

#include <tarqa/housekeeping/AbstractCommand.h>
#include <tarqa/housekeeping/DocumentMessage.h>

#include <QtCore/QObject>

#include <boost/shared_ptr.hpp>

#include <deque>

namespace terrain {

namespace housekeeping = tarqa::housekeeping;

class CommandRunner;

/**
 * Short commands that the user may give faster than they are carried out: each one starts when the runner is
 * free, in the order in which they came. Those of a document that is closed are dropped; so are all that wait
 * when the user cancels one. Main thread.
 */
class CommandQueue : public QObject
{
    Q_OBJECT

public:
    /// @param runner must outlive the queue
    explicit CommandQueue(CommandRunner& runner, QObject* p_parent = nullptr);

    /// Runs a command as soon as can be, which may be now.
    void add(const boost::shared_ptr<housekeeping::AbstractCommand>& sp_command);

    /// Whether the command that is running now is one of the queue's.
    bool is_running() const;
    std::size_t waiting() const { return m_waiting.size(); }

signals:
    /// Commands that waited will not be carried out.
    void dropped(int count);

private slots:
    void handle_message(housekeeping::DocumentMessage& message);

private:
    typedef boost::shared_ptr<housekeeping::AbstractCommand> Command;

    void start_next();
    void start_soon();
    template <class IsDoomed>
    void drop(IsDoomed is_doomed);

    CommandRunner& m_runner;
    std::deque<Command> m_waiting;
    Command m_sp_started; // until it has ended
};

} // namespace terrain
