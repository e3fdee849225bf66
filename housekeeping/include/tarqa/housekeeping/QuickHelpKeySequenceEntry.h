#pragma once

#include <tarqa/housekeeping/AbstractQuickHelpInputEntry.h>

#include <QtGui/QKeySequence>

namespace tarqa::housekeeping {

/// A quick-help entry for a key sequence. Its parent owns it. Main
/// thread.
class TQ_HK_EXPORT QuickHelpKeySequenceEntry : public AbstractQuickHelpInputEntry
{
    Q_OBJECT

public:
    /// The binding of @p keys; for the rest see AbstractQuickHelpEntry.
    QuickHelpKeySequenceEntry(QObject* parent, const DocumentId& document, const QKeySequence& keys,
        const QString& description, const QuickHelpSection& section);
    ~QuickHelpKeySequenceEntry() override;

    QString input() const override;

    /// The binding.
    const QKeySequence& keySequence() const { return m_key_sequence; }

private:
    QKeySequence m_key_sequence;
};

} // namespace tarqa::housekeeping
