#include "QuickHelpInputModel.h"

#include <tarqa/housekeeping/AbstractQuickHelpInputEntry.h>

#include <QtCore/QMetaMethod>

#include <algorithm>

namespace tarqa::housekeeping {

namespace {

/// A QVariant that takes the text over. Qt's constructors copy it: counting a second owner, and soon one
/// less, takes as long as all the rest of reading a row.
QVariant variant_of(QString text)
{
    QVariant result(QStringLiteral("")); // has no owners to count
    static_cast<QString*>(result.data())->swap(text);
    return result;
}

// Entries are connected by the numbers of the signal and the slot, which Qt looks up otherwise each time, and
// without an object on the heap that calls the slot: connecting is most of what attaching an entry costs. Qt
// shows these forms in its headers and does not document them.

int changed_signal()
{
    static const int s_number = QMetaMethod::fromSignal(&AbstractQuickHelpEntry::entryChanged).methodIndex();
    return s_number;
}

int update_slot()
{
    static const int s_number
        = QuickHelpInputModel::staticMetaObject.indexOfSlot("updateInput(QuickHelpEntryId)");
    return s_number;
}

} // namespace

QuickHelpInputModel::QuickHelpInputModel(const QString& name, QObject* parent)
    : QAbstractListModel(parent)
    , m_name(name)
{ }

QModelIndex QuickHelpInputModel::index(int row, int column, const QModelIndex& parent) const
{
    const bool exists = row >= 0 && static_cast<Entries::size_type>(row) < m_entries.size() && column == 0
        && !parent.isValid();
    return exists ? createIndex(row, column) : QModelIndex();
}

int QuickHelpInputModel::rowCount(const QModelIndex&) const
{
    return static_cast<int>(m_entries.size());
}

QVariant QuickHelpInputModel::data(const QModelIndex& index, int role) const
{
    // A row equal to the count is in range for callers, as it always was; there is nothing to show for it.
    const int row = index.row();
    if (row < 0 || static_cast<Entries::size_type>(row) >= m_entries.size()) {
        return {};
    }
    const AbstractQuickHelpInputEntry& entry = *m_entries[static_cast<Entries::size_type>(row)];
    if (!m_going.empty() && is_going(&entry)) {
        return {};
    }
    switch (role) {
    case Description:
        return entry.description();
    case Visible:
        return entry.visible();
    case DocId:
        return static_cast<qulonglong>(entry.documentId().getId());
    default:
        return variant_of(entry.input());
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

/// The place of the id, or that of the next one.
QuickHelpInputModel::Entries::const_iterator QuickHelpInputModel::lower_bound(QuickHelpEntryId id) const
{
    if (m_entries.empty() || m_entries.back()->id() < id) {
        return m_entries.end(); // new entries have the highest ids
    }
    return std::lower_bound(m_entries.begin(), m_entries.end(), id,
        [](const AbstractQuickHelpInputEntry* p_entry, QuickHelpEntryId sought) {
            return p_entry->id() < sought;
        });
}

QuickHelpInputModel::Entries::const_iterator QuickHelpInputModel::find(QuickHelpEntryId id) const
{
    const auto iter = lower_bound(id);
    return iter != m_entries.end() && (*iter)->id() == id ? iter : m_entries.end();
}

int QuickHelpInputModel::row_of(Entries::const_iterator iter) const
{
    return static_cast<int>(iter - m_entries.begin());
}

bool QuickHelpInputModel::is_going(const AbstractQuickHelpInputEntry* p_entry) const
{
    return std::find(m_going.begin(), m_going.end(), p_entry) != m_going.end();
}

bool QuickHelpInputModel::addInput(const AbstractQuickHelpInputEntry* p_entry)
{
    if (!p_entry) {
        return false;
    }
    const QuickHelpEntryId id = p_entry->id();
    const auto place = lower_bound(id);
    if (place != m_entries.end() && (*place)->id() == id) {
        return false;
    }
    const int row = row_of(place);
    beginInsertRows(QModelIndex(), row, row);
    // Sought again: a view that was just told may have changed the list.
    if (find(id) == m_entries.end()) {
        m_entries.insert(lower_bound(id), p_entry);
    }
    endInsertRows();
    QMetaObject::connect(p_entry, changed_signal(), this, update_slot());
    return true;
}

bool QuickHelpInputModel::updateInput(QuickHelpEntryId id)
{
    const auto iter = find(id);
    if (iter == m_entries.end()) {
        return false;
    }
    const QModelIndex changed = index(row_of(iter), 0);
    emit dataChanged(changed, changed);
    return true;
}

bool QuickHelpInputModel::removeInput(QuickHelpEntryId id)
{
    const auto iter = find(id);
    if (iter == m_entries.end() || is_going(*iter)) {
        return false;
    }
    QMetaObject::disconnect(*iter, changed_signal(), this, update_slot());
    return erase(iter);
}

bool QuickHelpInputModel::holds(const AbstractQuickHelpInputEntry* p_entry) const
{
    const auto iter = find(p_entry->id());
    return iter != m_entries.end() && *iter == p_entry;
}

void QuickHelpInputModel::forgetInput(QuickHelpEntryId id)
{
    const auto iter = find(id);
    if (iter == m_entries.end()) {
        return;
    }
    const AbstractQuickHelpInputEntry* const p_entry = *iter;
    m_going.push_back(p_entry);
    erase(iter);
    m_going.erase(std::find(m_going.begin(), m_going.end(), p_entry));
}

bool QuickHelpInputModel::erase(Entries::const_iterator iter)
{
    const QuickHelpEntryId id = (*iter)->id();
    const int row = row_of(iter);
    beginRemoveRows(QModelIndex(), row, row);
    // By the id: a view that was just told may have changed the list.
    const auto found = find(id);
    const bool erased = found != m_entries.end();
    if (erased) {
        m_entries.erase(found);
    }
    endRemoveRows();
    return erased;
}

} // namespace tarqa::housekeeping
