#include <tarqa/housekeeping/AbstractQuickHelpEntry.h>

#include <tarqa/housekeeping/QuickHelpManager.h>

namespace tarqa::housekeeping {

AbstractQuickHelpEntry::AbstractQuickHelpEntry(
    QObject* parent, const DocumentId& document, const QString& description, const QuickHelpSection& section)
    : QObject(parent)
    , m_id(QuickHelpManager::instance().createNextId())
    , m_document_id(document)
    , m_description(description)
    , m_section(section)
{ }

AbstractQuickHelpEntry::~AbstractQuickHelpEntry() = default;

const QString& AbstractQuickHelpEntry::description() const
{
    return m_description;
}

const QuickHelpSection& AbstractQuickHelpEntry::section() const
{
    return m_section;
}

bool AbstractQuickHelpEntry::setAttached(bool attached)
{
    if (attached == m_attached) {
        return false;
    }
    m_attached = attached;
    const bool worked = attached ? attach() : detach();
    emit attachedChanged(m_attached);
    return worked;
}

void AbstractQuickHelpEntry::setVisible(bool visible)
{
    if (visible == m_visible) {
        return;
    }
    m_visible = visible;
    emit visibleChanged(visible);
    emit entryChanged(m_id);
}

bool AbstractQuickHelpEntry::setDescription(const QString& description)
{
    if (description == m_description) {
        return false;
    }
    m_description = description;
    emit descriptionChanged(m_description);
    emit entryChanged(m_id);
    return true;
}

bool AbstractQuickHelpEntry::setSection(const QuickHelpSection& section)
{
    if (section == m_section) {
        return false;
    }
    m_section = section;
    emit entryChanged(m_id);
    return true;
}

} // namespace tarqa::housekeeping
