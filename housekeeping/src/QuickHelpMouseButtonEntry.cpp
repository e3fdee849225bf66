#include <tarqa/housekeeping/QuickHelpMouseButtonEntry.h>

namespace tarqa::housekeeping {

QuickHelpMouseButtonEntry::QuickHelpMouseButtonEntry(QObject* parent, const DocumentId& document,
    Qt::MouseButton button, const QString& description, const QuickHelpSection& section)
    : QuickHelpMouseButtonEntry(parent, document, button, Qt::NoModifier, description, section)
{ }

QuickHelpMouseButtonEntry::QuickHelpMouseButtonEntry(QObject* parent, const DocumentId& document,
    Qt::MouseButton button, Qt::KeyboardModifiers modifiers, const QString& description,
    const QuickHelpSection& section)
    : AbstractQuickHelpInputEntry(parent, document, description, section)
    , m_mouse_button(button)
    , m_modifiers(modifiers)
{ }

QuickHelpMouseButtonEntry::~QuickHelpMouseButtonEntry()
{
    take_out();
}

QString QuickHelpMouseButtonEntry::input() const
{
    const QString prefix = modifier_prefix(m_modifiers);
    switch (m_mouse_button) {
    case Qt::LeftButton:
        return prefix + tr("LMB");
    case Qt::RightButton:
        return prefix + tr("RMB");
    case Qt::MiddleButton:
        return prefix + tr("MMB");
    default:
        return prefix + tr("Unknown button");
    }
}

} // namespace tarqa::housekeeping
