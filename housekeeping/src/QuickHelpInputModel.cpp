#include "QuickHelpInputModel.h"

#include <tarqa/housekeeping/AbstractQuickHelpInputEntry.h>

namespace tarqa::housekeeping {

QuickHelpInputModel::QuickHelpInputModel(const QString& name, QObject* parent)
    : QAbstractListModel(parent)
    , m_name(name)
{ }

int QuickHelpInputModel::rowCount(const QModelIndex&) const
{
    return static_cast<int>(m_entries.size());
}

QVariant QuickHelpInputModel::data(const QModelIndex& index, int role) const
{
    if (index.row() < 0 || index.row() > rowCount()) {
        return {};
    }
    // A row equal to the count passes the test above, as it always did; there is nothing to show for it.
    const auto iter = m_entries.nth(static_cast<Entries::size_type>(index.row()));
    if (iter == m_entries.end() || !iter->second) {
        return {};
    }
    const AbstractQuickHelpInputEntry& entry = *iter->second;
    switch (role) {
    case Description:
        return entry.description();
    case Visible:
        return entry.visible();
    case DocId:
        return QVariant::fromValue<qulonglong>(entry.documentId().getId());
    default:
        return entry.input();
    }
}

QVariant QuickHelpInputModel::headerData(int, Qt::Orientation, int) const
{
    return m_name;
}

QHash<int, QByteArray> QuickHelpInputModel::roleNames() const
{
    QHash<int, QByteArray> names = QAbstractListModel::roleNames();
    names[Command] = "command";
    names[Description] = "description";
    names[Visible] = "visible";
    names[DocId] = "docId";
    return names;
}

int QuickHelpInputModel::row_of(Entries::const_iterator iter) const
{
    return static_cast<int>(m_entries.index_of(iter));
}

bool QuickHelpInputModel::addInput(const AbstractQuickHelpInputEntry* p_entry)
{
    if (!p_entry || m_entries.find(p_entry->id()) != m_entries.end()) {
        return false;
    }
    const int row = row_of(m_entries.upper_bound(p_entry->id()));
    beginInsertRows(QModelIndex(), row, row);
    m_entries.emplace(p_entry->id(), p_entry);
    endInsertRows();
    connect(p_entry, SIGNAL(entryChanged(QuickHelpEntryId)), this, SLOT(updateInput(QuickHelpEntryId)));
    return true;
}

bool QuickHelpInputModel::updateInput(QuickHelpEntryId id)
{
    const auto iter = m_entries.find(id);
    if (iter == m_entries.end()) {
        return false;
    }
    const QModelIndex changed = index(row_of(iter), 0);
    emit dataChanged(changed, changed);
    return true;
}

bool QuickHelpInputModel::removeInput(QuickHelpEntryId id)
{
    const auto iter = m_entries.find(id);
    if (iter == m_entries.end() || !iter->second) {
        return false;
    }
    disconnect(
        iter->second, SIGNAL(entryChanged(QuickHelpEntryId)), this, SLOT(updateInput(QuickHelpEntryId)));
    return erase(iter);
}

bool QuickHelpInputModel::holds(const AbstractQuickHelpInputEntry* p_entry) const
{
    const auto iter = m_entries.find(p_entry->id());
    return iter != m_entries.end() && iter->second == p_entry;
}

void QuickHelpInputModel::forgetInput(QuickHelpEntryId id)
{
    const auto iter = m_entries.find(id);
    if (iter == m_entries.end()) {
        return;
    }
    iter->second = nullptr;
    erase(iter);
}

bool QuickHelpInputModel::erase(Entries::const_iterator iter)
{
    const QuickHelpEntryId id = iter->first;
    const int row = row_of(iter);
    beginRemoveRows(QModelIndex(), row, row);
    // By the id: a view that was just told may have changed the list.
    const bool erased = m_entries.erase(id) != 0;
    endRemoveRows();
    return erased;
}

} // namespace tarqa::housekeeping
