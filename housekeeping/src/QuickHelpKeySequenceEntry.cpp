#include <tarqa/housekeeping/QuickHelpKeySequenceEntry.h>

namespace tarqa::housekeeping {

QuickHelpKeySequenceEntry::QuickHelpKeySequenceEntry(QObject* parent, const DocumentId& document,
    const QKeySequence& keys, const QString& description, const QuickHelpSection& section)
    : AbstractQuickHelpInputEntry(parent, document, description, section)
    , m_key_sequence(keys)
{ }

QuickHelpKeySequenceEntry::~QuickHelpKeySequenceEntry()
{
    take_out();
}

QString QuickHelpKeySequenceEntry::input() const
{
    QString text = m_key_sequence.toString(QKeySequence::NativeText);
    if (text.size() > 1 && text.endsWith('+')) {
        text.chop(1);
    }
    text.replace(QChar(1), "&uarr;");
    text.replace(QChar(2), "&darr;");
    text.replace(QChar(3), "&larr;");
    text.replace(QChar(4), "&rarr;");
    return text;
}

} // namespace tarqa::housekeeping
