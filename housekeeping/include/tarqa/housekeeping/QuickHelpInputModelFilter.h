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
    QuickHelpInputModelFilter(const DocumentId& document, QObject* parent);

    void setDocId(const DocumentId& document);

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

private:
    unsigned long long m_document_id;
};

} // namespace tarqa::housekeeping
