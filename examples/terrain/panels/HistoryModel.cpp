#include "panels/HistoryModel.h"

#include "windows/RecentFiles.h"

#include <QtGui/QFont>

#include <algorithm>

namespace terrain {

namespace {

bool is_command(const HistoryLine& line)
{
    return line.kind == HistoryLine::Kind::Done || line.kind == HistoryLine::Kind::Undone;
}

bool is_state(const HistoryLine& line)
{
    return line.kind != HistoryLine::Kind::Remark;
}

} // namespace

void HistoryModel::show(const std::vector<HistoryLine>& lines, qulonglong done)
{
    if (lines.size() != m_lines.size()) {
        beginResetModel();
        m_lines = lines;
        m_done = done;
        endResetModel();
        return;
    }
    m_lines = lines;
    m_done = done;
    if (!m_lines.empty()) {
        emit dataChanged(index(0), index(rowCount() - 1));
    }
}

void HistoryModel::lock(bool is_locked)
{
    if (is_locked == m_is_locked) {
        return;
    }
    m_is_locked = is_locked;
    if (!m_lines.empty()) {
        emit dataChanged(index(0), index(rowCount() - 1));
    }
}

int HistoryModel::commands() const
{
    return static_cast<int>(std::count_if(m_lines.begin(), m_lines.end(), &is_command));
}

bool HistoryModel::is_present(const HistoryLine& line) const
{
    return is_state(line) && line.done == m_done;
}

QModelIndex HistoryModel::present() const
{
    return line_of(m_done);
}

QModelIndex HistoryModel::line_of(qulonglong done) const
{
    const auto found = std::find_if(m_lines.begin(), m_lines.end(),
        [done](const HistoryLine& line) { return is_state(line) && line.done == done; });
    return found == m_lines.end() ? QModelIndex() : index(static_cast<int>(found - m_lines.begin()));
}

int HistoryModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_lines.size());
}

QVariant HistoryModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
        return {};
    }
    const HistoryLine& line = m_lines[static_cast<std::size_t>(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        return line.text;
    case Qt::DecorationRole:
        return line.icon;
    case Qt::FontRole:
        return font(line);
    case Qt::ToolTipRole:
        return plain_tool_tip(is_state(line) ? line.text + '\n' + choice_text(line) : line.text);
    case Qt::StatusTipRole:
        return choice_text(line);
    case Qt::AccessibleTextRole:
        return spoken_text(line);
    case Qt::AccessibleDescriptionRole:
        return choice_text(line);
    case IsPresent:
        return is_present(line);
    case IsUndone:
        return line.kind == HistoryLine::Kind::Undone;
    default:
        return {};
    }
}

Qt::ItemFlags HistoryModel::flags(const QModelIndex& index) const
{
    const bool can_be_chosen = index.isValid() && !m_is_locked
        && m_lines[static_cast<std::size_t>(index.row())].kind != HistoryLine::Kind::Remark;
    return can_be_chosen ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren
                         : Qt::ItemFlags(Qt::ItemNeverHasChildren);
}

/// What choosing a line does.
QString HistoryModel::choice_text(const HistoryLine& line) const
{
    if (!is_state(line)) {
        return {};
    }
    if (m_is_locked) {
        return tr("Wait until the running command has ended");
    }
    if (line.done == m_done) {
        return tr("This is the present state");
    }
    const bool is_undo = line.done < m_done;
    const qulonglong steps = is_undo ? m_done - line.done : line.done - m_done;
    if (steps == 1) { // in words of its own, for languages without a translation
        return is_undo ? tr("Undo 1 step") : tr("Redo 1 step");
    }
    const int count = static_cast<int>(steps);
    return is_undo ? tr("Undo %n steps", "", count) : tr("Redo %n steps", "", count);
}

/// What a line says to people who do not see its font and its mark.
QString HistoryModel::spoken_text(const HistoryLine& line) const
{
    if (is_present(line)) {
        return tr("Present state: %1").arg(line.text);
    }
    return line.kind == HistoryLine::Kind::Undone ? tr("Undone: %1").arg(line.text) : line.text;
}

QVariant HistoryModel::font(const HistoryLine& line) const
{
    QFont font;
    font.setBold(is_present(line));
    font.setItalic(!is_present(line)
        && (line.kind == HistoryLine::Kind::Undone || line.kind == HistoryLine::Kind::Remark));
    return font;
}

} // namespace terrain
