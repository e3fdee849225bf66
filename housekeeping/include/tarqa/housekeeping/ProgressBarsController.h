#pragma once

#include <tarqa/housekeeping/AbstractController.h>
#include <tarqa/housekeeping/CommandId.h>
#include <tarqa/housekeeping/DocumentId.h>
#include <tarqa/housekeeping/tq_hk_export.h>

#include <map>

namespace tarqa::housekeeping {

/**
 * Where the program keeps track of its progress bars: which commands are running, on which document, and how
 * far each has come.
 *
 * The library registers it under the name "ProgressBarsController", so ControllerManager::init() always makes
 * it. It holds numbers only: who runs a command reports here, who shows a bar reads here. Used on the main
 * thread, or in any thread while a ControllerLocker holds it.
 */
class TQ_HK_EXPORT ProgressBarsController : public AbstractController
{
    Q_OBJECT

public:
    ProgressBarsController();
    ~ProgressBarsController() override;

    /// A command begins to run on a document. A command that is running already begins anew.
    void command_started(CommandId command, DocumentId document);
    /// Says how far a command has come. Ignored unless it is running.
    /// @param command which one
    /// @param percentage 0 to 100; more counts as 100
    void command_progress(CommandId command, unsigned long long percentage);
    /// A command has ended, however it ended. Ignored unless it is running.
    void command_finished(CommandId command);

    /// How far the command has come, in percent; 0 if it is not running.
    unsigned long long percentage(CommandId command) const;
    /// The document that the command is running on; null if it is not running.
    DocumentId document(CommandId command) const;
    /// How many commands are running on the document.
    unsigned long long running_commands(DocumentId document) const;

private:
    std::map<CommandId, unsigned long long> m_percentages; // of the running commands
    std::map<CommandId, DocumentId> m_documents; // of the running commands
    std::map<DocumentId, unsigned long long> m_running; // how many; no entry where none runs
};

} // namespace tarqa::housekeeping
