#include <tarqa/housekeeping/ProgressBarsController.h>

#include <algorithm>

namespace tarqa::housekeeping {

namespace {

const unsigned long long s_complete = 100;

} // namespace

ProgressBarsController::ProgressBarsController() = default;

ProgressBarsController::~ProgressBarsController() = default;

void ProgressBarsController::command_started(CommandId command, DocumentId document)
{
    command_finished(command);
    m_percentages[command] = 0;
    m_documents.emplace(command, document);
    ++m_running[document];
}

void ProgressBarsController::command_progress(CommandId command, unsigned long long percentage)
{
    const auto iter = m_percentages.find(command);
    if (iter != m_percentages.end()) {
        iter->second = std::min(percentage, s_complete);
    }
}

void ProgressBarsController::command_finished(CommandId command)
{
    const auto iter = m_documents.find(command);
    if (iter == m_documents.end()) {
        return;
    }
    const auto running = m_running.find(iter->second);
    if (--running->second == 0) {
        m_running.erase(running);
    }
    m_documents.erase(iter);
    m_percentages.erase(command);
}

unsigned long long ProgressBarsController::percentage(CommandId command) const
{
    const auto iter = m_percentages.find(command);
    return iter == m_percentages.end() ? 0 : iter->second;
}

DocumentId ProgressBarsController::document(CommandId command) const
{
    const auto iter = m_documents.find(command);
    return iter == m_documents.end() ? DocumentId::null() : iter->second;
}

unsigned long long ProgressBarsController::running_commands(DocumentId document) const
{
    const auto iter = m_running.find(document);
    return iter == m_running.end() ? 0 : iter->second;
}

} // namespace tarqa::housekeeping
