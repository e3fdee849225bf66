#include "RunningCommand.h"

#include "DyingProgram.h"
#include "LockTable.h"
#include "LoggingExceptions.h"
#include "WordsWriter.h"

#include <tarqa/housekeeping/AbstractCommand.h>
#include <tarqa/housekeeping/AbstractDocument.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/LastWords.h>
#include <tarqa/housekeeping/Tripwire.h>

namespace tarqa::housekeeping {

namespace {

RunningCommand::Entry s_entries[RunningCommand::s_count];

std::string title_of(const DocumentId& id)
{
    const DocumentManager& manager = DocumentManager::const_instance();
    return manager.document_exists(id) ? manager.document_from_id(id).title() : std::string();
}

void copy(char (&target)[RunningCommand::s_length], const std::string& text)
{
    const std::size_t length = text.copy(target, RunningCommand::s_length - 1);
    target[length] = '\0';
}

std::string line_of(const RunningCommand::Entry& entry, long thread)
{
    std::string line;
    WordsWriter writer([](std::intptr_t text, const char* bytes,
                           std::size_t count) { reinterpret_cast<std::string*>(text)->append(bytes, count); },
        reinterpret_cast<std::intptr_t>(&line));
    writer.running_command(entry, thread) << "\n";
    return line;
}

} // namespace

RunningCommand::RunningCommand(const AbstractCommand& command, const char* what)
{
    if (LastWords::is_enabled() || Tripwire::enabled()) {
        // A run that cannot be listed is still to run.
        logging_exceptions(
            "An unknown exception was thrown while a run was listed", [&] { list(command, what); });
    }
}

void RunningCommand::list(const AbstractCommand& command, const char* what)
{
    if (LastWords::is_enabled()) {
        dying_program::prepare_thread();
    }
    for (Entry& entry : s_entries) {
        if (entry.used.exchange(true)) {
            continue;
        }
        m_p_entry = &entry;
        entry.what = what;
        entry.command_id = command.id().getId();
        entry.document_id = command.document_id().getId();
        copy(entry.command, command.name());
        copy(entry.document, title_of(command.document_id()));
        const long thread = dying_program::this_thread();
        entry.thread.store(thread, std::memory_order_release);
        if (Tripwire::enabled()) {
            LockTable::instance().run(line_of(entry, thread));
        }
        return;
    }
}

RunningCommand::~RunningCommand()
{
    if (m_p_entry) {
        if (Tripwire::enabled()) {
            LockTable::instance().run(std::string());
        }
        m_p_entry->thread.store(0, std::memory_order_release);
        m_p_entry->used.store(false, std::memory_order_release);
    }
}

const RunningCommand::Entry* RunningCommand::entries()
{
    return s_entries;
}

} // namespace tarqa::housekeeping
