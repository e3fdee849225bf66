#include "commands/CommandQueue.h"

#include "commands/CommandRunner.h"

#include <algorithm>

namespace terrain {

CommandQueue::CommandQueue(CommandRunner& runner, QObject* p_parent)
    : QObject(p_parent)
    , m_runner(runner)
{
    connect(&runner, &CommandRunner::finished, this, [this](CommandRunner::Outcome outcome) {
        const bool was_own = m_sp_started != nullptr;
        m_sp_started.reset();
        if (was_own && outcome == CommandRunner::Outcome::Cancelled) {
            drop([](const Command&) { return true; });
        }
        start_soon();
    });
    housekeeping::DocumentMessage::subscribe(this, Qt::AutoConnection);
}

void CommandQueue::add(const boost::shared_ptr<housekeeping::AbstractCommand>& sp_command)
{
    m_waiting.push_back(sp_command);
    start_next();
}

bool CommandQueue::is_running() const
{
    return m_sp_started != nullptr;
}

void CommandQueue::start_next()
{
    if (m_waiting.empty() || m_sp_started) {
        return;
    }
    m_sp_started = m_waiting.front(); // before it starts: people ask whose run it is that begins
    m_waiting.pop_front();
    const Command sp_command = m_sp_started;
    if (!m_runner.start(sp_command, CommandRunner::Length::Moment)) {
        m_sp_started.reset();
        m_waiting.push_front(sp_command); // until a document becomes free
    }
}

/// Not at once: those who were told first that something has ended may be about to do something themselves.
void CommandQueue::start_soon()
{
    if (!m_waiting.empty()) {
        QMetaObject::invokeMethod(
            this, [this] { start_next(); }, Qt::QueuedConnection);
    }
}

void CommandQueue::handle_message(housekeeping::DocumentMessage& message)
{
    using housekeeping::DocumentMessage;
    if (message.doc_change_type() == DocumentMessage::Idle) {
        start_soon();
    } else if (message.doc_change_type() == DocumentMessage::Destroyed) {
        const housekeeping::DocumentId gone = message.id();
        drop([&gone](const Command& sp_command) { return sp_command->document_id() == gone; });
    }
}

template <class IsDoomed>
void CommandQueue::drop(IsDoomed is_doomed)
{
    const auto first = std::remove_if(m_waiting.begin(), m_waiting.end(), is_doomed);
    const auto count = static_cast<int>(std::distance(first, m_waiting.end()));
    m_waiting.erase(first, m_waiting.end());
    if (count > 0) {
        emit dropped(count);
    }
}

} // namespace terrain
