#pragma once

#include <tarqa/housekeeping/AbstractQuickHelpInputEntry.h>
#include <tarqa/housekeeping/MouseWheelDelta.h>

namespace tarqa::housekeeping {

/// A quick-help entry for the mouse wheel, with or without modifiers. Its parent owns it. Main
/// thread.
class TQ_HK_EXPORT QuickHelpMouseWheelEntry : public AbstractQuickHelpInputEntry
{
    Q_OBJECT

public:
    /// The binding of the wheel, turned as @p delta says, without modifiers; for the rest see
    /// AbstractQuickHelpEntry.
    QuickHelpMouseWheelEntry(QObject* parent, const DocumentId& document, MouseWheelDelta delta,
        const QString& description, const QuickHelpSection& section);
    /// The binding of the wheel, turned as @p delta says, with @p modifiers; for the rest see
    /// AbstractQuickHelpEntry.
    QuickHelpMouseWheelEntry(QObject* parent, const DocumentId& document, MouseWheelDelta delta,
        Qt::KeyboardModifiers modifiers, const QString& description, const QuickHelpSection& section);
    ~QuickHelpMouseWheelEntry() override;

    QString input() const override;

    /// How the wheel is turned.
    MouseWheelDelta wheelDelta() const { return m_wheel_delta; }
    /// What is held meanwhile.
    Qt::KeyboardModifiers modifiers() const { return m_modifiers; }

private:
    MouseWheelDelta m_wheel_delta;
    Qt::KeyboardModifiers m_modifiers;
};

} // namespace tarqa::housekeeping
