#include <tarqa/housekeeping/QuickHelpTitleEntry.h>

#include <tarqa/housekeeping/QuickHelpManager.h>

namespace tarqa::housekeeping {

QuickHelpTitleEntry::QuickHelpTitleEntry(QObject* parent, const DocumentId& document, const QString& title)
    : AbstractQuickHelpEntry(parent, document, title, QuickHelpSection::CurrentTool)
{ }

QuickHelpTitleEntry::~QuickHelpTitleEntry()
{
    // Not asked for attached(): it may have been handed to the manager directly.
    if (QuickHelpManager* const p_manager = QuickHelpManager::get_instance().peek()) {
        p_manager->removeTitle(documentId(), this);
    }
}

bool QuickHelpTitleEntry::attach()
{
    return QuickHelpManager::instance().addTitle(documentId(), this);
}

bool QuickHelpTitleEntry::detach()
{
    return QuickHelpManager::instance().removeTitle(documentId(), this);
}

} // namespace tarqa::housekeeping
