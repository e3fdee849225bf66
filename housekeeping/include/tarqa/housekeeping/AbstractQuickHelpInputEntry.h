#pragma once

#include <tarqa/housekeeping/AbstractQuickHelpEntry.h>

namespace tarqa::housekeeping {

/// A quick-help entry that describes one input binding and is shown in the list of its section. Its parent
/// owns it. Main thread.
class TQ_HK_EXPORT AbstractQuickHelpInputEntry : public AbstractQuickHelpEntry
{
    Q_OBJECT

public:
    /// As AbstractQuickHelpEntry.
    AbstractQuickHelpInputEntry(QObject* parent, const DocumentId& document, const QString& description,
        const QuickHelpSection& section);
    /// Takes the entry out if it is still in a list. A concrete class calls take_out() in its own destructor
    /// before, while input() still works; otherwise views find an empty row while it goes.
    ~AbstractQuickHelpInputEntry() override;

    /// The binding as rich text, for example "Ctrl+LMB".
    virtual QString input() const = 0;

protected:
    /// Puts the entry into the list of its section. @return false for QuickHelpSection::NoSection
    bool attach() override;
    /// Takes the entry out of the list of its section.
    bool detach() override;

    /// Takes the entry out of whatever list holds it; makes no manager where there is none any more.
    void take_out();
    /// The text of the modifiers in front of a button or wheel, for example "Shift+"; empty for combinations
    /// that have none.
    static QString modifier_prefix(Qt::KeyboardModifiers modifiers);
};

} // namespace tarqa::housekeeping
