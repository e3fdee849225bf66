#pragma once

#include <tarqa/housekeeping/QuickHelpEntryId.h>

#include <QtCore/QAbstractListModel>

#include <vector>

namespace tarqa::housekeeping {

class AbstractQuickHelpInputEntry;

/**
 * The attached input entries of one section, of all documents, in the order of their ids. Made and owned by
 * the QuickHelpManager; entries are not owned and take themselves out before they die. Main thread.
 */
class QuickHelpInputModel : public QAbstractListModel
{
    Q_OBJECT

public:
    enum CommandModelRoles
    {
        Command = Qt::DisplayRole, ///< the binding as rich text
        Description = Qt::UserRole,
        Visible,
        DocId ///< the number of the document; 0 for every document
    };
    Q_ENUM(CommandModelRoles)

    QuickHelpInputModel(const QString& name, QObject* parent);

    /// As the base gives it, without asking for the numbers of rows and columns by virtual calls.
    QModelIndex index(int row, int column = 0, const QModelIndex& parent = QModelIndex()) const override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    /// The section's name, for every section, orientation and role.
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// Whether this very entry is in the list, not another one of the same id.
    bool holds(const AbstractQuickHelpInputEntry* p_entry) const;
    /// removeInput() for an entry that is being destroyed: its row is empty while the views are told.
    void forgetInput(QuickHelpEntryId id);

public slots:
    bool addInput(const AbstractQuickHelpInputEntry* p_entry);
    bool updateInput(QuickHelpEntryId id);
    bool removeInput(QuickHelpEntryId id);

private:
    // In the order of the ids. The entries know them: half as much is to be moved when one comes or goes.
    typedef std::vector<const AbstractQuickHelpInputEntry*> Entries;

    Entries::const_iterator lower_bound(QuickHelpEntryId id) const;
    Entries::const_iterator find(QuickHelpEntryId id) const;
    int row_of(Entries::const_iterator iter) const;
    bool is_going(const AbstractQuickHelpInputEntry* p_entry) const;
    bool erase(Entries::const_iterator iter);

    QString m_name;
    Entries m_entries; // not owned
    Entries m_going; // those of them that can be asked for nothing but their id any more
};

} // namespace tarqa::housekeeping
