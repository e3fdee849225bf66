#include <tarqa/housekeeping/AbstractQuickHelpInputEntry.h>

#include <tarqa/housekeeping/QuickHelpManager.h>

#include <QtGui/QKeySequence>

namespace tarqa::housekeeping {

AbstractQuickHelpInputEntry::AbstractQuickHelpInputEntry(
    QObject* parent, const DocumentId& document, const QString& description, const QuickHelpSection& section)
    : AbstractQuickHelpEntry(parent, document, description, section)
{ }

AbstractQuickHelpInputEntry::~AbstractQuickHelpInputEntry()
{
    if (QuickHelpManager* const p_manager = QuickHelpManager::get_instance().peek()) {
        p_manager->forgetInAllModels(this);
    }
}

bool AbstractQuickHelpInputEntry::attach()
{
    return QuickHelpManager::instance().addToModel(this);
}

bool AbstractQuickHelpInputEntry::detach()
{
    return QuickHelpManager::instance().removeFromModel(section(), id());
}

void AbstractQuickHelpInputEntry::take_out()
{
    // Not asked for attached(): an entry that was detached after its section had changed is still in its
    // list.
    if (QuickHelpManager* const p_manager = QuickHelpManager::get_instance().peek()) {
        p_manager->removeFromAllModels(this);
    }
}

QString AbstractQuickHelpInputEntry::modifier_prefix(Qt::KeyboardModifiers modifiers)
{
    struct Prefix
    {
        Qt::KeyboardModifiers modifiers;
        int keys;
    };
    // Only these combinations have one. The last two deliberately show other keys than the entry's.
    static const Prefix s_prefixes[] = {
        {Qt::ShiftModifier, Qt::SHIFT},
        {Qt::ControlModifier, Qt::CTRL},
        {Qt::ControlModifier | Qt::ShiftModifier, Qt::CTRL | Qt::SHIFT},
        {Qt::AltModifier, Qt::ALT},
        {Qt::MetaModifier, Qt::ALT | Qt::SHIFT},
        {Qt::MetaModifier | Qt::ShiftModifier, Qt::CTRL | Qt::ALT},
    };
    for (const Prefix& prefix : s_prefixes) {
        if (prefix.modifiers == modifiers) {
            return QKeySequence(prefix.keys).toString(QKeySequence::NativeText);
        }
    }
    return {};
}

} // namespace tarqa::housekeeping
