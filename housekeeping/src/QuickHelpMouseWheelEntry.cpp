#include <tarqa/housekeeping/QuickHelpMouseWheelEntry.h>

namespace tarqa::housekeeping {

QuickHelpMouseWheelEntry::QuickHelpMouseWheelEntry(QObject* parent, const DocumentId& document,
    MouseWheelDelta delta, const QString& description, const QuickHelpSection& section)
    : QuickHelpMouseWheelEntry(parent, document, delta, Qt::NoModifier, description, section)
{ }

QuickHelpMouseWheelEntry::QuickHelpMouseWheelEntry(QObject* parent, const DocumentId& document,
    MouseWheelDelta delta, Qt::KeyboardModifiers modifiers, const QString& description,
    const QuickHelpSection& section)
    : AbstractQuickHelpInputEntry(parent, document, description, section)
    , m_wheel_delta(delta)
    , m_modifiers(modifiers)
{ }

QuickHelpMouseWheelEntry::~QuickHelpMouseWheelEntry()
{
    take_out();
}

QString QuickHelpMouseWheelEntry::input() const
{
    const QString prefix = modifier_prefix(m_modifiers);
    switch (m_wheel_delta) {
    case WheelUp:
        return prefix + tr("Wheel &#9650;");
    case WheelDown:
        return prefix + tr("Wheel &#960;"); // this very entity is the text
    default:
        return prefix + tr("Wheel");
    }
}

} // namespace tarqa::housekeeping
