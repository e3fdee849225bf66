#pragma once

#include <tarqa/housekeeping/AbstractQuickHelpEntry.h>

namespace tarqa::housekeeping {

/// The description of a document's quick help; its section is deliberately NoSection. Its
/// parent owns it. Main thread.
class TQ_HK_EXPORT QuickHelpDescriptionEntry : public AbstractQuickHelpEntry
{
    Q_OBJECT

public:
    /// @param parent owns the entry; may be null
    /// @param document the document that it describes; null for all
    /// @param description the text itself
    QuickHelpDescriptionEntry(QObject* parent, const DocumentId& document, const QString& description);
    ~QuickHelpDescriptionEntry() override;

protected:
    /// Hands the entry to the manager.
    bool attach() override;
    /// Takes the entry out of the manager.
    bool detach() override;
};

} // namespace tarqa::housekeeping
