#pragma once

#include <tarqa/housekeeping/AbstractQuickHelpInputEntry.h>

namespace tarqa::housekeeping {

/// A quick-help entry for a mouse button, with or without modifiers. Its parent owns it. Main
/// thread.
class TQ_HK_EXPORT QuickHelpMouseButtonEntry : public AbstractQuickHelpInputEntry
{
    Q_OBJECT

public:
    /// The binding of @p button without modifiers; for the rest see AbstractQuickHelpEntry.
    QuickHelpMouseButtonEntry(QObject* parent, const DocumentId& document, Qt::MouseButton button,
        const QString& description, const QuickHelpSection& section);
    /// The binding of @p button with @p modifiers; for the rest see AbstractQuickHelpEntry.
    QuickHelpMouseButtonEntry(QObject* parent, const DocumentId& document, Qt::MouseButton button,
        Qt::KeyboardModifiers modifiers, const QString& description, const QuickHelpSection& section);
    ~QuickHelpMouseButtonEntry() override;

    QString input() const override;

    /// The button of the binding.
    Qt::MouseButton mouseButton() const { return m_mouse_button; }
    /// What is held meanwhile.
    Qt::KeyboardModifiers modifiers() const { return m_modifiers; }

private:
    Qt::MouseButton m_mouse_button;
    Qt::KeyboardModifiers m_modifiers;
};

} // namespace tarqa::housekeeping
