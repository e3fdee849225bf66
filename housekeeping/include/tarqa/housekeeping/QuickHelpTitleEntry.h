#pragma once

#include <tarqa/housekeeping/AbstractQuickHelpEntry.h>

namespace tarqa::housekeeping {

/// The title of a document's quick help; its section is deliberately CurrentTool.
class TQ_HK_EXPORT QuickHelpTitleEntry : public AbstractQuickHelpEntry
{
    Q_OBJECT

public:
    QuickHelpTitleEntry(QObject* parent, const DocumentId& document, const QString& title);
    ~QuickHelpTitleEntry() override;

protected:
    bool attach() override;
    bool detach() override;
};

} // namespace tarqa::housekeeping
