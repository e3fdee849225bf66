#pragma once

#include <tarqa/housekeeping/AbstractQuickHelpInputEntry.h>
#include <tarqa/housekeeping/MouseWheelDelta.h>

namespace tarqa::housekeeping {

/// A quick-help entry for the mouse wheel, with or without modifiers.
class TQ_HK_EXPORT QuickHelpMouseWheelEntry : public AbstractQuickHelpInputEntry
{
    Q_OBJECT

public:
    QuickHelpMouseWheelEntry(QObject* parent, const DocumentId& document, MouseWheelDelta delta,
        const QString& description, const QuickHelpSection& section);
    QuickHelpMouseWheelEntry(QObject* parent, const DocumentId& document, MouseWheelDelta delta,
        Qt::KeyboardModifiers modifiers, const QString& description, const QuickHelpSection& section);
    ~QuickHelpMouseWheelEntry() override;

    QString input() const override;

    MouseWheelDelta wheelDelta() const { return m_wheel_delta; }
    Qt::KeyboardModifiers modifiers() const { return m_modifiers; }

private:
    MouseWheelDelta m_wheel_delta;
    Qt::KeyboardModifiers m_modifiers;
};

} // namespace tarqa::housekeeping
