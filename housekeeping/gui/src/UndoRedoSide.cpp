#include "UndoRedoSide.h"

#include <tarqa/housekeeping/gui/UndoRedoPresentation.h>

#include "ListAction.h"

#include <QtGui/QIcon>

#include <limits>

namespace tarqa::housekeeping::gui {

namespace {

const int s_longest_description = 60;
const int s_cut_after = 55; // at the first comma from here on

QString label_of(const CommandDetails& details)
{
    const QString name = QString::fromStdString(details.name());
    QString description = QString::fromStdString(details.description());
    if (description.isEmpty()) {
        return name;
    }
    if (description.length() > s_longest_description) {
        const int comma = description.indexOf(',', s_cut_after);
        if (comma >= 0) {
            description = description.left(comma + 1) + " ...";
        }
    }
    return QString("%1: %2").arg(name, description);
}

} // namespace

UndoRedoSide::UndoRedoSide(
    QObject* p_owner, const Texts& texts, const QString& icon, const QKeySequence& shortcut)
    : m_texts(texts)
    , m_p_menu_action(new QAction(QIcon(icon), texts.menu, p_owner))
    , m_p_tool_bar_action(new ListAction(QIcon(icon), texts.menu, texts.word, p_owner))
    , m_p_separator(new QAction(&m_list))
    , m_p_all(new QAction(&m_list))
{
    m_p_separator->setSeparator(true);
    m_p_menu_action->setStatusTip(texts.status_tip);
    m_p_menu_action->setShortcut(shortcut);
    m_p_menu_action->setShortcutContext(Qt::WidgetShortcut);
}

QAction* UndoRedoSide::tool_bar_action()
{
    return m_p_tool_bar_action;
}

void UndoRedoSide::close_detached_list()
{
    if (!m_p_tool_bar_action->menu()) {
        m_list.hide();
    }
}

unsigned long long UndoRedoSide::wanted(unsigned long long count) const
{
    if (m_list.isVisible()) {
        return std::numeric_limits<unsigned long long>::max();
    }
    return count > at_once ? 2 : at_once + 1; // two tell that there is a list; commands may come meanwhile
}

void UndoRedoSide::set_items(const std::vector<CommandDetails>& details, unsigned long long count)
{
    m_waits = false;
    if (details.empty()) {
        m_p_menu_action->setText(m_texts.menu);
        m_p_menu_action->setToolTip(m_texts.word);
        m_p_tool_bar_action->show(m_texts.word, nullptr);
        return;
    }
    const CommandDetails& first = details.front();
    const QString tool_tip = m_texts.word + ' ' + label_of(first);
    m_p_menu_action->setToolTip(tool_tip);
    m_p_menu_action->setText(m_texts.menu + ' ' + QString::fromStdString(first.name()));
    if (details.size() < 2) {
        m_p_tool_bar_action->show(tool_tip, nullptr);
        return;
    }
    m_waits = (count > at_once || details.size() > at_once) && !m_list.isVisible();
    if (!m_waits) {
        fill_list(details);
    }
    m_p_tool_bar_action->show(tool_tip, &m_list);
}

void UndoRedoSide::fill_list(const std::vector<CommandDetails>& details)
{
    m_waits = false;
    // Entries are kept and filled anew: making them is what costs.
    resize_list(static_cast<int>(details.size()));
    const QList<QAction*> entries = m_list.actions();
    int position = 0;
    for (const CommandDetails& each : details) {
        QAction* const p_entry = entries.at(position);
        fill_entry(p_entry, each, ++position);
    }
    m_p_all->setText(count_text(0));
    m_p_all->setData(static_cast<qulonglong>(details.size()));
}

/// Makes the list hold @p count entries, the separator and the last one. Entries too many are deleted later:
/// the user may have chosen one of them just now.
void UndoRedoSide::resize_list(int count)
{
    const QList<QAction*> actions = m_list.actions();
    const int entries = actions.isEmpty() ? 0 : actions.size() - 2; // without the separator and the last one
    if (count == entries) {
        return;
    }
    m_list.removeAction(m_p_separator);
    m_list.removeAction(m_p_all);
    for (int i = entries - 1; i >= count; --i) {
        m_list.removeAction(actions.at(i));
        actions.at(i)->deleteLater();
    }
    for (int i = entries; i < count; ++i) {
        m_list.addAction(QString())->setCheckable(true);
    }
    m_list.addAction(m_p_separator);
    m_list.addAction(m_p_all);
}

void UndoRedoSide::fill_entry(QAction* p_entry, const CommandDetails& details, int position)
{
    p_entry->setText(label_of(details));
    // Qt takes even the same icon, and the same number, for a change.
    if (p_entry->icon().cacheKey() != details.icon().cacheKey()) {
        p_entry->setIcon(details.icon());
    }
    if (p_entry->data().toInt() != position) {
        p_entry->setData(static_cast<qulonglong>(position));
    }
    p_entry->setChecked(false);
}

void UndoRedoSide::hover(unsigned long long n)
{
    const QList<QAction*> actions = m_list.actions();
    if (actions.isEmpty()) {
        return;
    }
    const int entries = actions.size() - 2; // without the separator and the last one
    for (int i = 0; i < entries; ++i) {
        actions.at(i)->setChecked(static_cast<unsigned long long>(i) < n);
    }
    actions.last()->setText(count_text(n));
}

QString UndoRedoSide::count_text(unsigned long long n) const
{
    return m_texts.word + ' ' + QString::number(n)
        + (n == 1 ? UndoRedoPresentation::tr(" Action") : UndoRedoPresentation::tr(" Actions"));
}

} // namespace tarqa::housekeeping::gui
