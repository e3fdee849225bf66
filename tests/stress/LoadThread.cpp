#include "LoadThread.h"

#include "LoadEntries.h"
#include "NumberCommand.h"

#include <tarqa/housekeeping/CommandManager.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <thread>

namespace load {

using namespace tarqa::housekeeping;

LoadThread::LoadThread(unsigned thread, const std::vector<NumbersDocument*>& documents)
    : m_thread(thread)
    , m_documents(documents)
    , m_document(*documents[thread])
    , m_sender(thread)
{ }

void LoadThread::run(const Step& step)
{
    ++m_steps[static_cast<std::size_t>(step.kind)];
    switch (step.kind) {
    case Kind::ForeignMark:
        return mark_foreign(step);
    case Kind::Dispatch:
        return m_sender.send(Way::Dispatch, static_cast<Family>(step.value % s_families));
    case Kind::Post:
        return m_sender.send(Way::Post, static_cast<Family>(step.value % s_families));
    case Kind::Entry:
    case Kind::FatalText:
        return write_entry(m_thread, step);
    default:
        return replay(step);
    }
}

void LoadThread::replay(const Step& step)
{
    switch (step.kind) {
    case Kind::Undo:
        return undo(step);
    case Kind::Redo:
        return redo(step);
    case Kind::ForeignMark:
    case Kind::Dispatch:
    case Kind::Post:
    case Kind::Entry:
    case Kind::FatalText:
        return;
    case Kind::Marked:
        DocumentManager::instance().document_busy(m_document.id(), true);
        insert(step);
        DocumentManager::instance().document_busy(m_document.id(), false);
        return;
    default:
        return insert(step);
    }
}

void LoadThread::insert(const Step& step)
{
    CommandManager::instance().insert(make_command(m_document, m_thread, step), false);
}

void LoadThread::undo(const Step& step)
{
    const AbstractDocumentHistory& history = m_document.document_history();
    for (unsigned i = 0; i < times_of(step) && history.undoSize() > 0; ++i) {
        CommandManager::instance().undo(m_document.id());
    }
}

void LoadThread::redo(const Step& step)
{
    for (unsigned i = 0; i < times_of(step); ++i) {
        CommandManager::instance().redo(m_document.id()); // which does nothing at the end
    }
}

void LoadThread::mark_foreign(const Step& step)
{
    DocumentManager& manager = DocumentManager::instance();
    const DocumentId id = m_documents[(m_thread + 1 + step.value) % m_documents.size()]->id();
    manager.document_busy(id, true);
    std::this_thread::yield(); // the document's own thread may come in between
    manager.document_busy(id, false);
}

} // namespace load
