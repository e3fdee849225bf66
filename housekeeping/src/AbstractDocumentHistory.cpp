#include <tarqa/housekeeping/AbstractDocumentHistory.h>

#include "ReadyMessage.h"

#include <tarqa/housekeeping/AbstractCommand.h>
#include <tarqa/housekeeping/DocumentHistoryMsg.h>

#include <algorithm>
#include <utility>

namespace tarqa::housekeeping {

AbstractDocumentHistory::AbstractDocumentHistory() = default;

AbstractDocumentHistory::AbstractDocumentHistory(const AbstractDocumentHistory& other)
{
    const std::lock_guard<std::mutex> lock(other.m_mutex);
    m_undo = other.m_undo;
    m_redo = other.m_redo;
}

AbstractDocumentHistory& AbstractDocumentHistory::operator=(const AbstractDocumentHistory& other)
{
    AbstractDocumentHistory copy(other);
    // The old commands die with the copy, after the lock.
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_undo.swap(copy.m_undo);
    m_redo.swap(copy.m_redo);
    return *this;
}

AbstractDocumentHistory::~AbstractDocumentHistory() = default;

void AbstractDocumentHistory::insertUndoCommand(const boost::shared_ptr<AbstractCommand>& sp)
{
    if (!sp || sp->validUndo()) {
        const bool merged = sp && sp->stackIndenticalCommand() && merge_with_last(sp);
        Stack doomed; // commands that can no longer be redone die after the lock
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (sp && !merged) {
            m_undo.push_back(sp);
        }
        m_redo.swap(doomed);
    }
    announce();
}

/// Asks the last command, if it is as willing as @p sp, to absorb that. The older one stays, the newer one is
/// not kept but runs.
bool AbstractDocumentHistory::merge_with_last(const boost::shared_ptr<AbstractCommand>& sp)
{
    boost::shared_ptr<AbstractCommand> sp_last;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_undo.empty()) {
            return false;
        }
        sp_last = m_undo.back();
    }
    return sp_last && sp_last->stackIndenticalCommand() && sp_last->stackWith(sp);
}

boost::shared_ptr<AbstractCommand> AbstractDocumentHistory::transferUndoCommand()
{
    boost::shared_ptr<AbstractCommand> sp_last;
    {
        Stack doomed; // as above
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_undo.empty()) {
            return sp_last;
        }
        sp_last = m_undo.back();
        if (sp_last->shouldClearRedoWhenUndoing()) {
            m_redo.swap(doomed);
        } else {
            m_redo.push_back(std::move(m_undo.back()));
        }
        m_undo.pop_back();
    }
    announce();
    return sp_last;
}

boost::shared_ptr<AbstractCommand> AbstractDocumentHistory::transferRedoCommand()
{
    boost::shared_ptr<AbstractCommand> sp_last;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_redo.empty()) {
            return sp_last;
        }
        sp_last = m_redo.back();
        m_undo.push_back(std::move(m_redo.back()));
        m_redo.pop_back();
    }
    announce();
    return sp_last;
}

void AbstractDocumentHistory::removeLastUndo()
{
    boost::shared_ptr<AbstractCommand> sp_doomed; // dies after the lock
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_undo.empty()) {
        sp_doomed = std::move(m_undo.back());
        m_undo.pop_back();
    }
}

std::vector<CommandDetails> AbstractDocumentHistory::getUndoCommandDetails(const unsigned long long& n) const
{
    return details_of(m_undo, n);
}

std::vector<CommandDetails> AbstractDocumentHistory::getRedoCommandDetails(const unsigned long long& n) const
{
    return details_of(m_redo, n);
}

std::vector<CommandDetails> AbstractDocumentHistory::details_of(
    const Stack& stack, unsigned long long n) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto count = static_cast<std::size_t>(std::min<unsigned long long>(n, stack.size()));
    std::vector<CommandDetails> details;
    details.reserve(count);
    for (auto iter = stack.rbegin(); details.size() < count; ++iter) {
        details.push_back((*iter)->details_copy());
    }
    return details;
}

unsigned long long AbstractDocumentHistory::undoSize() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_undo.size();
}

unsigned long long AbstractDocumentHistory::redoSize() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_redo.size();
}

bool AbstractDocumentHistory::empty() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_undo.empty() && m_redo.empty();
}

void AbstractDocumentHistory::announce()
{
    const ReadyMessage<DocumentHistoryMsg, message_memory::HistoryChange> message;
    message->dispatch();
}

} // namespace tarqa::housekeeping
