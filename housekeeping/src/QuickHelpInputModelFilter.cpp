#include <tarqa/housekeeping/QuickHelpInputModelFilter.h>

#include "QuickHelpInputModel.h"

namespace tarqa::housekeeping {

QuickHelpInputModelFilter::QuickHelpInputModelFilter(const DocumentId& document, QObject* parent)
    : QSortFilterProxyModel(parent)
    , m_document_id(document.getId())
{
    setDynamicSortFilter(true);
}

void QuickHelpInputModelFilter::setDocId(const DocumentId& document)
{
    if (m_document_id == document.getId()) {
        return;
    }
    m_document_id = document.getId();
    invalidateFilter();
}

bool QuickHelpInputModelFilter::filterAcceptsRow(int row, const QModelIndex& parent) const
{
    if (!sourceModel()) {
        return false;
    }
    const QModelIndex index = sourceModel()->index(row, 0, parent);
    if (!index.data(QuickHelpInputModel::Visible).toBool()) {
        return false;
    }
    const qulonglong document = index.data(QuickHelpInputModel::DocId).toULongLong();
    return document == 0 || document == m_document_id;
}

} // namespace tarqa::housekeeping
