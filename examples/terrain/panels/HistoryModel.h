#pragma once

#include <QtCore/QAbstractListModel>
#include <QtGui/QIcon>

#include <vector>

namespace terrain {

/// A line of the history: the state of a document after a command, or a remark. A plain value.
struct HistoryLine
{
    enum class Kind
    {
        Undone, ///< the command can be redone
        Done,
        Opened, ///< the state before the first command
        Remark ///< about lines that are left out
    };

    Kind kind = Kind::Remark;
    QString text;
    QIcon icon;
    /// How many commands of the history are done in this state; meaningless for a remark.
    qulonglong done = 0;
};

/**
 * The lines of a document's history, the newest first, and which one is the present. Each line but a remark
 * can be chosen, unless the model is locked, and says what choosing it would do.
 *
 * Lines that have changed without becoming more or less keep scroll bars and current rows where they are.
 * Main thread.
 */
class HistoryModel : public QAbstractListModel
{
    Q_OBJECT

public:
    enum Role
    {
        IsPresent = Qt::UserRole, ///< bool
        IsUndone ///< bool
    };

    using QAbstractListModel::QAbstractListModel;

    /// @param done how many commands are done now: which line is the present
    void show(const std::vector<HistoryLine>& lines, qulonglong done);
    /// While it is locked, no line can be chosen, and all lines look like that.
    void lock(bool is_locked);

    const std::vector<HistoryLine>& lines() const { return m_lines; }
    /// How many of the lines are commands.
    int commands() const;
    bool is_locked() const { return m_is_locked; }
    /// The line of the present; an invalid index if there is none.
    QModelIndex present() const;
    /// The line of a state; an invalid index if it is not listed.
    QModelIndex line_of(qulonglong done) const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    bool is_present(const HistoryLine& line) const;
    QString choice_text(const HistoryLine& line) const;
    QString spoken_text(const HistoryLine& line) const;
    QVariant font(const HistoryLine& line) const;

    std::vector<HistoryLine> m_lines;
    qulonglong m_done = 0;
    bool m_is_locked = false;
};

} // namespace terrain
