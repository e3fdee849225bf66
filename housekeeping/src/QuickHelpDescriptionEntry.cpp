#include <tarqa/housekeeping/QuickHelpDescriptionEntry.h>

#include <tarqa/housekeeping/QuickHelpManager.h>

namespace tarqa::housekeeping {

QuickHelpDescriptionEntry::QuickHelpDescriptionEntry(
    QObject* parent, const DocumentId& document, const QString& description)
    : AbstractQuickHelpEntry(parent, document, description, QuickHelpSection::NoSection)
{ }

QuickHelpDescriptionEntry::~QuickHelpDescriptionEntry()
{
    // Not asked for attached(): it may have been handed to the manager directly.
    if (QuickHelpManager* const p_manager = QuickHelpManager::get_instance().peek()) {
        p_manager->removeDescription(documentId(), this);
    }
}

bool QuickHelpDescriptionEntry::attach()
{
    return QuickHelpManager::instance().addDescription(documentId(), this);
}

bool QuickHelpDescriptionEntry::detach()
{
    return QuickHelpManager::instance().removeDescription(documentId(), this);
}

} // namespace tarqa::housekeeping
