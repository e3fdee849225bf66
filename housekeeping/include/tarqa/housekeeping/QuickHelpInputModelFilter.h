#pragma once

#include <tarqa/housekeeping/DocumentId.h>
#include <tarqa/housekeeping/tq_hk_export.h>

#include <QtCore/QSortFilterProxyModel>

namespace tarqa::housekeeping {

/// Shows one document's part of a section of the quick help: its own visible entries and those that belong to
/// no document. Main thread.
class TQ_HK_EXPORT QuickHelpInputModelFilter : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    /// @param document whose entries are shown @param parent owns the filter; may be null
    QuickHelpInputModelFilter(const DocumentId& document, QObject* parent);

    /// Shows another document's entries from now on.
    void setDocId(const DocumentId& document);

protected:
    /// Whether the entry is visible and belongs to the document or to none.
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

private:
    unsigned long long m_document_id;
};

} // namespace tarqa::housekeeping
