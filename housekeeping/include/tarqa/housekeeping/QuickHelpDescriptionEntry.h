#pragma once

#include <tarqa/housekeeping/AbstractQuickHelpEntry.h>

namespace tarqa::housekeeping {

/// The description of a document's quick help; its section is deliberately NoSection.
class TQ_HK_EXPORT QuickHelpDescriptionEntry : public AbstractQuickHelpEntry
{
    Q_OBJECT

public:
    QuickHelpDescriptionEntry(QObject* parent, const DocumentId& document, const QString& description);
    ~QuickHelpDescriptionEntry() override;

protected:
    bool attach() override;
    bool detach() override;
};

} // namespace tarqa::housekeeping
